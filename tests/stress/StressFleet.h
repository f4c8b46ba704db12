#pragma once

#include "StressWorker.h"

#include <QList>
#include <QStringList>

#include <memory>

class QProcess;

namespace kb::stress {

// A worker named name on the data a command would name with location
// ({"--data", DIR} or {"--server", ADDRESS}), journaling into folder.
WorkerOptions workerOn(const QStringList& location, const QString& name, const QString& folder);

// The words that start a worker process, and reading them back in it.
QStringList workerArguments(const WorkerOptions& options);
WorkerOptions parseWorkerArguments(const QStringList& arguments);

// The worker processes of one run, each the stress_worker program with a
// journal of its own.
class StressFleet
{
public:
    explicit StressFleet(QString program);
    ~StressFleet();

    // Starts a worker; it begins working once it has signed in.
    void start(const WorkerOptions& options);
    int size() const { return int(m_workers.size()); }
    // Ends a worker at once, whatever it is doing.
    void kill(int index);
    // Waits for every worker. Problems lists those that did not end well by
    // themselves (killed ones apart).
    void waitAll(int timeoutMs, QStringList& problems);

    QList<QList<QStringList>> journals() const;
    // Pieces of work the workers that ended by themselves tried, committed
    // or not, and the conflicts among them.
    qint64 attempted() const { return m_attempted; }
    qint64 conflicts() const { return m_conflicts; }

private:
    struct Worker
    {
        WorkerOptions options;
        std::unique_ptr<QProcess> process;
        bool killed = false;
    };
    QString m_program;
    std::vector<Worker> m_workers;
    qint64 m_attempted = 0;
    qint64 m_conflicts = 0;
};

} // namespace kb::stress
