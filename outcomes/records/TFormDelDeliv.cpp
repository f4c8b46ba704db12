#include "records/TFormDelDeliv.h"

#include "UserInterface.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "store/DbError.h"

namespace kb {

TFormDelDeliv::TFormDelDeliv(Database& db, const SessionState& session, UserInterface& ui)
    : m_db(db), m_session(session), m_ui(ui), m_clientLookup(db, clientLookupTitle())
{
}

QStringList TFormDelDeliv::kindChoices()
{
    using K = DeliveryGroupDeletion::Kinds;
    return {DeliveryGroupDeletion::kindsText(K::ExcludeWalkIns), DeliveryGroupDeletion::kindsText(K::All),
            DeliveryGroupDeletion::kindsText(K::WalkInsOnly)};
}

const std::vector<TFormDelDeliv::Choice>& TFormDelDeliv::services()
{
    if (m_services.empty()) {
        m_services.push_back({0, QStringLiteral("Any service received                  [0]")});
        const ResultSet r = m_db.execute(QStringLiteral(
            "Select Service_ID, Service_Desc from Services where Service_Type = 'D' and Mutl_Excl = True "
            "order by Sort_Order, Service_ID"));
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            m_services.push_back({r.value(i, 0).toLongLong(), QStringLiteral("%1     [%2]")
                                                                  .arg(r.value(i, 1).toString().trimmed())
                                                                  .arg(r.value(i, 0).toLongLong())});
    }
    return m_services;
}

bool TFormDelDeliv::okEnabled() const
{
    if (!m_date.isValid() || m_date <= QDate(2000, 1, 1) || m_kindsIndex < 0) return false;
    return m_page == Page::ByService ? m_serviceId >= 0 : m_personId > 0;
}

DeliveryGroupDeletion::Selection TFormDelDeliv::selection()
{
    DeliveryGroupDeletion::Selection s;
    s.date = m_date;
    s.byClient = m_page == Page::ByClient;
    s.kinds = DeliveryGroupDeletion::kindsFromIndex(m_kindsIndex);
    if (s.byClient) {
        s.personId = m_personId;
    } else {
        s.serviceId = m_serviceId;
        for (const Choice& c : services())
            if (c.id == m_serviceId) s.serviceName = c.text.left(c.text.indexOf(u'[')).trimmed();
    }
    return s;
}

bool TFormDelDeliv::ActionOK()
{
    m_result = {};
    if (!okEnabled()) return false;
    const DeliveryGroupDeletion::Selection s = selection();
    m_ui.progressStart(caption());
    struct End
    {
        UserInterface& ui;
        ~End() { ui.progressEnd(); }
    } end{m_ui};
    if (DeliveryGroupDeletion::candidates(m_db, s) == 0) {
        m_ui.information(s.byClient ? DeliveryGroupDeletion::noneByClient()
                                    : DeliveryGroupDeletion::noneByService());
        return false;
    }
    m_ui.progressStep(50);
    try {
        m_result = DeliveryGroupDeletion::run(m_db, s, m_session.userFullName);
    } catch (const DbError& e) {
        // Rolled back: nothing of the group is gone. The engine's reason
        // follows, so the failure can be looked into.
        m_ui.error(DeliveryGroupDeletion::commitFailed());
        m_ui.error(e.message());
        return false;
    }
    m_ui.progressStep(100);
    return true;
}

} // namespace kb
