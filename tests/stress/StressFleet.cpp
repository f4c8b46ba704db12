#include "StressFleet.h"

#include "StressJournal.h"

#include <QCommandLineParser>
#include <QProcess>
#include <QRegularExpression>

#include <stdexcept>

namespace kb::stress {

WorkerOptions workerOn(const QStringList& location, const QString& name, const QString& folder)
{
    WorkerOptions options;
    (location.value(0) == QLatin1String("--data") ? options.dataDir : options.server) = location.value(1);
    options.name = name;
    options.journalPath = folder + QLatin1Char('/') + name + QStringLiteral(".journal");
    return options;
}

QStringList workerArguments(const WorkerOptions& o)
{
    QStringList words;
    if (!o.dataDir.isEmpty())
        words << QStringLiteral("--data") << o.dataDir;
    else
        words << QStringLiteral("--server") << o.server;
    words << QStringLiteral("--name") << o.name << QStringLiteral("--journal") << o.journalPath
          << QStringLiteral("--seconds") << QString::number(o.seconds) << QStringLiteral("--seed")
          << QString::number(o.seed) << QStringLiteral("--pause-ms") << QString::number(o.maxPauseMs)
          << QStringLiteral("--lock-retries") << QString::number(o.lockRetries);
    if (!o.operations.isEmpty())
        words << QStringLiteral("--ops") << o.operations.join(u',');
    return words;
}

WorkerOptions parseWorkerArguments(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QStringList valued = {QStringLiteral("data"),    QStringLiteral("server"), QStringLiteral("name"),
                                QStringLiteral("journal"), QStringLiteral("seconds"), QStringLiteral("seed"),
                                QStringLiteral("pause-ms"), QStringLiteral("lock-retries"), QStringLiteral("ops")};
    for (const QString& name : valued)
        parser.addOption(QCommandLineOption(name, name, QStringLiteral("VALUE")));
    if (!parser.parse(arguments))
        throw std::runtime_error(parser.errorText().toStdString());
    WorkerOptions o;
    o.dataDir = parser.value(QStringLiteral("data"));
    o.server = parser.value(QStringLiteral("server"));
    o.name = parser.value(QStringLiteral("name"));
    o.journalPath = parser.value(QStringLiteral("journal"));
    bool ok = true;
    if (parser.isSet(QStringLiteral("seconds")))
        o.seconds = parser.value(QStringLiteral("seconds")).toDouble(&ok);
    if (ok && parser.isSet(QStringLiteral("seed")))
        o.seed = parser.value(QStringLiteral("seed")).toUInt(&ok);
    if (ok && parser.isSet(QStringLiteral("pause-ms")))
        o.maxPauseMs = parser.value(QStringLiteral("pause-ms")).toInt(&ok);
    if (ok && parser.isSet(QStringLiteral("lock-retries")))
        o.lockRetries = parser.value(QStringLiteral("lock-retries")).toInt(&ok);
    if (parser.isSet(QStringLiteral("ops")))
        o.operations = parser.value(QStringLiteral("ops")).split(u',', Qt::SkipEmptyParts);
    if (!ok || o.name.isEmpty() || o.journalPath.isEmpty() || (o.dataDir.isEmpty() == o.server.isEmpty()))
        throw std::runtime_error("usage: stress_worker (--data DIR | --server ADDRESS) --name W1 --journal FILE "
                                 "[--seconds S] [--seed N] [--pause-ms MS] [--lock-retries N] [--ops edit,update,draw,history,read]");
    return o;
}

StressFleet::StressFleet(QString program) : m_program(std::move(program)) {}

StressFleet::~StressFleet()
{
    for (Worker& w : m_workers) {
        if (w.process->state() != QProcess::NotRunning) {
            w.process->kill();
            w.process->waitForFinished();
        }
    }
}

void StressFleet::start(const WorkerOptions& options)
{
    Worker w;
    w.options = options;
    w.process = std::make_unique<QProcess>();
    w.process->start(m_program, workerArguments(options));
    if (!w.process->waitForStarted())
        throw std::runtime_error("Cannot start " + m_program.toStdString());
    m_workers.push_back(std::move(w));
}

void StressFleet::kill(int index)
{
    Worker& w = m_workers.at(size_t(index));
    w.killed = true;
    w.process->kill();
    w.process->waitForFinished();
}

void StressFleet::waitAll(int timeoutMs, QStringList& problems)
{
    for (Worker& w : m_workers) {
        if (!w.process->waitForFinished(timeoutMs) && w.process->state() != QProcess::NotRunning) {
            w.process->kill();
            w.process->waitForFinished();
            problems << QStringLiteral("worker %1 did not end in time").arg(w.options.name);
            continue;
        }
        if (w.killed)
            continue;
        const QString out = QString::fromUtf8(w.process->readAllStandardOutput());
        const QString err = QString::fromUtf8(w.process->readAllStandardError()).trimmed();
        if (w.process->exitStatus() != QProcess::NormalExit || w.process->exitCode() != 0) {
            problems << QStringLiteral("worker %1 failed: %2").arg(w.options.name, err);
            continue;
        }
        // The worker's last line: "done=N conflicts=M".
        for (const QString& word : out.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts)) {
            if (word.startsWith(QLatin1String("done=")))
                m_attempted += word.mid(5).toLongLong();
            else if (word.startsWith(QLatin1String("conflicts=")))
                m_conflicts += word.mid(10).toLongLong();
        }
    }
}

QList<QList<QStringList>> StressFleet::journals() const
{
    QList<QList<QStringList>> all;
    for (const Worker& w : m_workers)
        all.append(StressJournal::read(w.options.journalPath));
    return all;
}

} // namespace kb::stress
