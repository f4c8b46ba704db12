#pragma once

// Builders of the live tables whose rows can be moved out to an archive table.
// The archive declarations start from these so that both stay alike.

#include "catalogue/TableDef.h"

namespace kb::catalogue_detail {

// Defined in DeliveryTables.cpp.
TableDef deliveriTable();
TableDef mealcrdtTable();
TableDef episodicDeliveriesTable();
TableDef suspendsTable();

// Defined in CaseTables.cpp.
TableDef eventsTable();
TableDef historyTable();

} // namespace kb::catalogue_detail
