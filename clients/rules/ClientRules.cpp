#include "rules/ClientRules.h"

#include "Clock.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/HookSuspension.h"
#include "records/RecordServices.h"
#include "rules/AlternateAddressEditor.h"
#include "rules/ClientDialogs.h"
#include "rules/ClientSaveSteps.h"
#include "rules/ClientStatus.h"
#include "screens/TFormShowHouseholdMembers.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace kb {

namespace {

using Hook = DataSet::Hook;

const QString CalcSuspended = QStringLiteral("CalcSuspended");
const QString CalcSuspendedText = QStringLiteral("CalcSuspendedText");

} // namespace

ClientRules::ClientRules(RecordServices& services, UserInterface& ui, const Clock& clock,
                         const SessionState& session)
    : m_services(services), m_ui(ui), m_clock(clock), m_session(session)
{
}

ClientRules::~ClientRules()
{
    detach();
}

void ClientRules::addCalculatedFields(DataSet& clients)
{
    clients.addCalculatedField(CalcSuspended, FieldType::Bool);
    clients.addCalculatedField(CalcSuspendedText, FieldType::String, 9);
}

void ClientRules::attach(DataSet& clients)
{
    detach();
    if (clients.fieldIndex(CalcSuspended) < 0) {
        if (clients.isActive())
            throw MessageError(
                QStringLiteral("The client rules must be attached to the Clients data set before it opens."));
        addCalculatedFields(clients);
    }
    m_clients = &clients;
    auto hang = [&](Hook hook, void (ClientRules::*own)(DataSet&)) {
        DataSet::HookFunction previous = clients.hook(hook);
        m_previous[size_t(hook)] = previous;
        m_attachedHooks.push_back(hook);
        clients.setHook(hook, [this, own, previous](DataSet& set) {
            (this->*own)(set);
            if (previous) previous(set);
        });
    };
    hang(Hook::BeforeInsert, &ClientRules::beforeInsert);
    hang(Hook::AfterEdit, &ClientRules::afterEdit);
    hang(Hook::BeforePost, &ClientRules::beforePost);
    hang(Hook::AfterPost, &ClientRules::afterPost);
    hang(Hook::BeforeCancel, &ClientRules::beforeCancel);
    hang(Hook::AfterCancel, &ClientRules::afterCancel);
    hang(Hook::BeforeScroll, &ClientRules::beforeScroll);
    hang(Hook::OnCalcFields, &ClientRules::calculate);
    m_previousPostError = clients.errorHook(Hook::OnPostError);
    if (m_previousPostError)
        clients.setErrorHook(Hook::OnPostError,
                             [this](DataSet& set, const DbError& error) { return postError(set, error); });
}

void ClientRules::detach()
{
    if (!m_clients) return;
    for (Hook hook : m_attachedHooks)
        m_clients->setHook(hook, m_previous[size_t(hook)]);
    if (m_previousPostError) m_clients->setErrorHook(Hook::OnPostError, m_previousPostError);
    m_attachedHooks.clear();
    m_previous = {};
    m_previousPostError = nullptr;
    m_clients = nullptr;
}

bool ClientRules::onInternet() const
{
    return m_session.cConnectionMethod.compare(QLatin1String("Internet"), Qt::CaseInsensitive) == 0;
}

// ---- edit, insert, cancel, scroll ----

void ClientRules::beforeInsert(DataSet&)
{
    m_old = ClientValues();
}

void ClientRules::afterEdit(DataSet& clients)
{
    m_old = ClientValues::read(clients);
    m_household.editBegins(m_old);
    m_filterTakenOff = clients.isFiltered();
    if (m_filterTakenOff) clients.setFiltered(false);
}

void ClientRules::restoreFilter(DataSet& clients, bool takenOff)
{
    if (takenOff && clients.isActive()) clients.setFiltered(true);
}

void ClientRules::beforeCancel(DataSet&)
{
    if (m_alternateAddress && m_alternateAddress->isEditing()) m_alternateAddress->cancel();
}

void ClientRules::afterCancel(DataSet& clients)
{
    restoreFilter(clients, std::exchange(m_filterTakenOff, false));
}

void ClientRules::beforeScroll(DataSet&)
{
    if (!m_alternateAddress || !m_alternateAddress->isEditing()) return;
    if (m_ui.question(QStringLiteral("Save your changes to the Alternate Address?"), Buttons::YesNo) ==
        Answer::Yes)
        m_alternateAddress->post();
    else
        m_alternateAddress->cancel();
}

// Suspension is told by Suspends, never by a column of the row. On a
// connection over the Internet a statement per row is too slow, and the
// fields stay empty.
void ClientRules::calculate(DataSet& clients)
{
    if (onInternet()) return;
    bool suspended = false;
    if (clients.fieldValue(u"STATUS").toString() == client_status::Active) {
        suspended =
            !m_services.db()
                 .execute(
                     QStringLiteral("Select RecordID from Suspends where Person_ID = :Person_ID and stop_dt "
                                    "<= Current_Date and resume_dt > Current_Date"),
                     {{QStringLiteral("Person_ID"), clients.fieldValue(u"PERSON_ID")}})
                 .isEmpty();
    }
    clients.setFieldValue(CalcSuspended, suspended);
    clients.setFieldValue(CalcSuspendedText, suspended ? QStringLiteral("Suspended") : QString());
}

// The row was saved by another workstation while this one held it (a
// statement, not an edit) and the record services read it again before
// they try once more: the edit now starts from that row.
DataSet::ErrorAction ClientRules::postError(DataSet& clients, const DbError& error)
{
    const DataSet::ErrorAction action = m_previousPostError(clients, error);
    if (action == DataSet::ErrorAction::Retry && error.code() == DbErrorCode::ChangedSinceRead &&
        clients.state() == DataSet::State::Edit) {
        ClientValues original;
        for (int i = 0; i < clients.fieldCount(); ++i)
            if (clients.field(i).kind == DataSet::FieldKind::Data)
                original.set(clients.field(i).name, clients.oldValue(clients.field(i).name));
        m_old = original;
    }
    return action;
}

// ---- before post ----

void ClientRules::beforePost(DataSet& clients)
{
    if (m_alternateAddress && m_alternateAddress->isEditing()) m_alternateAddress->post();

    const QDate dob = clients.fieldValue(u"DOB").toDate();
    if (dob.isValid() && dob > m_clock.today()) {
        m_ui.warning(QStringLiteral("You have entered a birth date that is in the future!"));
        throw Abort();
    }

    if (m_old.text(QStringLiteral("STATUS")) == client_status::Inactive &&
        clients.fieldValue(u"STATUS").toString() == client_status::Active &&
        m_ui.question(
            QStringLiteral("You are activating a Client who had previously been inactive. \r\nAre you sure "
                           "you want to do this?"),
            Buttons::YesNo) != Answer::Yes)
        clients.setFieldValue(u"STATUS", client_status::Inactive);

    checkServiceFrequency(clients);
}

// A client on a delivery service follows the service's frequency unless
// the user says otherwise.
void ClientRules::checkServiceFrequency(DataSet& clients)
{
    const qint64 service = clients.fieldValue(u"SVCS_USED").toLongLong();
    if (service == 0) return;
    const ResultSet row = m_services.db().execute(
        QStringLiteral("select Default_Frequency from Services where Service_ID = :Service_ID"),
        {{QStringLiteral("Service_ID"), service}});
    const QString frequency = row.isEmpty() ? QString() : row.value(0, 0).toString();
    if (frequency.isEmpty()) return;
    const QString type = clients.fieldValue(u"DELIVERY_TYPE").toString();
    if (type.isEmpty()) {
        clients.setFieldValue(u"DELIVERY_TYPE", frequency);
        return;
    }
    if (type != m_old.text(QStringLiteral("DELIVERY_TYPE")) && type != frequency &&
        m_ui.question(
            QStringLiteral("This client's delivery frequency is different than that for \r\ntheir service. "
                           "Should their frequency be set to that of their \r\nservice?"),
            Buttons::YesNo) == Answer::Yes)
        clients.setFieldValue(u"DELIVERY_TYPE", frequency);
}

// ---- after post ----

void ClientRules::afterPost(DataSet& clients)
{
    // What this save compares is taken now: the steps below may save other
    // clients through these rules (the household list), which start edits
    // of their own.
    const ClientValues before = m_old;
    const bool filterTakenOff = std::exchange(m_filterTakenOff, false);
    try {
        {
            const HookSuspension own(clients, {Hook::BeforeEdit, Hook::AfterEdit, Hook::BeforePost,
                                               Hook::AfterPost, Hook::BeforeCancel, Hook::AfterCancel});
            clients.flushBuffers();
            const ClientValues saved = ClientValues::read(clients);
            ClientSaveSteps(*this, clients, before, saved).run();
        }
        householdStep(clients, ClientValues::read(clients));
    } catch (...) {
        // The filter goes back on also after a failed step; the step's error
        // is the one the user hears of.
        try {
            restoreFilter(clients, filterTakenOff);
        } catch (const std::exception& e) {
            qWarning("Putting the client filter back failed: %s", e.what());
        }
        throw;
    }
    restoreFilter(clients, filterTakenOff);
}

void ClientRules::householdStep(DataSet& clients, const ClientValues& saved)
{
    const qint64 household = saved.integer(QStringLiteral("HOUSEHOLD_ID"));
    if (household <= 0 || !m_household.acts() || !m_household.differsFromCurrent(saved)) return;
    m_household.remember(saved);
    if (!m_dialogs) return;
    TFormShowHouseholdMembers form(*this, clients, household, saved.integer(QStringLiteral("PERSON_ID")));
    if (form.members().isEmpty()) return;
    if (m_ui.question(
            QStringLiteral("A delivery change has been made that may have an impact on \r\nthe other "
                           "household members. You may want to compare the \r\nstatus, start/stop dates, "
                           "delivery days, routes and stops of this \r\nclient with the other household "
                           "members.\r\n\r\nDo you want to see the list of other household members?"),
            Buttons::YesNo) != Answer::Yes)
        return;
    // The list may move the set to a member; it comes back to the client.
    const DataSet::Bookmark position = clients.bookmark();
    auto back = [&] {
        if (clients.isActive() && clients.state() == DataSet::State::Browse &&
            clients.bookmarkValid(position))
            clients.gotoBookmark(position);
    };
    try {
        m_dialogs->showHouseholdMembers(form);
    } catch (...) {
        try {
            back();
        } catch (const std::exception& e) {
            qWarning("Returning to the client after the household list failed: %s", e.what());
        }
        throw;
    }
    back();
}

// ---- migrating to a household member ----

void ClientRules::MigrateDeliveryInfo()
{
    if (!m_clients)
        throw MessageError(QStringLiteral("The client rules are not attached to a Clients data set."));
    DataSet& clients = *m_clients;
    const ClientValues from = m_household.prior().values;
    clients.edit();
    try {
        for (const QString& column : {QStringLiteral("SVCS_USED"), QStringLiteral("STATUS"),
                                      QStringLiteral("DELIVERY_TYPE"), QStringLiteral("ONGOING_FREQUENCY")})
            clients.setFieldValue(column, from.value(column));
        // An empty date stays empty on the member, whatever the member had.
        for (const QString& column : {QStringLiteral("START_DTE"), QStringLiteral("STOP_DTE")}) {
            const QDate date = from.date(column);
            clients.setFieldValue(column, date.isValid() ? QVariant(date) : QVariant());
        }
        if (ClientValues::read(clients).days() != from.days() &&
            m_ui.question(QStringLiteral("Should the delivery days be migrated?"), Buttons::YesNo) ==
                Answer::Yes) {
            for (const QString& column : weekdayColumns())
                clients.setFieldValue(column, from.value(column));
        }
        for (const QString& column : HouseholdMemory::routeColumns())
            clients.setFieldValue(column, from.value(column));
        clients.post();
    } catch (...) {
        if (clients.state() != DataSet::State::Browse && clients.state() != DataSet::State::Inactive)
            clients.cancel();
        throw;
    }
}

} // namespace kb
