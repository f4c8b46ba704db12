#pragma once

#include "store/ResultSet.h"

#include <QString>

#include <functional>
#include <vector>

namespace kb {

class MemTableDeliveries;
class MemTableDeliveriesModel;
class UserInterface;
struct GridExportOptions;

// What the delivery grids (the run's and the credit list's) give out as
// they stand, edits included, in the grid's order.

// Prints "Quick Clients Listing": the rows with all the working table's
// columns, and the listing's heading. Set by the screen's opener, which
// asks for the destination and owns the report engine.
using QuickListingPrinter = std::function<void(ResultSet rows, const QString& heading)>;

// "Export Data": the grid's shown columns under their titles, to the file
// and in the type of the options; only the given grid rows when
// options.selectedOnly and some are given. Tells "Finished exporting the
// data." or the failure; true when the file was written.
bool exportDeliveriesGrid(const MemTableDeliveriesModel& grid, const GridExportOptions& options,
                          const std::vector<int>& selectedRows, UserInterface& ui);

// "Quick Clients Listing": hands the printer the grid's rows. A failure is
// told; true when the printer ran to its end.
bool printDeliveriesListing(MemTableDeliveries& table, const MemTableDeliveriesModel& grid,
                            const QuickListingPrinter& printer, const QString& heading, UserInterface& ui);

} // namespace kb
