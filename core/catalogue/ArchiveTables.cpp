// The archive tables: old rows moved out of the large live tables, kept in
// the same data directory so that they can be moved back.

#include "catalogue/Catalogue.h"
#include "catalogue/LiveTables.h"

namespace kb {

namespace {

// An archive table has the columns and indexes of its live table. Numbers
// that the live table assigns on insert become plain ints, so that a row keeps
// its number when it is moved; and no index is unique, since an archive only
// collects whatever rows are moved into it.
TableDef archiveOf(const TableDef& live, const QString& name)
{
    TableDef t(name);
    for (ColumnDef column : live.columns()) {
        if (column.type == FieldType::AutoInc) {
            column.type = FieldType::Int;
            column.required = false;
        }
        t.add(std::move(column));
    }
    for (IndexDef index : live.indexes()) {
        if (index.primary) {
            // The live row key stays searchable, under the column's name.
            index.primary = false;
            index.name = index.columns.join(u';').toUpper();
            if (t.index(index.name) != nullptr) continue;
        }
        index.unique = false;
        t.addIndex(std::move(index));
    }
    return t;
}

} // namespace

void declareArchiveTables(Catalogue& catalogue)
{
    using namespace catalogue_detail;
    catalogue.add(archiveOf(deliveriTable(), QStringLiteral("Archived_Deliveries")));
    catalogue.add(archiveOf(mealcrdtTable(), QStringLiteral("Archived_MealCrdt")));
    catalogue.add(archiveOf(episodicDeliveriesTable(), QStringLiteral("Archived_EpisodicDeliveries")));
    catalogue.add(archiveOf(suspendsTable(), QStringLiteral("Archived_Suspends")));
    catalogue.add(archiveOf(eventsTable(), QStringLiteral("Archived_Events")));
    catalogue.add(archiveOf(historyTable(), QStringLiteral("Archived_History")));
}

} // namespace kb
