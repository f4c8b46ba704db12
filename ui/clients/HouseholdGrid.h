#pragma once

#include <QString>

#include <span>

class QTableWidget;

namespace kb {
class DataSet;
}

namespace kb::ui {

// A column of the household screens' grids: the set's field and its title.
struct HouseholdGridColumn
{
    const char16_t* field;
    const char16_t* title;
};

// A read-only grid of whole rows, one chosen at a time.
QTableWidget* householdGrid(std::span<const HouseholdGridColumn> columns, const QString& name);

// Fills the grid with the set's rows and selects its current one; a row
// being inserted, not among the stored rows yet, shows last.
void fillHouseholdGrid(QTableWidget& table, DataSet& set, std::span<const HouseholdGridColumn> columns);

} // namespace kb::ui
