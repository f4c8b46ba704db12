// The one-row tables: the agency's settings and the number counters.

#include "catalogue/Catalogue.h"

namespace kb {

namespace {

// The agency's settings, one row shared by all workstations. Grouped as the
// configuration screen shows them.
TableDef configTable()
{
    TableDef t(QStringLiteral("Config"));
    t.autoinc("RecordID");

    // Organization.
    t.str("ORGANIZATN", 50)
        .str("ORG_REPORT_NAME", 50)
        .str("ORG_ADDR", 50)
        .str("ORG_CITY", 25)
        .str("ORG_STATE", 2)
        .str("ORG_ZIP", 10)
        .str("ORG_PHONE", 15);

    // Application defaults.
    t.str("DSORT_ORDER", 15)
        .str("MAPPING", 1)
        .str("MAPPING_URL", 250)
        // The address of a geocoding service that answers as Nominatim
        // does; empty keeps address lookups to the agency's own addresses.
        .str("GEOCODER_URL", 250)
        .smallint("TRUNCATE_CROSSTABS")
        .smallint("TRUNCATE_CHECKLISTS")
        .str("INCOME_CATEGORIES", 2)
        .str("POSTAL_FORMAT", 3)
        .str("ALLOW_NOTES_EDITING", 1)
        .boolean("ENABLE_ALTERNATE_ADDRESSES")
        .str("FIRST_SERVICE_DATE_METHOD", 1)
        .memo("VISIBLE_COMPONENTS");

    // User-defined fields and their captions.
    t.str("USER_LABEL_1", 25)
        .str("USER_LABEL_2", 25)
        .str("USER_LABEL_3", 25)
        .memo("USERDEF3")
        .str("ETHNICITY_LABEL", 25);
    for (int n = 1; n <= 5; ++n)
        t.str(QStringLiteral("USER_DEFINED_REPORT%1_LABEL").arg(n, 2, 10, QLatin1Char('0')), 35);
    t.str("APP_USER_LABEL_1", 25)
        .memo("APPUSERDEF2")
        .str("APP_USER_LABEL_3", 25)
        .str("USER_LABEL_4", 50)
        .str("USER_LABEL_5", 25)
        .str("AWARE_LABEL", 30)
        .str("AWARE_SHORT_LABEL", 6);

    // Meal deliveries.
    t.integer("DSERVICE").integer("DDIET").str("DCITY", 18).str("DSTATE", 2).str("DZIP", 10);
    // The organization's service days.
    for (const char* day : {"DMON", "DTUE", "DWED", "DTHU", "DFRI", "DSAT", "DSUN"})
        t.boolean(QString::fromLatin1(day));
    t.integer("MAXDIETMOD")
        .str("STD_DIET_LABEL", 15)
        .str("DELIV_DEFAULT_FONT_NAME", 25)
        .integer("DELIV_DEFAULT_FONT_SIZE")
        .memo("DELIV_DEFAULT_FONT_DEMO")
        .memo("ADDR_OVERRIDE_DESC")
        .integer("LINE_ITEM_RETENTION")
        .boolean("POST_DELIVERIES_TO_EVENTS")
        .integer("ADVANCE_PREP_DAYS")
        .str("NO_DELIVERY_LABEL", 25)
        .boolean("INCLUDE_ALL_ACTIVE_CLIENTS")
        .boolean("SUSPEND_SCHEDULED_DELIVERIES")
        .boolean("CONSOLIDATE_DELIVERIES")
        .memo("DELIVERY_WINDOW_ENTRIES")
        .boolean("DELIV_REPORT_SHOW_SPEC_LABELS");
    // The five special meals: names and abbreviations.
    for (int n = 1; n <= 5; ++n)
        t.str(QStringLiteral("SPECIAL%1_LABEL").arg(n), n <= 3 ? 15 : 10);
    for (int n = 1; n <= 5; ++n)
        t.str(QStringLiteral("SPECIAL%1_ABBREV").arg(n), 2);
    t.boolean("SPECIAL_MEALS_ACTION_VISIBLE")
        .str("DELIV_REPORT_SHOW_ITEMS", 1)
        .integer("MEALS_LINE_ITEMS")
        .str("DELIV_REPORT_SHOW_COUNTS", 1)
        .boolean("DELIV_REPORT_SHOW_BARCODES")
        .memo("DELIV_REPORT_MSG_TOP")
        .memo("DELIV_REPORT_MSG_BOT");

    // Nutritional counseling.
    t.integer("DCOUNSELINGSVC").integer("DCOUNSELINGEVENT").memo("ASSESSMENT_VISIBLE_FIELDS");

    // Client services.
    t.integer("RECERT_WKS")
        .smallint("STOPPED2INACTIVE_DAYS")
        .memo("RELATIONSHIP_LIST")
        .memo("INCOME_LIST")
        .memo("APP_DENIAL_REASONS")
        .str("FUNDING_CONFIGURATION", 1)
        .memo("NOTE_CATEGORIES_LIST")
        .boolean("ALLOW_BYPASSING_CONTRACT_DATES")
        .str("COMPLETED_STATE", 1)
        .str("MEETS_CONDITIONS_STATE", 1)
        .memo("DOCUMENT_STATUS_ENTRIES")
        .memo("CONDITION_STATUS_ENTRIES");

    // Case management and screening follow-ups.
    t.str("CASE_MGT_DEFAULT_EVENT", 1)
        .str("CASE_MGT_DEFAULT_CONT_METHOD", 1)
        .flt("CASE_MGT_DEFAULT_LENGTH")
        .memo("CASE_MGT_REFERRALS_FROM")
        .memo("CASE_MGT_REFERRALS_TO")
        .memo("ADL_VISIBLE_FIELDS")
        .str("NSI_ADL_DEFAULT_TAB", 1)
        .str("NSI_SCORE_FIELDNAME", 25)
        .str("NSI_SCORE_COMPARISON_OPERATOR", 2)
        .integer("NSI_SCORE_VALUE")
        .integer("NSI_FOLLOWUP_DAYS");

    t.datetime("LAST_UPDATED");

    // Older settings that are kept in the row but no longer used.
    t.str("DIET_TYPE", 1)
        .str("PASSWORD", 10)
        .boolean("DMENUMOD")
        .boolean("DSUSPEND")
        .boolean("EXCEL")
        .memo("USERDEF1")
        .memo("USERDEF2")
        .boolean("USERDEF1_VISIBLE")
        .boolean("USERDEF2_VISIBLE")
        .boolean("USERDEF3_VISIBLE")
        .boolean("USERDEF4_VISIBLE")
        .str("ASSESS_LEVEL", 1)
        .memo("APPUSERDEF1")
        .boolean("APPUSERDEF1_VISIBLE")
        .boolean("APPUSERDEF2_VISIBLE")
        .memo("CASE_MGT_VISIBLE_FIELDS")
        .boolean("ONE_FUNDING_SOURCE")
        .boolean("HIV_STATUS_VISIBLE")
        .boolean("PREFERENCES_VISIBLE")
        .boolean("CUISINE_VISIBLE")
        .boolean("COLD_BAG_VISIBLE")
        .integer("DCYCLE_WEEKS")
        .boolean("CREATE_MENU_TEMPLATES");

    t.primary("RecordID");
    return t;
}

// The number counters, one row; each column holds the last number handed out.
TableDef idnosTable()
{
    TableDef t(QStringLiteral("IDNOS"));
    t.autoinc("RecordID")
        .integer("FUND_ID")
        .integer("PERSON_ID")
        .integer("CLIENT_ID")
        .integer("DIET_ID")
        .integer("ITEM_ID")
        .integer("SERV_ID")
        .integer("ORNT_ID")
        .integer("DELIV_ID")
        .integer("Suspension_Group_ID")
        .integer("NSI_ADL_IADL_ID")
        .primary("RecordID");
    return t;
}

} // namespace

void declareConfigTables(Catalogue& catalogue)
{
    catalogue.add(configTable());
    catalogue.add(idnosTable());
}

} // namespace kb
