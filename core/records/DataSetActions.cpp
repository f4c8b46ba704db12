#include "records/DataSetActions.h"

#include "MessageError.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"

namespace kb {

namespace {

// Open and refresh differ between tables and queries only in how they open.
template <typename Opener> void apply(DataSet& set, DataSetAction action, Opener open)
{
    switch (action) {
    case DataSetAction::Open:
        open();
        break;
    case DataSetAction::Refresh:
        if (set.isActive()) set.refresh();
        break;
    case DataSetAction::Close:
        set.close();
        break;
    case DataSetAction::ReadOnly:
        set.close();
        set.setReadOnly(true);
        open();
        break;
    }
}

} // namespace

DataSetAction dataSetAction(const QString& code)
{
    if (code == QLatin1String("O")) return DataSetAction::Open;
    if (code == QLatin1String("R")) return DataSetAction::Refresh;
    if (code == QLatin1String("C")) return DataSetAction::Close;
    if (code == QLatin1String("RO")) return DataSetAction::ReadOnly;
    throw MessageError(QStringLiteral("Unknown data set action \"%1\"").arg(code));
}

bool OpenTable(TableDataSet& table)
{
    if (!table.isActive()) table.open();
    return table.isActive();
}

bool OpenQuery(QueryDataSet& query)
{
    if (!query.isActive()) query.open();
    return query.isActive();
}

void SetOneTable(TableDataSet& table, const QString& action)
{
    apply(table, dataSetAction(action), [&] { OpenTable(table); });
}

void SetOneQuery(QueryDataSet& query, const QString& action)
{
    apply(query, dataSetAction(action), [&] { OpenQuery(query); });
}

void SetAllTables(const QString& action, const std::vector<TableDataSet*>& owned)
{
    for (TableDataSet* table : owned)
        SetOneTable(*table, action);
}

} // namespace kb
