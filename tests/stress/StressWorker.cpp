#include "StressWorker.h"

#include "StressOperations.h"

#include "dataset/RecordLocks.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/TDataModule1.h"
#include "store/Database.h"

#include <QElapsedTimer>
#include <QThread>

#include <stdexcept>

namespace kb::stress {

Answer StressUserInterface::question(const QString& text, Buttons buttons)
{
    ++m_messages[text];
    return buttons == Buttons::OkCancel ? Answer::Cancel : Answer::No;
}

StressWorker::StressWorker(const WorkerOptions& options)
    : m_options(options), m_journal(options.journalPath), m_random(options.seed)
{
    SessionSettings settings;
    if (!options.dataDir.isEmpty())
        settings.applyDataOption(options.dataDir);
    else
        settings.applyServerOption(options.server);
    // The same start-up and sign-in as the desktop program and the commands.
    m_data = std::make_unique<TDataModule1>(m_clock, m_ui);
    m_data->start(settings, QString());
    SignIn::complete(m_data->db(), m_data->session(), SignIn::lookUp(m_data->db(), SignIn::builtInUser));
    db().recordLocks().setRetries(options.lockRetries, options.lockWaitMs);
    m_clients = std::make_unique<TableDataSet>(db(), QStringLiteral("Clients"));
    services().installErrorHooks(*m_clients);
    m_clients->open();
}

StressWorker::~StressWorker() = default;

Database& StressWorker::db() { return m_data->db(); }
RecordServices& StressWorker::services() { return m_data->services(); }
const QString& StressWorker::userFullName() const { return m_data->session().userFullName; }

QString StressWorker::nextToken() { return QStringLiteral("%1-%2").arg(m_options.name).arg(++m_tokens); }

void StressWorker::pause()
{
    if (m_options.maxPauseMs > 0)
        QThread::msleep(ulong(m_random.bounded(m_options.maxPauseMs + 1)));
}

void StressWorker::run()
{
    std::vector<const StressOperation*> mix;
    int total = 0;
    for (const StressOperation& op : stressOperations()) {
        if (!m_options.operations.isEmpty() && !m_options.operations.contains(op.name))
            continue;
        mix.push_back(&op);
        total += op.weight;
    }
    if (mix.empty())
        throw std::runtime_error("No operation of that name: " + m_options.operations.join(u',').toStdString());
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < qint64(m_options.seconds * 1000)) {
        int pick = int(m_random.bounded(total));
        const StressOperation* op = mix.front();
        for (const StressOperation* candidate : mix) {
            op = candidate;
            if (pick < candidate->weight)
                break;
            pick -= candidate->weight;
        }
        op->run(*this);
        ++m_done;
    }
    m_clients->close();
    m_data->shutdown();
}

} // namespace kb::stress
