#include "missed/TFormSummarizeMissedDeliveries.h"

#include "ShownFailure.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace kb {

TFormSummarizeMissedDeliveries::TFormSummarizeMissedDeliveries(Database& db, const SessionState& session,
                                                               UserInterface& ui)
    : m_db(db), m_session(session), m_ui(ui), m_since(db.clock().today().addDays(-365))
{
}

std::optional<MissedSummaryResult> TFormSummarizeMissedDeliveries::ActionSummarize()
{
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        m_ui.error(access.refusal());
        return std::nullopt;
    }
    std::optional<MissedSummaryResult> result;
    showingFailure(m_ui, [&] { result = summarizeMissedDeliveries(m_db, m_ui, m_since); });
    if (result && m_refresh) m_refresh();
    return result;
}

} // namespace kb
