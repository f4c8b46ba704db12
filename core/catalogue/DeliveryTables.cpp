// The tables of schedules, prepared and saved deliveries, suspensions,
// funding, pricing and client lists.

#include "catalogue/Catalogue.h"
#include "catalogue/LiveTables.h"

namespace kb {

namespace catalogue_detail {

// One row per client, service and delivery kind prepared for a date: what a
// saved run holds. Deliv_ID names one delivery; the rows of a client that a
// save consolidates into one delivery share it, so its index is not unique.
TableDef deliveriTable()
{
    TableDef t(QStringLiteral("Deliveri"));
    t.integer("Deliv_ID")
        .date("Deliv_Dt")
        .str("DOW", 3)
        .str("Route_ID", 5)
        .str("Client_ID", 7)
        .integer("Person_ID")
        .flt("Stop")
        .str("Delivery_Type", 2)
        .integer("Svcs_Used")
        .integer("Cuisine_ID")
        .integer("Diet_Restr")
        .str("Diet_Descr", 50)
        .integer("Cold_Bag_ID")
        .boolean("Custom_Items")
        .integer("Number_Meals")
        .integer("Number_Labels")
        .boolean("Address_Overridden")
        .str("Funding_Desc", 25)
        .str("ZIP", 10)
        .str("Delivery_Status", 1)
        .boolean("Label_Created")
        .boolean("Label2_Created")
        .boolean("Label3_Created")
        .index("DELIV_ID", "Deliv_ID")
        .index("DELIV_DT", "Deliv_Dt")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// The item lines of a saved delivery.
TableDef mealcrdtTable()
{
    TableDef t(QStringLiteral("Mealcrdt"));
    t.autoinc("RecordID")
        .integer("Deliv_ID")
        .integer("Person_ID")
        .date("Deliv_Dt")
        .str("DOW", 3)
        .integer("Item_ID")
        .integer("Quantity")
        .boolean("Congregate")
        .boolean("Modified_Ml")
        .integer("Service_ID")
        .smallint("Sort_Order")
        .primary("RecordID")
        .index("DELIV_ID", "Deliv_ID")
        .index("DELIV_DT", "Deliv_Dt")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// Planned deliveries on given dates: episodic ones, and extra scheduled dates
// of ongoing clients.
TableDef episodicDeliveriesTable()
{
    TableDef t(QStringLiteral("EpisodicDeliveries"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .str("Client_ID", 7)
        .integer("List_ID")
        .date("Deliv_Date")
        .str("Schedule_Type", 1)
        .smallint("Svcs_Used")
        .str("Delivery_Type", 1)
        .str("Route", 5)
        .flt("Stop")
        .str("Fulfilled", 1)
        .date("Create_Date")
        .datetime("Last_Updated")
        .str("Created_By", 25)
        .primary("RecordID")
        .index("PERSON_ID", "Person_ID")
        .index("DELIV_DATE", "Deliv_Date");
    return t;
}

// Periods in which a client gets no delivery.
TableDef suspendsTable()
{
    TableDef t(QStringLiteral("Suspends"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .str("Client_ID", 7)
        .integer("Group_ID")
        .str("Tran_Type", 5)
        .boolean("Valid")
        .date("Stop_Dt")
        .date("Resume_Dt")
        .str("Reason", 40)
        .str("User", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("RecordID")
        .index("CLIENT_ID", "Client_ID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

} // namespace catalogue_detail

namespace {

// Item lines of schedules: a service's default items (Person_ID 0), a client's
// own standing items, and the items of one dated delivery (Deliv_ID set).
TableDef defdelsTable()
{
    TableDef t(QStringLiteral("Defdels"));
    t.autoinc("RecordID")
        .integer("PERSON_ID")
        .str("CLIENT_ID", 7)
        .integer("DELIV_ID")
        .integer("SERVICE_ID")
        .str("DEL_DAY", 3)
        .integer("QUANTITY")
        .integer("ITEM_ID")
        .smallint("SORT_ORDER")
        .date("DELIV_DATE")
        .primary("RecordID")
        .index("ITEM_ID", "ITEM_ID")
        .index("PERSON_ID", "PERSON_ID")
        .index("DAY", "DEL_DAY")
        .index("SERVICE_ID", "SERVICE_ID")
        .index("DELIV_ID", "DELIV_ID")
        .index("CLIENT_ID", "CLIENT_ID")
        .index("CLIENT_SERVICE_DAY", "CLIENT_ID;SERVICE_ID;DEL_DAY")
        .index("SORT_ORDER", "SORT_ORDER");
    return t;
}

// The diets of a client that matched a special meal of a delivery, one row per
// person and delivery, with a mask and its text for each of the five meals.
TableDef specialDietsTable()
{
    TableDef t(QStringLiteral("Special_Diets"));
    t.integer("Deliv_ID").integer("Person_ID").date("Deliv_Dt");
    t.integer("Special_Diet_Restr").str("Special_Diet_Descr", 50);
    for (int n = 2; n <= 5; ++n) {
        const QString prefix = QStringLiteral("Special%1_Diet_").arg(n);
        t.integer(prefix + QStringLiteral("Restr")).str(prefix + QStringLiteral("Descr"), 50);
    }
    t.index("PERSON_DELIV", "Person_ID;Deliv_ID").index("DELIV_DT", "Deliv_Dt");
    return t;
}

// The special meals of a date: for each of the five meals its rule, match
// mode, diet mask and report title.
TableDef specialMealsTable()
{
    TableDef t(QStringLiteral("Special_Meals"));
    t.autoinc("RecordID").date("Deliv_Date");
    for (int n = 1; n <= 5; ++n) {
        const QString suffix = n == 1 ? QString() : QString::number(n);
        t.str(QStringLiteral("Selection_Option") + suffix, 50)
            .boolean(QStringLiteral("Filter_All") + suffix)
            .integer(QStringLiteral("Special_Restr") + suffix)
            .str(QStringLiteral("Action") + suffix, 50);
    }
    t.primary("RecordID").index("DELIV_DATE", "Deliv_Date");
    return t;
}

// Funding sources assigned to a client, per service and weekday.
TableDef fundUsesTable()
{
    TableDef t(QStringLiteral("FundUses"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .integer("Service_ID")
        .str("Fund_CD", 3)
        .str("Reimbursement_Method", 1)
        .currency("Reimbursement_Rate")
        .str("Reimbursement_Period", 1);
    for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
        t.boolean(QString::fromLatin1(day));
    t.date("Create_Date").datetime("Last_Updated").primary("RecordID").index("PERSON_ID", "Person_ID");
    return t;
}

// Amounts: funding source rates (Method "F") and client pledges (Method "P").
TableDef pricingTable()
{
    TableDef t(QStringLiteral("Pricing"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .str("Fund_CD", 3)
        .integer("Service_ID")
        .str("Method", 1)
        .str("Unit", 3)
        .integer("Item_ID")
        .currency("Amount")
        .str("Created_By", 25)
        .date("Date_Created")
        .datetime("Last_Update")
        .primary("RecordID")
        .index("PERSON_ID", "Person_ID")
        .index("FUND_CD", "Fund_CD");
    return t;
}

// Named groups of clients with their default fulfillment options.
TableDef listsTable()
{
    TableDef t(QStringLiteral("Lists"));
    t.autoinc("Record_ID")
        .str("List_Name", 50)
        .str("List_Desc", 100)
        .str("Reason", 3)
        .boolean("Active_Only")
        .str("Checkbox_Setting", 1)
        .str("Service_Method", 1)
        .integer("Service_Used")
        .str("Item_Method", 1)
        .integer("Item_to_Deliver")
        .integer("Quantity")
        .date("Create_Date")
        .str("Add_Mode", 1)
        .datetime("Last_Update")
        .primary("Record_ID")
        .uniqueIndex("LIST_NAME", "List_Name");
    return t;
}

// The clients on each list.
TableDef listMembersTable()
{
    TableDef t(QStringLiteral("List_Members"));
    t.integer("List_ID")
        .integer("Person_ID")
        .str("Client_ID", 7)
        .str("Invited", 1)
        .str("Confirmed", 1)
        .boolean("RecVisible")
        .str("Route_ID", 5)
        .flt("Stop")
        .date("Create_Date")
        .str("Updated_By", 25)
        .datetime("Last_Update")
        .index("LIST_ID", "List_ID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

} // namespace

void declareDeliveryTables(Catalogue& catalogue)
{
    catalogue.add(defdelsTable());
    catalogue.add(catalogue_detail::episodicDeliveriesTable());
    catalogue.add(catalogue_detail::deliveriTable());
    catalogue.add(catalogue_detail::mealcrdtTable());
    catalogue.add(specialDietsTable());
    catalogue.add(specialMealsTable());
    catalogue.add(catalogue_detail::suspendsTable());
    catalogue.add(fundUsesTable());
    catalogue.add(pricingTable());
    catalogue.add(listsTable());
    catalogue.add(listMembersTable());
}

} // namespace kb
