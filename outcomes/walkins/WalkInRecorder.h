#pragma once

#include "walkins/WalkIn.h"

#include <QString>

#include <vector>

namespace kb {

class Database;
class UserInterface;

// The rules of recording walk-in visits: who may be added to the list, and
// the EpisodicDeliveries rows ("W" events) a recorded list writes. Credit
// turns those events into deliveries later.
class WalkInRecorder
{
public:
    WalkInRecorder(Database& db, UserInterface& ui) : m_db(db), m_ui(ui) {}

    // Whether the client may go on the list for the date: an active client
    // whose start date has come and whose stop date has not passes; any
    // other is asked about, naming the reasons. A client without a service
    // of their own is refused whatever the answer.
    bool mayAdd(const WalkIn& walkIn);
    // "... may not be eligible ..." with the reasons that apply; empty when
    // the client is eligible.
    QString eligibilityQuestion(const WalkIn& walkIn);

    // Records the list's complete lines as walk-in events, in one
    // transaction; a client who has an event on the date already is asked
    // about first. Tells how many were recorded and returns that number.
    qint64 record(const std::vector<WalkIn>& list, const QString& createdBy);

    // "There were no new walk-in events to record." and the like.
    static QString recordedText(qint64 count);

private:
    Database& m_db;
    UserInterface& m_ui;
};

} // namespace kb
