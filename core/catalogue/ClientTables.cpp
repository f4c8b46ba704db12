// The tables about persons: clients and the people, households, addresses,
// pop-ups and diseases that hang on them.

#include "catalogue/Catalogue.h"

namespace kb {

namespace {

// One row per person, client or not. Every per-person table joins on PERSON_ID.
TableDef clientsTable()
{
    TableDef t(QStringLiteral("Clients"));
    t.autoinc("RecordID")
        .integer("PERSON_ID")
        .str("CLIENT_ID", 7)
        .str("LAST_NAME", 25)
        .str("FIRST_NAME", 15)
        .str("MID_NAME", 15)
        .str("ORG_CLIENT", 1)
        .str("SEX", 1)
        .date("DOB")
        .str("RACE", 1)
        .str("ETHNICITY", 1)
        .str("MARITAL_ST", 2)
        .str("HEIGHT", 6)
        .integer("CHILD_NBR")
        .integer("CHILD_RECV")
        .integer("NUMBER_IN_HOUSEHOLD")
        .str("DEPENDENT", 1)
        .str("HOUSE_NO", 6)
        .str("ADDRESS1", 35)
        .str("ADDRESS2", 30)
        .str("CITY", 18)
        .str("STATE", 2)
        .str("ZIP", 10)
        .str("COUNTY", 25)
        .flt("LATITUDE")
        .flt("LONGITUDE")
        .memo("DIRECTIONS")
        .str("CROSS_STREET", 25)
        .date("INTAKE_DTE")
        .date("FIRST_CNSL_DTE")
        .date("FIRST_ML_DTE")
        .date("START_DTE")
        .date("STOP_DTE")
        .date("INACTIVE_D")
        .date("RECERT_DTE")
        .date("CONTRACTUAL_START_DTE")
        .date("CONTRACTUAL_STOP_DTE")
        .boolean("SUSPENDED")
        .str("STATUS", 1)
        .str("DELIVERY_TYPE", 1)
        .str("ONGOING_FREQUENCY", 1);
    // The weekdays on which the client receives delivery.
    for (const char* day : {"MONDAY", "TUESDAY", "WEDNESDAY", "THURSDAY", "FRIDAY", "SATURDAY", "SUNDAY"})
        t.boolean(QString::fromLatin1(day));
    t.integer("SVCS_USED")
        .integer("CNSLG_SVCS")
        .integer("DIET_RESTR")
        .str("DIET_DESC", 40)
        .integer("COLD_BAG_ID")
        .integer("CUISINE_ID")
        .memo("PREFERENCES")
        .smallint("STOP_CODE")
        .str("STOP_REASON", 40);
    // Per-weekday route and stop; empty means the default route and stop.
    static const char* const dayCodes[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};
    for (const char* day : dayCodes)
        t.str(QString::fromLatin1(day) + QStringLiteral("_RTE"), 5);
    t.str("DEF_RTE", 5);
    for (const char* day : dayCodes)
        t.flt(QString::fromLatin1(day) + QStringLiteral("_STOP"));
    t.flt("DEF_STOP")
        .str("DELIVERY_WINDOW_START", 10)
        .str("DELIVERY_WINDOW_END", 10)
        .str("PHONE", 19)
        .str("PHONE_DESC", 1)
        .str("EMAIL", 65)
        .str("OPHONE", 19)
        .str("ODESC", 14)
        .str("SOCIAL_SECURITY_NUMBER", 11)
        .str("URN", 25)
        .str("HIV_STATUS", 1)
        .str("USER_DEF1", 25)
        .str("USER_DEF2", 25)
        .integer("USER_DEF3")
        .str("USER_DEF3_DESC", 25)
        .str("USER_DEF4", 1)
        .str("USER_DEF5", 25)
        .str("INCOME_CATEGORY", 1)
        .currency("INCOME_MONTH")
        .integer("INCOME_SOURCES")
        .str("INCOME_DESC", 25)
        .str("HOUSING_ARRANGEMENT", 25)
        .str("LANGUAGE", 1)
        .smallint("IDEAL_WEIGHT")
        .smallint("USUAL_WEIGHT")
        .str("OTHER_DISEASE", 50)
        .smallint("PRIMARY_CONTACT")
        .str("ILLITERATE", 1)
        .str("MENTAL_HLTH_DX", 50)
        .str("OTHER_INFO_DESC", 25)
        .boolean("CUSTOM_DEL")
        .smallint("MISSED_DELIVERIES")
        .smallint("EXCUSED_DELIVERIES")
        .integer("HOUSEHOLD_ID")
        .str("FRAME_SIZE", 1)
        .currency("PLEDGE_AMOUNT")
        .str("PLEDGE_PERIOD", 2)
        .str("PLEDGE_METHOD", 1)
        .date("PLEDGE_UPDATE")
        .str("PLEDGE_UPDATED_BY", 25)
        .str("BILLING", 1)
        .str("BILLTO", 1)
        .str("HANDICAPPED", 1)
        .str("RURAL", 1)
        .str("INSURANCE_CARRIER", 35)
        .str("INSURANCE_ID_NUMBER", 35)
        .str("CC_NUMBER", 20)
        .str("CC_EXPIRATION", 5)
        .str("CC_SECURITY", 5)
        .str("CC_CARDHOLDER", 40)
        .date("ADD_DTE")
        .date("EDIT_DTE");

    t.primary("RecordID")
        .index("PERSON_ID", "PERSON_ID")
        .index("CLIENT_ID", "CLIENT_ID")
        .index("PHONE", "PHONE")
        .index("DEF_RTE", "DEF_RTE")
        .nocaseIndex("FIRST_LAST", "FIRST_NAME;LAST_NAME")
        .nocaseIndex("LAST_FIRST", "LAST_NAME;FIRST_NAME")
        .index("ZIP", "ZIP")
        .nocaseIndex("STATUS", "STATUS")
        .index("HOUSEHOLD_ID", "HOUSEHOLD_ID")
        .index("PLEDGE_PERIOD", "PLEDGE_PERIOD;BILLING")
        .index("DEF_RTE_DEF_STOP", "DEF_RTE;DEF_STOP")
        .index("SOCIAL_SECURITY_NUMBER", "SOCIAL_SECURITY_NUMBER")
        .index("SVCS_USED", "SVCS_USED")
        .nocaseIndex("ADDRESS", "ADDRESS1")
        .nocaseIndex("URN", "URN")
        .nocaseIndex("USER_DEFINED4", "USER_DEF4");
    return t;
}

// Households: clients who live together.
TableDef householdsTable()
{
    TableDef t(QStringLiteral("Households"));
    t.autoinc("Household_ID")
        .str("Household_Name", 50)
        .str("User", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("Household_ID");
    return t;
}

// The members of each household and their roles.
TableDef householdMembersTable()
{
    TableDef t(QStringLiteral("Household_Members"));
    t.autoinc("RecordID")
        .integer("Household_ID")
        .integer("Person_ID")
        .str("Role", 50)
        .boolean("Head_of_Household")
        .str("User", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("RecordID")
        .index("HOUSEHOLD_ID", "Household_ID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// Outside people (relatives, doctors, payers) who are not clients.
TableDef individualsTable()
{
    TableDef t(QStringLiteral("Individuals"));
    t.autoinc("INDIV_ID")
        .str("FIRST_NAME", 20)
        .str("LAST_NAME", 20)
        .str("SALUTATION", 25)
        .str("ORGANIZATION", 40)
        .str("ADDRESS1", 50)
        .str("ADDRESS2", 50)
        .str("CITY", 25)
        .str("STATE", 2)
        .str("ZIP", 10)
        .str("PHONE1_DESC", 20)
        .str("PHONE2_DESC", 20)
        .str("PHONE1", 19)
        .str("PHONE2", 19)
        .str("EMAIL", 65)
        .str("MISC_INFO", 75)
        .str("USER", 20)
        .date("CREATE_DATE")
        .datetime("LAST_UPDATED")
        .primary("INDIV_ID")
        .nocaseIndex("LAST_FIRST", "LAST_NAME;FIRST_NAME")
        .nocaseIndex("FIRST_LAST", "FIRST_NAME;LAST_NAME")
        .nocaseIndex("ORGANIZATION", "ORGANIZATION")
        .index("PHONE", "PHONE1")
        .index("INDIV_ID", "INDIV_ID");
    return t;
}

// How an individual is related to a client ("Bill-To" names the bill receiver).
TableDef relationshipsTable()
{
    TableDef t(QStringLiteral("Relationships"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .integer("Indiv_ID")
        .str("Relationship", 50)
        .blob("Note")
        .boolean("HIV_Aware")
        .boolean("Referrer")
        .boolean("Emergency_Contact")
        .str("User", 25)
        .date("Create_Date")
        .date("Last_Updated")
        .index("PERSON_ID", "Person_ID")
        .index("INDIV_ID", "Indiv_ID");
    return t;
}

// Alternate delivery and mailing addresses of a client.
TableDef addressOverridesTable()
{
    TableDef t(QStringLiteral("Address_Overrides"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .str("Client_ID", 7)
        .str("Override_Type", 1)
        .str("DOW", 3)
        .date("Effective_Date")
        .date("Expire_Date")
        .date("Deliv_Date")
        .str("Addr_Desc", 50)
        .str("Address1", 35)
        .str("Address2", 30)
        .str("City", 18)
        .str("State", 2)
        .str("ZIP", 10)
        .str("Phone", 19)
        .str("Phone_Desc", 1)
        .str("Route", 5)
        .flt("Stop")
        .memo("Directions")
        .str("Created_By", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .primary("RecordID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// The pop-up text shown beside a client's record.
TableDef alertsTable()
{
    TableDef t(QStringLiteral("Alerts"));
    t.integer("Person_ID")
        .boolean("Client_PopUp")
        .memo("Note")
        .str("User", 25)
        .date("Create_Date")
        .datetime("Last_Update")
        .index("PERSON_ID", "Person_ID");
    return t;
}

// A client's diseases, ranked; rank 1 is the primary disease.
TableDef clientDiseasesTable()
{
    TableDef t(QStringLiteral("Client_Diseases"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .integer("Disease_ID")
        .date("Diagonosis_Date")
        .str("Secondary_Conditions", 100)
        .boolean("User_Boolean")
        .str("Comments", 100)
        .integer("Sort_Order")
        .str("User", 25)
        .date("Create_Date")
        .datetime("Last_Updated")
        .index("PERSON_ID", "Person_ID")
        .index("DISEASE_ID", "Disease_ID");
    return t;
}

} // namespace

void declareClientTables(Catalogue& catalogue)
{
    catalogue.add(clientsTable());
    catalogue.add(householdsTable());
    catalogue.add(householdMembersTable());
    catalogue.add(individualsTable());
    catalogue.add(relationshipsTable());
    catalogue.add(addressOverridesTable());
    catalogue.add(alertsTable());
    catalogue.add(clientDiseasesTable());
}

} // namespace kb
