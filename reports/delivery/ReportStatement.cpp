#include "delivery/ReportStatement.h"

namespace kb::reports {

void ReportStatement::bind(const QString& name, const QVariant& value)
{
    for (auto& [n, v] : params) {
        if (n.compare(name, Qt::CaseInsensitive) == 0) {
            v = value;
            return;
        }
    }
    params.emplace_back(name, value);
}

QString ReportStatement::freshName(const QString& prefix) const
{
    for (int n = 1;; ++n) {
        const QString name = prefix + QString::number(n);
        bool used = false;
        for (const auto& p : params)
            used = used || p.first.compare(name, Qt::CaseInsensitive) == 0;
        if (!used) return name;
    }
}

QString ReportStatement::addValue(const QString& prefix, const QVariant& value)
{
    const QString name = freshName(prefix);
    params.emplace_back(name, value);
    return u':' + name;
}

} // namespace kb::reports
