#pragma once

#include "catalogue/TableDef.h"
#include "sql/Dialect.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace kb::sql {

// Where a parameter's value comes from: the caller, or the session clock.
enum class ParamSource { Caller, CurrentDate, CurrentTime, CurrentTimestamp };

struct ParamInfo
{
    QString name; // without the colon
    FieldType type = FieldType::Unknown; // inferred from where it is used
    ParamSource source = ParamSource::Caller;
};

struct OutputColumn
{
    QString name;
    FieldType type = FieldType::Unknown;
    int width = 0;
};

// One statement of the store's own SQL and which parameters it takes, in
// the order of its placeholders.
struct StoreSql
{
    QString text;
    std::vector<int> params; // indexes into TranslatedStatement::params
    bool returnsRows = false;
    bool countsRows = true; // its changed-row count is the statement's
};

// A dialect statement made ready for one store. Translation happens once
// per statement text; the result is cached by the session.
struct TranslatedStatement
{
    std::vector<StoreSql> steps;
    std::vector<ParamInfo> params;
    std::vector<OutputColumn> columns; // of the step that returns rows
    bool returnsRows = false;

    // Effects on the session's memory tables, applied once the steps ran.
    std::optional<TableDef> createsMemoryTable;
    QString dropsMemoryTable;
    QStringList memoryTablesUsed; // lower-case names, to validate the cache
    // A persistent table written by the statement, for change tracking.
    QString writesTable;
    // For an update or delete of writesTable: a query of the identities of
    // the rows it will change, so that rows another session holds in edit
    // are waited for rather than changed under the editor.
    std::optional<StoreSql> rowProbe;
};

} // namespace kb::sql
