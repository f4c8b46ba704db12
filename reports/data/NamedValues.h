#pragma once

#include <QString>
#include <QVariant>

#include <utility>
#include <vector>

namespace kb::reports {

// Values by name, the names compared without case: a report's parameters,
// a statement's values.
using NamedValues = std::vector<std::pair<QString, QVariant>>;

// Sets the value of a name, adding the name when it is not there yet.
inline void setNamedValue(NamedValues& values, const QString& name, const QVariant& value)
{
    for (auto& [n, v] : values) {
        if (n.compare(name, Qt::CaseInsensitive) == 0) {
            v = value;
            return;
        }
    }
    values.emplace_back(name, value);
}

// Null when the name is not there.
inline QVariant namedValue(const NamedValues& values, const QString& name)
{
    for (const auto& [n, v] : values) {
        if (n.compare(name, Qt::CaseInsensitive) == 0)
            return v;
    }
    return {};
}

} // namespace kb::reports
