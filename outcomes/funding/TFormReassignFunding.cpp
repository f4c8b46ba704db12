#include "funding/TFormReassignFunding.h"

#include "UserInterface.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace kb {

namespace {

bool afterCutOff(const QDate& date)
{
    return date.isValid() && date > QDate(2000, 1, 1);
}

} // namespace

TFormReassignFunding::TFormReassignFunding(Database& db, const SessionState& session, UserInterface& ui)
    : m_db(db), m_session(session), m_ui(ui), m_clientLookup(db, clientLookupTitle())
{
}

QString TFormReassignFunding::bracketKey(const QString& entry)
{
    const qsizetype open = entry.indexOf(u'[');
    if (open < 0) return {};
    QString key = entry.mid(open + 1, 4).trimmed();
    for (const QChar stop : {u'~', u']'}) {
        const qsizetype at = key.indexOf(stop);
        if (at > 0) key = key.left(at);
    }
    return key.trimmed();
}

const QStringList& TFormReassignFunding::services()
{
    if (m_services.isEmpty()) {
        const ResultSet r =
            m_db.execute(QStringLiteral("Select Service_ID, Service_Desc from Services order by Service_ID"));
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            m_services << r.value(i, 1).toString().trimmed() + QString(10, u' ') + QStringLiteral("[") +
                              QString::number(r.value(i, 0).toLongLong()) + QStringLiteral("]");
    }
    return m_services;
}

const QStringList& TFormReassignFunding::fundingSources()
{
    if (m_fundingSources.isEmpty()) {
        const ResultSet r = m_db.execute(
            QStringLiteral("Select Fund_Srce, Fund_Cd from Fundsrcs order by Fund_Srce, Fund_Cd"));
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            m_fundingSources << r.value(i, 0).toString().trimmed() + QString(5, u' ') + QStringLiteral("[") +
                                    r.value(i, 1).toString().trimmed() + QStringLiteral("]");
    }
    return m_fundingSources;
}

bool TFormReassignFunding::okEnabled() const
{
    if (m_working || m_personId <= 0 || !afterCutOff(m_start) || !afterCutOff(m_end)) return false;
    if (bracketKey(m_service).isEmpty()) return false;
    return m_remove || (m_reassign && !bracketKey(m_funding).isEmpty());
}

bool TFormReassignFunding::ActionOK()
{
    if (!okEnabled()) return false;
    if (m_ui.question(FundingReassignment::question(), Buttons::YesNo) != Answer::Yes) return false;
    FundingReassignment::Selection s;
    s.personId = m_personId;
    s.serviceId = bracketKey(m_service).toLongLong();
    s.serviceText = m_service.left(m_service.indexOf(u'[')).trimmed();
    s.start = m_start;
    s.end = m_end;
    if (!m_remove) s.fundCd = bracketKey(m_funding);
    {
        BusyGuard busy(m_ui);
        m_working = true;
        struct Done
        {
            bool& flag;
            ~Done() { flag = false; }
        } done{m_working};
        m_result = FundingReassignment::run(m_db, s, m_session.userFullName);
    }
    m_ui.information(FundingReassignment::done());
    return true;
}

} // namespace kb
