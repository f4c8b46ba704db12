// The code tables that the agency maintains for itself: diets, services,
// staff, items, routes, funding sources, locations and the small lookups.

#include "catalogue/Catalogue.h"

namespace kb {

namespace {

// Diet types; each is one bit (DIET_ID - 1) of a diet mask, so at most 31.
TableDef dietTable()
{
    TableDef t(QStringLiteral("Diet"));
    t.autoinc("RecordID")
        .integer("DIET_ID")
        .str("DIET_DESC", 35)
        .str("DIET_CODE", 30)
        .date("DATE_CREATED")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .index("DIET_ID", "DIET_ID");
    return t;
}

// The services the agency offers, at most 31.
TableDef servicesTable()
{
    TableDef t(QStringLiteral("Services"));
    t.autoinc("RecordID")
        .integer("SERVICE_ID")
        .integer("SORT_ORDER")
        .str("SERVICE_DESC", 40)
        .str("SERVICE_TYPE", 1)
        .boolean("MUTL_EXCL")
        .integer("DEFAULT_EVENT")
        .integer("DEFAULT_FUNDING_SOURCE")
        .str("DEFAULT_FREQUENCY", 1)
        .str("DEFAULT_DELIVERY_TYPE", 1);
    // Default delivery days.
    for (const char* day : {"DMON", "DTUE", "DWED", "DTHU", "DFRI", "DSAT", "DSUN"})
        t.boolean(QString::fromLatin1(day));
    t.date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .uniqueIndex("SERVICE_ID", "SERVICE_ID")
        .nocaseIndex("SERVICE_TYPE", "SERVICE_TYPE")
        .index("SORT_ORDER", "SORT_ORDER")
        .nocaseIndex("SERVICE_DESC", "SERVICE_DESC");
    return t;
}

// People who work with the system, also the list of users and their
// preferences.
TableDef staffTable()
{
    TableDef t(QStringLiteral("Staff"));
    t.autoinc("Record_ID")
        .integer("Staff_ID")
        .str("Staff_Name", 25)
        .boolean("Active")
        .boolean("Nutritionist")
        .boolean("Case_Manager")
        .boolean("Driver")
        .boolean("Volunteer")
        .str("Password", 10)
        .str("Access_Level", 1)
        .str("User_ID", 12)
        .str("PreferredTab", 20)
        .str("DSort_Order", 15)
        .integer("Visible_Tabs")
        .integer("DTab")
        .str("Conserve_Resources", 1)
        .integer("Preferred_Delivery_Report")
        .integer("Preferred_Counseling_Report")
        .integer("Preferred_Alerts_Report")
        .integer("Preferred_Agency_Report")
        .boolean("Execute_OnOpen_Query")
        .boolean("Execute_OnClose_Query")
        .str("Prepare_Data_Prompt", 1)
        .str("Display_Prepared_Data", 1)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("Record_ID")
        .nocaseIndex("STAFF_NAME", "Staff_Name")
        .uniqueIndex("STAFF_ID", "Staff_ID")
        .nocaseIndex("USER_ID", "User_ID");
    return t;
}

// The conditions that an application for a service must meet.
TableDef serviceConditionsTable()
{
    TableDef t(QStringLiteral("ServiceConditions"));
    t.autoinc("RECORD_ID")
        .integer("SERVICE_ID")
        .integer("CONDITION_ID")
        .str("REQUIREMENT_LEVEL", 1)
        .integer("SORT_ORDER")
        .str("CREATED_BY", 25)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RECORD_ID")
        .index("SERVICE_ID", "SERVICE_ID");
    return t;
}

// The documents that an application for a service needs.
TableDef serviceDocsTable()
{
    TableDef t(QStringLiteral("ServiceDocs"));
    t.autoinc("RECORD_ID")
        .integer("SERVICE_ID")
        .integer("DOC_ID")
        .str("REQUIREMENT_LEVEL", 1)
        .integer("SORT_ORDER")
        .str("CREATED_BY", 25)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RECORD_ID")
        .index("SERVICE_ID", "SERVICE_ID");
    return t;
}

// Eligibility conditions.
TableDef conditionsTable()
{
    TableDef t(QStringLiteral("Conditions"));
    t.autoinc("Condition_ID")
        .str("Condition", 100)
        .str("Requirement_Level", 1)
        .str("Created_By", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("Condition_ID")
        .nocaseIndex("CONDITION", "Condition");
    return t;
}

// Intake documents.
TableDef docsTable()
{
    TableDef t(QStringLiteral("Docs"));
    t.autoinc("Doc_ID")
        .str("Doc_Name", 50)
        .str("Doc_Description", 100)
        .str("Requirement_Level", 1)
        .str("Created_By", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("Doc_ID")
        .nocaseIndex("DOC_NAME", "Doc_Name");
    return t;
}

// Things that can be delivered, with their meal category and counts.
TableDef itemsTable()
{
    TableDef t(QStringLiteral("Items"));
    t.autoinc("RecordID")
        .integer("ITEM_ID")
        .str("MEAL", 2)
        .integer("MEAL_SORT")
        .str("MEAL_ITEM", 40)
        .integer("ITEM_SORT")
        .str("CONFIRMATION_REQUIRED", 1)
        .boolean("FROZEN_ITM")
        .boolean("BULK_ITEM")
        .integer("NUMBER_MEALS")
        .integer("NUMBER_LABELS")
        .integer("NUMBER_BAGS")
        .currency("BILLED_AMOUNT")
        .boolean("ITEMIZE_DIETS")
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .uniqueIndex("ITEM_ID", "ITEM_ID")
        .nocaseIndex("MEAL", "MEAL")
        .nocaseIndex("MEAL_ITEM", "MEAL_ITEM");
    return t;
}

// Delivery routes and the distribution center each starts from.
TableDef routesTable()
{
    TableDef t(QStringLiteral("Routes"));
    t.autoinc("RecordID")
        .str("ROUTE_ID", 5)
        .str("ROUTE_DESC", 100)
        .str("ROUTE_TYPE", 2)
        .integer("DIST_CENTER_ID")
        .str("DIST_CENTER_CD", 10)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .uniqueIndex("ROUTE_ID", "ROUTE_ID")
        .index("DIST_CENTER_ID", "DIST_CENTER_ID")
        .index("DIST_CENTER_RTE", "DIST_CENTER_ID;ROUTE_ID")
        .index("DIST_CENTER_CD", "DIST_CENTER_CD");
    return t;
}

// Funding sources and how they reimburse.
TableDef fundsrcsTable()
{
    TableDef t(QStringLiteral("Fundsrcs"));
    t.autoinc("RecordID")
        .integer("FUND_ID")
        .str("FUND_CD", 3)
        .str("FUND_SRCE", 50)
        .str("BILLED_PARTY", 1)
        .str("REIMBURSEMENT_METHOD", 1)
        .currency("REIMBURSEMENT_RATE")
        .str("REIMBURSEMENT_PERIOD", 1)
        .str("BS1_CUSTOMERNO", 10)
        .str("ADDRESS1", 35)
        .str("ADDRESS2", 35)
        .str("CITY", 35)
        .str("STATE", 2)
        .str("ZIP", 10)
        .str("COUNTRY", 20)
        .str("CONTACT", 40)
        .str("PHONE", 20)
        .str("FAX", 20)
        .str("EMAIL", 65)
        .str("WEBPAGE", 30)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .index("FUND_ID", "FUND_ID")
        .nocaseIndex("FUND_SRCE", "FUND_SRCE")
        .uniqueIndex("FUND_CD", "FUND_CD")
        .index("BS1_CUSTOMERNO", "BS1_CUSTOMERNO")
        .index("BILLED_PARTY", "BILLED_PARTY");
    return t;
}

// Counseling locations, sites and distribution centers.
TableDef locatnsTable()
{
    TableDef t(QStringLiteral("Locatns"));
    t.autoinc("RECORD_ID")
        .integer("LOCATION_ID", true)
        .str("LOCATION_CD", 10)
        .boolean("COUNSELING_LOCATION")
        .boolean("DISTRIBUTION_CENTER")
        .str("LOCATION", 50)
        .str("LOCATION_ADDRESS", 50)
        .str("LOCATION_CITY", 25)
        .str("LOCATION_STATE", 2)
        .str("LOCATION_ZIP", 10)
        .str("LOCATION_PHONE", 18)
        .str("SITE_TYPE", 1)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RECORD_ID")
        .index("LOCATION_ID", "LOCATION_ID");
    return t;
}

// Race codes.
TableDef raceTable()
{
    TableDef t(QStringLiteral("Race"));
    t.autoinc("RecordID")
        .integer("RACE_ID")
        .str("RACE_CD", 1)
        .str("RACE_DESC", 20)
        .str("REPORTING_CODE", 1)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .uniqueNocaseIndex("RACE", "RACE_CD");
    return t;
}

// Marital statuses.
TableDef martstTable()
{
    TableDef t(QStringLiteral("Martst"));
    t.autoinc("RecordID")
        .str("MART_ID", 2)
        .str("MART_DESC", 25)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .uniqueNocaseIndex("MARTST", "MART_ID");
    return t;
}

// Postal codes with their city, state and county.
TableDef zipsTable()
{
    TableDef t(QStringLiteral("Zips"));
    t.autoinc("RecordID")
        .str("ZIP", 5)
        .str("CITY", 28)
        .str("ST", 2)
        .str("COUNTY", 15)
        .str("REGION", 25)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("RecordID")
        .uniqueIndex("ZIP", "ZIP")
        .nocaseIndex("CITY", "CITY");
    return t;
}

// Reasons for stopping a client's service.
TableDef stopReasonsTable()
{
    TableDef t(QStringLiteral("StopReasons"));
    t.autoinc("RecordID")
        .smallint("STOP_ID")
        .str("STOP_REASON", 30)
        .primary("RecordID")
        .uniqueIndex("STOP_ID", "STOP_ID");
    return t;
}

// Event codes, each belonging to a service.
TableDef eventCdsTable()
{
    TableDef t(QStringLiteral("EventCds"));
    t.autoinc("RECORD_ID")
        .integer("EVENT_ID", true)
        .str("EVENT_DESC", 40)
        .integer("SERVICE_ID", true)
        .str("SERVICE_DESC", 40)
        .integer("DEFAULT_HOURS")
        .integer("DEFAULT_SESSIONS")
        .primary("RECORD_ID")
        .uniqueIndex("Event_ID", "EVENT_ID")
        .nocaseIndex("Event_Desc", "EVENT_DESC")
        .index("Service_Event", "SERVICE_ID;EVENT_ID")
        .index("SERVICE_ID", "SERVICE_ID");
    return t;
}

// Case-management event types (USAGE "E") and contact methods (USAGE "C").
TableDef caseManagementChoicesTable()
{
    TableDef t(QStringLiteral("Case_Management_Choices"));
    t.autoinc("RecordID")
        .str("CONTACT_CD", 1)
        .str("CONTACT_DESC", 25)
        .str("USAGE", 1)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("RecordID")
        .index("CONTACT_CD", "CONTACT_CD");
    return t;
}

// Diseases that can be recorded for a client.
TableDef diseasesTable()
{
    TableDef t(QStringLiteral("Diseases"));
    t.integer("Disease_ID")
        .str("Disease", 100)
        .date("Create_Date")
        .datetime("Last_Updated")
        .index("DISEASE", "Disease");
    return t;
}

// Cuisines a client can be served.
TableDef cuisinesTable()
{
    TableDef t(QStringLiteral("Cuisines"));
    t.integer("Cuisine_ID").str("Cuisine", 50).date("Date_Created").datetime("Last_Updated");
    return t;
}

// Cold bag codes; Record_ID is the bag's id.
TableDef coldBagCodesTable()
{
    TableDef t(QStringLiteral("Cold_Bag_Codes"));
    t.autoinc("Record_ID").str("Bag_Code", 25).primary("Record_ID");
    return t;
}

// Which cold bag a whole diet mask takes.
TableDef coldBagUsageTable()
{
    TableDef t(QStringLiteral("Cold_Bag_Usage"));
    t.autoinc("Record_ID")
        .integer("Diet_Restr")
        .integer("Bag_ID")
        .primary("Record_ID")
        .index("DIET_RESTR", "Diet_Restr");
    return t;
}

// Choices of the drop-down answers in the assessment and screening screens.
TableDef customLookupChoicesTable()
{
    TableDef t(QStringLiteral("Custom_Lookup_Choices"));
    t.str("Dialogue", 25, true)
        .str("Field_Name", 50, true)
        .str("Field_Code", 25, true)
        .str("Field_Choice", 100, true)
        .nocaseIndex("DIALOGUE_FIELD", "Dialogue;Field_Name");
    return t;
}

// Stored SQL statements, run by name or loaded by a user.
TableDef queriesTable()
{
    TableDef t(QStringLiteral("Queries"));
    t.str("QUERY_NAME", 50, true);
    t.add({QStringLiteral("QUERY_LINES"), FieldType::Memo, 0, true});
    t.index("QUERY_NAME", "QUERY_NAME");
    return t;
}

} // namespace

void declareReferenceTables(Catalogue& catalogue)
{
    catalogue.add(dietTable());
    catalogue.add(servicesTable());
    catalogue.add(staffTable());
    catalogue.add(serviceConditionsTable());
    catalogue.add(serviceDocsTable());
    catalogue.add(conditionsTable());
    catalogue.add(docsTable());
    catalogue.add(itemsTable());
    catalogue.add(routesTable());
    catalogue.add(fundsrcsTable());
    catalogue.add(locatnsTable());
    catalogue.add(raceTable());
    catalogue.add(martstTable());
    catalogue.add(zipsTable());
    catalogue.add(stopReasonsTable());
    catalogue.add(eventCdsTable());
    catalogue.add(caseManagementChoicesTable());
    catalogue.add(diseasesTable());
    catalogue.add(cuisinesTable());
    catalogue.add(coldBagCodesTable());
    catalogue.add(coldBagUsageTable());
    catalogue.add(customLookupChoicesTable());
    catalogue.add(queriesTable());
}

} // namespace kb
