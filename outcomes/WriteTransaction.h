#pragma once

#include "store/Database.h"
#include "store/DbError.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QThread>

#include <optional>

namespace kb {

// Runs work in one write transaction and commits it. While another
// workstation holds the data (a data directory is locked whole while one
// writes; two server transactions may wait on each other), the whole work is
// rolled back and run again after a short random wait, up to `tries` times;
// so work must only read and write the store, keeping what it wants to tell
// for after the commit. Any other failure rolls back and reaches the caller.
template <typename Work> void inWriteTransaction(Database& db, Work&& work, int tries = 50)
{
    for (int attempt = 1;; ++attempt) {
        try {
            TransactionGuard transaction(db);
            work();
            transaction.commit();
            return;
        } catch (const DbError& e) {
            if (!e.isLockConflict() || attempt >= tries) throw;
        }
        if (QCoreApplication::instance()) QCoreApplication::processEvents();
        QThread::msleep(QRandomGenerator::global()->bounded(20, 120));
    }
}

} // namespace kb
