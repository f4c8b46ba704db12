#pragma once

#include "missed/MissedClient.h"
#include "missed/MissedDeliveries.h"

#include <QDate>
#include <QStringList>

#include <vector>

namespace kb {

class Database;
class UserInterface;

// One client of a list of misses to record, with whether it is excused.
struct MissRequest
{
    MissedClient client;
    bool excused = false;
};

// Records misses of one date: for each client the date's status decides, as
// the screens do, whether it goes on, is asked about or refused; then every
// client that goes on is recorded in one transaction. The questions come
// first, so no transaction waits on a person; inside it each client's status
// is read again under its rows' hold, and a delivery that another
// workstation has marked meanwhile is told and left alone, so two
// workstations marking the same route at once lose nothing and record
// nothing twice.
class MissRecorder
{
public:
    // How the messages name the client: the single screen speaks of "that
    // delivery", the batch of the client by name.
    enum class Wording { Single, Batch };

    MissRecorder(Database& db, UserInterface& ui, Wording wording) : m_db(db), m_ui(ui), m_wording(wording) {}

    // Asks or tells what the status needs; true when the client's miss is to
    // be recorded.
    bool confirm(const MissedClient& client, const DateStatus& status);
    // The whole list: confirm() for each, then the recording. The number of
    // misses recorded. Throws DbError or MessageError (nothing recorded).
    qint64 record(const std::vector<MissRequest>& list, const QDate& date, const QString& user);
    // Records clients already confirmed, in one transaction.
    qint64 recordConfirmed(const std::vector<MissRequest>& list, const QDate& date, const QString& user);

private:
    QString alreadyMissedText(const MissedClient& client) const;

    Database& m_db;
    UserInterface& m_ui;
    Wording m_wording;
};

} // namespace kb
