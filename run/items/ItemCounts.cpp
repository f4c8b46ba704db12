#include "items/ItemCounts.h"

namespace kb {

namespace {

qint64 total(std::span<const ItemListLine> lines, QVariant ItemListLine::*count)
{
    qint64 sum = 0;
    for (const ItemListLine& line : lines)
        if (!line.quantity.isNull() && !(line.*count).isNull())
            sum += line.quantity.toLongLong() * (line.*count).toLongLong();
    return sum;
}

} // namespace

qint64 totalMeals(std::span<const ItemListLine> lines)
{
    return total(lines, &ItemListLine::numberMeals);
}

qint64 totalLabels(std::span<const ItemListLine> lines)
{
    return total(lines, &ItemListLine::numberLabels);
}

} // namespace kb
