#include "window/TFormClients.h"

#include "Clock.h"
#include "applications/ServiceApplications.h"
#include "funding/FundingUses.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "dated/DatedDeliveries.h"
#include "fields/ClientFieldRules.h"
#include "overrides/AddressOverrideRules.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "rules/ClientRules.h"
#include "rules/ClientStatus.h"
#include "session/StartupError.h"
#include "session/TDataModule1.h"
#include "settings/ComponentTree.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"
#include "window/ClientCommands.h"
#include "window/ClientFieldLayout.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/PageGridEditing.h"

#include <QUrlQuery>

namespace kb {

namespace {

namespace cmd = client_command;

const QString Status = QStringLiteral("STATUS");
// Whether the grids of "Client Services" show their title rows, per user.
const QString ServiceHeadingsSection = QStringLiteral("ClientEdit");
const QString ServiceHeadingsKey = QStringLiteral("ServiceColumnHeadings");
const QString PersonId = QStringLiteral("PERSON_ID");

bool filled(const QVariant& value)
{
    return !value.isNull() && !value.toString().trimmed().isEmpty();
}

// Fields whose change alters which controls are live.
bool steersControls(const QString& field)
{
    static const QStringList fields = {QStringLiteral("STATUS"),       QStringLiteral("DELIVERY_TYPE"),
                                       QStringLiteral("STOP_DTE"),     QStringLiteral("ORG_CLIENT"),
                                       QStringLiteral("DOB"),          QStringLiteral("CLIENT_ID"),
                                       QStringLiteral("HOUSEHOLD_ID"), QStringLiteral("DIET_RESTR"),
                                       QStringLiteral("PLEDGE_METHOD")};
    return fields.contains(field.toUpper());
}

int wholeYears(const QDate& birth, const QDate& today)
{
    int years = today.year() - birth.year();
    if (today.month() < birth.month() || (today.month() == birth.month() && today.day() < birth.day()))
        --years;
    return years;
}

} // namespace

class TFormClients::AlternateEditor final : public AlternateAddressEditor
{
public:
    explicit AlternateEditor(TFormClients& form) : m_form(form) {}
    bool isEditing() const override
    {
        const QueryDataSet* set = m_form.alternateAddress();
        return set && (set->state() == DataSet::State::Edit || set->state() == DataSet::State::Insert);
    }
    void post() override
    {
        if (QueryDataSet* set = m_form.alternateAddress()) set->post();
    }
    void cancel() override
    {
        if (QueryDataSet* set = m_form.alternateAddress()) set->cancel();
    }

private:
    TFormClients& m_form;
};

TFormClients::TFormClients(TDataModule1& module, UserInterface& ui, ClientRules* rules)
    : m_module(module), m_ui(ui), m_rules(rules), m_alternateEditor(std::make_unique<AlternateEditor>(*this)),
      m_pageData(std::make_unique<ClientPageData>(module.clients(), module.services(), ui)),
      m_fieldRules(std::make_unique<ClientFieldRules>(module.db(), ui)),
      m_staffRow(std::make_unique<QueryDataSet>(
          module.db(), QStringLiteral("Select * from Staff where User_ID = :User_ID")))
{
    if (m_rules) m_rules->setAlternateAddress(m_alternateEditor.get());
    m_filterForm.setInternet(onInternet());
    installOwnHandlers();
    m_applications = std::make_unique<ServiceApplications>(module, *m_pageData, ui);
    m_funding = std::make_unique<FundingUses>(module, *m_pageData, ui);
    m_pageGrids = std::make_unique<PageGridEditing>(*this);
    installServiceHandlers();
    installDatedDeliveryRules();
}

// The episodic grid of the delivery page is a live set over the client's
// dated deliveries: whatever edits a row there meets the rules of the
// delivery screens, with their messages.
void TFormClients::installDatedDeliveryRules()
{
    m_datedDeliveries = std::make_unique<DatedDeliveries>(
        m_module.db(), m_ui, [this] { return m_module.session().userFullName; });
    m_datedDeliveries->attachRules(
        m_pageData->query(QStringLiteral("QueryEpisodicDeliveries")), DatedKind::Episodic,
        [this]() -> std::optional<DatedClient> {
            TableDataSet& set = clients();
            if (!set.isActive() || set.isEmpty()) return std::nullopt;
            return DatedClient::byPersonId(m_module.db(), set.fieldValue(u"Person_ID").toLongLong());
        });
}

TFormClients::~TFormClients()
{
    if (m_rules) m_rules->setAlternateAddress(nullptr);
}

TableDataSet& TFormClients::clients()
{
    return m_module.clients();
}

template <typename Work> bool TFormClients::guarded(Work&& work)
{
    return m_module.services().guarded(std::forward<Work>(work));
}

bool TFormClients::onInternet() const
{
    return m_module.session().cMode == QLatin1String("C") &&
           m_module.session().cConnectionMethod == QLatin1String("Internet");
}

void TFormClients::installOwnHandlers()
{
    setHandler(cmd::RefreshLists, [this] { PopulateCombos(); });
    setHandler(cmd::Exit, [this] { emit closeRequested(); });
    setHandler(cmd::NextClient, [this] { next(); });
    setHandler(cmd::PriorClient, [this] { prior(); });
    setHandler(cmd::FirstClient, [this] { first(); });
    setHandler(cmd::LastClient, [this] { last(); });
    setHandler(cmd::GetBagCode, [this] {
        if (!isEditing() && !edit()) return;
        m_fieldRules->GetBagCode(clients());
        emit rowChanged();
    });
}

// The commands of the schedule's weekday boxes and of the service and
// funding pages, which work on the page data without a screen of their own.
void TFormClients::installServiceHandlers()
{
    const auto invert = [this](WeekdayGroup group) {
        if (!isEditing() && !edit()) return;
        invertWeekdays(clients(), group);
    };
    setHandler(cmd::InvertWeekdays, [invert] { invert(WeekdayGroup::Weekdays); });
    setHandler(cmd::InvertWeekends, [invert] { invert(WeekdayGroup::Weekends); });
    setHandler(cmd::InvertAllDays, [invert] { invert(WeekdayGroup::AllDays); });
    setHandler(cmd::AddApplication, [this] { m_applications->ActionAddApplication(); });
    setHandler(cmd::DeleteApplication, [this] { m_applications->ActionDeleteApplication(); });
    setHandler(cmd::AddFunding, [this] { m_funding->ActionAddFunding(); });
    setHandler(cmd::DeleteFunding, [this] { m_funding->ActionDeleteFunding(); });
    setHandler(cmd::AddItemRate, [this] { m_funding->ActionAddItemRate(); });
    setHandler(cmd::DeleteItemRate, [this] { m_funding->ActionDeleteItemRate(); });
    setHandler(cmd::ReverseWeekdays, [this] { m_funding->reverseDays(WeekdayGroup::Weekdays); });
    setHandler(cmd::ReverseWeekends, [this] { m_funding->reverseDays(WeekdayGroup::Weekends); });
    setHandler(cmd::ReverseAllDays, [this] { m_funding->reverseDays(WeekdayGroup::AllDays); });
    setHandler(cmd::ResultingRates, [this] { m_funding->showResultingRates(); });
    setHandler(cmd::AddPledgeItem, [this] { m_funding->ActionAddPledgeItem(); });
    setHandler(cmd::DeletePledgeItem, [this] { m_funding->ActionDeletePledgeItem(); });
    setHandler(cmd::ShowColumnHeadings, [this] {
        m_module.userSettings().writeChecked(ServiceHeadingsSection, ServiceHeadingsKey,
                                             !serviceColumnHeadings());
    });
}

bool TFormClients::serviceColumnHeadings() const
{
    return m_module.userSettings().readBool(ServiceHeadingsSection, ServiceHeadingsKey, true);
}

// ---- life cycle ----

void TFormClients::create()
{
    if (!m_module.session().lGoOn) throw StartupError(QStringLiteral("The data is not connected."));
    SetFieldVisibility(VisibleFieldsList::Assessments);
    SetFieldVisibility(VisibleFieldsList::Screening);
    PopulateCombos();
    m_rowCount = rowCount();
}

void TFormClients::firstShow()
{
    applyAccessLevel();
    SetTabVisibility();
    m_currentPage = -1;
    changePage(m_tabs.startPage);
    SetControlsState(true);
    emit rowsChanged();
    emit rowChanged();
    emit stateChanged();
}

void TFormClients::applyAccessLevel()
{
    const AccessLevel access = m_module.session().access();
    m_pageData->setReadOnly(!access.mayChangeData());
}

void TFormClients::firstActivation()
{
    if (m_activated) return;
    m_activated = true;
    Database& db = m_module.db();
    const SessionState& session = m_module.session();
    // The opening statement, when the user's row asks for it. (The saving
    // statement of a client is read afresh at every save, so it has nothing
    // to be put back after this one.)
    guarded([&] {
        const QString text = GetSQLStatement(db, QStringLiteral("EXECUTE_ON_OPEN"));
        if (text.trimmed().isEmpty() || session.staffId < 0) return;
        const ResultSet asks =
            db.execute(QStringLiteral("Select Execute_OnOpen_Query from Staff where Staff_ID = :Staff_ID"),
                       {{QStringLiteral("Staff_ID"), session.staffId}});
        if (!asks.isEmpty() && asks.value(0, 0).toBool()) db.execute(text);
    });
    bool due = false;
    guarded([&] {
        const QDate today = m_module.clock().today();
        due = !db.execute(
                     QStringLiteral("Select Alert_Recipients.Responsibility_Code, Notes.Subject, "
                                    "Notes.Alert_DateTime from Alert_Recipients join Notes on "
                                    "Alert_Recipients.Alert_ID = Notes.Record_ID where "
                                    "Alert_Recipients.Recipient_ID = :Recipient_ID and (not Notes.Status = "
                                    "'C') and Notes.Alert_DateTime >= :Begin_Period and Cast( "
                                    "Notes.Alert_DateTime as Date) <= :End_Period;"),
                     {{QStringLiteral("Recipient_ID"), session.staffId},
                      {QStringLiteral("Begin_Period"), QDateTime(today.addDays(-7), QTime(0, 0))},
                      {QStringLiteral("End_Period"), today}})
                   .isEmpty();
    });
    if (!due) return;
    m_ui.information(QStringLiteral(
        "You may have an Alert or Follow-Up due!\r\nYour list of Alerts will now be displayed."));
    m_alertsShown = true;
    if (hasHandler(QStringLiteral("ActionEditAlerts"))) run(QStringLiteral("ActionEditAlerts"));
}

bool TFormClients::closeQuery()
{
    if (!m_module.closeQuery()) return false;
    m_pageData->leavePage();
    return true;
}

// ---- the status bar ----

QString TFormClients::dataDirectoryText() const
{
    const DataLocation& location = m_module.location();
    if (location.clientServer) return location.serverAddress + QLatin1Char('/') + location.database;
    return location.directory;
}

QString TFormClients::userText() const
{
    return m_module.session().userFullName;
}

QString TFormClients::recordStateText() const
{
    switch (m_module.clients().state()) {
    case DataSet::State::Edit:
        return QStringLiteral("Editing");
    case DataSet::State::Insert:
        return QStringLiteral("Adding");
    default:
        return QStringLiteral("Viewing");
    }
}

void TFormClients::ShowTransactionStatus(bool inTransaction)
{
    m_inTransaction = inTransaction;
    emit stateChanged();
}

// ---- access level ----

bool TFormClients::clientAreaVisible() const
{
    return !m_module.session().access().reportsOnly();
}

bool TFormClients::fieldsReadOnly() const
{
    return !m_module.session().access().mayChangeData();
}

bool TFormClients::isMenuVisible(const QString& path) const
{
    for (const ClientMenuInfo& menu : clientMenus())
        if (menu.path == path)
            return !((menu.access & HiddenReportsOnly) && m_module.session().access().reportsOnly());
    return false;
}

bool TFormClients::isMenuEnabled(const QString& path) const
{
    for (const ClientMenuInfo& menu : clientMenus())
        if (menu.path == path)
            return !((menu.access & DisabledReadOnly) && m_module.session().access().readOnly());
    return false;
}

// ---- commands ----

void TFormClients::setHandler(const QString& id, std::function<void()> handler)
{
    if (handler)
        m_handlers.insert(id, std::move(handler));
    else
        m_handlers.remove(id);
}

TFormClients::CommandState TFormClients::commandState(const QString& id) const
{
    CommandState state;
    const ClientCommandInfo* info = findClientCommand(id);
    if (!info) {
        state.visible = state.enabled = false;
        return state;
    }
    state.text = m_controls.texts.value(id, info->caption);
    if (id.startsWith(QLatin1String("ActionUserReport"))) {
        const int n = id.right(1).toInt();
        if (n >= 1 && n <= m_lists.userReportCaptions.size()) state.text = m_lists.userReportCaptions[n - 1];
    }
    const AccessLevel access = m_module.session().access();
    if (access.reportsOnly() && (info->access & HiddenReportsOnly)) state.visible = false;
    if (access.readOnly() && (info->access & HiddenReadOnly)) state.visible = false;
    if (access.readOnly() && (info->access & DisabledReadOnly)) state.enabled = false;
    state.visible = state.visible && m_controls.isVisible(id);
    state.enabled = state.enabled && m_controls.isEnabled(id);
    state.bold = m_controls.bold.contains(id);
    if (id == cmd::ShowColumnHeadings) {
        state.checkable = true;
        state.checked = serviceColumnHeadings();
    }
    // The map buttons follow the agency's way of mapping.
    if (id == cmd::MapPointMap) state.visible = state.visible && m_lists.mapPointShown;
    if (id == cmd::GetMap) state.enabled = state.enabled && m_lists.getMapEnabled;
    if (!m_handlers.contains(id)) {
        state.enabled = false;
        state.toolTip = notAvailableText();
    }
    return state;
}

bool TFormClients::run(const QString& id)
{
    const ClientCommandInfo* info = findClientCommand(id);
    if (!info || !commandState(id).enabled) return false;
    const std::function<void()> handler = m_handlers.value(id);
    if (info->keepsBookmark) BookmarkClients();
    const bool done = guarded(handler);
    if (info->keepsBookmark) {
        guarded([&] {
            if (clients().state() == DataSet::State::Browse && !clients().isEmpty())
                clients().refreshRecord();
        });
        returnToBookmark();
        SetControlsState(true);
        emit rowsChanged();
        emit rowChanged();
        emit stateChanged();
    }
    return done;
}

// ---- moving and editing ----

void TFormClients::afterMove()
{
    if (rowCount() != m_rowCount) {
        m_rowCount = rowCount();
        emit rowsChanged();
    }
    SetControlsState(false);
    emit rowChanged();
    emit stateChanged();
}

void TFormClients::first()
{
    guarded([&] { clients().first(); });
    afterMove();
}

void TFormClients::prior()
{
    guarded([&] { clients().prior(); });
    afterMove();
}

void TFormClients::next()
{
    guarded([&] { clients().next(); });
    afterMove();
}

void TFormClients::last()
{
    guarded([&] { clients().last(); });
    afterMove();
}

bool TFormClients::moveTo(int position)
{
    if (position < 0 || position >= rowCount()) return false;
    if (position == this->position()) return true;
    const bool moved = guarded([&] { clients().setRecNo(position + 1); });
    afterMove();
    return moved && this->position() == position;
}

int TFormClients::position() const
{
    return m_module.clients().recNo() - 1;
}

int TFormClients::rowCount() const
{
    TableDataSet& set = m_module.clients();
    return set.isActive() ? set.recordCount() : 0;
}

bool TFormClients::edit()
{
    if (fieldsReadOnly()) return false;
    if (isEditing()) return true;
    const bool done = guarded([&] { clients().edit(); });
    computeControls();
    emit rowChanged();
    emit stateChanged();
    return done;
}

bool TFormClients::post()
{
    if (!isEditing()) return true;
    const bool done = guarded([&] { clients().post(); });
    m_rowCount = -1; // a new row, or a row the filter or the order moved
    afterMove();
    SetControlsState(true);
    emit rowChanged();
    return done;
}

void TFormClients::cancel()
{
    if (!isEditing()) return;
    guarded([&] { clients().cancel(); });
    m_rowCount = -1;
    afterMove();
    SetControlsState(true);
    emit rowChanged();
}

bool TFormClients::isEditing() const
{
    const DataSet::State state = m_module.clients().state();
    return state == DataSet::State::Edit || state == DataSet::State::Insert;
}

QStringList TFormClients::indexNames() const
{
    QStringList names;
    if (const TableDef* def = m_module.db().persistentTable(u"Clients"))
        for (const IndexDef& index : def->indexes())
            if (!index.primary) names.append(index.name);
    return names;
}

QString TFormClients::indexName() const
{
    return m_module.clients().indexName();
}

QString TFormClients::indexCaption(const QString& index)
{
    static const QHash<QString, QString> captions = {
        {QStringLiteral("PERSON_ID"), QStringLiteral("Person ID")},
        {QStringLiteral("CLIENT_ID"), QStringLiteral("Client ID")},
        {QStringLiteral("PHONE"), QStringLiteral("Phone")},
        {QStringLiteral("DEF_RTE"), QStringLiteral("Default Route")},
        {QStringLiteral("FIRST_LAST"), QStringLiteral("First Name, Last Name")},
        {QStringLiteral("LAST_FIRST"), QStringLiteral("Last Name, First Name")},
        {QStringLiteral("ZIP"), QStringLiteral("ZIP Code")},
        {QStringLiteral("STATUS"), QStringLiteral("Status")},
        {QStringLiteral("HOUSEHOLD_ID"), QStringLiteral("Household ID")},
        {QStringLiteral("PLEDGE_PERIOD"), QStringLiteral("Pledge Period, Billing")},
        {QStringLiteral("DEF_RTE_DEF_STOP"), QStringLiteral("Default Route and Stop")},
        {QStringLiteral("SOCIAL_SECURITY_NUMBER"), QStringLiteral("Social Security Number")},
        {QStringLiteral("SVCS_USED"), QStringLiteral("Delivery Service")},
        {QStringLiteral("ADDRESS"), QStringLiteral("Address")},
        {QStringLiteral("URN"), QStringLiteral("Unique Identifier")},
        {QStringLiteral("USER_DEFINED4"), QStringLiteral("User-Defined Check Box")},
    };
    return captions.value(index.toUpper(), index);
}

void TFormClients::setClientIndex(const QString& index)
{
    TableDataSet& set = clients();
    if (set.indexName().compare(index, Qt::CaseInsensitive) == 0) return;
    BusyGuard busy(m_ui);
    guarded([&] { set.setIndexName(index); });
}

void TFormClients::setIndexName(const QString& index)
{
    setClientIndex(index);
    m_rowCount = -1;
    afterMove();
    emit rowsChanged();
}

bool TFormClients::search(const QString& text)
{
    TableDataSet& set = clients();
    const QString wanted = text.trimmed();
    if (wanted.isEmpty() || !set.isActive() || set.isEmpty()) return false;
    const TableDef* def = m_module.db().persistentTable(u"Clients");
    const IndexDef* index = def ? def->index(set.indexName()) : nullptr;
    if (!index) index = def ? def->index(u"LAST_FIRST") : nullptr;
    if (!index) return false;
    // "Last, First" searches the second column of a two-column key too.
    QStringList parts = QStringList{wanted};
    if (index->columns.size() > 1 && wanted.contains(QLatin1Char(',')))
        parts = wanted.split(QLatin1Char(','));
    const int first = set.fieldIndex(index->columns.front());
    const int second = index->columns.size() > 1 ? set.fieldIndex(index->columns.at(1)) : -1;
    const QString key = parts.front().trimmed();
    const QString rest = parts.size() > 1 ? parts.at(1).trimmed() : QString();
    const FieldType type = set.field(first).type;
    const bool numeric = type == FieldType::Int || type == FieldType::SmallInt || type == FieldType::Float ||
                         type == FieldType::AutoInc || type == FieldType::Currency;
    bool isNumber = false;
    const double number = key.toDouble(&isNumber);

    const int rows = set.recordCount();
    // Where a row's key stands against the text: below, or at or after it.
    const auto order = [&](int row) {
        const QVariant v = set.fieldValueAt(row, first);
        if (numeric) return v.isNull() ? -1 : (v.toDouble() < number ? -1 : (v.toDouble() > number ? 1 : 0));
        return QString::compare(v.toString().trimmed(), key, Qt::CaseInsensitive);
    };
    const auto firstMatches = [&](int row) {
        const QVariant v = set.fieldValueAt(row, first);
        if (numeric) return !v.isNull() && v.toDouble() == number;
        return v.toString().trimmed().startsWith(key, Qt::CaseInsensitive);
    };
    const auto matches = [&](int row) {
        if (!firstMatches(row)) return false;
        return numeric || rest.isEmpty() || second < 0 ||
               set.fieldValueAt(row, second).toString().trimmed().startsWith(rest, Qt::CaseInsensitive);
    };
    if (numeric && !isNumber) return false;
    // The rows stand in the order of the index, so the place of the text is
    // found by halving. Should the store's order of texts differ from this
    // comparison where the halving ends, every row is looked at instead.
    int low = 0;
    int high = rows;
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (order(middle) < 0)
            low = middle + 1;
        else
            high = middle;
    }
    const bool boundary = low < rows && (low == 0 || order(low - 1) < 0) && order(low) >= 0;
    int found = -1;
    int nearest = -1;
    if (boundary) {
        nearest = low;
        for (int r = low; r < rows && firstMatches(r); ++r)
            if (matches(r)) {
                found = r;
                break;
            }
    } else {
        for (int r = 0; r < rows && found < 0; ++r) {
            if (matches(r))
                found = r;
            else if (nearest < 0 && order(r) > 0)
                nearest = r;
        }
    }
    const int target = found >= 0 ? found : (nearest >= 0 ? nearest : rows - 1);
    return moveTo(target);
}

// ---- fields ----

QVariant TFormClients::value(const QString& field) const
{
    TableDataSet& set = m_module.clients();
    if (!set.isActive() || (set.isEmpty() && set.state() != DataSet::State::Insert)) return {};
    if (field == client_field::Age) return m_controls.ageText;
    if (field == client_field::HouseholdName) {
        // The query holds every household: the client's is looked up by its number.
        const QVariant household = set.fieldValue(u"HOUSEHOLD_ID");
        if (household.isNull()) return {};
        return m_module.query(QStringLiteral("QueryHouseholdName"))
            .lookup({QStringLiteral("Household_ID")}, {household}, QStringLiteral("Household_Name"));
    }
    if (set.fieldIndex(field) < 0) return {};
    return set.fieldValue(field);
}

bool TFormClients::setValue(const QString& field, const QVariant& value)
{
    if (fieldsReadOnly()) return false;
    if (!isEditing() && !edit()) return false;
    QVariant stored = value;
    // A default stop below nothing means no place yet.
    if (field.compare(QLatin1String("DEF_STOP"), Qt::CaseInsensitive) == 0 && !value.isNull() &&
        value.toDouble() < 0)
        stored = 0.0;
    const bool done = guarded([&] { clients().setFieldValue(field, stored); });
    if (steersControls(field)) {
        computeControls();
        emit rowChanged();
    }
    emit stateChanged();
    return done;
}

void TFormClients::fieldLeft(const QString& field)
{
    if (!isEditing()) return;
    const QString f = field.toUpper();
    DataSet& set = clients();
    bool changed = false;
    guarded([&] {
        if (f == QLatin1String("ZIP")) {
            m_fieldRules->checkEntry(f, set.fieldValue(f).toString());
            changed = m_fieldRules->zipLeft(set);
        } else if (f == QLatin1String("CONTRACTUAL_START_DTE")) {
            m_fieldRules->contractualStartLeft(set);
            changed = true;
        } else if (f == QLatin1String("CONTRACTUAL_STOP_DTE")) {
            m_fieldRules->contractualStopLeft(set);
            changed = true;
        } else if (f == QLatin1String("PHONE") || f == QLatin1String("OPHONE") ||
                   f == QLatin1String("SOCIAL_SECURITY_NUMBER")) {
            m_fieldRules->checkEntry(f, set.fieldValue(f).toString());
        } else if (f == QLatin1String("CC_NUMBER")) {
            const QString number = set.fieldValue(f).toString();
            if (number.trimmed().isEmpty())
                m_controls.marked.remove(f);
            else if (m_fieldRules->checkCardNumber(number).marked())
                m_controls.marked.insert(f);
            else
                m_controls.marked.remove(f);
            changed = true;
        }
    });
    for (const ClientFieldGroup& group : clientFieldGroups())
        for (const ClientFieldInfo& info : group.fields)
            if (info.kind == ClientFieldKind::History && info.field == f)
                m_lists.remember(info.list, set.fieldValue(f).toString(), m_module.sharedSettings());
    if (changed) emit rowChanged();
}

bool TFormClients::setListBit(const QString& field, int bit, bool checked)
{
    if (bit < 0 || bit > 30) return false;
    const qint64 mask = value(field).toLongLong();
    const qint64 changed = checked ? (mask | (qint64(1) << bit)) : (mask & ~(qint64(1) << bit));
    if (changed == mask) return true;
    if (field.compare(QLatin1String("DIET_RESTR"), Qt::CaseInsensitive) == 0 && checked &&
        !m_fieldRules->acceptDietCheck(qPopulationCount(quint64(changed))))
        return false;
    return setValue(field, changed);
}

QString TFormClients::label(const QString& field, const QString& fallback) const
{
    return m_lists.labels.value(field, fallback);
}

bool TFormClients::isComponentVisible(const QString& component) const
{
    if (component.isEmpty()) return true;
    return ComponentTree::fromText(m_lists.visibleComponents).isVisible(component);
}

QString TFormClients::entryMask(const QString& field) const
{
    return m_fieldRules->entryMask(field);
}

// ---- pages ----

void TFormClients::changePage(int page)
{
    if (page == m_currentPage || page < 0 || page >= client_page::Count) return;
    m_pageData->leavePage();
    m_currentPage = page;
    guarded([&] { m_pageData->enterPage(page); });
    emit pageChanged(page);
}

// ---- the window's own steps ----

bool TFormClients::rowsExist(const QString& sql, const Params& params) const
{
    return !m_module.db().execute(sql, params).isEmpty();
}

void TFormClients::SetControlsState(bool force)
{
    TableDataSet& set = clients();
    const qint64 recordId =
        set.isActive() && !set.isEmpty() ? set.fieldValue(u"RecordID").toLongLong() : qint64(-1);
    if (!force && recordId == m_controls.recordId) return;
    if (m_module.db().inTransaction() && m_startedWithParameters)
        m_ui.warning(
            QStringLiteral("Stop! Email tech support your CodeSite log file.\r\nA transaction appears to "
                           "be active where one should not be."));
    guarded([&] { computeControls(); });
}

void TFormClients::computeControls()
{
    ClientControls c;
    c.marked = m_controls.marked;
    TableDataSet& set = clients();
    const bool hasRow = set.isActive() && (!set.isEmpty() || set.state() == DataSet::State::Insert);
    c.recordId =
        hasRow && set.state() != DataSet::State::Insert ? set.fieldValue(u"RecordID").toLongLong() : -1;
    if (c.recordId != m_controls.recordId) c.marked.clear();
    const AccessLevel access = m_module.session().access();
    const ConfigRecord config = ConfigRecord::fromDataSet(m_module.config());
    const QDate today = m_module.clock().today();
    const auto enable = [&](std::initializer_list<QString> ids, bool on) {
        for (const QString& id : ids)
            c.enabled.insert(id, on);
    };

    const QVariant personId = hasRow ? set.fieldValue(PersonId) : QVariant();
    const QString status = hasRow ? set.fieldValue(Status).toString() : QString();
    const bool isClient = hasRow && filled(set.fieldValue(u"CLIENT_ID"));
    const bool organization = hasRow && set.fieldValue(u"ORG_CLIENT").toString() == QLatin1String("Y");
    const bool active = status == client_status::Active;

    const QDate birth = hasRow ? set.fieldValue(u"DOB").toDate() : QDate();
    if (birth.isValid() && birth.year() > 1899)
        c.ageText = QStringLiteral("(%1)").arg(wholeYears(birth, today));
    c.socialSecurityText = hasRow ? m_fieldRules->socialSecurityText(set) : QString();
    const QString statusOnFile =
        set.state() == DataSet::State::Edit ? set.oldValue(Status).toString() : status;
    for (const client_status::Choice& choice : client_status::choices(statusOnFile, isClient))
        c.statusChoices.append({choice.code, choice.word});

    enable({QStringLiteral("DELIVERY_TYPE"), cmd::AddConsultation, cmd::ExcuseMissed,
            QStringLiteral("CONTRACTUAL_START_DTE"), QStringLiteral("CONTRACTUAL_STOP_DTE")},
           isClient);
    const bool stopReason = isClient && hasRow && m_fieldRules->isStopReasonEnabled(set);
    enable({QStringLiteral("STOP_CODE"), QStringLiteral("STOP_REASON")}, stopReason);
    enable({cmd::AddSuspension,
            cmd::EditSuspension,
            QStringLiteral("Suspensions"),
            QStringLiteral("Service Days"),
            cmd::AddEditDeliveries,
            cmd::ScheduledDeliveries,
            QStringLiteral("Scheduled Deliveries"),
            cmd::ModifyItems,
            cmd::ItemsWizard,
            QStringLiteral("START_DTE"),
            QStringLiteral("STOP_DTE"),
            QStringLiteral("CUISINE_ID"),
            QStringLiteral("COLD_BAG_ID"),
            cmd::GetBagCode,
            QStringLiteral("DEPENDENT"),
            QStringLiteral("HANDICAPPED"),
            QStringLiteral("PREFERENCES"),
            QStringLiteral("SVCS_USED"),
            QStringLiteral("ONGOING_FREQUENCY"),
            QStringLiteral("DEF_STOP"),
            cmd::ClearRoutes,
            cmd::ClearStops},
           active);
    enable({QStringLiteral("DIET_RESTR")}, active && m_fieldRules->isDietListEnabled());
    enable({cmd::RecordMissed}, active || status == client_status::Stopped);
    enable({QStringLiteral("DEF_RTE")}, active || status == client_status::WaitList);
    enable({cmd::EditRoutesStops}, active && access.mayEditRoutes());
    enable({cmd::AlternateAddresses}, active && config.flag(QStringLiteral("ENABLE_ALTERNATE_ADDRESSES")));
    static const char* const Days[] = {"MONDAY", "TUESDAY",  "WEDNESDAY", "THURSDAY",
                                       "FRIDAY", "SATURDAY", "SUNDAY"};
    for (int d = 0; d < 7; ++d)
        c.enabled.insert(QString::fromLatin1(Days[d]), hasRow && m_fieldRules->isDayEnabled(set, d));
    enable({QStringLiteral("DOB"),
            QStringLiteral("SEX"),
            QStringLiteral("RACE"),
            QStringLiteral("ETHNICITY"),
            QStringLiteral("SOCIAL_SECURITY_NUMBER"),
            QStringLiteral("HEIGHT"),
            QStringLiteral("USUAL_WEIGHT"),
            QStringLiteral("MARITAL_ST"),
            client_field::HouseholdName,
            cmd::HouseholdMembers,
            cmd::Households,
            QStringLiteral("INCOME_CATEGORY"),
            QStringLiteral("INCOME_MONTH"),
            QStringLiteral("CHILD_NBR"),
            QStringLiteral("CHILD_RECV"),
            QStringLiteral("NUMBER_IN_HOUSEHOLD"),
            QStringLiteral("HIV_STATUS"),
            QStringLiteral("LANGUAGE"),
            QStringLiteral("ILLITERATE"),
            QStringLiteral("INCOME_SOURCES"),
            cmd::AddAssessment,
            QStringLiteral("HOUSING_ARRANGEMENT"),
            QStringLiteral("INSURANCE_CARRIER"),
            QStringLiteral("INSURANCE_ID_NUMBER")},
           !organization);
    enable({cmd::HouseholdWizard},
           !organization && hasRow && set.fieldValue(u"HOUSEHOLD_ID").toLongLong() <= 0);

    const bool internet = onInternet();
    const Params person{{QStringLiteral("Person_ID"), personId}};
    const bool applications =
        internet ||
        (hasRow && rowsExist(QStringLiteral("Select TOP 1 App_ID from ServiceApps where Person_ID = "
                                            ":Person_ID"),
                             person));
    // "Add Application" stays usable for a client who has none yet.
    enable({QStringLiteral("QueryServiceApps"), cmd::EditApplicationComment, QStringLiteral("Documents"),
            QStringLiteral("Conditions")},
           applications);
    const bool history =
        internet ||
        (hasRow && rowsExist(QStringLiteral("Select TOP 1 RecordID from History where Person_ID = "
                                            ":Person_ID"),
                             person));
    enable({cmd::ViewStatusHistory}, history);
    enable({cmd::DeleteSelectedDelivery}, true);

    // Episodic clients are served on their listed dates, not on weekdays.
    const bool episodic = hasRow && set.fieldValue(u"DELIVERY_TYPE").toString() == QLatin1String("E");
    c.visible.insert(QStringLiteral("Service Days"), !episodic);
    c.visible.insert(QStringLiteral("Scheduled Deliveries"), episodic);
    const QString pledgeGroup =
        pledgeMethodGroup(hasRow ? set.fieldValue(u"PLEDGE_METHOD").toString() : QString());
    c.visible.insert(PledgedAmountGroup, pledgeGroup == PledgedAmountGroup);
    c.visible.insert(PledgeItemsGroup, pledgeGroup == PledgeItemsGroup);
    setFundingRateGroups(c);
    if (episodic && access.level() == AccessLevel::Level::FullW)
        for (const QString& id :
             {cmd::EditRoutesStops, cmd::AddSuspension, cmd::EditSuspension, cmd::DeleteSuspension})
            c.visible.insert(id, false);

    if (hasRow && !internet) {
        if (rowsExist(
                QStringLiteral("select Deliv_Date from EpisodicDeliveries where Person_ID = :Person_ID and "
                               "(not Person_ID is null ) and Schedule_Type = 'S' and Deliv_Date >= "
                               ":Current_Date"),
                {{QStringLiteral("Person_ID"), personId}, {QStringLiteral("Current_Date"), today}}))
            c.bold.insert(cmd::ScheduledDeliveries);
        if (rowsExist(
                QStringLiteral("Select RecordID from Address_Overrides where Person_ID = :Person_ID and "
                               "(((Override_Type = 'O' or Override_Type = 'T') and (Expire_Date > "
                               ":Expire_Date or Expire_Date is Null)) or ( Override_Type = 'D' and "
                               "deliv_date >= :Expire_Date ))"),
                {{QStringLiteral("Person_ID"), personId}, {QStringLiteral("Expire_Date"), today}}))
            c.bold.insert(cmd::AlternateAddresses);
        if (rowsExist(
                QStringLiteral("Select RecordID from DefDels where Person_ID = :nPerson_ID and Service_ID = "
                               ":nService_ID and Deliv_ID is null"),
                {{QStringLiteral("nPerson_ID"), personId},
                 {QStringLiteral("nService_ID"), set.fieldValue(u"SVCS_USED")}}))
            c.bold.insert(cmd::ModifyItems);
    }

    const ResultSet popUp =
        hasRow ? m_module.db().execute(
                     QStringLiteral("Select Note, User, Last_Update from Alerts where Person_ID = "
                                    ":Person_ID and Client_PopUp = True"),
                     person)
               : ResultSet();
    c.popUpShown = !popUp.isEmpty();
    c.popUpNote = c.popUpShown ? popUp.value(0, 0).toString() : QString();
    c.texts.insert(cmd::ClientPopUp,
                   c.popUpShown ? QStringLiteral("Edit Client Pop-Up") : QStringLiteral("Add Client Pop-Up"));
    enable({cmd::DeleteClientPopUp}, c.popUpShown);
    if (access.readOnly()) c.texts.insert(cmd::ModifyItems, QStringLiteral("View Meal Items"));

    m_controls = c;
    if (hasRow && set.state() != DataSet::State::Insert) computeAlternateAddress();
}

void TFormClients::setFundingRateGroups(ClientControls& c)
{
    const FundingRateGroups groups = m_funding->rateGroups();
    c.visible.insert(TimeRatesGroup, groups.timeRates);
    c.visible.insert(ClientRatesGroup, groups.itemRates);
    c.visible.insert(ResultingRatesGroup, groups.itemRates);
}

void TFormClients::pageRowChanged()
{
    setFundingRateGroups(m_controls);
    emit pageGroupsChanged();
}

void TFormClients::computeAlternateAddress()
{
    QueryDataSet& display = m_pageData->query(QStringLiteral("QueryAlternateAddressDisplay"));
    const ConfigRecord config = ConfigRecord::fromDataSet(m_module.config());
    std::optional<qint64> found;
    if (config.flag(QStringLiteral("ENABLE_ALTERNATE_ADDRESSES")))
        found = AddressOverrideRules::overrideOfDate(
            m_module.db(), clients().fieldValue(PersonId).toLongLong(), m_module.clock().today());
    if (!found) {
        if (display.isActive() && !m_alternateEditor->isEditing()) display.close();
        return;
    }
    if (!display.isActive() || display.param(QStringLiteral("RecordID")).toLongLong() != *found) {
        display.close();
        display.setParam(QStringLiteral("RecordID"), *found);
        if (fieldsReadOnly()) display.setReadOnly(true);
        OpenQuery(display);
    }
    m_controls.alternateRecordId = *found;
    QString caption = QStringLiteral("Alternate Directions");
    const QString description = display.fieldValue(u"Addr_Desc").toString().trimmed();
    if (!description.isEmpty()) caption += QStringLiteral(": ") + description;
    const QString route = display.fieldValue(u"Route").toString().trimmed();
    if (!route.isEmpty()) caption += QStringLiteral(", Route: ") + route;
    m_controls.alternateDirectionsCaption = caption;
}

void TFormClients::PopulateCombos()
{
    guarded([&] {
        ConfigRecord config = ConfigRecord::fromDataSet(m_module.config());
        m_lists = ClientLists::read(m_module.db(), config, m_module.sharedSettings());
        // The warnings are about what an agency chose; a tree never saved chose nothing.
        const bool chosen = !m_lists.visibleComponents.trimmed().isEmpty();
        const ComponentTree tree = ComponentTree::fromText(m_lists.visibleComponents);
        if (chosen && !tree.isVisible(QStringLiteral("Recertification Date")) &&
            config.integer(QStringLiteral("RECERT_WKS")) != 0)
            m_ui.warning(QStringLiteral(
                "The \"Recertification Date\" is set to invisible but \"Weeks Until \r\nRertification\" "
                "contains "
                "a value other than zero. In the \r\nConfiguration Utility set \"Weeks Until "
                "Recertification\" to "
                "zero \r\nand the \"Recertication Date\" will then be set to invisible as \r\ndesired."));
        const bool card = tree.isVisible(QStringLiteral("Cardholder Name")) ||
                          tree.isVisible(QStringLiteral("Expiration")) ||
                          tree.isVisible(QStringLiteral("Security Code")) ||
                          tree.isVisible(QStringLiteral("Card Number"));
        if (chosen && card && tree.isVisible(QStringLiteral("Housing/Living Arrangement")))
            m_ui.warning(
                QStringLiteral("You have both Credit Card information as well as \r\nHousing/Living "
                               "Arrangement set to be visible!\r\nOnly one or the other should be set to "
                               "visible at the same time."));
        m_fieldRules = std::make_unique<ClientFieldRules>(m_module.db(), m_ui);
    });
    SetTabVisibility();
    emit listsChanged();
}

void TFormClients::SetTabVisibility()
{
    const SessionState& session = m_module.session();
    bool hasRow = false;
    qint64 visibleTabs = 0;
    int dtab = 0;
    bool conserve = false;
    if (session.signedIn()) {
        guarded([&] {
            m_staffRow->close();
            m_staffRow->setParam(QStringLiteral("User_ID"), session.cUserName);
            OpenQuery(*m_staffRow);
            hasRow = !m_staffRow->isEmpty();
            if (hasRow) {
                visibleTabs = m_staffRow->fieldValue(u"Visible_Tabs").toLongLong();
                dtab = m_staffRow->fieldValue(u"DTab").toInt();
                conserve = m_staffRow->fieldValue(u"Conserve_Resources").toString() == QLatin1String("Y");
            }
            m_staffRow->close();
        });
    }
    m_tabs = ClientTabs::make(hasRow, visibleTabs, dtab, conserve);
}

void TFormClients::SetFieldVisibility(VisibleFieldsList list)
{
    const QString memo =
        ConfigRecord::fromDataSet(m_module.config()).text(TVisibleFieldsDlg::memoColumn(list));
    // Without a chosen list the grid shows every field but the keys.
    QList<VisibleField> shown;
    if (!memo.trimmed().isEmpty())
        for (const VisibleField& f :
             TVisibleFieldsDlg::SetFieldVisibility(TVisibleFieldsDlg::fieldsOf(list), memo, list, m_ui))
            if (f.visible) shown.append(f);
    if (list == VisibleFieldsList::Assessments)
        m_assessmentColumns = shown;
    else
        m_screeningColumns = shown;
}

void TFormClients::SetGridFields()
{
    SetFieldVisibility(VisibleFieldsList::Assessments);
}

void TFormClients::BookmarkClients()
{
    TableDataSet& set = m_module.clients();
    m_bookmark = set.isActive() ? set.bookmark() : DataSet::Bookmark{};
}

void TFormClients::returnToBookmark()
{
    TableDataSet& set = m_module.clients();
    if (set.state() != DataSet::State::Browse || !set.bookmarkValid(m_bookmark)) return;
    if (set.bookmark().rowId == m_bookmark.rowId) return;
    guarded([&] { set.gotoBookmark(m_bookmark); });
}

// ---- filters ----

void TFormClients::applyFilter(std::function<bool(const DataSet&)> filter, const QString& text)
{
    TableDataSet& set = clients();
    guarded([&] {
        set.checkBrowseMode();
        if (filter) {
            set.setFilter(std::move(filter));
            set.setFiltered(true);
        } else {
            set.setFiltered(false);
            set.setFilter({});
        }
    });
    m_filterText = text;
    m_rowCount = -1;
    afterMove();
    emit rowsChanged();
}

void TFormClients::readSuspendedToday()
{
    m_suspendedToday.clear();
    guarded([&] {
        const ResultSet rows = m_module.db().execute(QStringLiteral(
            "Select Person_ID from Suspends where stop_dt <= Current_Date and resume_dt > Current_Date"));
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            m_suspendedToday.insert(rows.value(r, 0).toLongLong());
    });
}

void TFormClients::statusFilterClosed(bool ok)
{
    if (!ok || m_filterForm.status() == TFilterForm::Status::AllRegardless) {
        applyFilter({}, TFilterForm::offText());
        return;
    }
    const QString code = m_filterForm.statusCode();
    const TFilterForm::Suspension suspension = m_filterForm.suspension();
    // The suspensions of today are read once, not once a row.
    if (suspension != TFilterForm::Suspension::AllRegardless) readSuspendedToday();
    applyFilter(
        [this, code, suspension](const DataSet& set) {
            if (set.fieldValue(u"STATUS").toString() != code) return false;
            if (suspension == TFilterForm::Suspension::AllRegardless) return true;
            const bool suspended = m_suspendedToday.contains(set.fieldValue(u"PERSON_ID").toLongLong());
            return suspension == TFilterForm::Suspension::Suspended ? suspended : !suspended;
        },
        m_filterForm.statusText());
}

void TFormClients::customFilterClosed()
{
    if (m_customFilter.isEmpty()) {
        applyFilter({}, TFilterForm::offText());
        return;
    }
    const ClientCustomFilter filter = m_customFilter;
    applyFilter([filter](const DataSet& set) { return filter.accepts(set); },
                QStringLiteral("Filter: Custom"));
}

bool TFormClients::isFiltered() const
{
    return m_module.clients().isFiltered();
}

// ---- the alternate address in the header ----

QueryDataSet* TFormClients::alternateAddress()
{
    QueryDataSet& set = m_pageData->query(QStringLiteral("QueryAlternateAddressDisplay"));
    return set.isActive() ? &set : nullptr;
}

QVariant TFormClients::alternateValue(const QString& column) const
{
    QueryDataSet& set = m_pageData->query(QStringLiteral("QueryAlternateAddressDisplay"));
    return set.isActive() && !set.isEmpty() && set.fieldIndex(column) >= 0 ? set.fieldValue(column)
                                                                           : QVariant();
}

bool TFormClients::setAlternateValue(const QString& column, const QVariant& value)
{
    QueryDataSet* set = alternateAddress();
    if (!set || fieldsReadOnly()) return false;
    return guarded([&] {
        if (set->state() == DataSet::State::Browse) set->edit();
        set->setFieldValue(column, value);
    });
}

void TFormClients::alternateTabLeft()
{
    if (m_alternateEditor->isEditing()) guarded([&] { m_alternateEditor->post(); });
}

// ---- map and mail ----

QUrl TFormClients::mapUrl() const
{
    const ConfigRecord config = ConfigRecord::fromDataSet(m_module.config());
    QString url = config.text(QStringLiteral("MAPPING_URL")).trimmed();
    if (url.isEmpty()) return {};
    const bool alternate = m_controls.alternateRecordId > 0;
    const auto part = [&](const char* clientColumn, const char* alternateColumn) {
        const QVariant v = alternate ? alternateValue(QString::fromLatin1(alternateColumn))
                                     : value(QString::fromLatin1(clientColumn));
        return QString::fromUtf8(QUrl::toPercentEncoding(v.toString().trimmed().replace(u' ', u'+'), "+"));
    };
    url.replace(QStringLiteral("AXXX"), part("ADDRESS1", "Address1"));
    url.replace(QStringLiteral("CXXX"), part("CITY", "City"));
    url.replace(QStringLiteral("SXXX"), part("STATE", "State"));
    url.replace(QStringLiteral("ZXXX"), part("ZIP", "ZIP"));
    return QUrl(url, QUrl::TolerantMode);
}

QUrl TFormClients::mailUrl() const
{
    const QString address = value(QStringLiteral("EMAIL")).toString().trimmed();
    if (address.isEmpty()) return {};
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(address);
    const QString organization =
        ConfigRecord::fromDataSet(m_module.config()).text(QStringLiteral("ORGANIZATN")).trimmed();
    if (!organization.isEmpty()) {
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("subject"), organization);
        url.setQuery(query);
    }
    return url;
}

} // namespace kb
