#include "walkins/TFormViewEpisodicClientInfo.h"

#include "MessageError.h"
#include "ShownFailure.h"
#include "UserInterface.h"
#include "WriteTransaction.h"
#include "missed/MissEventText.h"
#include "records/History.h"
#include "rules/ClientStatus.h"
#include "session/SessionState.h"
#include "store/Database.h"

#include <QLocale>
#include <QRegularExpression>

#include <algorithm>

namespace kb {

namespace {

const QString QueryClient = QStringLiteral(
    "Select First_Name, Mid_Name, Last_Name, Address1, Address2, City, State, Zip, Svcs_Used, Status, "
    "Start_Dte, Stop_Dte, Client_ID, Person_ID from Clients where Person_ID = :Person_ID");
// The client's events not yet credited up to the credit date, as the credit
// list reads them: a null Fulfilled is not credited.
const QString QueryUncreditedEvents = QStringLiteral(
    "Select ed.RecordID, ed.Deliv_Date, ed.Schedule_Type, ed.Delivery_Type, ed.Fulfilled, s.Service_Desc "
    "from EpisodicDeliveries ed left outer join Services s on s.Service_ID = ed.Svcs_Used where "
    "(ed.Person_ID = :Person_ID) and (ed.Deliv_Date <= :Deliv_Date) and (ed.Fulfilled is null or not "
    "(ed.Fulfilled = 'Y')) order by ed.Deliv_Date, ed.RecordID");

const QString lineMark = QStringLiteral("[Record ID:");

QString joined(const QStringList& parts, const QString& separator)
{
    QStringList kept;
    for (const QString& p : parts)
        if (!p.trimmed().isEmpty()) kept << p.trimmed();
    return kept.join(separator);
}

// "Mon 3/4/24  Scheduled Walk-In  Hot Meals (Comp)  [Record ID:12]"
QString lineOf(const ResultSet& rows, qsizetype r)
{
    const QDate date = rows.value(r, 1).toDate();
    QString line = QLocale().dayName(date.dayOfWeek(), QLocale::ShortFormat) + QLatin1Char(' ') +
                   miss_text::shortDate(date) + QStringLiteral("  ");
    line += rows.value(r, 2).toString() == QLatin1String("E") ? QStringLiteral("Episodic")
                                                              : QStringLiteral("Scheduled");
    if (rows.value(r, 3).toString() == QLatin1String("W")) line += QStringLiteral(" Walk-In");
    const QString service = rows.value(r, 5).toString().trimmed();
    if (!service.isEmpty()) line += QStringLiteral("  ") + service;
    if (rows.value(r, 4).toString() == QLatin1String("C")) line += QStringLiteral(" (Comp)");
    return line + QStringLiteral("  ") + lineMark + rows.value(r, 0).toString() + QLatin1Char(']');
}

QString dateText(const QVariant& value)
{
    return value.isNull() ? QString() : miss_text::shortDate(value.toDate());
}

} // namespace

TFormViewEpisodicClientInfo::TFormViewEpisodicClientInfo(Database& db, const SessionState& session,
                                                         UserInterface& ui, qint64 personId,
                                                         const QDate& through)
    : m_db(db), m_session(session), m_ui(ui), m_personId(personId), m_through(through)
{
}

QString TFormViewEpisodicClientInfo::deletedText(const QDate& date)
{
    return QStringLiteral("Uncredited episodic delivery for ") + miss_text::shortDate(date) +
           QStringLiteral(" deleted");
}

QString TFormViewEpisodicClientInfo::deleteQuestion(int count)
{
    return count == 1 ? QStringLiteral("Delete the checked episodic/scheduled delivery?")
                      : QStringLiteral("Delete the %1 checked episodic/scheduled deliveries?").arg(count);
}

qint64 TFormViewEpisodicClientInfo::recordIdOfLine(const QString& line)
{
    static const QRegularExpression id(QStringLiteral("\\[Record ID:\\s*(\\d{1,18})\\]\\s*$"));
    const QRegularExpressionMatch m = id.match(line);
    return m.hasMatch() ? m.captured(1).toLongLong() : 0;
}

void TFormViewEpisodicClientInfo::FormShow()
{
    const ResultSet client = m_db.execute(QueryClient, {{QStringLiteral("Person_ID"), m_personId}});
    if (client.isEmpty()) throw MessageError(QStringLiteral("No person has Person_ID %1.").arg(m_personId));
    const auto text = [&](const char* column) {
        return client.value(0, QString::fromLatin1(column)).toString().trimmed();
    };
    m_clientId = client.value(0, QStringLiteral("Client_ID"));
    QString service;
    const qint64 serviceId = client.value(0, QStringLiteral("Svcs_Used")).toLongLong();
    if (serviceId != 0) {
        const ResultSet s =
            m_db.execute(QStringLiteral("Select Service_Desc from Services where Service_ID = :Service_ID"),
                         {{QStringLiteral("Service_ID"), serviceId}});
        service = s.isEmpty() ? QStringLiteral("Unknown") : s.value(0, 0).toString().trimmed();
    }
    const QString status = text("Status");
    m_details = {
        {QStringLiteral("Name:"),
         joined({text("First_Name"), text("Mid_Name"), text("Last_Name")}, QStringLiteral(" "))},
        {QStringLiteral("Address:"),
         joined({text("Address1"), text("Address2"),
                 joined({text("City"), joined({text("State"), text("Zip")}, QStringLiteral(" "))},
                        QStringLiteral(", "))},
                QStringLiteral("\n"))},
        {QStringLiteral("Default Service:"), service},
        {QStringLiteral("Status:"), status.isEmpty() ? QString() : client_status::word(status)},
        {QStringLiteral("Start Date:"), dateText(client.value(0, QStringLiteral("Start_Dte")))},
        {QStringLiteral("Stop Date:"), dateText(client.value(0, QStringLiteral("Stop_Dte")))},
        {QStringLiteral("Client ID:"), text("Client_ID")},
        {QStringLiteral("Person ID:"), QString::number(m_personId)},
    };

    const ResultSet events = m_db.execute(QueryUncreditedEvents, {{QStringLiteral("Person_ID"), m_personId},
                                                                  {QStringLiteral("Deliv_Date"), m_through}});
    m_lines.clear();
    for (qsizetype r = 0; r < events.rowCount(); ++r)
        m_lines << lineOf(events, r);
    m_checked.assign(size_t(m_lines.size()), false);
}

void TFormViewEpisodicClientInfo::setChecked(int line, bool checked)
{
    if (line >= 0 && size_t(line) < m_checked.size()) m_checked[size_t(line)] = checked;
}

int TFormViewEpisodicClientInfo::checkedCount() const
{
    return int(std::count(m_checked.begin(), m_checked.end(), true));
}

bool TFormViewEpisodicClientInfo::mayDelete() const
{
    return checkedCount() > 0 && m_session.access().mayChangeData();
}

void TFormViewEpisodicClientInfo::deleteEvent(qint64 recordId)
{
    const Params id{{QStringLiteral("RecordID"), recordId}};
    const ResultSet event = m_db.execute(
        QStringLiteral("Select Deliv_Date, Fulfilled from EpisodicDeliveries where RecordID = :RecordID"),
        id);
    // Another workstation may have credited or removed the event since the
    // list was read: a credited event keeps its delivery, so it stays.
    if (event.isEmpty())
        throw MessageError(
            QStringLiteral("The delivery [Record ID:%1] has been deleted by another user.").arg(recordId));
    const QDate date = event.value(0, 0).toDate();
    if (event.value(0, 1).toString() == QLatin1String("Y"))
        throw MessageError(
            QStringLiteral("The delivery for %1 [Record ID:%2] has been credited since the list "
                           "was read and will not be deleted.")
                .arg(miss_text::shortDate(date))
                .arg(recordId));
    QueryInsertHistory(m_db, m_session.userFullName, {m_personId, m_clientId, deletedText(date), date});
    // The event's own item list goes with it.
    m_db.execute(QStringLiteral("Delete from DefDels where Person_ID = :Person_ID and Deliv_ID = :RecordID"),
                 {{QStringLiteral("Person_ID"), m_personId}, {QStringLiteral("RecordID"), recordId}});
    m_db.execute(QStringLiteral("Delete from EpisodicDeliveries where RecordID = :RecordID"), id);
}

bool TFormViewEpisodicClientInfo::ActionDelete()
{
    m_deleted = 0;
    if (checkedCount() == 0) return false;
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        m_ui.error(access.refusal());
        return false;
    }
    if (m_ui.question(deleteQuestion(checkedCount()), Buttons::YesNo) != Answer::Yes) return false;
    std::vector<qint64> ids;
    for (qsizetype i = 0; i < m_lines.size(); ++i)
        if (m_checked[size_t(i)])
            if (const qint64 id = recordIdOfLine(m_lines[i]); id > 0) ids.push_back(id);
    const BusyGuard busy(m_ui);
    const bool done = showingFailure(m_ui, [&] {
        inWriteTransaction(m_db, [&] {
            for (qint64 id : ids)
                deleteEvent(id);
        });
    });
    if (done) m_deleted = int(ids.size());
    return done;
}

} // namespace kb
