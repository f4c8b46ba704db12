#include "settings/ConfigRecord.h"

#include "catalogue/Catalogue.h"
#include "dataset/DataSet.h"
#include "store/Database.h"
#include "store/DbError.h"

namespace kb {

ConfigRecord ConfigRecord::read(Database& db)
{
    ConfigRecord record;
    const ResultSet rows = db.execute(QStringLiteral("select * from Config order by RecordID"));
    if (rows.isEmpty()) return record;
    for (int c = 0; c < rows.columnCount(); ++c)
        record.m_values.insert(rows.columnName(c).toUpper(), rows.value(0, c));
    return record;
}

ConfigRecord ConfigRecord::fromDataSet(const DataSet& config)
{
    ConfigRecord record;
    if (!config.isActive() || config.isEmpty()) return record;
    for (int c = 0; c < config.fieldCount(); ++c)
        record.m_values.insert(config.field(c).name.toUpper(), config.fieldValue(c));
    return record;
}

QVariant ConfigRecord::value(const QString& column) const
{
    const TableDef* def = Catalogue::standard().table(u"Config");
    if (!def || !def->column(column))
        throw DbError(DbErrorCode::UnknownName, QStringLiteral("Config has no column %1").arg(column));
    return m_values.value(column.toUpper());
}

qint64 ConfigRecord::integer(const QString& column, qint64 fallback) const
{
    bool ok = false;
    const qint64 n = value(column).toLongLong(&ok);
    return ok ? n : fallback;
}

double ConfigRecord::number(const QString& column, double fallback) const
{
    bool ok = false;
    const double n = value(column).toDouble(&ok);
    return ok ? n : fallback;
}

void ConfigBeforePost(DataSet& config)
{
    for (const char* day : {"DMON", "DTUE", "DWED", "DTHU", "DFRI", "DSAT", "DSUN"}) {
        const QString name = QString::fromLatin1(day);
        if (config.fieldValue(name).isNull()) config.setFieldValue(name, false);
    }
    const QVariant label = config.fieldValue(u"NO_DELIVERY_LABEL");
    if (!label.isNull()) {
        QString text = label.toString();
        text.replace(u'"', u' ').replace(u'\'', u' ');
        if (text != label.toString()) config.setFieldValue(u"NO_DELIVERY_LABEL", text);
    }
    config.setFieldValue(u"LAST_UPDATED", config.database().clock().now());
}

} // namespace kb
