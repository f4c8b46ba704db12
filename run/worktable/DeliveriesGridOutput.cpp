#include "worktable/DeliveriesGridOutput.h"

#include "MessageError.h"
#include "UserInterface.h"
#include "stops/GridExport.h"
#include "store/DbError.h"
#include "worktable/MemTableDeliveriesModel.h"

namespace kb {

namespace {

// Runs work, telling a failure as its text; true when it ran to its end.
template <typename Work> bool telling(UserInterface& ui, Work&& work)
{
    try {
        work();
        return true;
    } catch (const MessageError& e) {
        ui.error(e.message());
    } catch (const DbError& e) {
        ui.error(e.message());
    }
    return false;
}

} // namespace

bool exportDeliveriesGrid(const MemTableDeliveriesModel& grid, const GridExportOptions& options,
                          const std::vector<int>& selectedRows, UserInterface& ui)
{
    std::vector<QVariantList> lines;
    if (options.selectedOnly && !selectedRows.empty()) {
        for (int row : selectedRows)
            if (row >= 0 && row < grid.rowCount()) lines.push_back(grid.shownValues(row));
    } else {
        for (int row = 0; row < grid.rowCount(); ++row)
            lines.push_back(grid.shownValues(row));
    }
    const bool done = telling(ui, [&] { GridExport::write(options, grid.titles(), lines); });
    if (done) ui.information(QStringLiteral("Finished exporting the data."));
    return done;
}

bool printDeliveriesListing(MemTableDeliveries& table, const MemTableDeliveriesModel& grid,
                            const QuickListingPrinter& printer, const QString& heading, UserInterface& ui)
{
    if (!printer) {
        ui.error(QStringLiteral("The quick listing cannot be printed from here."));
        return false;
    }
    return telling(ui, [&] { printer(table.select(grid.currentIndex()), heading); });
}

} // namespace kb
