#include "missed/TFormMissedDel.h"

#include "ShownFailure.h"
#include "UserInterface.h"
#include "missed/MissRecorder.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace kb {

TFormMissedDel::TFormMissedDel(Database& db, const SessionState& session, UserInterface& ui,
                               MissedClient client)
    : m_db(db), m_session(session), m_ui(ui), m_client(std::move(client)), m_recordedBy(session.userFullName)
{
    const QDate today = db.clock().today();
    m_date = today;
    // A stopped client's misses can only be of the last few days' deliveries.
    if (m_client.status == QLatin1String("S")) {
        m_min = today.addDays(-3);
        m_max = today.addDays(1);
    }
}

bool TFormMissedDel::setDate(const QDate& date)
{
    if (!date.isValid()) return false;
    if ((m_min.isValid() && date < m_min) || (m_max.isValid() && date > m_max)) return false;
    m_date = date;
    return true;
}

bool TFormMissedDel::ActionOK()
{
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        m_ui.error(access.refusal());
        return false;
    }
    MissRecorder recorder(m_db, m_ui, MissRecorder::Wording::Single);
    qint64 recorded = 0;
    showingFailure(m_ui, [&] {
        if (recorder.confirm(m_client, MissedDeliveries(m_db).status(m_client.personId, m_date)))
            recorded = recorder.recordConfirmed({{m_client, m_excused}}, m_date, m_recordedBy);
    });
    return recorded == 1;
}

} // namespace kb
