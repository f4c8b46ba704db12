#include "households/TFormHouseholdWizard.h"

#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "households/PendingClientEdit.h"
#include "records/RecordServices.h"
#include "store/Database.h"

namespace kb {

TFormHouseholdWizard::TFormHouseholdWizard(RecordServices& services, UserInterface& ui,
                                           const SessionState& session, const Clock& clock, DataSet& clients)
    : m_services(services), m_ui(ui), m_clients(clients), m_actions(services, ui, session, clock, clients)
{
}

void TFormHouseholdWizard::FormShow()
{
    m_anyHousehold =
        !m_services.db().execute(QStringLiteral("Select top 1 Household_ID from Households")).isEmpty();
    m_name = m_clients.isActive() && !m_clients.isEmpty() ? m_actions.suggestedName()
                                                          : HouseholdActions::suggestedName({}, {});
    m_step = Step::Start;
    m_choice = Choice::NewHousehold;
}

bool TFormHouseholdWizard::canNext() const
{
    switch (m_step) {
    case Step::Start:
    case Step::Choice:
        return true;
    case Step::Name:
        return !m_name.trimmed().isEmpty();
    case Step::Search:
        return m_chosen > 0;
    case Step::Role:
        return false;
    }
    return false;
}

void TFormHouseholdWizard::setChoice(Choice choice)
{
    m_choice = choice == Choice::ExistingHousehold && !m_anyHousehold ? Choice::NewHousehold : choice;
}

void TFormHouseholdWizard::next()
{
    if (!canNext()) return;
    switch (m_step) {
    case Step::Start:
        m_step = Step::Choice;
        break;
    case Step::Choice:
        m_step = m_choice == Choice::NewHousehold ? Step::Name : Step::Search;
        if (m_step == Step::Search && m_found.isEmpty()) search(m_searchText);
        break;
    case Step::Name:
    case Step::Search:
        m_step = Step::Role;
        break;
    case Step::Role:
        break;
    }
}

void TFormHouseholdWizard::back()
{
    switch (m_step) {
    case Step::Start:
        break;
    case Step::Choice:
        m_step = Step::Start;
        break;
    case Step::Name:
    case Step::Search:
        m_step = Step::Choice;
        break;
    case Step::Role:
        m_step = m_choice == Choice::NewHousehold ? Step::Name : Step::Search;
        break;
    }
}

void TFormHouseholdWizard::search(const QString& text)
{
    m_searchText = text;
    const ResultSet rows = m_services.db().execute(
        QStringLiteral("Select top 200 Household_ID, Household_Name from Households where "
                       "Upper(Household_Name) like :Name order by Household_Name NoCase"),
        {{QStringLiteral("Name"), text.trimmed().toUpper() + QLatin1Char('%')}});
    m_found.clear();
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        m_found.append({rows.value(r, 0).toLongLong(), rows.value(r, 1).toString()});
    m_chosen = m_found.isEmpty() ? 0 : m_found.first().id;
}

bool TFormHouseholdWizard::Finish()
{
    if (!canFinish() || !m_clients.isActive() || m_clients.isEmpty()) return false;
    if (!PendingClientEdit::saveBeforeChange(m_clients, m_ui, saveQuestion())) return false;
    TransactionGuard transaction(m_services.db());
    qint64 household = m_chosen;
    if (m_choice == Choice::NewHousehold) {
        try {
            household = m_actions.createHousehold(m_name.trimmed().left(50));
        } catch (const MessageError& e) {
            m_ui.error(e.message());
            return false;
        }
    } else if (household <= 0 || !m_actions.householdExists(household)) {
        m_ui.error(HouseholdActions::notCreatedText());
        return false;
    }
    if (!m_actions.addCurrentClient(household, m_role, m_head)) return false;
    transaction.commit();
    m_joined = household;
    m_roles.remember(m_role);
    return true;
}

} // namespace kb
