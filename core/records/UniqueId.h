#pragma once

#include <QString>

namespace kb {

class Database;

// How hard GetUniqueID tries for the row lock on IDNOS. Each try already
// carries the session's own lock retries; between tries the user interface
// runs a random number of rounds of pending messages (0 to maxWaitRounds - 1)
// so that competing workstations fall out of step.
struct UniqueIdTries
{
    int tries = 100;
    int maxWaitRounds = 20;
};

// The next number of an IDNOS counter column: the column's value plus one
// (an empty counter counts as 0), stored and made durable before it is
// returned. Numbers are never handed out twice, also between processes,
// because the counter row is changed only under its row lock. Throws
// MessageError "Cannot get next unique number. (btGetUniqueNumber)" when
// the row cannot be put into edit in all the tries; the counter is then
// unchanged.
int GetUniqueID(Database& db, const QString& counterColumn, const UniqueIdTries& tries = {});

} // namespace kb
