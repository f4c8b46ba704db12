#pragma once

#include "reference/DeleteGuards.h"

#include <QString>
#include <QVariant>

#include <functional>

namespace kb {

class Database;
class UserInterface;
class TableDef;

// Writes a column of the row being edited.
using RowWriter = std::function<void(const QString& column, const QVariant& value)>;

// The column that numbers a reference table's rows with "highest plus one",
// or empty for tables that are not numbered that way.
QString numberedColumn(const QString& table);
// The highest number in use plus one; 1 for an empty table.
int nextNumber(Database& db, const QString& table, const QString& column);

// The limits on the number of rows: tells the user and returns false when a
// new row may not be added.
bool allowsInsert(Database& db, UserInterface& ui, const QString& table);

// Fills a new row: its number, the create date and the defaults a new row
// of that table starts with.
void initialiseNewRow(Database& db, const QString& table, const RowWriter& write);

// The rules that run before a reference row is posted. Returns false when
// the post is abandoned (the user has been told where the rules say so).
// `original` reads the row as it was before the edit (empty for a new row).
bool beforeReferencePost(Database& db, UserInterface& ui, const QString& table, const RowReader& row,
                         const RowWriter& write, const RowReader& original);

// The create-date and last-updated columns of a table, if it has them.
QString createDateColumn(const TableDef& table);
QString lastUpdatedColumn(const TableDef& table);

// How postal codes and telephones are labelled and masked, by
// Config.POSTAL_FORMAT.
struct PostalFormat
{
    QString label;
    QString postalMask;
    QString phoneMask;
};
PostalFormat postalFormat(const QString& code);

} // namespace kb
