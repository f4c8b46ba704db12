#include "window/ClientPageData.h"

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "window/ClientPages.h"

namespace kb {

namespace {

const QString Clients = QStringLiteral("Clients");
const QString PersonId = QStringLiteral("Person_ID");

} // namespace

const std::vector<PageQueryDefinition>& pageQueryDefinitions()
{
    static const std::vector<PageQueryDefinition> definitions = {
        {QStringLiteral("QueryAlternateAddressDisplay"),
         QStringLiteral("select * from Address_Overrides where RecordID = :RecordID"),
         {},
         {},
         true,
         QStringLiteral("Save your changes to the alternate address before changing tabs?"),
         true},
        {QStringLiteral("QueryDocs"),
         QStringLiteral("Select * from DocUses where App_ID = :App_ID order by Sort_Order"),
         QStringLiteral("QueryServiceApps"),
         {QStringLiteral("App_ID")},
         false,
         QStringLiteral("Save your changes to the Documents before changing tabs?")},
        {QStringLiteral("QueryConditions"),
         QStringLiteral("Select * from ConditionUses where App_ID = :App_ID Order by Sort_Order"),
         QStringLiteral("QueryServiceApps"),
         {QStringLiteral("App_ID")},
         false,
         QStringLiteral("Save your changes to the Conditions before changing tabs?")},
        {QStringLiteral("QueryServiceApps"),
         QStringLiteral("select * from ServiceApps where Person_ID = :Person_ID order by App_Date desc"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Application before changing tabs?")},
        {QStringLiteral("QueryEpisodicDeliveries"),
         QStringLiteral(
             "select * from EpisodicDeliveries where Person_ID = :Person_ID and Schedule_Type = 'E' "
             "order by Deliv_Date descending"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Deliveries before changing tabs?")},
        {QStringLiteral("QueryClientSpecificFundingRates"),
         QStringLiteral("Select * from Pricing where Fund_CD = :Fund_Cd and Service_ID = :Service_ID and "
                        "Person_ID= :Person_ID and Method='F'"),
         QStringLiteral("QueryFundUses"),
         {QStringLiteral("Fund_CD"), QStringLiteral("Service_ID"), PersonId},
         true,
         QStringLiteral("Save your changes to the Funding Rates before changing tabs?")},
        {QStringLiteral("QueryServiceFundingRates"),
         QStringLiteral(
             "Select 'E' as Reason, Pricing.Unit, Items.Meal_Item as Item, Pricing.Amount from Pricing left "
             "join "
             "Items on Pricing.Item_ID = Items.Item_ID where Pricing.Fund_CD = :Fund_CD and "
             "Pricing.Person_ID = "
             ":Person_ID and Pricing.Method = 'F' union Select 'I' as Reason, Pricing.Unit, Items.Meal_Item "
             "as "
             "Item, Pricing.Amount from Pricing left join Items on Pricing.Item_ID = Items.Item_ID where "
             "Pricing.Fund_CD = :Fund_CD and Pricing.Person_ID = 0 and Pricing.Method = 'F' and Pricing.Unit "
             "not "
             "in (Select Unit from Pricing where Fund_CD = :Fund_CD and Person_ID = :Person_ID) union Select "
             "'I' "
             "as Reason, Cast(Items.Item_ID as VarChar(2)) as Unit, Items.Meal_Item as Item, "
             "Items.Billed_Amount "
             "as Amount from Items where Items.Billed_Amount > 0 and Items.Item_ID not in (Select Item_ID "
             "from "
             "Pricing where Fund_CD = :Fund_CD and (Person_ID = 0 or Person_ID = :Person_ID) and Method = "
             "'F' and "
             "not Item_ID is null) order by Reason, Unit"),
         QStringLiteral("QueryFundUses"),
         {QStringLiteral("Fund_CD"), PersonId}},
        {QStringLiteral("QueryServiceDayRate"),
         QStringLiteral(
             "Select 'I' as Reason, Reimbursement_Method, Reimbursement_Rate, Reimbursement_Period from "
             "FundSrcs where Fund_CD = :Fund_CD"),
         QStringLiteral("QueryFundUses"),
         {QStringLiteral("Fund_CD")}},
        {QStringLiteral("QueryFundUses"),
         QStringLiteral("Select * from FundUses where Person_ID = :Person_ID"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Funding Sources before changing tabs?")},
        {QStringLiteral("QueryItemPledgeRates"),
         QStringLiteral("Select * from Pricing where Person_ID= :Person_ID and Method='P'"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Pledges before changing tabs?")},
        {QStringLiteral("QueryAssessments"),
         QStringLiteral("Select * from Asssmnts where Person_ID = :Person_ID order by Assessment_Date desc"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Assessments before changing tabs?")},
        {QStringLiteral("QueryClientDiseases"),
         QStringLiteral("Select * from Client_Diseases where Person_ID = :Person_ID order by Sort_Order"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Diseases before changing tabs?")},
        {QStringLiteral("QueryDiseaseLookup"), QStringLiteral("Select * from Diseases order by Disease")},
        {QStringLiteral("QueryEvents"),
         QStringLiteral(
             "Select Events.*, Staff.Staff_Name, EventCds.Event_Desc, Locatns.Location from Events "
             "join Staff on Events.Counselor_ID = Staff.Staff_ID join EventCds on Events.Event_ID = "
             "EventCds.Event_ID join Locatns on Events.Loc_Code = Locatns.Location_ID join Services on "
             "EventCds.Service_ID = Services.Service_ID where Events.Person_ID = :Person_ID and "
             "Upper(Services.Service_Type) = 'C' order by Events.Event_Date desc"),
         Clients,
         {PersonId},
         false,
         QStringLiteral("Save your changes to the Counseling Events before changing tabs?")},
        {QStringLiteral("QueryRelationships"),
         QStringLiteral(
             "Select * from Relationships, Individuals where Relationships.Person_ID = :Person_ID and "
             "Relationships.Indiv_ID = Individuals.Indiv_ID"),
         Clients,
         {PersonId},
         false,
         QStringLiteral("Save your changes to the Relationships before changing tabs?")},
        {QStringLiteral("QuerySuspends"),
         QStringLiteral("select * from Suspends where Person_ID = :Person_ID order by Stop_Dt desc"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Suspension before changing tabs?")},
        {QStringLiteral("QueryCaseManagement"),
         QStringLiteral("Select * from Events where Person_ID = :Person_ID and (Event_ID = -1 or Event_ID in "
                        "(Select EventCds.Event_ID from EventCds left join Services on EventCds.Service_ID = "
                        "Services.Service_ID where Services.Service_Type = 'M' or EventCds.Service_ID = -1)) "
                        "order by Event_Date desc"),
         Clients,
         {PersonId},
         true,
         QStringLiteral("Save your changes to the Case Management entry before changing tabs?")},
        {QStringLiteral("QueryNSIADLIADL"),
         QStringLiteral(
             "Select * from NSI_ADL_IADL where Person_ID = :Person_ID order by HEADAssessment_Date desc"),
         Clients,
         {PersonId},
         true},
    };
    return definitions;
}

namespace {

// Names shown in the grids in place of the numbers the rows keep.
struct PageLookup
{
    const char* query;
    const char* name;
    const char* keyField;
    const char* table;
    const char* keyColumn;
    const char* result;
};

const PageLookup PageLookups[] = {
    {"QueryEpisodicDeliveries", "Service", "Svcs_Used", "Services", "Service_ID", "Service_Desc"},
    {"QueryFundUses", "Funding_Source", "Fund_CD", "Fundsrcs", "Fund_CD", "Fund_Srce"},
    {"QueryFundUses", "Service", "Service_ID", "Services", "Service_ID", "Service_Desc"},
    {"QueryServiceApps", "Service", "Service_ID", "Services", "Service_ID", "Service_Desc"},
    {"QueryServiceApps", "Assigned", "Assigned_To", "Staff", "Staff_ID", "Staff_Name"},
    {"QueryDocs", "Document", "Doc_ID", "Docs", "Doc_ID", "Doc_Name"},
    {"QueryConditions", "Condition", "Condition_ID", "Conditions", "Condition_ID", "Condition"},
};

} // namespace

struct ClientPageData::Entry
{
    const PageQueryDefinition* definition = nullptr;
    std::unique_ptr<QueryDataSet> set;
};

ClientPageData::ClientPageData(DataSet& clients, RecordServices& services, UserInterface& ui)
    : m_clients(clients), m_services(services), m_ui(ui)
{
    for (const PageQueryDefinition& definition : pageQueryDefinitions()) {
        auto entry = std::make_unique<Entry>();
        entry->definition = &definition;
        entry->set = std::make_unique<QueryDataSet>(services.db(), definition.sql);
        entry->set->setRequestLive(definition.live);
        services.installErrorHooks(*entry->set);
        for (const PageLookup& l : PageLookups)
            if (definition.name == QLatin1String(l.query))
                entry->set->addLookupField(QString::fromLatin1(l.name), QString::fromLatin1(l.keyField),
                                           QString::fromLatin1(l.table), QString::fromLatin1(l.keyColumn),
                                           QString::fromLatin1(l.result));
        m_entries.push_back(std::move(entry));
    }
    // The diseases take their names from the lookup list the page opens with them.
    query(QStringLiteral("QueryClientDiseases"))
        .addLookupField(QStringLiteral("Disease"), QStringLiteral("Disease_ID"),
                        query(QStringLiteral("QueryDiseaseLookup")), QStringLiteral("Disease_ID"),
                        QStringLiteral("Disease"));
    // A detail that takes one field of its master follows it by the data
    // sets' own master link; one that takes several is read again by
    // follow() when its master moves.
    for (const auto& entry : m_entries) {
        const PageQueryDefinition& d = *entry->definition;
        if (d.masterFields.size() == 1)
            entry->set->setMaster(*masterSet(*entry), d.masterFields.front(), d.masterFields.front());
    }
    for (const auto& entry : m_entries) {
        const PageQueryDefinition& d = *entry->definition;
        if (d.masterFields.size() < 2 || d.master == Clients) continue;
        DataSet& master = *masterSet(*entry);
        const DataSet::HookFunction before = master.hook(DataSet::Hook::AfterScroll);
        const QString name = d.master;
        master.setHook(DataSet::Hook::AfterScroll, [this, before, name](DataSet& set) {
            if (before) before(set);
            follow(name);
        });
    }
}

ClientPageData::~ClientPageData()
{
    // Details first, so no master link outlives its master.
    for (auto it = m_entries.rbegin(); it != m_entries.rend(); ++it)
        (*it)->set->clearMaster();
}

ClientPageData::Entry* ClientPageData::find(const QString& name) const
{
    for (const auto& entry : m_entries)
        if (entry->definition->name.compare(name, Qt::CaseInsensitive) == 0) return entry.get();
    return nullptr;
}

DataSet* ClientPageData::masterSet(const Entry& entry) const
{
    const QString& master = entry.definition->master;
    if (master.isEmpty()) return nullptr;
    if (master == Clients) return &m_clients;
    Entry* other = find(master);
    return other ? other->set.get() : nullptr;
}

QueryDataSet& ClientPageData::query(const QString& name)
{
    if (Entry* entry = find(name)) return *entry->set;
    throw DbError(DbErrorCode::UnknownName,
                  QStringLiteral("The client window has no page query %1").arg(name));
}

bool ClientPageData::isOpen(const QString& name) const
{
    const Entry* entry = find(name);
    return entry && entry->set->isActive();
}

void ClientPageData::leavePage()
{
    for (const auto& entry : m_entries) {
        QueryDataSet& set = *entry->set;
        const PageQueryDefinition& d = *entry->definition;
        const bool editing = set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
        if (editing && !d.saveQuestion.isEmpty()) {
            if (m_ui.question(d.saveQuestion, Buttons::YesNo) == Answer::Yes)
                m_services.guarded([&] { set.post(); });
            else
                set.cancel();
        }
        if (!d.keptOpen) set.close();
    }
}

void ClientPageData::open(Entry& entry)
{
    QueryDataSet& set = *entry.set;
    if (set.isActive()) return;
    const PageQueryDefinition& d = *entry.definition;
    if (d.masterFields.size() > 1) {
        const DataSet* master = masterSet(entry);
        for (const QString& field : d.masterFields)
            set.setParam(field, master && master->isActive() ? master->fieldValue(field) : QVariant());
    }
    OpenQuery(set);
}

void ClientPageData::enterPage(int page)
{
    for (const QString& name : clientPage(page).queries)
        if (Entry* entry = find(name)) open(*entry);
}

void ClientPageData::setReadOnly(bool readOnly)
{
    for (const auto& entry : m_entries) {
        if (readOnly && entry->set->isActive())
            SetOneQuery(*entry->set, QStringLiteral("RO"));
        else
            entry->set->setReadOnly(readOnly);
    }
}

void ClientPageData::follow(const QString& master)
{
    for (const auto& entry : m_entries) {
        const PageQueryDefinition& d = *entry->definition;
        if (d.masterFields.size() < 2 || d.master.compare(master, Qt::CaseInsensitive) != 0 ||
            !entry->set->isActive())
            continue;
        entry->set->close();
        open(*entry);
    }
}

} // namespace kb
