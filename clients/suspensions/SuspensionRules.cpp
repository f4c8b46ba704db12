#include "suspensions/SuspensionRules.h"

#include "Clock.h"
#include "records/History.h"
#include "records/RecordServices.h"
#include "rules/ClientHistoryTexts.h"
#include "session/SessionState.h"

namespace kb {

namespace {

constexpr DataSet::Hook RuleHooks[] = {DataSet::Hook::AfterInsert, DataSet::Hook::BeforePost,
                                       DataSet::Hook::BeforeDelete};

} // namespace

SuspensionRules::SuspensionRules(RecordServices& services, const SessionState& session, const Clock& clock,
                                 DataSet& clients)
    : m_services(services), m_session(session), m_clock(clock), m_clients(clients)
{
}

SuspensionRules::~SuspensionRules()
{
    detach();
}

void SuspensionRules::attach(DataSet& suspends)
{
    detach();
    m_suspends = &suspends;
    for (size_t i = 0; i < std::size(RuleHooks); ++i)
        m_previous[i] = suspends.hook(RuleHooks[i]);
    const auto chain = [this](size_t i, void (SuspensionRules::*rule)(DataSet&)) {
        return [this, i, rule](DataSet& set) {
            (this->*rule)(set);
            if (m_previous[i]) m_previous[i](set);
        };
    };
    suspends.setHook(DataSet::Hook::AfterInsert, chain(0, &SuspensionRules::afterInsert));
    suspends.setHook(DataSet::Hook::BeforePost, chain(1, &SuspensionRules::beforePost));
    suspends.setHook(DataSet::Hook::BeforeDelete, chain(2, &SuspensionRules::beforeDelete));
}

void SuspensionRules::detach()
{
    if (!m_suspends) return;
    for (size_t i = 0; i < std::size(RuleHooks); ++i)
        m_suspends->setHook(RuleHooks[i], m_previous[i]);
    m_suspends = nullptr;
}

QString SuspensionRules::deletionEvent(const QDate& stop, const QDate& resume)
{
    return QStringLiteral("Suspension (") + client_history::dateText(stop) + QLatin1Char('-') +
           client_history::dateText(resume) + QStringLiteral(") deleted.");
}

void SuspensionRules::writeDeletionHistory(Database& db, const QString& user, const QVariant& personId,
                                           const QVariant& clientId, const QDate& stop, const QDate& resume)
{
    QueryInsertHistory(db, user, {personId, clientId, deletionEvent(stop, resume), QVariant()});
}

void SuspensionRules::afterInsert(DataSet& suspends)
{
    const QDate today = m_clock.today();
    suspends.setFieldValue(u"Person_ID", m_clients.fieldValue(u"PERSON_ID"));
    suspends.setFieldValue(u"Client_ID", m_clients.fieldValue(u"CLIENT_ID"));
    suspends.setFieldValue(u"Stop_Dt", today.addDays(1));
    suspends.setFieldValue(u"Resume_Dt", today.addDays(2));
    suspends.setFieldValue(u"Valid", true);
    suspends.setFieldValue(u"Tran_Type", transactionType());
    suspends.setFieldValue(u"User", m_session.userFullName);
    suspends.setFieldValue(u"Create_Date", today);
    suspends.setFieldValue(u"Last_Updated", m_clock.now());
}

void SuspensionRules::beforePost(DataSet& suspends)
{
    suspends.setFieldValue(u"Last_Updated", m_clock.now());
}

void SuspensionRules::beforeDelete(DataSet& suspends)
{
    writeDeletionHistory(m_services.db(), m_session.userFullName, suspends.fieldValue(u"Person_ID"),
                         suspends.fieldValue(u"Client_ID"), suspends.fieldValue(u"Stop_Dt").toDate(),
                         suspends.fieldValue(u"Resume_Dt").toDate());
}

} // namespace kb
