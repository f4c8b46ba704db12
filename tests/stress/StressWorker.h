#pragma once

#include "StressJournal.h"

#include "Clock.h"
#include "UserInterface.h"

#include <QDate>
#include <QRandomGenerator>
#include <QString>

#include <map>
#include <memory>

namespace kb {
class Database;
class RecordServices;
class TDataModule1;
class TableDataSet;
} // namespace kb

namespace kb::stress {

// The shared clients every worker edits: Person_ID 1 to PoolSize. Few rows,
// so that workers meet each other's locks often.
inline constexpr int PoolSize = 12;
// The dates of the pool's deliveries that workers mark missed: four weeks from
// MissDatesFrom, few enough that two workers often mark the same one.
inline const QDate MissDatesFrom(2024, 3, 4);
inline constexpr int MissDays = 28;
// The dates whose runs workers prepare and save: one week, so that two
// workers often save the same date at once. Every client of the pool is due
// on each of them.
inline const QDate SaveDatesFrom(2024, 5, 6);
inline constexpr int SaveDays = 7;
// The dates inside which workers add suspensions, kept apart from the saved
// runs so that a run's clients do not depend on which suspensions happened
// to be there when it was saved.
inline const QDate SuspendDatesFrom(2024, 7, 1);
inline constexpr int SuspendDays = 56;

// A headless user: messages are counted, and every question of a lock
// conflict is answered No, so the work in hand is abandoned, as a user who
// gives up would.
class StressUserInterface final : public UserInterface
{
public:
    void information(const QString& text) override { ++m_messages[text]; }
    void warning(const QString& text) override { ++m_messages[text]; }
    void error(const QString& text) override
    {
        ++m_messages[text];
        m_lastError = text;
    }
    Answer question(const QString& text, Buttons buttons) override;
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}

    const std::map<QString, int>& messages() const { return m_messages; }
    // The text of the last error told; work that reports its failures as
    // messages is judged by it.
    const QString& lastError() const { return m_lastError; }

private:
    std::map<QString, int> m_messages;
    QString m_lastError;
};

struct WorkerOptions
{
    QString dataDir;      // a data directory, or
    QString server;       // HOST[:PORT]/DATABASE[#SCHEMA]
    QString name;         // W1, W2...: the prefix of the tokens it writes
    QString journalPath;
    QStringList operations; // by name; empty for all of them
    double seconds = 10;
    quint32 seed = 1;
    int maxPauseMs = 20;  // how long an edit may keep its row, at most
    // The session's lock retries. Fewer than a workstation's 15 make the
    // meetings of locks end in the record services' questions, which the
    // worker answers No, as often as in waits.
    int lockRetries = 3;
    int lockWaitMs = 10;
};

// One workstation of a stress run: signs in as a user would, then does a
// random mix of the operations until its time is up, journaling each piece
// of work once it is committed.
class StressWorker
{
public:
    explicit StressWorker(const WorkerOptions& options);
    ~StressWorker();

    // Works until the time is up; the sign-out is written at the end.
    void run();

    Database& db();
    RecordServices& services();
    // The signed-in session, as the screens are given it.
    TDataModule1& data() { return *m_data; }
    const QString& userFullName() const;
    // The worker's own Clients data set, open, with the record services' error hooks.
    TableDataSet& clients() { return *m_clients; }
    QRandomGenerator& random() { return m_random; }
    // A token no other piece of work of any worker writes: "W3-17".
    QString nextToken();
    int pickClient() { return 1 + int(m_random.bounded(PoolSize)); }
    // Keeps what the worker holds for a moment, as a user at the keyboard does.
    void pause();
    void journal(const QStringList& words) { m_journal.write(words); }
    // Work given up because another workstation was in the way.
    void conflict(const QString& what) { ++m_conflicts[what]; }

    qint64 done() const { return m_done; }
    const std::map<QString, int>& conflicts() const { return m_conflicts; }
    const StressUserInterface& ui() const { return m_ui; }
    StressUserInterface& ui() { return m_ui; }

private:
    WorkerOptions m_options;
    SystemClock m_clock;
    StressUserInterface m_ui;
    std::unique_ptr<TDataModule1> m_data;
    std::unique_ptr<TableDataSet> m_clients;
    StressJournal m_journal;
    QRandomGenerator m_random;
    qint64 m_tokens = 0;
    qint64 m_done = 0;
    std::map<QString, int> m_conflicts;
};

} // namespace kb::stress
