#pragma once

#include <QString>
#include <QVariant>

#include <functional>

namespace kb {

class Database;
class UserInterface;

// Reads a column of the row at hand (a data set's current row).
using RowReader = std::function<QVariant(const QString& column)>;

// Runs, in their order, the tests that guard deleting a row of a reference
// table: a "refuse" test that finds rows shows its message and stops the
// delete; a "confirm" test asks, and No stops it. True when the delete may
// go on. Tables without guards always pass.
bool passesDeleteGuards(Database& db, UserInterface& ui, const QString& table, const RowReader& row);

// The rows that go with a deleted reference row (a service's default items
// and funding uses). Runs after the row itself is deleted.
void deleteDependentRows(Database& db, const QString& table, const RowReader& row);

} // namespace kb
