#include "defaults/ClientSchedule.h"

#include "IsDeliveryWeek.h"
#include "dataset/DataSet.h"
#include "defaults/Weekdays.h"

namespace kb {

bool ClientSchedule::deliveryPossible(const QDate& date) const
{
    return date.isValid() && days[size_t(weekdayIndex(date))] && IsDeliveryWeek(frequency, date);
}

ClientSchedule ClientSchedule::fromRow(const DataSet& clients)
{
    ClientSchedule s;
    if (!clients.isActive() || clients.isEmpty()) return s;
    const auto text = [&](const char* field) {
        return clients.fieldValue(QString::fromLatin1(field)).toString().trimmed();
    };
    s.personId = clients.fieldValue(u"PERSON_ID").toLongLong();
    s.clientId = text("CLIENT_ID");
    QStringList parts;
    for (const char* field : {"FIRST_NAME", "MID_NAME", "LAST_NAME"})
        if (!text(field).isEmpty()) parts.append(text(field));
    s.name = parts.join(QLatin1Char(' '));
    s.status = text("STATUS");
    s.deliveryType = text("DELIVERY_TYPE");
    s.frequency = clients.fieldValue(u"ONGOING_FREQUENCY").toString();
    for (int d = 0; d < 7; ++d)
        s.days[size_t(d)] = clients.fieldValue(weekdays()[size_t(d)].column).toBool();
    s.serviceId = clients.fieldValue(u"SVCS_USED").toLongLong();
    s.defaultRoute = text("DEF_RTE");
    // A date control without a value reads as 1899: cleared.
    const auto date = [&](const char* field) {
        const QDate d = clients.fieldValue(QString::fromLatin1(field)).toDate();
        return d.isValid() && d.year() > 1899 ? d : QDate();
    };
    s.start = date("START_DTE");
    s.stop = date("STOP_DTE");
    return s;
}

} // namespace kb
