#pragma once

#include <QString>

#include <vector>

namespace kb {

class DataSet;
class QueryDataSet;
class TableDataSet;

// What SetAllTables, SetOneTable and SetOneQuery do to a data set, given by
// the system's codes: "O" open, "R" refresh, "C" close, "RO" close, make
// read-only and open (how read-only users get their data sets).
enum class DataSetAction { Open, Refresh, Close, ReadOnly };

// The action of a code; throws MessageError for a code that is none of them.
DataSetAction dataSetAction(const QString& code);

// Opens a table; true once it is open. The stores hold every table in the
// current format, so there is never an older format to upgrade first.
bool OpenTable(TableDataSet& table);
// Opens a query (the statement is made ready on its first run); true once open.
bool OpenQuery(QueryDataSet& query);

void SetOneTable(TableDataSet& table, const QString& action);
void SetOneQuery(QueryDataSet& query, const QString& action);
// Applies the action to each table an owner (a screen or the data module)
// holds; the owner passes the tables it owns.
void SetAllTables(const QString& action, const std::vector<TableDataSet*>& owned);

} // namespace kb
