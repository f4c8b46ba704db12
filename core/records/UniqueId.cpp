#include "records/UniqueId.h"

#include "records/DataSetActions.h"
#include "store/Database.h"
#include "store/DbError.h"
#include "MessageError.h"
#include "dataset/TableDataSet.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QThread>

namespace kb {

namespace {

// Lets the user interface run pending messages for a random number of
// rounds; without an application object there is nothing to run, and the
// thread only gives way to others.
void randomWait(int maxRounds)
{
    const int rounds = maxRounds > 0 ? int(QRandomGenerator::global()->bounded(maxRounds)) : 0;
    for (int i = 0; i < rounds; ++i) {
        if (QCoreApplication::instance()) QCoreApplication::processEvents();
        QThread::yieldCurrentThread();
    }
}

// Puts the counter row into edit, which takes its lock; false when every
// try met a conflict.
bool editCounterRow(TableDataSet& idnos, const UniqueIdTries& tries)
{
    for (int attempt = 0; attempt < tries.tries; ++attempt) {
        try {
            if (attempt > 0) idnos.refresh(); // the row has probably moved on since it was read
            idnos.edit();
            return true;
        } catch (const DbError& error) {
            if (!error.isLockConflict()) throw; // another workstation holds the row or has just changed it
        }
        randomWait(tries.maxWaitRounds);
    }
    return false;
}

} // namespace

int GetUniqueID(Database& db, const QString& counterColumn, const UniqueIdTries& tries)
{
    TableDataSet idnos(db, QStringLiteral("IDNOS"));
    OpenTable(idnos);
    // Leaving this scope, also by a failure, discards a pending edit and
    // gives back the row lock and the table.
    if (!editCounterRow(idnos, tries))
        throw MessageError(QStringLiteral("Cannot get next unique number. (btGetUniqueNumber)"));
    const QVariant current = idnos.fieldValue(counterColumn);
    const int next = (current.isNull() ? 0 : current.toInt()) + 1;
    idnos.setFieldValue(counterColumn, next);
    idnos.post();
    idnos.flushBuffers();
    idnos.close();
    return next;
}

} // namespace kb
