#include "rules/ClientSaveSteps.h"

#include "Clock.h"
#include "DietCodes.h"
#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "rules/ClientDialogs.h"
#include "rules/ClientHistoryTexts.h"
#include "rules/ClientRules.h"
#include "rules/ClientStatus.h"
#include "screens/TFormResetStartDate.h"
#include "session/SessionState.h"
#include "store/Database.h"

#include <optional>

namespace kb {

namespace {

const QString Status = QStringLiteral("STATUS");
const QString StopDate = QStringLiteral("STOP_DTE");
const QString StartDate = QStringLiteral("START_DTE");
const QString ContractStop = QStringLiteral("CONTRACTUAL_STOP_DTE");
const QString RecertDate = QStringLiteral("RECERT_DTE");

// Dated deliveries not yet credited: Fulfilled is anything but "Y", a null
// included.
const QString Uncredited = QStringLiteral("(not Fulfilled = \"Y\" or Fulfilled is null)");

QVariant dateValue(const QDate& date)
{
    return date.isValid() ? QVariant(date) : QVariant();
}

} // namespace

ClientSaveSteps::ClientSaveSteps(ClientRules& rules, DataSet& clients, const ClientValues& before,
                                 const ClientValues& saved)
    : m_rules(rules), m_clients(clients), m_db(rules.services().db()), m_before(before), m_saved(saved),
      m_working(saved), m_config(ClientConfig::read(m_db)), m_today(rules.clock().today()),
      m_oldStatus(before.text(Status)), m_newStatus(saved.text(Status))
{
}

void ClientSaveSteps::run()
{
    runOnPostStatement();
    statusHistory();
    reactivationNotice();
    deleteDatedDeliveriesOfInactivated();
    offerToDeleteFutureDeliveriesOfStopped();
    serviceHistory();
    dietHistory();
    deliveryTypeHistory();
    defaultRouteHistory();
    addressHistory();
    phoneHistory();
    daysHistory();
    stopDateHistory();
    startDateHistory();
    recertificationHistory();
    inactivationDate();
    activation();
    contractStop();
    startAfterStop();
    resetStartDateScreen();
    editAndFirstMealDates();
    postOwnChanges();
}

// ---- helpers ----

HistoryEntry ClientSaveSteps::entry(const QString& event, const QDate& eventDate) const
{
    return HistoryEntry{m_saved.value(QStringLiteral("PERSON_ID")),
                        m_saved.value(QStringLiteral("CLIENT_ID")), event,
                        eventDate.isValid() ? eventDate : m_today};
}

void ClientSaveSteps::writeHistory(const QString& event, const QDate& eventDate)
{
    QueryInsertHistory(m_db, m_rules.session().userFullName, entry(event, eventDate));
}

bool ClientSaveSteps::ask(const QString& question)
{
    return m_rules.ui().question(question, Buttons::YesNo) == Answer::Yes;
}

void ClientSaveSteps::change(const QString& column, const QVariant& value)
{
    m_working.set(column, value);
    if (!m_changed.contains(column)) m_changed.append(column);
}

void ClientSaveSteps::clearStopDate(const QString& event)
{
    m_pendingHistory.append(entry(event, {}));
    change(StopDate, {});
    change(QStringLiteral("STOP_CODE"), {});
    change(QStringLiteral("STOP_REASON"), {});
}

template <typename Work> void ClientSaveSteps::inTransaction(Work&& work)
{
    std::optional<TransactionGuard> guard;
    if (!m_db.inTransaction()) guard.emplace(m_db);
    work();
    if (guard) guard->commit();
}

QString ClientSaveSteps::datedScheduleType() const
{
    return newText("DELIVERY_TYPE") == QLatin1String("E") ? QStringLiteral("E") : QStringLiteral("S");
}

Params ClientSaveSteps::datedParams(const QString& scheduleType) const
{
    Params params{{QStringLiteral("Person_ID"), m_saved.value(QStringLiteral("PERSON_ID"))}};
    if (!scheduleType.isEmpty()) params.emplace_back(QStringLiteral("Schedule_Type"), scheduleType);
    return params;
}

bool ClientSaveSteps::hasDatedDeliveries(const QString& condition, const QString& scheduleType)
{
    return !m_db.execute(QStringLiteral("Select RecordID from EpisodicDeliveries where ") + condition,
                         datedParams(scheduleType))
                .isEmpty();
}

// ---- the steps ----

// An agency's own statement after every save of a client. Its parameters
// are put into the text, not bound, as agencies write them so; whatever it
// does wrong must not stop the save's other consequences.
void ClientSaveSteps::runOnPostStatement()
{
    QString text = GetSQLStatement(m_db, QStringLiteral("EXECUTE_ON_POST"));
    if (text.trimmed().isEmpty()) return;
    text.replace(QStringLiteral(":Staff_ID"), QString::number(m_rules.session().staffId),
                 Qt::CaseInsensitive);
    text.replace(QStringLiteral(":Person_ID"), QString::number(m_saved.integer(QStringLiteral("PERSON_ID"))),
                 Qt::CaseInsensitive);
    try {
        m_db.execute(text);
        // The statement may have changed the row; only the client's own row
        // is read again, not the whole table.
        m_clients.refreshRecord();
    } catch (const std::exception& e) {
        qWarning("The on-post statement of a client failed: %s", e.what());
    }
}

void ClientSaveSteps::statusHistory()
{
    const QString text = client_history::statusChange(m_oldStatus, m_newStatus);
    if (!text.isEmpty()) writeHistory(text);
}

void ClientSaveSteps::reactivationNotice()
{
    if (m_oldStatus == client_status::Inactive && m_newStatus == client_status::Active)
        m_rules.ui().information(client_history::reactivationNotice(m_config.recertWeeks > 0));
}

void ClientSaveSteps::deleteDatedDeliveriesOfInactivated()
{
    if (m_newStatus != client_status::Inactive || m_oldStatus == client_status::Inactive) return;
    const QString condition = QStringLiteral("Person_ID = :Person_ID and ") + Uncredited;
    if (!hasDatedDeliveries(condition, {})) return;
    deleteDatedDeliveries(condition, {}, QStringLiteral("All uncredited sched/episodic deliveries deleted"));
}

void ClientSaveSteps::offerToDeleteFutureDeliveriesOfStopped()
{
    if (m_oldStatus != client_status::Active || m_newStatus != client_status::Stopped) return;
    const QString type = datedScheduleType();
    const QString condition =
        QStringLiteral("Person_ID = :Person_ID and Deliv_Date >= Current_Date and Schedule_Type = "
                       ":Schedule_Type and ") +
        Uncredited;
    if (!hasDatedDeliveries(condition, type)) return;
    const QString kind =
        type == QLatin1String("E") ? QStringLiteral("episodic") : QStringLiteral("scheduled");
    if (!ask(QStringLiteral(
                 "There are uncredited future %1 deliveries on file for this client.\r\nWould you like those "
                 "deliveries deleted?")
                 .arg(kind)))
        return;
    deleteDatedDeliveries(condition, type,
                          QStringLiteral("Future uncredited sched/episodic deliveries deleted"));
}

void ClientSaveSteps::deleteDatedDeliveries(const QString& condition, const QString& scheduleType,
                                            const QString& event)
{
    const Params params = datedParams(scheduleType);
    inTransaction([&] {
        // The item lines of those deliveries go with them.
        m_db.execute(QStringLiteral(
                         "Delete from DefDels where Person_ID = :Person_ID and Deliv_ID in (Select RecordID "
                         "from EpisodicDeliveries where ") +
                         condition + QLatin1Char(')'),
                     params);
        m_db.execute(QStringLiteral("Delete from EpisodicDeliveries where ") + condition, params);
        writeHistory(event);
    });
    if (auto& changed = m_rules.datedDeliveriesChanged()) changed();
}

void ClientSaveSteps::serviceHistory()
{
    const qint64 oldService = m_before.integer(QStringLiteral("SVCS_USED"));
    const qint64 newService = m_saved.integer(QStringLiteral("SVCS_USED"));
    if (oldService == newService) return;
    auto name = [this](qint64 service) -> std::optional<QString> {
        const ResultSet row =
            m_db.execute(QStringLiteral("select Service_Desc from Services where Service_ID = :Service_ID"),
                         {{QStringLiteral("Service_ID"), service}});
        if (row.isEmpty()) return std::nullopt;
        return row.value(0, 0).toString();
    };
    writeHistory(client_history::serviceChange(
        oldService != 0, oldService != 0 ? name(oldService) : std::nullopt, name(newService)));
}

void ClientSaveSteps::dietHistory()
{
    const qint64 oldMask = m_before.integer(QStringLiteral("DIET_RESTR"));
    const qint64 newMask = m_saved.integer(QStringLiteral("DIET_RESTR"));
    if (oldMask == newMask) return;
    for (const QString& text : client_history::dietChange(oldMask, newMask, loadDietCodes(m_db)))
        writeHistory(text);
}

void ClientSaveSteps::deliveryTypeHistory()
{
    const QString text =
        client_history::deliveryTypeChange(oldText("DELIVERY_TYPE"), newText("DELIVERY_TYPE"));
    if (!text.isEmpty()) writeHistory(text);
}

void ClientSaveSteps::defaultRouteHistory()
{
    if (oldText("DEF_RTE") == newText("DEF_RTE")) return;
    writeHistory(client_history::defaultRouteChange(oldText("DEF_RTE"), newText("DEF_RTE")));
    const QString type = datedScheduleType();
    if (hasDatedDeliveries(
            QStringLiteral("Person_ID = :Person_ID and Deliv_Date >= Current_Date and Schedule_Type = "
                           ":Schedule_Type"),
            type))
        m_rules.ui().information(client_history::futureDeliveriesRouteNotice(type == QLatin1String("E")));
}

// Only the start of the street line counts, so a corrected house number or
// spelling further on is no move.
void ClientSaveSteps::addressHistory()
{
    const QString oldAddress = oldText("ADDRESS1");
    const QString newAddress = newText("ADDRESS1");
    if (oldAddress.left(10).toUpper() == newAddress.left(10).toUpper()) return;
    for (const QString& text : client_history::addressChange(oldAddress, newAddress))
        writeHistory(text);
    if (m_saved.number(QStringLiteral("LATITUDE")) != 0 && m_saved.number(QStringLiteral("LONGITUDE")) != 0 &&
        ask(QStringLiteral(
            "The address appears to have changed. \r\nShould the latitude and longitude from the old "
            "address be cleared?"))) {
        change(QStringLiteral("LATITUDE"), {});
        change(QStringLiteral("LONGITUDE"), {});
    }
}

void ClientSaveSteps::phoneHistory()
{
    const QString oldPhone = oldText("PHONE");
    if (oldPhone.isEmpty() || oldPhone == newText("PHONE")) return;
    writeHistory(client_history::phoneChange(oldPhone, m_before.value(QStringLiteral("PHONE_DESC"))));
}

void ClientSaveSteps::daysHistory()
{
    const QString oldDays = m_before.days();
    const QString newDays = m_saved.days();
    if (oldDays != newDays && !m_oldStatus.isEmpty())
        writeHistory(client_history::daysChange(oldDays, newDays));
}

void ClientSaveSteps::stopDateHistory()
{
    const QDate oldDate = m_before.date(StopDate);
    const QDate newDate = m_saved.date(StopDate);
    if (oldDate == newDate) return;
    std::optional<QString> reason;
    const QVariant code = m_saved.value(QStringLiteral("STOP_CODE"));
    if (!code.isNull() && code.toLongLong() != 0) {
        const ResultSet row =
            m_db.execute(QStringLiteral("select Stop_Reason from StopReasons where Stop_ID = :Stop_ID"),
                         {{QStringLiteral("Stop_ID"), code}});
        reason = row.isEmpty() ? QString() : row.value(0, 0).toString();
    }
    const auto e = client_history::stopDateChange(oldDate, newDate, reason, newText("STOP_REASON"));
    writeHistory(e.event, e.eventDate);
}

void ClientSaveSteps::startDateHistory()
{
    const QDate oldDate = m_before.date(StartDate);
    const QDate newDate = m_saved.date(StartDate);
    if (oldDate == newDate) return;
    const auto e = client_history::startDateChange(oldDate, newDate);
    writeHistory(e.event, e.eventDate);
}

void ClientSaveSteps::recertificationHistory()
{
    const QDate oldDate = m_before.date(RecertDate);
    if (!oldDate.isValid() || oldDate == m_saved.date(RecertDate)) return;
    const auto e = client_history::recertificationChange(oldDate, m_saved.date(RecertDate));
    writeHistory(e.event, e.eventDate);
}

void ClientSaveSteps::inactivationDate()
{
    if (m_newStatus == client_status::Inactive && m_oldStatus != client_status::Inactive)
        change(QStringLiteral("INACTIVE_D"), m_today);
}

// A client made active again: a stop date that would end the service anew
// goes, unless a contract says when it ends.
void ClientSaveSteps::activation()
{
    if (m_newStatus != client_status::Active || m_oldStatus == client_status::Active) return;
    const QDate stop = m_working.date(StopDate);
    const QDate contractStop = m_working.date(ContractStop);
    if (stop.isValid() && stop > m_today && !contractStop.isValid()) {
        if (ask(QStringLiteral("This client has a future Stop Date of ") + client_history::dateText(stop) +
                QStringLiteral(". Should the stop date be cleared?")))
            clearStopDate(client_history::stopDateClearedByReactivation(stop));
    } else if (stop.isValid() && stop > m_today && contractStop > m_today) {
        m_rules.ui().information(QStringLiteral("This client has a future Contractual Stop Date.\r\nYou may "
                                                "want to see if that date needs to be updated."));
    } else if (stop.isValid() && stop < m_today) {
        clearStopDate(client_history::stopDateClearedByReactivation(stop));
    }
}

void ClientSaveSteps::contractStop()
{
    const QDate contractStop = m_working.date(ContractStop);
    if (!m_working.date(StopDate).isValid() && contractStop.isValid()) change(StopDate, contractStop);
}

void ClientSaveSteps::startAfterStop()
{
    const QDate start = m_working.date(StartDate);
    const QDate stop = m_working.date(StopDate);
    if (start == m_before.date(StartDate) || !stop.isValid() || !(start > stop) ||
        m_working.date(ContractStop).isValid())
        return;
    if (ask(QStringLiteral(
            "You have entered a Start Date more recent than the Stop Date. \r\nShould the old Stop Date be "
            "cleared?")))
        clearStopDate(client_history::stopDateClearedByStartDate(stop));
}

// After a reactivation the user sees the start and recertification dates
// once more. Dates changed there and confirmed with OK are saved with the
// History rows their change calls for.
void ClientSaveSteps::resetStartDateScreen()
{
    if (m_oldStatus != client_status::Inactive || m_newStatus != client_status::Active) return;
    ClientDialogs* dialogs = m_rules.dialogs();
    if (!dialogs) return;
    const bool recertifies = m_config.recertWeeks > 0;
    TFormResetStartDate form(m_working.date(StartDate), m_working.date(RecertDate), recertifies);
    if (!dialogs->showResetStartDate(form)) return;
    const QDate start = form.startDate();
    if (start != m_working.date(StartDate)) {
        const auto e = client_history::startDateChange(m_working.date(StartDate), start);
        m_pendingHistory.append(entry(e.event, e.eventDate));
        change(StartDate, dateValue(start));
    }
    const QDate recert = form.recertificationDate();
    if (recertifies && recert != m_working.date(RecertDate)) {
        if (m_working.date(RecertDate).isValid()) {
            const auto e = client_history::recertificationChange(m_working.date(RecertDate), recert);
            m_pendingHistory.append(entry(e.event, e.eventDate));
        }
        change(RecertDate, dateValue(recert));
    }
}

void ClientSaveSteps::editAndFirstMealDates()
{
    if (m_working.date(QStringLiteral("EDIT_DTE")) != m_today) change(QStringLiteral("EDIT_DTE"), m_today);
    const QDate start = m_working.date(StartDate);
    if (start.isValid() && start != m_before.date(StartDate) &&
        !m_working.date(QStringLiteral("FIRST_ML_DTE")).isValid())
        change(QStringLiteral("FIRST_ML_DTE"), start);
}

void ClientSaveSteps::postOwnChanges()
{
    if (m_changed.isEmpty()) return;
    m_clients.edit();
    bool posted = false;
    try {
        for (const QString& column : m_changed)
            m_clients.setFieldValue(column, m_working.value(column));
        inTransaction([&] {
            m_clients.post();
            posted = true;
            for (const HistoryEntry& e : m_pendingHistory)
                QueryInsertHistory(m_db, m_rules.session().userFullName, e);
        });
    } catch (...) {
        if (m_clients.state() == DataSet::State::Edit) {
            m_clients.cancel();
        } else if (posted) {
            // The post was undone with the History rows: show the row as stored.
            try {
                m_clients.refreshRecord();
            } catch (const std::exception& e) {
                qWarning("Reading a client row again failed: %s", e.what());
            }
        }
        throw;
    }
    m_clients.flushBuffers();
}

} // namespace kb
