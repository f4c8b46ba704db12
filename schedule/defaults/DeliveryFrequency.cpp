#include "defaults/DeliveryFrequency.h"

namespace kb {

const std::vector<DeliveryFrequency>& deliveryFrequencies()
{
    static const std::vector<DeliveryFrequency> list = {
        {QStringLiteral("A"), QStringLiteral("Every Week"), QStringLiteral("All Delivery Weeks")},
        {QStringLiteral("O"), QStringLiteral("A Weeks"), QStringLiteral("\"A\" Delivery Weeks")},
        {QStringLiteral("E"), QStringLiteral("B Weeks"), QStringLiteral("\"B\" Delivery Weeks")},
        {QStringLiteral("1"), QStringLiteral("1st occurrence of day in month"),
         QStringLiteral("First Week of the Month Deliveries")},
        {QStringLiteral("2"), QStringLiteral("2nd occurrence of day in month"),
         QStringLiteral("Second Week of the Month Deliveries")},
        {QStringLiteral("3"), QStringLiteral("3rd occurrence of day in month"),
         QStringLiteral("Third Week of the Month Deliveries")},
        {QStringLiteral("4"), QStringLiteral("4th occurrence of day in month"),
         QStringLiteral("Fourth Week of the Month Deliveries")},
    };
    return list;
}

const DeliveryFrequency& deliveryFrequency(const QString& value)
{
    const QString wanted = value.trimmed();
    for (const DeliveryFrequency& f : deliveryFrequencies())
        if (f.value == wanted) return f;
    return deliveryFrequencies().front();
}

} // namespace kb
