#include "worktable/DeliveriesGridOutput.h"

#include "ShownFailure.h"
#include "UserInterface.h"
#include "stops/GridExport.h"
#include "worktable/MemTableDeliveriesModel.h"

namespace kb {

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
    const bool done = showingFailure(ui, [&] { GridExport::write(options, grid.titles(), lines); });
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
    return showingFailure(ui, [&] { printer(table.select(grid.currentIndex()), heading); });
}

} // namespace kb
