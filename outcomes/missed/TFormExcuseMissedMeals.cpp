#include "missed/TFormExcuseMissedMeals.h"

#include "ShownFailure.h"
#include "UserInterface.h"
#include "WriteTransaction.h"
#include "missed/MissEventText.h"
#include "session/SessionState.h"

#include <algorithm>

namespace kb {

TFormExcuseMissedMeals::TFormExcuseMissedMeals(Database& db, const SessionState& session, UserInterface& ui,
                                               MissedClient client)
    : m_db(db), m_session(session), m_ui(ui), m_client(std::move(client))
{
}

void TFormExcuseMissedMeals::FormShow()
{
    MissedDeliveries misses(m_db);
    m_entries = readList(misses);
    m_lines.clear();
    for (const MissEntry& e : m_entries)
        m_lines.append(lineOf(e));
    m_checked.assign(m_entries.size(), false);
}

void TFormExcuseMissedMeals::setChecked(int line, bool checked)
{
    if (line >= 0 && size_t(line) < m_checked.size()) m_checked[size_t(line)] = checked;
}

bool TFormExcuseMissedMeals::checkDate(const QDate& date)
{
    for (qsizetype i = 0; i < m_lines.size(); ++i)
        if (miss_text::dateOfLine(m_lines[i]) == date) {
            m_checked[size_t(i)] = true;
            return true;
        }
    return false;
}

int TFormExcuseMissedMeals::checkedCount() const
{
    return int(std::count(m_checked.begin(), m_checked.end(), true));
}

bool TFormExcuseMissedMeals::ActionApply()
{
    m_changed = 0;
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        m_ui.error(access.refusal());
        return false;
    }
    // Each checked line finds its entry by the date written in it, as the
    // list shows it, so two misses of one date find the first of them.
    std::vector<MissEntry> chosen;
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        if (!m_checked[size_t(i)]) continue;
        const MissEntry* entry = findByDate(m_entries, miss_text::dateOfLine(m_lines[i]));
        if (!entry) {
            m_ui.error(notFoundText());
            continue;
        }
        // Two lines of one date find the same entry, which changes once.
        if (std::none_of(chosen.begin(), chosen.end(),
                         [&](const MissEntry& c) { return c.recordId == entry->recordId; }))
            chosen.push_back(*entry);
    }
    MissedDeliveries misses(m_db);
    const bool done = showingFailure(m_ui, [&] {
        inWriteTransaction(m_db, [&] {
            for (const MissEntry& e : chosen)
                apply(misses, e);
        });
    });
    if (done) m_changed = int(chosen.size());
    return done;
}

std::vector<MissEntry> TFormExcuseMissedMeals::readList(MissedDeliveries& misses)
{
    return misses.excusable(m_client.personId);
}

QString TFormExcuseMissedMeals::lineOf(const MissEntry& entry) const
{
    return miss_text::listLine(entry.eventDate);
}

void TFormExcuseMissedMeals::apply(MissedDeliveries& misses, const MissEntry& entry)
{
    misses.excuse(m_client, entry);
}

std::vector<MissEntry> TFormDeleteMissedMeals::readList(MissedDeliveries& misses)
{
    return misses.clearable(m_client.personId);
}

QString TFormDeleteMissedMeals::lineOf(const MissEntry& entry) const
{
    return miss_text::listLine(entry.eventDate, entry.isExcused());
}

void TFormDeleteMissedMeals::apply(MissedDeliveries& misses, const MissEntry& entry)
{
    misses.clear(m_client, entry, m_session.userFullName);
}

} // namespace kb
