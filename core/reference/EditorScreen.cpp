#include "reference/EditorScreen.h"

namespace kb {

namespace {

QStringList fields(std::initializer_list<const char*> names)
{
    QStringList list;
    for (const char* name : names)
        list.append(QString::fromLatin1(name));
    return list;
}

EditorScreen screen(const char* form, const char* table, const char* caption, const char* menuText,
                    QStringList browse, const char* indexName = "", const char* usage = "",
                    const char* orderBy = "")
{
    return EditorScreen{QString::fromLatin1(form),    QString::fromLatin1(table),
                        QString::fromLatin1(caption), QString::fromLatin1(menuText),
                        QString::fromLatin1(usage),   QString::fromLatin1(indexName),
                        QString::fromLatin1(orderBy), std::move(browse)};
}

} // namespace

const std::vector<EditorScreen>& referenceEditorScreens()
{
    static const std::vector<EditorScreen> screens = {
        screen("TFormEditDietMods", "Diet", "Edit Diet Codes", "Diet Modifications",
               fields({"DIET_ID", "DIET_CODE", "DIET_DESC"}), "DIET_ID"),
        screen("TFormEditServices", "Services", "Services Maintenance", "Services",
               fields({"SERVICE_ID", "SERVICE_DESC", "SERVICE_TYPE", "SORT_ORDER"}), "SERVICE_ID"),
        screen("TFormEditMealItem", "Items", "Add and Edit Meal Items", "Meal Items",
               fields({"ITEM_ID", "MEAL", "MEAL_ITEM", "ITEM_SORT"}), "ITEM_ID"),
        screen("TFormEditRace", "Race", "Race Codes", "Race Codes",
               fields({"RACE_ID", "RACE_CD", "RACE_DESC"})),
        screen("TFormEditMaritalStatus", "Martst", "Marital Status Codes", "Marital Status",
               fields({"MART_ID", "MART_DESC"}), "MARTST"),
        screen("TFormEditStaff", "Staff", "Staff Maintenance", "Staff Members",
               fields({"Staff_ID", "Staff_Name", "User_ID", "Access_Level", "Active"}), "STAFF_ID"),
        screen("TFormEditEventCds", "EventCds", "Event Codes", "Event Codes",
               fields({"EVENT_ID", "EVENT_DESC", "SERVICE_NAME"}), "Event_ID"),
        screen("TFormEditLoc", "Locatns", "Location and Site Maintenance", "Locations/Dist Centers",
               fields({"LOCATION_ID", "LOCATION_CD", "LOCATION", "LOCATION_CITY"}), "LOCATION_ID"),
        screen("TFormEditZIPs", "Zips", "ZIP Codes", "ZIP Codes", fields({"ZIP", "CITY", "ST", "COUNTY"}),
               "ZIP"),
        screen("TFormEditStopReasons", "StopReasons", "Stop Reasons", "Stop Reasons",
               fields({"STOP_ID", "STOP_REASON"}), "STOP_ID"),
        screen("TFormEditConditions", "Conditions", "Conditions", "Certification Conditions",
               fields({"Condition", "Requirement_Level"}), "CONDITION"),
        screen("TFormEditDocs", "Docs", "Documents", "Client Documents",
               fields({"Doc_Name", "Doc_Description"}), "DOC_NAME"),
        screen("TFormEditCuisines", "Cuisines", "Cuisines", "Cuisines", fields({"Cuisine_ID", "Cuisine"})),
        screen("TFormEditDiseases", "Diseases", "Diseases", "Diseases", fields({"Disease_ID", "Disease"}),
               "DISEASE"),
        screen("TFormEditColdBagCodes", "Cold_Bag_Codes", "Cold Bag Codes", "Cold Bag Codes",
               fields({"Record_ID", "Bag_Code"})),
        screen("TFormEditColdBagCodeUsage", "Cold_Bag_Usage", "Cold Bag Usage", "Cold Bag Code Usage",
               fields({"Diet_Restr", "DIET_WORDS", "BAG_CODE"}), "DIET_RESTR"),
        screen("TFormEditCaseManagementContactTypes", "Case_Management_Choices",
               "Case Management Contact Methods", "Contact Types", fields({"CONTACT_CD", "CONTACT_DESC"}), "",
               "C", "CONTACT_CD"),
        screen("TFormEditCaseManagementEventCodes", "Case_Management_Choices", "Case Management Event Types",
               "Event Types", fields({"CONTACT_CD", "CONTACT_DESC"}), "", "E", "CONTACT_CD"),
        screen("TFormEditSQLStatements", "Queries", "Maintain SQL Queries", "System &Queries",
               fields({"QUERY_NAME"}), "QUERY_NAME"),
        screen("TFormCustomLookupChoices", "Custom_Lookup_Choices", "Custom Lookup Choices", "",
               fields({"Dialogue", "Field_Name", "Field_Code", "Field_Choice"}), "", "",
               "Dialogue, Field_Name, Field_Code"),
    };
    return screens;
}

const EditorScreen* referenceEditorScreen(const QString& formName)
{
    for (const EditorScreen& s : referenceEditorScreens())
        if (s.formName == formName) return &s;
    return nullptr;
}

const QStringList& reservedQueryNames()
{
    static const QStringList names = fields({
        "ALL_ACTIVE_CLIENT_DEMOGRAPHICS",
        "ALR_CREATE_TABLE",
        "ALR_IMPORT_ROUTES",
        "ALR_IMPORT_XY",
        "CHILD_DEMOGRAPHIC_MEAL_COUNTS",
        "DELIVERY_REPORT_COUNTS_SELECTION",
        "DELIVERY_REPORT_COUNTS_SORT",
        "EXECUTE_ON_CLOSE",
        "EXECUTE_ON_OPEN",
        "EXECUTE_ON_POST",
        "EXECUTE_ON_SAVE_APPLICATION",
        "EXECUTE_ON_SAVE_APP_CONDITION",
        "EXECUTE_ON_SAVE_APP_DOCUMENT",
        "EXECUTE_ON_SAVE_DELIVERIES",
        "EXECUTE_ON_SAVE_RELATIONSHIP",
        "NEW_CLIENT_DEMOGRAPHICS",
        "CALC_NSI_ADL_IADL_SCORES",
        "POPULATE_URN",
    });
    return names;
}

} // namespace kb
