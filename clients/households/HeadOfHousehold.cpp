#include "households/HeadOfHousehold.h"

#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "households/ClientLocator.h"
#include "store/Database.h"

namespace kb {

qint64 HeadOfHousehold::find(Database& db, qint64 householdId, qint64 personId)
{
    const ResultSet rows = db.execute(
        QStringLiteral("Select Person_ID from Household_Members where Household_ID = :Household_ID and "
                       "Person_ID <> :Person_ID and Head_of_Household = True and Person_ID > 0 "
                       "order by RecordID"),
        {{QStringLiteral("Household_ID"), householdId}, {QStringLiteral("Person_ID"), personId}});
    return rows.isEmpty() ? 0 : rows.value(0, 0).toLongLong();
}

bool HeadOfHousehold::jump(Database& db, DataSet& clients, UserInterface& ui, ClientLocator& locator)
{
    if (!clients.isActive() || clients.isEmpty()) return false;
    const qint64 householdId = clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
    if (householdId <= 0) {
        ui.information(notInHouseholdText());
        return false;
    }
    const qint64 head = find(db, householdId, clients.fieldValue(u"PERSON_ID").toLongLong());
    if (head <= 0) {
        ui.information(noHeadText());
        return false;
    }
    if (locator.moveTo(head, filterNotice())) return true;
    ui.warning(notFoundText());
    return false;
}

} // namespace kb
