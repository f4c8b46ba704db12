#include "walkins/WalkIn.h"

#include "MessageError.h"
#include "store/Database.h"

namespace kb {

WalkIn WalkIn::ofClient(Database& db, qint64 personId, const QDate& date)
{
    const ResultSet row = db.execute(
        QStringLiteral(
            "Select Person_ID, Client_ID, Status, First_Name, Mid_Name, Last_Name, Address1, City, "
            "State, Zip, Svcs_Used, Def_Rte, Delivery_Type from Clients where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    if (row.isEmpty()) throw MessageError(QStringLiteral("No person has Person_ID %1.").arg(personId));
    const auto text = [&](int column) { return row.value(0, column).toString(); };
    WalkIn w;
    w.delivDate = date;
    w.personId = personId;
    w.clientId = row.value(0, 1);
    w.status = text(2);
    w.firstName = text(3);
    w.midName = text(4);
    w.lastName = text(5);
    w.address1 = text(6);
    w.city = text(7);
    w.state = text(8);
    w.zip = text(9);
    w.svcsUsed = row.value(0, 10).toLongLong();
    w.defRte = text(11);
    w.deliveryType = text(12);
    return w;
}

} // namespace kb
