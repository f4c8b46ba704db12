#include "walkins/TFormBatchAddWalkIns.h"

#include "ShownFailure.h"
#include "UserInterface.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "walkins/WalkInRecorder.h"

#include <QLocale>

#include <algorithm>

namespace kb {

TFormBatchAddWalkIns::TFormBatchAddWalkIns(Database& db, const SessionState& session, UserInterface& ui,
                                           QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui), m_date(db.clock().today())
{
    const ResultSet services =
        db.execute(QStringLiteral("Select Service_ID, Service_Desc from Services where Service_Type = 'D' "
                                  "order by Service_Desc, Service_ID"));
    for (qsizetype r = 0; r < services.rowCount(); ++r)
        m_services.append(services.value(r, 1).toString() + QStringLiteral("   [") +
                          services.value(r, 0).toString() + QLatin1Char(']'));
    m_scanTimer.setSingleShot(true);
    m_scanTimer.setInterval(500);
    connect(&m_scanTimer, &QTimer::timeout, this, &TFormBatchAddWalkIns::ActionAddToList);
}

bool TFormBatchAddWalkIns::setDate(const QDate& date)
{
    const QDate today = m_db.clock().today();
    if (!date.isValid() || date < today.addDays(-365) || date > today.addDays(365)) return false;
    m_date = date;
    emit stateChanged();
    return true;
}

QString TFormBatchAddWalkIns::weekdayName() const
{
    return QLocale().dayName(m_date.dayOfWeek(), QLocale::LongFormat);
}

void TFormBatchAddWalkIns::setServiceIndex(int index)
{
    m_serviceIndex = index >= 0 && index < m_services.size() ? index : -1;
}

qint64 TFormBatchAddWalkIns::chosenService() const
{
    // The key is read back from its place in the entry.
    const QString entry = m_services.value(m_serviceIndex);
    const qsizetype open = entry.lastIndexOf(QLatin1Char('['));
    const qsizetype close = entry.lastIndexOf(QLatin1Char(']'));
    if (open < 0 || close <= open) return 0;
    return entry.mid(open + 1, close - open - 1).toLongLong();
}

QStringList TFormBatchAddWalkIns::searchChoices()
{
    QStringList choices;
    for (ClientSearchBy by : {ClientSearchBy::PersonId, ClientSearchBy::ClientId, ClientSearchBy::Phone,
                              ClientSearchBy::SocialSecurityNumber, ClientSearchBy::ClientName})
        choices.append(clientSearchText(by));
    return choices;
}

void TFormBatchAddWalkIns::setSearchBy(ClientSearchBy by)
{
    m_searchBy = by;
    emit stateChanged();
}

void TFormBatchAddWalkIns::setSearchText(const QString& text)
{
    m_searchText = text;
    if (m_scanner) m_scanTimer.start();
}

void TFormBatchAddWalkIns::setScannerMode(bool on)
{
    m_scanner = on;
    if (!on) m_scanTimer.stop();
    m_searchBy = on ? ClientSearchBy::PersonId : m_searchBy;
    emit stateChanged();
}

void TFormBatchAddWalkIns::refused()
{
    // A scanner user is looking at the client, not the screen.
    if (m_scanner) emit beep();
}

void TFormBatchAddWalkIns::ActionAddToList()
{
    m_scanTimer.stop();
    const QString text = m_searchText.trimmed();
    if (text.isEmpty() && m_searchBy != ClientSearchBy::ClientName) return;
    showingFailure(m_ui, [&] {
        const std::optional<qint64> person = findClient(m_db, m_searchBy, text);
        if (!person) {
            refused();
            m_ui.warning(QStringLiteral("No client was found for \"%1\".").arg(text));
            return;
        }
        if (std::any_of(m_list.begin(), m_list.end(),
                        [&](const WalkIn& w) { return w.personId == *person && w.delivDate == m_date; })) {
            refused();
            m_ui.warning(QStringLiteral("That Client has already been added to the list for that date!"));
            return;
        }
        WalkIn walkIn = WalkIn::ofClient(m_db, *person, m_date);
        WalkInRecorder rules(m_db, m_ui);
        if (!rules.eligibilityQuestion(walkIn).isEmpty() || walkIn.svcsUsed == 0) refused();
        if (!rules.mayAdd(walkIn)) return;
        if (chosenService() > 0) walkIn.svcsUsed = chosenService();
        if (!m_route.isEmpty()) walkIn.defRte = m_route;
        walkIn.comp = m_comp;
        m_list.push_back(walkIn);
        m_recorded = false;
    });
    m_comp = false;
    m_searchText.clear();
    emit stateChanged();
    emit focusSearch();
}

void TFormBatchAddWalkIns::editLine(int row, const QDate& date, qint64 service, const QString& route,
                                    const QString& deliveryType, bool comp)
{
    if (row < 0 || size_t(row) >= m_list.size()) return;
    WalkIn& w = m_list[size_t(row)];
    w.delivDate = date;
    w.svcsUsed = service;
    w.defRte = route.trimmed().left(5);
    w.deliveryType = deliveryType;
    w.comp = comp;
    if (!w.isComplete()) m_list.erase(m_list.begin() + row);
    m_recorded = false;
    emit stateChanged();
}

void TFormBatchAddWalkIns::ActionRemove(int row)
{
    if (m_ui.question(QStringLiteral("Remove the selected Client from the list of Walk-Ins?"),
                      Buttons::YesNo) != Answer::Yes)
        return;
    if (row >= 0 && size_t(row) < m_list.size()) m_list.erase(m_list.begin() + row);
    emit stateChanged();
}

qint64 TFormBatchAddWalkIns::ActionRecordWalkIns()
{
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        m_ui.error(access.refusal());
        return 0;
    }
    const BusyGuard busy(m_ui);
    qint64 recorded = 0;
    if (showingFailure(m_ui,
                       [&] { recorded = WalkInRecorder(m_db, m_ui).record(m_list, m_session.userFullName); }))
        m_recorded = true;
    return recorded;
}

bool TFormBatchAddWalkIns::FormCloseQuery()
{
    if (m_list.empty() || m_recorded) return true;
    if (m_ui.question(
            QStringLiteral("You have not recorded the walk-in events you have created.\r\nDo you wish to "
                           "record them before closing this window?"),
            Buttons::YesNo) == Answer::Yes)
        ActionRecordWalkIns();
    return true;
}

} // namespace kb
