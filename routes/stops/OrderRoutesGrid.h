#pragma once

#include "OrderRoutesRow.h"

#include <QList>
#include <QStringList>
#include <QVariant>

namespace kb {

// The columns of the "Order Stops within Routes" grid, in their order: the
// field each shows (its name is what a click on the title sorts by) and its
// title. Route and Stop come first, under "Routing".
struct OrderRoutesColumn
{
    QString field;
    QString title;
};

const QList<OrderRoutesColumn>& orderRoutesGridColumns();
QStringList orderRoutesGridTitles();
// The values of a row in the grid's columns.
QVariantList orderRoutesGridValues(const OrderRoutesRow& row);

} // namespace kb
