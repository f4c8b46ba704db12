#pragma once

#include "missed/MissedSummary.h"

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Summarize Clients' Missed Deliveries": rebuilds every client's missed and
// excused counters from the misses entered since a date, a year ago to
// begin with.
class TFormSummarizeMissedDeliveries
{
public:
    TFormSummarizeMissedDeliveries(Database& db, const SessionState& session, UserInterface& ui);

    static QString caption() { return QStringLiteral("Summarize Clients' Missed Deliveries"); }
    static QString notice()
    {
        return QStringLiteral(
            "This utility will summarize each client's missed and excused deliveries. It may "
            "take a few minutes to complete this process. Once started it should not be "
            "interrupted!");
    }
    static QString sincePrompt() { return QStringLiteral("Summarize deliveries since:"); }

    QDate since() const { return m_since; }
    void setSince(const QDate& date)
    {
        if (date.isValid()) m_since = date;
    }
    // Called after a summary so the client window shows the new counters,
    // on the client it was on.
    void setRefresh(std::function<void()> refresh) { m_refresh = std::move(refresh); }

    // "Summarize": what was written, or nothing when refused or failed (the
    // user was told why; nothing changed).
    std::optional<MissedSummaryResult> ActionSummarize();

private:
    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    QDate m_since;
    std::function<void()> m_refresh;
};

} // namespace kb
