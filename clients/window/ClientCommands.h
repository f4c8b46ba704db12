#pragma once

#include <QString>

#include <vector>

namespace kb {

// What an access level does to a command or a menu of the client window.
enum AccessRule : unsigned {
    NoAccessRule = 0,
    HiddenReportsOnly = 1, // "O" does not see it
    DisabledReadOnly = 2,  // "R" sees it disabled
    HiddenReadOnly = 4,    // "R" does not see it (the buttons that change data)
};

// One command of the client window: in a menu (path of menu captions joined
// by "/"), on a page as a button, or both; with its shortcut and the rules
// of the access levels. The id names the command everywhere: the view's
// action and button, the handler that runs it, the tests.
struct ClientCommandInfo
{
    QString id;
    QString menu; // empty: a page button or a shortcut of the window only
    QString caption;
    QString shortcut; // in the portable form "Ctrl+Alt+D"
    unsigned access = NoAccessRule;
    // Whether the screen it opens may move Clients, so that the window
    // keeps its bookmark around it.
    bool keepsBookmark = true;
};

// A menu of the client window, by its path; the top menus have no "/".
struct ClientMenuInfo
{
    QString path;
    QString caption;
    unsigned access = NoAccessRule;
};

// The menus in the order they are built (a submenu after its parent).
const std::vector<ClientMenuInfo>& clientMenus();
// Every command, menus in their order and then the page buttons and
// shortcuts. A screen of its own becomes reachable by giving its command a
// handler (TFormClients::setHandler); until then the command is shown
// disabled, saying it is not available yet.
const std::vector<ClientCommandInfo>& clientCommands();
const ClientCommandInfo* findClientCommand(const QString& id);
// The caption of a command's button on a page, where it differs from the
// menu's ("Edit Routes & Stops" for the menu's "Routes & Stops").
QString clientButtonCaption(const QString& id, const QString& caption);

// The ids of the commands the window itself carries out.
namespace client_command {
inline const QString PrintScreen = QStringLiteral("ActionPrintScreen");
inline const QString RefreshLists = QStringLiteral("ActionRefreshLists");
inline const QString Exit = QStringLiteral("ActionExit");
inline const QString NextClient = QStringLiteral("ActionNextClient");
inline const QString PriorClient = QStringLiteral("ActionPriorClient");
inline const QString FirstClient = QStringLiteral("ActionFirstClient");
inline const QString LastClient = QStringLiteral("ActionLastClient");
inline const QString EditRoutesStops = QStringLiteral("ActionEditRoutesStops");
inline const QString AlternateAddresses = QStringLiteral("ActionAlternateAddresses");
inline const QString ClientPopUp = QStringLiteral("ActionClientPopUp");
inline const QString DeleteClientPopUp = QStringLiteral("ActionDeleteClientPopUp");
inline const QString Configuration = QStringLiteral("TFormEditConfig");
inline const QString StatusFilter = QStringLiteral("ActionStatusFilter");
inline const QString CustomFilter = QStringLiteral("ActionCustomFilter");
inline const QString PrepareDeliveries = QStringLiteral("ActionPrepareDeliveries");
inline const QString DeliveryReports = QStringLiteral("ActionDeliveryReports");
inline const QString LabelStock = QStringLiteral("ActionLabelStock");
inline const QString PrintClientIdCard = QStringLiteral("ActionPrintClientIdCard");
inline const QString PrintDeliveryDirections = QStringLiteral("ActionPrintDeliveryDirections");
inline const QString DeliveryReportMessages = QStringLiteral("ActionDeliveryReportMessages");
inline const QString SpecialMeals = QStringLiteral("ActionSpecialMeals");
inline const QString OrderStopsByRoute = QStringLiteral("ActionOrderStopsByRoute");
inline const QString FindCoordinates = QStringLiteral("ActionFindCoordinates");
inline const QString OnTheWeb = QStringLiteral("ActionOnTheWeb");
inline const QString About = QStringLiteral("ActionAbout");
inline const QString GetMap = QStringLiteral("ActionGetMap");
inline const QString MapPointMap = QStringLiteral("ActionMapPointMap");
inline const QString SendMail = QStringLiteral("ActionSendMail");
inline const QString GetBagCode = QStringLiteral("ActionGetBagCode");
inline const QString ClearRoutes = QStringLiteral("ActionClearRoutes");
inline const QString ClearStops = QStringLiteral("ActionClearStops");
inline const QString ModifyItems = QStringLiteral("ActionModifyMealItems");
inline const QString ItemsWizard = QStringLiteral("ActionItemsWizard");
inline const QString ScheduledDeliveries = QStringLiteral("ActionScheduledDeliveries");
inline const QString AddEditDeliveries = QStringLiteral("ActionAddEditDeliveries");
inline const QString DeleteSelectedDelivery = QStringLiteral("ActionDeleteSelectedDelivery");
inline const QString AddSuspension = QStringLiteral("ActionAddSuspension");
inline const QString EditSuspension = QStringLiteral("ActionEditSuspension");
inline const QString DeleteSuspension = QStringLiteral("ActionDeleteSuspension");
inline const QString AddConsultation = QStringLiteral("ActionAddConsultation");
inline const QString AddAssessment = QStringLiteral("ActionAddAssessment");
inline const QString RecordMissed = QStringLiteral("ActionRecordMissedDelivery");
inline const QString ExcuseMissed = QStringLiteral("ActionExcuseMissedDelivery");
inline const QString DeleteMissed = QStringLiteral("ActionDeleteMissedDelivery");
inline const QString ViewStatusHistory = QStringLiteral("ActionViewStatusHistory");
inline const QString HouseholdWizard = QStringLiteral("ActionHouseholdWizard");
inline const QString HouseholdMembers = QStringLiteral("ActionHouseholdMembers");
inline const QString Households = QStringLiteral("ActionHouseholds");
inline const QString EditPreferences = QStringLiteral("ActionEditPreferences");
inline const QString EditCuisine = QStringLiteral("ActionEditCuisine");
inline const QString AddNewPerson = QStringLiteral("ActionAddNewPerson");
inline const QString DeleteCurrentPerson = QStringLiteral("ActionDeleteCurrentPerson");
inline const QString SummarizeMissed = QStringLiteral("ActionSummarizeMissed");
inline const QString CreditWalkIns = QStringLiteral("ActionCreditWalkIns");
inline const QString BatchMissed = QStringLiteral("ActionBatchMissedDeliveries");
inline const QString BatchWalkIns = QStringLiteral("ActionBatchWalkIns");
inline const QString RecentDeliveries = QStringLiteral("ActionRecentDeliveries");
inline const QString ClientInvoices = QStringLiteral("ActionClientInvoices");
inline const QString DeleteDeliveryCredits = QStringLiteral("ActionDeleteDeliveryCredits");
inline const QString ReassignFunding = QStringLiteral("ActionReassignFunding");
inline const QString VerifyConditions = QStringLiteral("ActionVerifyConditions");
inline const QString FundingSources = QStringLiteral("TFormEditFundingSources");
inline const QString ScheduleCalendar = QStringLiteral("ActionScheduleCalendar");
inline const QString InvertWeekdays = QStringLiteral("Weekdays1");
inline const QString InvertWeekends = QStringLiteral("Weekends1");
inline const QString InvertAllDays = QStringLiteral("Alldays1");
inline const QString AddApplication = QStringLiteral("ActionAddApplication");
inline const QString DeleteApplication = QStringLiteral("ActionDeleteApplication");
inline const QString EditApplicationComment = QStringLiteral("ActionEditApplicationComment");
inline const QString AddFunding = QStringLiteral("ActionAddFunding");
inline const QString DeleteFunding = QStringLiteral("ActionDeleteFunding");
inline const QString AddItemRate = QStringLiteral("ActionAddItemRate");
inline const QString DeleteItemRate = QStringLiteral("ActionDeleteItemRate");
inline const QString ReverseWeekdays = QStringLiteral("ActionReverseWeekdays");
inline const QString ReverseWeekends = QStringLiteral("ActionReverseWeekends");
inline const QString ReverseAllDays = QStringLiteral("ActionReverseAllDays");
inline const QString ResultingRates = QStringLiteral("ActionResultingRates");
inline const QString AddPledgeItem = QStringLiteral("ActionAddPledgeItem");
inline const QString DeletePledgeItem = QStringLiteral("ActionDeletePledgeItem");
inline const QString ShowColumnHeadings = QStringLiteral("ActionShowColumnHeadings");
inline const QString ShiftDeliveries = QStringLiteral("ActionShiftDeliveries");
inline const QString AddRelationship = QStringLiteral("ActionAddRelationship");
inline const QString EditRelationship = QStringLiteral("ActionEditRelationship");
inline const QString DeleteRelationship = QStringLiteral("ActionDeleteRelationship");
inline const QString AddIndividual = QStringLiteral("ActionAddIndividual");
inline const QString EditIndividual = QStringLiteral("ActionEditIndividual");
inline const QString DeleteIndividual = QStringLiteral("ActionDeleteIndividual");
inline const QString ShowRelatedClients = QStringLiteral("ActionShowRelatedClients");
inline const QString CopyIndividual = QStringLiteral("ActionCopyIndividual");
inline const QString ListMembership = QStringLiteral("ActionListMembership");
inline const QString RecentStops = QStringLiteral("ActionRecentStops");
} // namespace client_command

} // namespace kb
