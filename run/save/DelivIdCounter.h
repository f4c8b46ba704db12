#pragma once

#include "records/UniqueId.h"

#include <QtGlobal>

namespace kb {

class Database;

// The Deliv_ID counter of IDNOS for the length of one save. A save draws
// its numbers as one block: it reads the counter, numbers its rows and moves
// the counter past them inside its transaction. So that no other
// workstation reads the counter in between, the counter row's lock is taken
// before the transaction begins and given back only after it has ended;
// GetUniqueID on another workstation meanwhile waits as for any row in edit.
//
// The counter holds the next number a save may use (not the last one used):
// SaveIDNumber(n) stores n + 1.
class DelivIdCounter
{
public:
    // Takes the row lock, trying as GetUniqueID does; throws MessageError
    // "Cannot lock IDNos. (btSaveIDNumber)" when every try fails.
    explicit DelivIdCounter(Database& db, const UniqueIdTries& tries = {});
    ~DelivIdCounter();
    DelivIdCounter(const DelivIdCounter&) = delete;
    DelivIdCounter& operator=(const DelivIdCounter&) = delete;

    // The first Deliv_ID of the save: IDNOS.Deliv_ID, or when that is null
    // or 0 one more than the highest Deliv_ID of Deliveri (1 when there is
    // none), which is then stored in IDNOS.
    qint64 firstDelivId();
    // Stores n + 1 in IDNOS.Deliv_ID.
    void SaveIDNumber(qint64 n);

private:
    void store(qint64 value);

    Database& m_db;
    qint64 m_rowId = 0;
};

} // namespace kb
