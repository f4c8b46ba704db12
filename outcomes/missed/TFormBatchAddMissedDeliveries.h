#pragma once

#include "missed/MissRecorder.h"

#include <QDate>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// A line of the list of clients whose deliveries of the date were missed.
struct MissCandidate
{
    MissedClient client;
    QString midName;
    QString address1;
    QString city;
    QString state;
    bool excused = false; // the "Excused" check box of the line
};

// "Record Missed Deliveries": a list of clients, found one by one, whose
// deliveries of one date were missed. "Record Missed Deliveries" asks about
// each as the single screen does, naming the client, and records the ones
// that go on in one transaction; the list stays as it is.
class TFormBatchAddMissedDeliveries : public QObject
{
    Q_OBJECT

public:
    TFormBatchAddMissedDeliveries(Database& db, const SessionState& session, UserInterface& ui,
                                  QObject* parent = nullptr);

    static QString caption() { return QStringLiteral("Record Missed Deliveries"); }

    // "Delivery Date:", today to begin with, and the weekday name beside it.
    QDate date() const { return m_date; }
    void setDate(const QDate& date);
    QString weekdayName() const;

    // "Search" "for": "Person ID", "Client ID" (the default), "Phone",
    // "Social Security Number".
    static QStringList searchChoices();
    int searchIndex() const { return m_searchIndex; }
    void setSearchIndex(int index);
    const QString& searchText() const { return m_searchText; }
    // In scanner mode every change starts the 500 ms timer that adds the client.
    void setSearchText(const QString& text);
    bool excused() const { return m_excused; }
    void setExcused(bool excused) { m_excused = excused; }
    // "Client selection is via scanner": searches by Person ID, the search
    // choices and "Excused" hide, and a pause in typing adds the client.
    bool scannerMode() const { return m_scanner; }
    void setScannerMode(bool on);
    bool scanPending() const { return m_scanTimer.isActive(); }

    // "Add to List": nothing for an empty search text; a client already in
    // the list is refused. The search text is cleared after.
    void ActionAddToList();
    const std::vector<MissCandidate>& candidates() const { return m_candidates; }
    void setCandidateExcused(int row, bool excused);
    // "Remove" or a double click: asks, then removes the line.
    void ActionRemove(int row);
    // "Record Missed Deliveries": the number of misses recorded.
    qint64 ActionRecord();
    bool mayRecord() const;

signals:
    void stateChanged();
    // The search box takes the focus again.
    void focusSearch();

private:
    std::optional<MissCandidate> findClient(const QString& text);

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    QDate m_date;
    int m_searchIndex = 1;
    QString m_searchText;
    bool m_excused = false;
    bool m_scanner = false;
    QTimer m_scanTimer;
    std::vector<MissCandidate> m_candidates;
};

} // namespace kb
