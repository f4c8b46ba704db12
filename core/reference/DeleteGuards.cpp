#include "reference/DeleteGuards.h"

#include "store/Database.h"
#include "UserInterface.h"

namespace kb {

namespace {

enum class GuardKind { Refuse, Confirm };

struct DeleteGuard
{
    const char* table;
    const char* keyColumn; // of the row being deleted, bound as :Key
    const char* test;      // finds the rows that use it
    GuardKind kind;
    const char* message;
};

// The guards of every reference table, in the order they run.
const DeleteGuard Guards[] = {
    {"Items", "ITEM_ID", "select count(*) as N from DefDels where Item_ID = :Key", GuardKind::Refuse,
     "The Item you are deleting is in use by at least one Service or Client.\r\nAs long as any Services or Clients "
     "are using this Item you can not delete it."},
    {"Items", "ITEM_ID", "select count(*) as N from Lists where Item_to_Deliver = :Key", GuardKind::Refuse,
     "The Item you are deleting is used as by at least one List.\r\nAs long as any Lists are using this Item you can "
     "not delete it."},
    {"Items", "ITEM_ID", "select count(*) as N from MealCrdt where Item_ID = :Key", GuardKind::Confirm,
     "The Item you are deleting has Deliveries which use it. If you \r\ndelete it then the Item for the deliveries "
     "using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"Services", "SERVICE_ID", "select count(*) as N from Clients where Svcs_Used = :Key", GuardKind::Refuse,
     "The Service you are deleting is in use by at least one Client.\r\n As long as any Clients are assigned to this "
     "Service you can not delete it."},
    {"Services", "SERVICE_ID",
     "select count(*) as N from EpisodicDeliveries where Svcs_Used = :Key and not Fulfilled= 'Y'", GuardKind::Refuse,
     "The Service you are deleting is in use by at least one Uncredited Episodic Delivery.\r\nAs long as any "
     "uncredited deliveries are assigned to this Service you can not delete it."},
    {"Services", "SERVICE_ID", "select count(*) as N from Deliveri where Svcs_Used = :Key", GuardKind::Confirm,
     "The Service you are deleting has Deliveries which use it. If you \r\ndelete it then the Service for the "
     "deliveries using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"Race", "RACE_CD", "select count(*) as N from Clients where Race = :Key", GuardKind::Refuse,
     "The Race you are deleting is in use by at least one Client.\r\nAs long as any Clients have this Race you can "
     "not delete it."},
    {"Martst", "MART_ID", "select count(*) as N from Clients where Marital_St = :Key", GuardKind::Refuse,
     "The Marital Status you are deleting is in use by at least one Client.\r\nAs long as any Clients have this "
     "Marital Status you can not delete it."},
    {"EventCds", "EVENT_ID", "select count(*) as N from Services where Default_Event = :Key", GuardKind::Refuse,
     "The Event Code you are deleting is in use by at least one Service.\r\nAs long as any Services use this as their "
     "default event you can not delete it."},
    {"EventCds", "EVENT_ID", "select count(*) as N from Events where Event_ID = :Key", GuardKind::Refuse,
     "The Event Code you are deleting has Events which use it. As long as any \r\nEvents use this code then you can "
     "not delete it."},
    {"Locatns", "LOCATION_ID", "select count(*) as N from Routes where Dist_Center_ID = :Key", GuardKind::Refuse,
     "The Distribution Center you are deleting is in use by at least one Route.\r\nAs long as any Routes use this "
     "Distribution Center you can not delete it."},
    {"Locatns", "LOCATION_ID", "select count(*) as N from Events where Loc_Code = :Key", GuardKind::Confirm,
     "The Location you are deleting has Counseling Events which use it. If you \r\ndelete it then the Location for "
     "the Events using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"StopReasons", "STOP_ID", "select count(*) as N from Clients where Stop_Code = :Key", GuardKind::Refuse,
     "The Stop Reason you are deleting is in use by at least one Client.\r\nAs long as any Clients are assigned to "
     "this Stop Reason you can not delete it."},
    {"Conditions", "Condition_ID", "select count(*) as N from ServiceConditions where Condition_ID = :Key",
     GuardKind::Refuse,
     "The Condition you are deleting is in use by at least one Service.\r\nAs long as any Services are assigned to "
     "this Condition you can not delete it."},
    {"Docs", "Doc_ID", "select count(*) as N from ServiceDocs where Doc_ID = :Key", GuardKind::Refuse,
     "The Document you are deleting is in use by at least one Service.\r\nAs long as any Services are assigned to "
     "this Document you can not delete it."},
    {"Docs", "Doc_ID", "select count(*) as N from DocUses where Doc_ID = :Key", GuardKind::Confirm,
     "The Document you are deleting has Client Applications which use it. If you \r\ndelete it then the Document for "
     "the Applications using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"Cuisines", "Cuisine_ID", "select count(*) as N from Clients where Cuisine_ID = :Key", GuardKind::Refuse,
     "The Cuisine you are deleting is in use by at least one Client.\r\nAs long as any Clients are assigned to this "
     "Cold Bag you can not delete it."},
    {"Cuisines", "Cuisine_ID", "select count(*) as N from Deliveri where Cuisine_ID = :Key", GuardKind::Confirm,
     "The Cuisine you are deleting has Deliveries which use it. If you \r\ndelete it then the Cuisine for the "
     "deliveries using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"Diseases", "Disease_ID", "select count(*) as N from Client_Diseases where Disease_ID = :Key", GuardKind::Refuse,
     "The Disease you are deleting is in use by at least one Client.\r\nAs long as any Clients are assigned to this "
     "Disease you can not delete it."},
    {"Cold_Bag_Codes", "Record_ID", "select count(*) as N from Clients where Cold_Bag_ID = :Key", GuardKind::Refuse,
     "The Cold Bag you are deleting is in use by at least one Client.\r\nAs long as any Clients are assigned to this "
     "Cold Bag you can not delete it."},
    {"Cold_Bag_Codes", "Record_ID", "select count(*) as N from Deliveri where Cold_Bag_ID = :Key", GuardKind::Confirm,
     "The Cold Bag you are deleting has Deliveries which use it. If you \r\ndelete it then the cold bag for the "
     "deliveries using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"Fundsrcs", "FUND_ID", "select count(*) as N from Services where Default_Funding_Source = :Key",
     GuardKind::Refuse,
     "The Funding you are deleting is the default funding for at least one service.\r\nAs long as any services have "
     "this funding you can not delete it."},
    {"Fundsrcs", "FUND_CD", "select count(*) as N from FundUses where Fund_CD = :Key", GuardKind::Refuse,
     "The Funding you are deleting has Clients assigned to it.\r\nAs long as any Clients have this funding you can "
     "not delete it."},
    {"Fundsrcs", "FUND_CD", "select count(*) as N from Deliveri where Funding_Desc = :Key", GuardKind::Confirm,
     "The Funding you are deleting has deliveries which use it. If you \r\ndelete it then the Funding for the "
     "deliveries using it will be \r\nunidentified. Proceed with the deletion anyway?"},
    {"Fundsrcs", "FUND_CD", "select count(*) as N from Events where Funding_Desc = :Key", GuardKind::Confirm,
     "The Funding you are deleting has events which use it. If you \r\ndelete it then the Funding for the events "
     "using it will be \r\nunidentified. Proceed with the deletion anyway?"},
};

// Case_Management_Choices holds two lists; which guard applies depends on
// the row's usage.
const DeleteGuard ContactMethodGuard = {
    "Case_Management_Choices", "CONTACT_CD", "select count(*) as N from Events where Contact_Method = :Key",
    GuardKind::Refuse,
    "The Contact Method you are deleting is in use by at least one case management event.\r\nAs long as any case "
    "management events have this Contact Method you can not delete it."};
const DeleteGuard EventTypeGuard = {
    "Case_Management_Choices", "CONTACT_CD", "select count(*) as N from Events where Contact_Type = :Key",
    GuardKind::Refuse,
    "The Event Type you are deleting is in use by at least one case management event.\r\nAs long as any case "
    "management events have this Event Type you can not delete it."};

bool passes(Database& db, UserInterface& ui, const DeleteGuard& guard, const RowReader& row)
{
    const QVariant key = row(QString::fromLatin1(guard.keyColumn));
    const qint64 uses = db.execute(QString::fromLatin1(guard.test), {{QStringLiteral("Key"), key}}).value(0, 0).toLongLong();
    if (uses == 0)
        return true;
    const QString message = QString::fromLatin1(guard.message);
    if (guard.kind == GuardKind::Refuse) {
        ui.warning(message);
        return false;
    }
    return ui.question(message, Buttons::YesNo) == Answer::Yes;
}

} // namespace

bool passesDeleteGuards(Database& db, UserInterface& ui, const QString& table, const RowReader& row)
{
    if (table.compare(QLatin1String("Case_Management_Choices"), Qt::CaseInsensitive) == 0) {
        const QString usage = row(QStringLiteral("USAGE")).toString();
        if (usage == QLatin1String("C"))
            return passes(db, ui, ContactMethodGuard, row);
        if (usage == QLatin1String("E"))
            return passes(db, ui, EventTypeGuard, row);
        return true;
    }
    for (const DeleteGuard& guard : Guards) {
        if (table.compare(QLatin1String(guard.table), Qt::CaseInsensitive) != 0)
            continue;
        if (!passes(db, ui, guard, row))
            return false;
    }
    return true;
}

void deleteDependentRows(Database& db, const QString& table, const RowReader& row)
{
    // A funding source's rates go with it, the clients' own included.
    if (table.compare(QLatin1String("Fundsrcs"), Qt::CaseInsensitive) == 0) {
        db.execute(QStringLiteral("Delete from Pricing where Fund_CD = :Fund_CD"),
                   {{QStringLiteral("Fund_CD"), row(QStringLiteral("FUND_CD"))}});
        return;
    }
    if (table.compare(QLatin1String("Services"), Qt::CaseInsensitive) != 0)
        return;
    const Params key = {{QStringLiteral("Service_ID"), row(QStringLiteral("SERVICE_ID"))}};
    db.execute(QStringLiteral("Delete from DefDels where Service_ID = :Service_ID"), key);
    db.execute(QStringLiteral("Delete from FundUses where Service_ID = :Service_ID"), key);
}

} // namespace kb
