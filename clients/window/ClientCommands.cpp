#include "window/ClientCommands.h"

namespace kb {

namespace {

ClientCommandInfo command(const char* id, const char* menu, const char* caption, const char* shortcut = "",
                          unsigned access = NoAccessRule, bool keepsBookmark = true)
{
    return {QString::fromLatin1(id),
            QString::fromLatin1(menu),
            QString::fromLatin1(caption),
            QString::fromLatin1(shortcut),
            access,
            keepsBookmark};
}

// A report or print-out: open to every level.
ClientCommandInfo report(const char* id, const char* menu, const char* caption, const char* shortcut = "")
{
    return command(id, menu, caption, shortcut, NoAccessRule, false);
}

constexpr unsigned HiddenO = HiddenReportsOnly;
constexpr unsigned DisabledR = DisabledReadOnly;
constexpr unsigned HiddenR = HiddenReadOnly;

} // namespace

const std::vector<ClientMenuInfo>& clientMenus()
{
    static const std::vector<ClientMenuInfo> menus = {
        {QStringLiteral("File"), QStringLiteral("&File")},
        {QStringLiteral("File/Print"), QStringLiteral("&Print"), HiddenO},
        {QStringLiteral("Edit"), QStringLiteral("&Edit"), HiddenO},
        {QStringLiteral("Edit/Client Pop-Ups"), QStringLiteral("Client Pop-Ups"), HiddenO},
        {QStringLiteral("Edit/Table Maintenance"), QStringLiteral("&Table Maintenance"), HiddenO | DisabledR},
        {QStringLiteral("View"), QStringLiteral("&View"), HiddenO},
        {QStringLiteral("Reports"), QStringLiteral("&Reports")},
        {QStringLiteral("Reports/Process"), QStringLiteral("&Process"), HiddenO | DisabledR},
        {QStringLiteral("Reports/Print"), QStringLiteral("P&rint")},
        {QStringLiteral("Reports/Print/Other Reports"), QStringLiteral("Other Reports")},
        {QStringLiteral("Reports/Mail Merge"), QStringLiteral("&Mail Merge")},
        {QStringLiteral("Reports/Analyze"), QStringLiteral("&Analyze"), HiddenO},
        {QStringLiteral("Utilities"), QStringLiteral("&Utilities"), HiddenO | DisabledR},
        {QStringLiteral("Plug-Ins"), QStringLiteral("Plu&g-Ins")},
        {QStringLiteral("Help"), QStringLiteral("&Help")},
    };
    return menus;
}

const std::vector<ClientCommandInfo>& clientCommands()
{
    static const std::vector<ClientCommandInfo> commands = {
        // File
        command("ActionPrintScreen", "File/Print", "Screen", "", HiddenO, false),
        report("ActionPrintDeliveryDirections", "File/Print", "Delivery Directions", "Ctrl+Alt+D"),
        report("ActionPrintClientIdCard", "File/Print", "Client ID Card"),
        report("ActionPrintAllOnClient", "File/Print", "All on this Client"),
        report("ActionPrintHealthHistory", "File/Print", "Health/Nutrition History"),
        report("ActionPrintUserDefinedClientReport", "File/Print", "User-Defined Client Report",
               "Ctrl+Alt+R"),
        command("ActionRefreshLists", "File", "Refresh Lists", "", HiddenO, false),
        command("ActionExit", "File", "Exit", "", NoAccessRule, false),

        // Edit
        command("ActionNextClient", "Edit", "Next Client", "", NoAccessRule, false),
        command("ActionPriorClient", "Edit", "Prior Client", "", NoAccessRule, false),
        command("ActionFirstClient", "Edit", "First Client", "", NoAccessRule, false),
        command("ActionLastClient", "Edit", "Last Client", "", NoAccessRule, false),
        command("ActionEditNotes", "Edit", "Edit Notes", "Ctrl+N", HiddenO),
        command("ActionEditRoutesStops", "Edit", "Routes & Stops", "", HiddenO | DisabledR | HiddenR),
        command("ActionAlternateAddresses", "Edit", "Alternate Addresses", "", HiddenO | DisabledR | HiddenR),
        command("ActionClientPopUp", "Edit/Client Pop-Ups", "Add Client Pop-Up", "Ctrl+Alt+P", DisabledR),
        command("ActionDeleteClientPopUp", "Edit/Client Pop-Ups", "Delete Client Pop-Up", "", DisabledR),
        command("ActionEditAlerts", "Edit", "Edit Alerts and Follow-Ups", "Ctrl+F"),
        command("ActionEditGeoData", "Edit", "Edit Geo Data", "Ctrl+G"),
        command("ActionListMembership", "Edit", "List Membership", "Ctrl+L", HiddenO),
        command("ActionAddNewPerson", "Edit", "Add new person", "", DisabledR | HiddenR),
        command("ActionDeleteCurrentPerson", "Edit", "Delete current person", "", DisabledR | HiddenR),
        command("ActionSpecialMeals", "Edit", "Special Meals", "", DisabledR),
        command("ActionDeliveryReportMessages", "Edit", "Delivery Report Driver Messages", "", DisabledR),
        command("TFormEditConfig", "Edit/Table Maintenance", "Configuration", "", HiddenO | DisabledR, false),
        command("TFormEditCaseManagementContactTypes", "Edit/Table Maintenance", "Contact Types"),
        command("TFormEditEventCds", "Edit/Table Maintenance", "Event Codes"),
        command("TFormEditConditions", "Edit/Table Maintenance", "Certification Conditions"),
        command("TFormEditDocs", "Edit/Table Maintenance", "Client Documents"),
        command("TFormEditColdBagCodes", "Edit/Table Maintenance", "Cold Bag Codes"),
        command("TFormEditColdBagCodeUsage", "Edit/Table Maintenance", "Cold Bag Code Usage"),
        command("TFormEditCuisines", "Edit/Table Maintenance", "Cuisines"),
        command("TFormEditDietMods", "Edit/Table Maintenance", "Diet Modifications"),
        command("TFormEditDiseases", "Edit/Table Maintenance", "Diseases"),
        command("TFormEditCaseManagementEventCodes", "Edit/Table Maintenance", "Event Types"),
        command("TFormEditLoc", "Edit/Table Maintenance", "Locations/Dist Centers"),
        command("TFormEditMaritalStatus", "Edit/Table Maintenance", "Marital Status"),
        command("TFormEditMealItem", "Edit/Table Maintenance", "Meal Items"),
        command("TFormEditRace", "Edit/Table Maintenance", "Race Codes"),
        command("TFormEditServices", "Edit/Table Maintenance", "Services"),
        command("TFormEditStaff", "Edit/Table Maintenance", "Staff Members"),
        command("TFormEditStopReasons", "Edit/Table Maintenance", "Stop Reasons"),
        command("TFormEditZIPs", "Edit/Table Maintenance", "ZIP Codes"),
        command("TFormEditFundingSources", "Edit/Table Maintenance", "Funding Sources"),
        command("TFormEditRoutes", "Edit/Table Maintenance", "Routes"),
        command("TFormEditSQLStatements", "Edit/Table Maintenance", "System Queries"),

        // View
        command("ActionBrowseView", "View", "Browse View"),
        report("ActionContactSummary", "View", "Contact Summary"),
        report("ActionRecentDeliveries", "View", "Recent Deliveries"),
        report("ActionStatusHistory", "View", "Status History"),
        report("ActionSystemHistory", "View", "System History"),
        command("ActionStatusFilter", "View", "Status Filter", "", NoAccessRule, false),
        command("ActionCustomFilter", "View", "Custom Filter", "", NoAccessRule, false),

        // Reports
        command("ActionPrepareDeliveries", "Reports/Process", "Prepare Daily Deliveries", "Ctrl+D"),
        command("ActionCreditWalkIns", "Reports/Process", "Episodic events to be Credited"),
        report("ActionDeliveryReports", "Reports/Print", "Delivery Reports and Labels"),
        report("ActionLabelStock", "Reports/Print", "Label Stock..."),
        report("ActionRecentStops", "Reports/Print", "Recent Stops and Suspensions"),
        report("ActionCaseManagementReports", "Reports/Print", "Case Management Reports"),
        report("ActionCounselingReports", "Reports/Print", "Counseling Reports"),
        report("ActionAgencyReports", "Reports/Print", "Agency Reports"),
        report("ActionAlertReports", "Reports/Print", "Alerts/Follow-Up Reports"),
        report("ActionClientListingByName", "Reports/Print/Other Reports", "Client Listing by Name"),
        report("ActionClientListingByRoute", "Reports/Print/Other Reports", "Client Listing by Route"),
        report("ActionHouseholdMembersReport", "Reports/Print/Other Reports", "Household Members"),
        report("ActionRelationshipsReport", "Reports/Print/Other Reports", "Relationships"),
        report("ActionClientsByDiet", "Reports/Print/Other Reports", "Clients by Selected Diet"),
        report("ActionUserReport1", "Reports/Print/Other Reports", "Report 1"),
        report("ActionUserReport2", "Reports/Print/Other Reports", "Report 2"),
        report("ActionUserReport3", "Reports/Print/Other Reports", "Report 3"),
        report("ActionUserReport4", "Reports/Print/Other Reports", "Report 4"),
        report("ActionUserReport5", "Reports/Print/Other Reports", "Report 5"),
        report("ActionMergeFilteredClients", "Reports/Mail Merge", "Filtered Clients"),
        report("ActionCustomMailMerge", "Reports/Mail Merge", "Custom Mail-Merge"),
        report("ActionClientInvoices", "Reports/Mail Merge", "Client Invoices"),
        command("ActionQueryBuilder", "Reports/Analyze", "Query Builder"),
        command("ActionIntelligentBrowse", "Reports/Analyze", "Intelligent Browse"),
        command("ActionReportDesigner", "Reports/Analyze", "Report Designer"),
        command("ActionCharts", "Reports/Analyze", "Charts"),
        command("ActionMapAllClients", "Reports/Analyze", "Map All Clients"),

        // Utilities
        command("ActionVerifyConditions", "Utilities", "Verify Delivery Conditions", "Ctrl+Alt+V"),
        command("ActionOrderStopsByRoute", "Utilities", "Order Stops by Route"),
        command("ActionFindCoordinates", "Utilities", "Find Coordinates for Addresses"),
        command("ActionExecuteQuery", "Utilities", "Execute Query", "Ctrl+Q"),
        command("ActionArchiveRecords", "Utilities", "Archive Records"),
        command("ActionBatchMissedDeliveries", "Utilities", "Batch Record Missed Deliveries"),
        command("ActionBatchWalkIns", "Utilities", "Batch Record Walk-In Visits", "Ctrl+Alt+W"),
        command("ActionSummarizeMissed", "Utilities", "Summarize Missed Deliveries"),
        command("ActionUpdateStoppedStatus", "Utilities", "Update Stopped Status"),
        command("ActionInactivateStopped", "Utilities", "Inactivate Stopped Clients"),
        command("ActionResetFirstServiceDate", "Utilities", "Reset First Service Date"),
        command("ActionDeleteDeliveryCredits", "Utilities", "Delete Delivery Credits"),
        command("ActionReassignFunding", "Utilities", "Reassign delivery or event funding"),
        command("ActionShiftDeliveries", "Utilities", "Shift deliveries from one date to another"),
        command("ActionConsolidateClients", "Utilities", "Consolidate Clients"),
        command("ActionConsolidateIndividuals", "Utilities", "Consolidate Individuals"),

        // Help
        command("ActionOnTheWeb", "Help", "Kettlebrook on the web", "", NoAccessRule, false),
        command("ActionAbout", "Help", "About", "", NoAccessRule, false),

        // On the pages and the header, and the window's own shortcuts.
        command("ActionGetMap", "", "Get Map", "", NoAccessRule, false),
        command("ActionMapPointMap", "", "MapPoint Map"),
        command("ActionSendMail", "", "Send E-Mail", "", NoAccessRule, false),
        command("ActionEditPreferences", "", "Edit Preferences/Dislikes", "Ctrl+P", HiddenO | DisabledR),
        command("ActionEditCuisine", "", "Edit Cuisine", "Ctrl+Alt+C", HiddenO | DisabledR),
        command("ActionGetBagCode", "", "Get Bag Code", "", HiddenR, false),
        command("ActionModifyMealItems", "", "Modify Items", "Ctrl+I", HiddenO),
        command("ActionItemsWizard", "", "Items Wizard", "", HiddenO | DisabledR),
        command("ActionHouseholdMembers", "", "Household Members", "Ctrl+M", HiddenO | DisabledR | HiddenR),
        command("ActionHouseholds", "", "Households", "Ctrl+H", HiddenO | DisabledR | HiddenR),
        command("ActionHouseholdWizard", "", "Household Wizard", "", HiddenR),
        command("ActionJumpToHeadOfHousehold", "", "Jump to Head of Household", "Ctrl+Alt+H"),
        command("ActionCopyNameAddress", "", "Copy Name and Address", "Ctrl+Alt+A", NoAccessRule, false),
        command("ActionCopyIndividual", "", "Copy Individual", "Ctrl+Alt+I", NoAccessRule, false),
        command("ActionPopulateUrn", "", "Populate URN", "Ctrl+Alt+U", DisabledR),
        command("ActionCreateAlert", "", "Create Alert", "Ctrl+Alt+F"),
        command("ActionClearRoutes", "", "Clear Routes", "", HiddenR, false),
        command("ActionClearStops", "", "Clear Stops", "", HiddenR, false),
        command("ActionScheduledDeliveries", "", "Scheduled Deliveries", "", DisabledR | HiddenR),
        command("ActionAddEditDeliveries", "", "Add/Edit Deliveries", "", DisabledR | HiddenR),
        command("ActionDeleteSelectedDelivery", "", "Delete Selected Delivery", "", DisabledR | HiddenR),
        command("ActionAddSuspension", "", "Add Suspension", "", HiddenR),
        command("ActionEditSuspension", "", "Edit Suspension", "", HiddenR),
        command("ActionDeleteSuspension", "", "Delete Suspension", "", HiddenR),
        command("ActionAddAssessment", "", "Add Assessment", "", HiddenR),
        command("ActionAddConsultation", "", "Add Consultation", "", HiddenR),
        command("ActionRecordMissedDelivery", "", "Record", "", HiddenR),
        command("ActionExcuseMissedDelivery", "", "Excuse", "", HiddenR),
        command("ActionDeleteMissedDelivery", "", "Delete", "", HiddenR),
        command("ActionViewStatusHistory", "", "View Status History"),
        command("ActionScheduleCalendar", "", "Delivery Weeks", "", NoAccessRule, false),
        command("Weekdays1", "", "Weekdays", "", HiddenR),
        command("Weekends1", "", "Weekends", "", HiddenR),
        command("Alldays1", "", "All Days", "", HiddenR),
        command("ActionAddApplication", "", "Add Application", "", HiddenR),
        command("ActionDeleteApplication", "", "Delete Application", "", HiddenR),
        command("ActionEditApplicationComment", "", "Edit Application Comment"),
        command("ActionAddFunding", "", "Add Funding", "", HiddenR),
        command("ActionDeleteFunding", "", "Delete Funding", "", HiddenR),
        command("ActionAddItemRate", "", "Add Item Rate", "", HiddenR),
        command("ActionDeleteItemRate", "", "Delete Item Rate", "", HiddenR),
        command("ActionReverseWeekdays", "", "Reverse Weekdays", "", HiddenR),
        command("ActionReverseWeekends", "", "Reverse Weekends", "", HiddenR),
        command("ActionReverseAllDays", "", "Reverse All Days", "", HiddenR),
        command("ActionResultingRates", "", "Resulting Item Rates"),
        command("ActionAddPledgeItem", "", "Add Pledge Item", "", HiddenR),
        command("ActionDeletePledgeItem", "", "Delete Pledge Item", "", HiddenR),
        command("ActionShowColumnHeadings", "", "Show Column Headings", "", NoAccessRule, false),
        // The Relationships page: a client's relationships and all individuals.
        command("ActionAddRelationship", "", "Add Relationship", "", DisabledR | HiddenR),
        command("ActionEditRelationship", "", "Edit Relationship", "", DisabledR | HiddenR),
        command("ActionDeleteRelationship", "", "Delete Relationship", "", DisabledR | HiddenR),
        command("ActionAddIndividual", "", "Add Individual", "", DisabledR | HiddenR),
        command("ActionEditIndividual", "", "Edit Individual", "", DisabledR | HiddenR),
        // Both may move the window to a related client.
        command("ActionDeleteIndividual", "", "Delete Individual", "", DisabledR | HiddenR, false),
        command("ActionShowRelatedClients", "", "Show Related Clients", "", NoAccessRule, false),
    };
    return commands;
}

QString clientButtonCaption(const QString& id, const QString& caption)
{
    if (id == QLatin1String("ActionEditRoutesStops")) return QStringLiteral("Edit Routes & Stops");
    return caption;
}

const ClientCommandInfo* findClientCommand(const QString& id)
{
    for (const ClientCommandInfo& c : clientCommands())
        if (c.id == id) return &c;
    return nullptr;
}

} // namespace kb
