#include "items/RunDelivery.h"

namespace kb {

const QStringList& RunDelivery::columns()
{
    static const QStringList names = {
        QStringLiteral("RecordID"),      QStringLiteral("Delivery_Date"),
        QStringLiteral("Client_ID"),     QStringLiteral("Person_ID"),
        QStringLiteral("Route_ID"),      QStringLiteral("Stop"),
        QStringLiteral("Svcs_Used"),     QStringLiteral("Cuisine_ID"),
        QStringLiteral("Diet_Restr"),    QStringLiteral("Diet_Restrictions_Named"),
        QStringLiteral("Cold_Bag_ID"),   QStringLiteral("Address_Overridden"),
        QStringLiteral("ZIP"),           QStringLiteral("Congregate"),
        QStringLiteral("Delivery_Type"), QStringLiteral("Deliv_ID")};
    return names;
}

RunDelivery RunDelivery::read(const ResultSet& rows, qsizetype row)
{
    const auto v = [&](int column) -> const QVariant& { return rows.value(row, column); };
    RunDelivery d;
    d.recordId = v(0).toLongLong();
    d.deliveryDate = v(1).toDate();
    d.clientId = v(2);
    d.personId = v(3).toLongLong();
    d.routeId = v(4);
    d.stop = v(5);
    d.svcsUsed = v(6);
    d.cuisineId = v(7);
    d.dietRestr = v(8).toLongLong();
    d.dietRestrictionsNamed = v(9);
    d.coldBagId = v(10);
    d.addressOverridden = v(11).toBool();
    d.zip = v(12);
    d.congregate = v(13).toBool();
    d.deliveryType = v(14).toString();
    d.delivId = v(15).toLongLong();
    return d;
}

bool RunDelivery::isDated() const
{
    return deliveryType.startsWith(u'E') || deliveryType.startsWith(u'S');
}

} // namespace kb
