#pragma once

#include "missed/MissedClient.h"
#include "missed/MissedDeliveries.h"

#include <QStringList>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Excuse Missed Meals": the current client's misses not yet excused, one
// check-list line each (weekday, "; ", date). "Excuse Checked Deliveries"
// excuses the checked lines top to bottom, each found again by the date of
// its line; a line whose date finds no entry is told and passed over. The
// found ones change together in one transaction, then the screen closes.
class TFormExcuseMissedMeals
{
public:
    TFormExcuseMissedMeals(Database& db, const SessionState& session, UserInterface& ui, MissedClient client);
    virtual ~TFormExcuseMissedMeals() = default;

    virtual QString caption() const { return QStringLiteral("Excuse Missed Meals"); }
    virtual QString actionText() const { return QStringLiteral("Excuse Checked Deliveries"); }
    static QString notFoundText()
    {
        return QStringLiteral("Error locating the missed delivery using the Delivery Date.");
    }

    // Reads the list again and unchecks every line.
    void FormShow();
    const QStringList& lines() const { return m_lines; }
    bool isChecked(int line) const { return m_checked.at(size_t(line)); }
    void setChecked(int line, bool checked);
    // Checks the line of a date; false when no line has it.
    bool checkDate(const QDate& date);
    int checkedCount() const;

    // The screen's command: true when it ran (the screen then closes), false
    // when it was refused or failed (the user was told why).
    bool ActionApply();
    // How many entries the last ActionApply changed.
    int changed() const { return m_changed; }

protected:
    virtual std::vector<MissEntry> readList(MissedDeliveries& misses);
    virtual QString lineOf(const MissEntry& entry) const;
    virtual void apply(MissedDeliveries& misses, const MissEntry& entry);

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    MissedClient m_client;

private:
    std::vector<MissEntry> m_entries;
    QStringList m_lines;
    std::vector<bool> m_checked;
    int m_changed = 0;
};

// "Clear Missed Meals": every miss of the client, excused ones too (shown
// with " (Excused)"); "Clear Selected Misses" removes each checked one's
// History row, leaves a row saying it was deleted and sets the date's
// status back to empty.
class TFormDeleteMissedMeals : public TFormExcuseMissedMeals
{
public:
    using TFormExcuseMissedMeals::TFormExcuseMissedMeals;

    QString caption() const override { return QStringLiteral("Clear Missed Meals"); }
    QString actionText() const override { return QStringLiteral("Clear Selected Misses"); }

protected:
    std::vector<MissEntry> readList(MissedDeliveries& misses) override;
    QString lineOf(const MissEntry& entry) const override;
    void apply(MissedDeliveries& misses, const MissEntry& entry) override;
};

} // namespace kb
