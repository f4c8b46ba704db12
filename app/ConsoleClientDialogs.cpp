#include "ConsoleClientDialogs.h"

#include "rules/ClientHistoryTexts.h"
#include "screens/TFormResetStartDate.h"
#include "screens/TFormShowHouseholdMembers.h"

namespace kb::app {

namespace {

QString dateText(const QDate& date)
{
    return date.isValid() ? client_history::dateText(date) : QStringLiteral("none");
}

} // namespace

void ConsoleClientDialogs::showHouseholdMembers(TFormShowHouseholdMembers& form)
{
    m_err << form.caption() << ":\n";
    for (const auto& m : form.members())
        m_err << "  " << m.clientId << ' ' << m.name << ", " << m.status << ", route " << m.route << ", "
              << (m.days.isEmpty() ? QStringLiteral("no days") : m.days) << '\n';
}

bool ConsoleClientDialogs::showResetStartDate(TFormResetStartDate& form)
{
    m_err << form.caption() << ": " << form.startDateLabel() << ' ' << dateText(form.startDate());
    if (form.recertificationVisible())
        m_err << ", " << form.recertificationDateLabel() << ' ' << dateText(form.recertificationDate());
    m_err << " [Cancel]\n";
    return false;
}

} // namespace kb::app
