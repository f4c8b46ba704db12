#include "WaypointName.h"

namespace kb {

WaypointName WaypointName::parse(const QString& name)
{
    WaypointName w;
    w.label = name.section(QLatin1Char('/'), 0, 0).trimmed();
    const QString routeMark = QStringLiteral("/ Rte: ");
    const qsizetype r = name.indexOf(routeMark);
    if (r >= 0)
        w.route = name.mid(r + routeMark.size(), 5).trimmed().section(QLatin1Char(' '), 0, 0);
    const QString stopMark = QStringLiteral(" Stop: ");
    const qsizetype s = name.indexOf(stopMark);
    if (s >= 0)
        w.stop = name.mid(s + stopMark.size(), 5).trimmed().toDouble();
    return w;
}

} // namespace kb
