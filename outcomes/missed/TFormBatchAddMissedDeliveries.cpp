#include "missed/TFormBatchAddMissedDeliveries.h"

#include "ClientSearch.h"
#include "ShownFailure.h"
#include "UserInterface.h"
#include "session/SessionState.h"
#include "store/Database.h"

#include <QLocale>

#include <algorithm>

namespace kb {

TFormBatchAddMissedDeliveries::TFormBatchAddMissedDeliveries(Database& db, const SessionState& session,
                                                             UserInterface& ui, QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui), m_date(db.clock().today())
{
    m_scanTimer.setSingleShot(true);
    m_scanTimer.setInterval(500);
    connect(&m_scanTimer, &QTimer::timeout, this, &TFormBatchAddMissedDeliveries::ActionAddToList);
}

void TFormBatchAddMissedDeliveries::setDate(const QDate& date)
{
    if (!date.isValid() || date == m_date) return;
    m_date = date;
    emit stateChanged();
}

QString TFormBatchAddMissedDeliveries::weekdayName() const
{
    return QLocale().dayName(m_date.dayOfWeek(), QLocale::LongFormat);
}

QStringList TFormBatchAddMissedDeliveries::searchChoices()
{
    QStringList choices;
    for (ClientSearchBy by : {ClientSearchBy::PersonId, ClientSearchBy::ClientId, ClientSearchBy::Phone,
                              ClientSearchBy::SocialSecurityNumber})
        choices.append(clientSearchText(by));
    return choices;
}

void TFormBatchAddMissedDeliveries::setSearchIndex(int index)
{
    if (index < 0 || index >= searchChoices().size()) return;
    m_searchIndex = index;
    emit stateChanged();
}

void TFormBatchAddMissedDeliveries::setSearchText(const QString& text)
{
    m_searchText = text;
    if (m_scanner) m_scanTimer.start();
}

void TFormBatchAddMissedDeliveries::setScannerMode(bool on)
{
    m_scanner = on;
    if (!on) m_scanTimer.stop();
    m_searchIndex = on ? 0 : 1;
    emit stateChanged();
}

std::optional<MissCandidate> TFormBatchAddMissedDeliveries::findClient(const QString& text)
{
    const std::optional<qint64> person = kb::findClient(m_db, ClientSearchBy(m_searchIndex), text);
    if (!person) return std::nullopt;
    const ResultSet row = m_db.execute(
        QStringLiteral("Select Mid_Name, Address1, City, State from Clients where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), *person}});
    MissCandidate c;
    c.client = MissedClient::read(m_db, *person);
    c.midName = row.value(0, 0).toString();
    c.address1 = row.value(0, 1).toString();
    c.city = row.value(0, 2).toString();
    c.state = row.value(0, 3).toString();
    return c;
}

void TFormBatchAddMissedDeliveries::ActionAddToList()
{
    m_scanTimer.stop();
    const QString text = m_searchText.trimmed();
    if (text.isEmpty()) return;
    std::optional<MissCandidate> found;
    if (!showingFailure(m_ui, [&] { found = findClient(text); })) return;
    if (!found) {
        m_ui.warning(QStringLiteral("No client was found for \"%1\".").arg(text));
    } else if (std::any_of(m_candidates.begin(), m_candidates.end(), [&](const MissCandidate& c) {
                   return c.client.personId == found->client.personId;
               })) {
        m_ui.warning(QStringLiteral("That Client has already been added to the list!"));
    } else {
        found->excused = m_excused;
        m_candidates.push_back(*found);
    }
    m_searchText.clear();
    emit stateChanged();
    emit focusSearch();
}

void TFormBatchAddMissedDeliveries::setCandidateExcused(int row, bool excused)
{
    if (row >= 0 && size_t(row) < m_candidates.size()) m_candidates[size_t(row)].excused = excused;
}

void TFormBatchAddMissedDeliveries::ActionRemove(int row)
{
    if (m_ui.question(QStringLiteral("Remove the selected Client from the list of missed deliveries?"),
                      Buttons::YesNo) != Answer::Yes)
        return;
    if (row >= 0 && size_t(row) < m_candidates.size()) m_candidates.erase(m_candidates.begin() + row);
    emit stateChanged();
}

bool TFormBatchAddMissedDeliveries::mayRecord() const
{
    return !m_candidates.empty() && m_session.access().mayChangeData();
}

qint64 TFormBatchAddMissedDeliveries::ActionRecord()
{
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        m_ui.error(access.refusal());
        return 0;
    }
    const BusyGuard busy(m_ui);
    std::vector<MissRequest> list;
    for (const MissCandidate& c : m_candidates)
        list.push_back({c.client, c.excused});
    qint64 recorded = 0;
    showingFailure(m_ui, [&] {
        recorded = MissRecorder(m_db, m_ui, MissRecorder::Wording::Batch)
                       .record(list, m_date, m_session.userFullName);
    });
    return recorded;
}

} // namespace kb
