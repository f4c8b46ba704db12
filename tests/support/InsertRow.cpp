#include "InsertRow.h"

#include <QStringList>

namespace kb::test {

void insertRow(Database& db, const QString& table, const Params& values)
{
    QStringList columns;
    QStringList params;
    for (const auto& [name, value] : values) {
        columns.append(name);
        params.append(QLatin1Char(':') + name);
    }
    db.execute(QStringLiteral("Insert into %1 (%2) values (%3)")
                   .arg(table, columns.join(QStringLiteral(", ")), params.join(QStringLiteral(", "))),
               values);
}

Params with(Params values, const QString& name, const QVariant& value)
{
    for (auto& [key, v] : values) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            v = value;
            return values;
        }
    }
    values.emplace_back(name, value);
    return values;
}

} // namespace kb::test
