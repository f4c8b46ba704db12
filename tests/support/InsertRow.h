#pragma once

#include "store/Database.h"

namespace kb::test {

// Inserts one row with the named column values, for building fixtures.
void insertRow(Database& db, const QString& table, const Params& values);

// Sets a value in a list of named values, adding it when missing.
Params with(Params values, const QString& name, const QVariant& value);

} // namespace kb::test
