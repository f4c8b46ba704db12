#pragma once

#include <QString>
#include <QStringList>

namespace kb {

// The statements of "Order Stops within Routes", by the entry of its day
// list: 0 is the default route, 1 to 7 are Monday to Sunday, each "then
// Default" (the weekday's route, and the default route where the weekday
// has none).
class OrderRoutesStatements
{
public:
    static constexpr int dayCount = 8;

    // "Default Route", "Monday then Default" ... "Sunday then Default".
    static QStringList dayTexts();
    // "MON" ... "SUN" for 1 to 7; empty for the default route.
    static QString dayCode(int dayIndex);
    // The day list entry of "MON" ... "SUN" (any case); 0 for anything else.
    static int dayIndexOf(const QString& code);
    // The column prefix of the day's route and stop: "Def", "Mon" ... "Sun".
    static QString columnPrefix(int dayIndex);

    // The route code of a route list entry: the text before the first "-", trimmed.
    static QString routeCode(const QString& listEntry);

    // The clients of :cRoute for the day, in route and stop order.
    static QString retrieve(int dayIndex, bool activeOnly);
    // Writes a client's route and stop for the day: :Route, :Stop, :Edit_Dte, :Person_ID.
    static QString clientUpdate(int dayIndex);
    // Carries them over to the client's future dated deliveries: :Route, :Stop,
    // :Last_Updated, :Person_ID, :Deliv_Date and, for a weekday, :DOW.
    static QString episodicUpdate(int dayIndex);
};

} // namespace kb
