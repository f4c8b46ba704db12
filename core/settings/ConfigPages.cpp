#include "settings/ConfigPages.h"

#include "catalogue/Catalogue.h"

namespace kb {

namespace {

using Codes = std::initializer_list<std::pair<const char*, const char*>>;

QList<Choice> codes(Codes list)
{
    QList<Choice> choices;
    for (const auto& [code, text] : list)
        choices.append(Choice{QString::fromLatin1(code), QString::fromLatin1(text)});
    return choices;
}

int widthOf(const QString& column)
{
    const TableDef* def = Catalogue::standard().table(u"Config");
    const ColumnDef* c = def ? def->column(column) : nullptr;
    return c ? c->width : 0;
}

ConfigField field(const char* column, const char* label, ConfigEditor editor = ConfigEditor::Text)
{
    const QString name = QString::fromLatin1(column);
    return ConfigField{name, QString::fromUtf8(label), editor, widthOf(name), {}, {}};
}

ConfigField choice(const char* column, const char* label, Codes list)
{
    ConfigField f = field(column, label, ConfigEditor::Choice);
    f.choices = codes(list);
    return f;
}

ConfigField lookup(const char* column, const char* label, const char* statement)
{
    ConfigField f = field(column, label, ConfigEditor::Lookup);
    f.lookup = QString::fromLatin1(statement);
    return f;
}

QList<ConfigPage> buildPages()
{
    QList<ConfigPage> pages;
    pages.append(
        {QStringLiteral("Organization Defaults"),
         {field("ORGANIZATN", "Organization Name:"), field("ORG_REPORT_NAME", "Name on Delivery Reports:"),
          field("ORG_ADDR", "Address:"), field("ORG_CITY", "City:"), field("ORG_STATE", "State:"),
          field("ORG_ZIP", "Postal Code:"), field("ORG_PHONE", "Phone:")}});

    pages.append(
        {QStringLiteral("Application Defaults"),
         {field("DSORT_ORDER", "Default Client Sort Order:", ConfigEditor::ClientIndex),
          choice("MAPPING", "Enable Mapping via",
                 {{"", "None"}, {"M", "MapPoint"}, {"Q", "MapQuest/other web service"}}),
          field("MAPPING_URL", "Mapping URL:"),
          field("TRUNCATE_CROSSTABS", "Truncate CrossTab Labels at", ConfigEditor::Integer),
          field("TRUNCATE_CHECKLISTS", "Truncate Checklist Labels at", ConfigEditor::Integer),
          choice("INCOME_CATEGORIES", "Income Categories:",
                 {{"LH", "Low/Medium/High"}, {"AB", "Above/Below"}, {"RA", "Ranges 1-10"}}),
          choice(
              "POSTAL_FORMAT", "Postal Format:",
              {{"USA", "United States"}, {"CAN", "Canada"}, {"UK", "United Kingdom"}, {"OTH", "All Others"}}),
          field("ALLOW_NOTES_EDITING", "Allow Re-Editing of Client Notes", ConfigEditor::YesNoCheck),
          field("ENABLE_ALTERNATE_ADDRESSES", "Allow Alternate Addresses", ConfigEditor::Check),
          choice("FIRST_SERVICE_DATE_METHOD", "First Service Date:",
                 {{"C", "Combined in one First Service Date"}, {"S", "Separate First Counseling Date"}})}});

    pages.append({QStringLiteral("User-Defined Fields"),
                  {field("USER_LABEL_1", "Caption of User-Defined Field 1:"),
                   field("USER_LABEL_2", "Caption of User-Defined Field 2:"),
                   field("USER_LABEL_3", "Caption of the Biographic Checklist:"),
                   field("USERDEF3", "Biographic Checklist Entries:", ConfigEditor::ListMemo),
                   field("ETHNICITY_LABEL", "Caption of the Ethnicity Check Box:"),
                   field("USER_DEFINED_REPORT01_LABEL", "User Report 1 Caption:"),
                   field("USER_DEFINED_REPORT02_LABEL", "User Report 2 Caption:"),
                   field("USER_DEFINED_REPORT03_LABEL", "User Report 3 Caption:"),
                   field("USER_DEFINED_REPORT04_LABEL", "User Report 4 Caption:"),
                   field("USER_DEFINED_REPORT05_LABEL", "User Report 5 Caption:"),
                   field("APP_USER_LABEL_1", "Caption of Application User Field 1:"),
                   field("APPUSERDEF2", "Application Checklist Entries:", ConfigEditor::ListMemo),
                   field("APP_USER_LABEL_3", "Caption of Application User Field 3:"),
                   field("USER_LABEL_4", "Caption of the Health Check Box:"),
                   field("USER_LABEL_5", "Caption of User-Defined Field 5:"),
                   field("AWARE_LABEL", "Relationship Aware Label:"),
                   field("AWARE_SHORT_LABEL", "Short Aware Label:")}});

    ConfigPage meals{
        QStringLiteral("Meal Deliveries"),
        {lookup("DSERVICE",
                "Default Service:", "Select SERVICE_ID, SERVICE_DESC from Services order by SERVICE_DESC"),
         lookup("DDIET", "Default Diet:", "Select DIET_ID, DIET_DESC from Diet order by DIET_ID"),
         field("DCITY", "Default City:"), field("DSTATE", "Default State:"),
         field("DZIP", "Default Postal Code:")}};
    for (const auto& [column, label] :
         std::initializer_list<std::pair<const char*, const char*>>{{"DMON", "Monday"},
                                                                    {"DTUE", "Tuesday"},
                                                                    {"DWED", "Wednesday"},
                                                                    {"DTHU", "Thursday"},
                                                                    {"DFRI", "Friday"},
                                                                    {"DSAT", "Saturday"},
                                                                    {"DSUN", "Sunday"}})
        meals.fields.append(field(column, label, ConfigEditor::Check));
    meals.fields += {
        field("MAXDIETMOD", "Maximum Diet Modifications Allowed", ConfigEditor::Integer),
        field("STD_DIET_LABEL", "Standard Diet Label:"),
        field("DELIV_DEFAULT_FONT_NAME", "Delivery Directions Font:"),
        field("DELIV_DEFAULT_FONT_SIZE", "Font Size:", ConfigEditor::Integer),
        field("DELIV_DEFAULT_FONT_DEMO", "Font Sample Text:", ConfigEditor::Memo),
        field("ADDR_OVERRIDE_DESC", "Alternate Address Descriptions:", ConfigEditor::Memo),
        field("LINE_ITEM_RETENTION", "Months to retain delivery line items", ConfigEditor::Integer),
        field("POST_DELIVERIES_TO_EVENTS", "Post Saved Deliveries to Events", ConfigEditor::Check),
        field("ADVANCE_PREP_DAYS", "Delivery Advance Preparation Days", ConfigEditor::Integer),
        field("NO_DELIVERY_LABEL", "Label for client's not receiving a delivery:"),
        field("INCLUDE_ALL_ACTIVE_CLIENTS", "Include All Active Clients On Route Sheets",
              ConfigEditor::Check),
        field("SUSPEND_SCHEDULED_DELIVERIES", "Suspensions suppress Scheduled Deliveries",
              ConfigEditor::Check),
        field("CONSOLIDATE_DELIVERIES", "Consolidate a Client's Deliveries on One Date", ConfigEditor::Check),
        field("DELIVERY_WINDOW_ENTRIES", "Delivery Window Choices:", ConfigEditor::Memo),
        field("DELIV_REPORT_SHOW_SPEC_LABELS", "Flag Special Meals", ConfigEditor::Check)};
    for (int n = 1; n <= 5; ++n) {
        meals.fields.append(ConfigField{specialLabelColumn(n),
                                        QStringLiteral("Special Meal %1 Name:").arg(n),
                                        ConfigEditor::Text,
                                        widthOf(specialLabelColumn(n)),
                                        {},
                                        {}});
        meals.fields.append(ConfigField{specialAbbrevColumn(n),
                                        QStringLiteral("Special Meal %1 Abbreviation:").arg(n),
                                        ConfigEditor::Text,
                                        widthOf(specialAbbrevColumn(n)),
                                        {},
                                        {}});
    }
    meals.fields +=
        {field("SPECIAL_MEALS_ACTION_VISIBLE", "Special Meals Action is Visible", ConfigEditor::Check),
         choice("DELIV_REPORT_SHOW_ITEMS", "Include Line Items",
                {{"A", "All Delivery Line Items"},
                 {"I", "Modifications from the Default Items"},
                 {"D", "All Diet Modifications"},
                 {"M", "Selected Meals"},
                 {"N", "No Delivery Line Items"}}),
         choice("DELIV_REPORT_SHOW_COUNTS", "Include Counts at",
                {{"", "No counts"}, {"T", "Top"}, {"B", "Bottom"}}),
         field("DELIV_REPORT_SHOW_BARCODES", "Include Bar Codes", ConfigEditor::Check)};
    pages.append(meals);

    pages.append(
        {QStringLiteral("Nutritional Counseling"),
         {lookup(
              "DCOUNSELINGSVC", "Default Counseling Service:",
              "Select SERVICE_ID, SERVICE_DESC from Services where SERVICE_TYPE = 'C' order by SERVICE_DESC"),
          lookup("DCOUNSELINGEVENT", "Default Counseling Event:",
                 "Select EVENT_ID, EVENT_DESC from EventCds order by EVENT_DESC")}});

    pages.append(
        {QStringLiteral("Client Services"),
         {field("RECERT_WKS", "Weeks Until Recertification", ConfigEditor::Integer),
          field("STOPPED2INACTIVE_DAYS", "Days Stopped to Become Inactive", ConfigEditor::Integer),
          field("RELATIONSHIP_LIST", "Relationship Choices:", ConfigEditor::Memo),
          field("INCOME_LIST", "Income Sources:", ConfigEditor::ListMemo),
          field("APP_DENIAL_REASONS", "Application Denial Reasons:", ConfigEditor::ListMemo),
          choice("FUNDING_CONFIGURATION", "Funding Configuration:",
                 {{"1", "Funding Sources default, Pledged visible"},
                  {"2", "Funding Sources default, Pledged invisible"},
                  {"3", "Pledged Amount default, Funding visible"},
                  {"4", "Pledged Amount default, Funding invisible"}}),
          field("NOTE_CATEGORIES_LIST", "Note Categories:", ConfigEditor::Memo),
          field("ALLOW_BYPASSING_CONTRACT_DATES", "Allow Bypassing Contract Dates", ConfigEditor::Check),
          choice("COMPLETED_STATE", "Document Completed Check Box:",
                 {{"2", "Checked/Unchecked"}, {"3", "Checked/Unchecked/Unknown"}}),
          choice("MEETS_CONDITIONS_STATE", "Meets Conditions Check Box:",
                 {{"2", "Checked/Unchecked"}, {"3", "Checked/Unchecked/Unknown"}}),
          field("DOCUMENT_STATUS_ENTRIES", "Document Status Choices:", ConfigEditor::Memo),
          field("CONDITION_STATUS_ENTRIES", "Condition Status Choices:", ConfigEditor::Memo)}});

    pages.append({QStringLiteral("Case Management"),
                  {lookup("CASE_MGT_DEFAULT_EVENT", "Default Event Type:",
                          "Select CONTACT_CD, CONTACT_DESC from Case_Management_Choices where USAGE = 'E' "
                          "order by CONTACT_CD"),
                   lookup("CASE_MGT_DEFAULT_CONT_METHOD", "Default Contact Method:",
                          "Select CONTACT_CD, CONTACT_DESC from Case_Management_Choices where USAGE = 'C' "
                          "order by CONTACT_CD"),
                   field("CASE_MGT_DEFAULT_LENGTH", "Default Session Length (hours):", ConfigEditor::Float),
                   field("CASE_MGT_REFERRALS_FROM", "Referrals From:", ConfigEditor::Memo),
                   field("CASE_MGT_REFERRALS_TO", "Referrals To:", ConfigEditor::Memo),
                   choice("NSI_ADL_DEFAULT_TAB", "First Page of the Screening:",
                          {{"0", "Demographics"}, {"1", "NSI"}, {"2", "ADL"}, {"3", "IADL"}}),
                   choice("NSI_SCORE_FIELDNAME", "Score that Triggers a Follow-Up:",
                          {{"", "No Follow-Up Generated"},
                           {"FOOTDemographics_Score", "FOOTDemographics_Score"},
                           {"FOOTNSI_Score", "FOOTNSI_Score"},
                           {"FOOTADL_Score", "FOOTADL_Score"},
                           {"FOOTIADL_Score", "FOOTIADL_Score"},
                           {"FOOTMinority_Score", "FOOTMinority_Score"},
                           {"FOOTImpoverished_Score", "FOOTImpoverished_Score"},
                           {"FOOTFrail_Score", "FOOTFrail_Score"},
                           {"FOOTVulnerable_Score", "FOOTVulnerable_Score"},
                           {"FOOTTotal_Score", "FOOTTotal_Score"}}),
                   choice("NSI_SCORE_COMPARISON_OPERATOR", "Comparison:", {{">=", ">="}, {"<=", "<="}}),
                   field("NSI_SCORE_VALUE", "Score Value:", ConfigEditor::Integer),
                   field("NSI_FOLLOWUP_DAYS", "Days Until the Follow-Up:", ConfigEditor::Integer)}});
    return pages;
}

} // namespace

QString specialLabelColumn(int n)
{
    return QStringLiteral("SPECIAL%1_LABEL").arg(n);
}
QString specialAbbrevColumn(int n)
{
    return QStringLiteral("SPECIAL%1_ABBREV").arg(n);
}

const QList<ConfigPage>& configPages()
{
    static const QList<ConfigPage> pages = buildPages();
    return pages;
}

const ConfigField* configField(const QString& column)
{
    for (const ConfigPage& page : configPages())
        for (const ConfigField& f : page.fields)
            if (f.column.compare(column, Qt::CaseInsensitive) == 0) return &f;
    return nullptr;
}

const QStringList& mealLineItemNames()
{
    static const QStringList names = {QStringLiteral("Breakfast"),
                                      QStringLiteral("Lunch"),
                                      QStringLiteral("Dinner"),
                                      QStringLiteral("Snack"),
                                      QStringLiteral("Other"),
                                      QStringLiteral("Medical Food"),
                                      QStringLiteral("Specialized Medical Food")};
    return names;
}

} // namespace kb
