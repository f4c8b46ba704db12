#include "OrderRoutesRow.h"

namespace kb {

QString stopText(double stop)
{
    return QString::number(stop, 'g', 10);
}

QString OrderRoutesRow::routeStop() const
{
    return QStringLiteral("Rte: ") + route + QStringLiteral(" Stop: ") + stopText(stop);
}

bool OrderRoutesRow::hasCoordinates() const
{
    return !latitude.isNull() && !longitude.isNull() && latitude.toDouble() != 0.0 && longitude.toDouble() != 0.0;
}

} // namespace kb
