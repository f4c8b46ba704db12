#include "StopNumbering.h"

#include "OrderRoutesRow.h"

#include <cmath>

namespace kb {

double StopNumbering::atPosition(int position, double oldStop)
{
    const QString text = stopText(oldStop);
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    const QString decimals = point < 0 ? QString() : text.mid(point, 4);
    return (QString::number(position) + decimals).toDouble();
}

qint64 StopNumbering::wholePart(double stop) { return qint64(std::trunc(stop)); }

} // namespace kb
