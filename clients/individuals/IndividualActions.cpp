#include "individuals/IndividualActions.h"

#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "individuals/TFormRelatedClients.h"

namespace kb {

IndividualActions::IndividualActions(Database& db, UserInterface& ui, ShowRelated showRelated)
    : m_db(db), m_ui(ui), m_showRelated(std::move(showRelated))
{
}

bool IndividualActions::DeleteIndividual(DataSet& individuals)
{
    if (!individuals.isActive() || individuals.isEmpty()) return false;
    if (m_ui.question(deleteQuestion(), Buttons::OkCancel) != Answer::Ok) return false;
    const qint64 indivId = individuals.fieldValue(u"INDIV_ID").toLongLong();
    // Relationships point at the row: it stays while a client needs it.
    if (TFormRelatedClients::relatedCount(m_db, indivId) > 0) {
        TFormRelatedClients related(m_db, indivId);
        if (m_showRelated) m_showRelated(related);
        return false;
    }
    individuals.remove();
    return true;
}

void IndividualActions::ShowRelatedClients(qint64 indivId)
{
    if (indivId <= 0) return;
    if (TFormRelatedClients::relatedCount(m_db, indivId) == 0) {
        m_ui.information(noRelatedText());
        return;
    }
    TFormRelatedClients related(m_db, indivId);
    if (m_showRelated) m_showRelated(related);
}

} // namespace kb
