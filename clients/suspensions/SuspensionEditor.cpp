#include "suspensions/SuspensionEditor.h"

#include "Clock.h"
#include "ErrorText.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/DataSet.h"
#include "records/History.h"
#include "records/RecordServices.h"
#include "rules/ClientHistoryTexts.h"
#include "screens/TFormShowHouseholdMembers.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "suspensions/SuspensionRules.h"
#include "suspensions/TFormAddSuspension.h"

namespace kb {

namespace {

int daySpan(const QDate& stop, const QDate& resume)
{
    return stop.isValid() && resume.isValid() ? int(stop.daysTo(resume)) : 0;
}

// Ends the transaction mark however the work ends.
class MarkGuard
{
public:
    explicit MarkGuard(const std::function<void(bool)>& mark) : m_mark(mark)
    {
        if (m_mark) m_mark(true);
    }
    ~MarkGuard()
    {
        if (m_mark) m_mark(false);
    }
    MarkGuard(const MarkGuard&) = delete;
    MarkGuard& operator=(const MarkGuard&) = delete;

private:
    const std::function<void(bool)>& m_mark;
};

} // namespace

SuspensionEditor::SuspensionEditor(RecordServices& services, UserInterface& ui, const SessionState& session,
                                   const Clock& clock, DataSet& clients, DataSet& suspends)
    : m_services(services), m_ui(ui), m_session(session), m_clock(clock), m_clients(clients),
      m_suspends(suspends)
{
}

QString SuspensionEditor::extendQuestion(int days)
{
    return QStringLiteral("Should the Contractual Stop Date be extended by %1 day(s)?").arg(days);
}

QString SuspensionEditor::reduceQuestion(int days)
{
    return QStringLiteral("Should the Contractual Stop Date be reduced by %1 day(s)?").arg(days);
}

QString SuspensionEditor::contractEvent(int change, const QDate& newDate)
{
    const int days = std::abs(change);
    return (change > 0 ? QStringLiteral("Contract Stop extended by ")
                       : QStringLiteral("Contract Stop reduced by ")) +
           QString::number(days) + QStringLiteral(" day") +
           (days > 1 ? QStringLiteral("s, now ") : QStringLiteral(", now ")) +
           client_history::dateText(newDate);
}

QString SuspensionEditor::changedDatesNotice(const QString& firstName, const QString& lastName)
{
    return QStringLiteral("The dates of the suspension for ") + firstName.trimmed() + QLatin1Char(' ') +
           lastName.trimmed() +
           QStringLiteral(" were changed. That \r\nsuspension will have to be manually deleted!");
}

QString SuspensionEditor::insertStatement()
{
    return QStringLiteral("Insert into Suspends (Person_ID, Client_ID, Group_ID,  Tran_Type, Valid, Stop_Dt, "
                          "Resume_Dt, Reason, "
                          "User, Create_Date, Last_Updated) values (:Person_ID, :Client_ID, :Group_ID, "
                          ":Tran_Type, True, :Stop_Dt, "
                          ":Resume_Dt, :Reason, :User, Current_Date, Current_Date)");
}

void SuspensionEditor::mark(bool on)
{
    if (m_transactionMark) m_transactionMark(on);
}

bool SuspensionEditor::EditHolds(Mode mode)
{
    m_savedRecordId = 0;
    m_groupId = 0;
    const bool adding = mode == Mode::Add;
    if (adding) {
        try {
            m_suspends.append();
        } catch (const Abort&) {
            return false;
        } catch (const std::exception& fault) {
            m_ui.error(addErrorText() + errorText(fault));
            return false;
        }
    } else {
        if (!m_suspends.isActive() || m_suspends.isEmpty()) return false;
        if (m_suspends.state() == DataSet::State::Browse) m_suspends.edit();
    }

    const QDate oldStop = m_suspends.fieldValue(u"Stop_Dt").toDate();
    const QDate oldResume = m_suspends.fieldValue(u"Resume_Dt").toDate();
    const int oldSpan = adding ? 0 : daySpan(oldStop, oldResume);

    TFormAddSuspension form(m_suspends, m_userSettings);
    const bool ok = m_showForm ? m_showForm(form) : true;
    form.close();
    if (!ok) {
        m_suspends.cancel();
        return false;
    }
    try {
        m_suspends.post();
        m_savedRecordId = m_suspends.fieldValue(u"RecordID").toLongLong();
        afterSave(adding, oldSpan, oldStop, oldResume);
    } catch (const Abort&) {
        if (m_suspends.state() != DataSet::State::Browse) m_suspends.cancel();
        return false;
    } catch (const std::exception& fault) {
        if (m_suspends.state() != DataSet::State::Browse) m_suspends.cancel();
        m_ui.error(errorText(fault));
        return false;
    }
    return true;
}

void SuspensionEditor::afterSave(bool added, int oldSpan, const QDate& oldStop, const QDate& oldResume)
{
    const QDate stop = m_suspends.fieldValue(u"Stop_Dt").toDate();
    const QDate resume = m_suspends.fieldValue(u"Resume_Dt").toDate();
    adjustContract(daySpan(stop, resume) - oldSpan);

    const qint64 personId = m_clients.fieldValue(u"PERSON_ID").toLongLong();
    const qint64 householdId = m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
    if (householdId > 0) {
        if (added)
            suspendHousehold(householdId, personId);
        else if (stop != oldStop || resume != oldResume)
            m_ui.information(householdEditNotice());
    }
    checkScheduledDeliveries(personId, stop, resume);
}

void SuspensionEditor::adjustContract(int change)
{
    if (change == 0) return;
    const QDate contract = m_clients.fieldValue(u"CONTRACTUAL_STOP_DTE").toDate();
    if (!contract.isValid() || contract < m_clock.today()) return;
    const QString question = change > 0 ? extendQuestion(change) : reduceQuestion(-change);
    if (m_ui.question(question, Buttons::YesNo) != Answer::Yes) return;
    const QDate moved = contract.addDays(change);
    m_clients.edit();
    m_clients.setFieldValue(u"CONTRACTUAL_STOP_DTE", moved);
    m_clients.post();
    QueryInsertHistory(m_services.db(), m_session.userFullName,
                       {m_clients.fieldValue(u"PERSON_ID"), m_clients.fieldValue(u"CLIENT_ID"),
                        contractEvent(change, moved), QVariant()});
}

void SuspensionEditor::suspendHousehold(qint64 householdId, qint64 personId)
{
    Database& db = m_services.db();
    const ResultSet members =
        db.execute(TFormShowHouseholdMembers::membersStatement(),
                   {{QStringLiteral("Household_ID"), householdId}, {QStringLiteral("Person_ID"), personId}});
    if (members.isEmpty()) return;
    if (m_ui.question(householdAddQuestion(), Buttons::YesNo) != Answer::Yes) return;

    if (m_suspends.fieldValue(u"RecordID").toLongLong() != m_savedRecordId)
        m_suspends.locate(QStringLiteral("RecordID"), m_savedRecordId);
    m_groupId = m_services.GetUniqueID(QStringLiteral("Suspension_Group_ID"));
    m_suspends.edit();
    m_suspends.setFieldValue(u"Group_ID", m_groupId);
    m_suspends.post();

    const Params first{{QStringLiteral("Group_ID"), m_groupId},
                       {QStringLiteral("Tran_Type"), SuspensionRules::transactionType()},
                       {QStringLiteral("Stop_Dt"), m_suspends.fieldValue(u"Stop_Dt")},
                       {QStringLiteral("Resume_Dt"), m_suspends.fieldValue(u"Resume_Dt")},
                       {QStringLiteral("Reason"), m_suspends.fieldValue(u"Reason")},
                       {QStringLiteral("User"), m_suspends.fieldValue(u"User")}};
    std::vector<Params> rows;
    for (qsizetype r = 0; r < members.rowCount(); ++r) {
        // A person of the household who is no client gets no suspension.
        const QString clientId = members.value(r, 1).toString();
        if (clientId.trimmed().isEmpty()) continue;
        rows.push_back(
            {{QStringLiteral("Person_ID"), members.value(r, 0)}, {QStringLiteral("Client_ID"), clientId}});
    }
    if (rows.empty()) return;
    Query insert = db.query(insertStatement());
    insert.bind(first);
    insert.execBatch(rows);
}

void SuspensionEditor::checkScheduledDeliveries(qint64 personId, const QDate& stop, const QDate& resume)
{
    Database& db = m_services.db();
    const ResultSet config = db.execute(QStringLiteral("Select SUSPEND_SCHEDULED_DELIVERIES from Config"));
    if (!config.isEmpty() && config.value(0, 0).toBool()) return;
    const ResultSet scheduled = db.execute(
        QStringLiteral(
            "Select RecordID from EpisodicDeliveries where Person_ID = :Person_ID and Deliv_Date >= "
            ":Stop_Dt and Deliv_Date < :Resume_Dt and Schedule_Type = 'S'"),
        {{QStringLiteral("Person_ID"), personId},
         {QStringLiteral("Stop_Dt"), stop},
         {QStringLiteral("Resume_Dt"), resume}});
    if (!scheduled.isEmpty()) m_ui.information(scheduledNotice());
}

bool SuspensionEditor::DeleteSuspension1Click()
{
    if (!m_suspends.isActive() || m_suspends.isEmpty()) return false;
    if (m_ui.question(deleteQuestion(), Buttons::YesNo) != Answer::Yes) return false;

    Database& db = m_services.db();
    try {
        MarkGuard marked(m_transactionMark);
        TransactionGuard transaction(db);
        const QDate stop = m_suspends.fieldValue(u"Stop_Dt").toDate();
        const QDate resume = m_suspends.fieldValue(u"Resume_Dt").toDate();
        const int span = daySpan(stop, resume);
        const qint64 groupId = m_suspends.fieldValue(u"Group_ID").toLongLong();

        m_suspends.remove();
        // A row with equal dates kept no day from the contract.
        if (span > 0) adjustContract(-span);

        const qint64 householdId = m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
        if (householdId > 0 && groupId > 0) {
            if (m_ui.question(householdDeleteQuestion(), Buttons::YesNo) == Answer::Yes)
                deleteGroup(groupId, stop, resume);
        } else if (householdId > 0) {
            m_ui.information(householdDeleteReminder());
        }
        transaction.commit();
    } catch (const std::exception& fault) {
        // The rows taken out of the set came back with the rollback.
        m_suspends.refresh();
        if (m_clients.state() != DataSet::State::Browse) m_clients.cancel();
        m_clients.refresh();
        if (!dynamic_cast<const Abort*>(&fault)) m_ui.error(errorText(fault));
        return false;
    }
    return true;
}

void SuspensionEditor::deleteGroup(qint64 groupId, const QDate& stop, const QDate& resume)
{
    Database& db = m_services.db();
    const ResultSet group = db.execute(
        QStringLiteral("Select RecordID, Person_ID, Client_ID, Stop_Dt, Resume_Dt from Suspends where "
                       "Group_ID = :Group_ID"),
        {{QStringLiteral("Group_ID"), groupId}});
    for (qsizetype r = 0; r < group.rowCount(); ++r) {
        const QVariant personId = group.value(r, 1);
        if (group.value(r, 3).toDate() == stop && group.value(r, 4).toDate() == resume) {
            SuspensionRules::writeDeletionHistory(db, m_session.userFullName, personId, group.value(r, 2),
                                                  stop, resume);
            db.execute(QStringLiteral("Delete from Suspends where RecordID = :RecordID"),
                       {{QStringLiteral("RecordID"), group.value(r, 0)}});
            continue;
        }
        const ResultSet person = db.execute(
            QStringLiteral("Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name from Clients "
                           "where Person_ID = :Person_ID"),
            {{QStringLiteral("Person_ID"), personId}});
        m_ui.information(changedDatesNotice(person.value(0, 2).toString(), person.value(0, 4).toString()));
    }
    // The rows of the others on the page, when they show there.
    m_suspends.refresh();
}

} // namespace kb
