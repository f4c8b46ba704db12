#pragma once

#include <QString>

#include <vector>

namespace kb {

// One value of Clients.ONGOING_FREQUENCY as the screens offer it: the
// caption of the client window's list and the title of the delivery weeks
// calendar. Which dates it covers is IsDeliveryWeek's.
struct DeliveryFrequency
{
    QString value;
    QString listCaption;
    QString calendarTitle;
};

// The seven values in the order the list shows them.
const std::vector<DeliveryFrequency>& deliveryFrequencies();
// The entry of a stored value; empty, null and a blank mean every week, and
// a value outside the list falls back to it too, as the screens can't make one.
const DeliveryFrequency& deliveryFrequency(const QString& value);

} // namespace kb
