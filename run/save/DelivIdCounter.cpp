#include "save/DelivIdCounter.h"

#include "MessageError.h"
#include "dataset/RecordLocks.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QThread>

namespace kb {

namespace {

const QString idnos = QStringLiteral("IDNOS");

bool isLockConflict(const DbError& error)
{
    return error.code() == DbErrorCode::RecordLocked || error.code() == DbErrorCode::TableLocked;
}

// Between tries the user interface runs a random number of rounds of pending
// messages, so competing workstations fall out of step.
void randomWait(int maxRounds)
{
    const int rounds = maxRounds > 0 ? int(QRandomGenerator::global()->bounded(maxRounds)) : 0;
    for (int i = 0; i < rounds; ++i) {
        if (QCoreApplication::instance()) QCoreApplication::processEvents();
        QThread::yieldCurrentThread();
    }
}

[[noreturn]] void cannotLock()
{
    throw MessageError(QStringLiteral("Cannot lock IDNos. (btSaveIDNumber)"));
}

} // namespace

DelivIdCounter::DelivIdCounter(Database& db, const UniqueIdTries& tries) : m_db(db)
{
    const ResultSet row = m_db.execute(QStringLiteral("Select KB_ROWID from IDNOS"));
    if (row.isEmpty()) cannotLock();
    m_rowId = row.value(0, 0).toLongLong();
    for (int attempt = 0; attempt < tries.tries; ++attempt) {
        if (attempt > 0) randomWait(tries.maxWaitRounds);
        try {
            m_db.recordLocks().lock(this, idnos, m_rowId);
            return;
        } catch (const DbError& error) {
            if (!isLockConflict(error)) throw;
        }
    }
    cannotLock();
}

DelivIdCounter::~DelivIdCounter()
{
    try {
        m_db.recordLocks().unlock(this, idnos, m_rowId);
    } catch (const DbError&) {
        // The lock ends with the session at the latest.
    }
}

qint64 DelivIdCounter::firstDelivId()
{
    const qint64 stored = m_db.execute(QStringLiteral("Select Deliv_ID from IDNOS")).value(0, 0).toLongLong();
    if (stored > 0) return stored;
    const qint64 last = m_db.execute(QStringLiteral("Select Max( Deliv_ID )  as Last_Deliv_ID from Deliveri"))
                            .value(0, 0)
                            .toLongLong();
    const qint64 first = last > 0 ? last + 1 : 1;
    store(first);
    return first;
}

void DelivIdCounter::SaveIDNumber(qint64 n)
{
    store(n + 1);
}

void DelivIdCounter::store(qint64 value)
{
    m_db.execute(QStringLiteral("Update IDNOS set Deliv_ID = :Deliv_ID where KB_ROWID = :KbRow"),
                 {{QStringLiteral("Deliv_ID"), value}, {QStringLiteral("KbRow"), m_rowId}});
}

} // namespace kb
