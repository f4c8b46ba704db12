// The long run of the stress test: many worker processes on one data
// directory (or, with --server, one PostgreSQL database), each signed in and
// mixing client edits, plain updates, number draws, history writes and
// reads on shared clients for as long as asked, optionally with a worker
// killed now and then. Then the same checks as the test, and the figures.
//
//   soak_bench [--workers N] [--seconds S] [--kill-every-ms MS] [--server HOST[:PORT]/DATABASE]

#include "StressFleet.h"
#include "StressVerdict.h"

#include "Clock.h"
#include "session/DataDirectory.h"
#include "store/DbError.h"
#include "store/PostgresStore.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <cstdio>

using namespace kb;
using namespace kb::stress;

namespace {

constexpr const char* SoakSchema = "kb_soak";

struct SoakOptions
{
    int workers = 8;
    double seconds = 300;
    int killEveryMs = 0;
    QString server;
};

int soak(const SoakOptions& o)
{
    FixedClock clock(QDateTime::currentDateTime());
    QTemporaryDir temp;
    std::unique_ptr<Database> db;
    QString dataDir;
    QString server;
    if (o.server.isEmpty()) {
        dataDir = temp.filePath(QStringLiteral("data"));
        db = createDataDirectory(dataDir, clock);
    } else {
        PostgresStore(ServerAddress::parse(o.server))
            .exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(QString::fromLatin1(SoakSchema)));
        server = o.server + QLatin1Char('#') + QString::fromLatin1(SoakSchema);
        db = createServerDatabase(ServerAddress::parse(server), clock);
    }
    preparePool(*db);
    const Counters before = readCounters(*db);
    db.reset();
    const QStringList location = dataDir.isEmpty() ? QStringList{QStringLiteral("--server"), server}
                                                   : QStringList{QStringLiteral("--data"), dataDir};

    StressFleet fleet(QStringLiteral(KB_STRESS_WORKER));
    int started = 0;
    std::vector<int> running;
    const auto start = [&](double seconds) {
        WorkerOptions w = workerOn(location, QStringLiteral("S%1").arg(++started), temp.path());
        w.seconds = seconds;
        w.seed = QRandomGenerator::global()->generate();
        fleet.start(w);
        running.push_back(fleet.size() - 1);
    };
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < o.workers; ++i)
        start(o.seconds);
    int kills = 0;
    if (o.killEveryMs > 0) {
        while (timer.elapsed() + o.killEveryMs < qint64(o.seconds * 1000)) {
            QThread::msleep(ulong(o.killEveryMs));
            const size_t pick = QRandomGenerator::global()->bounded(quint32(running.size()));
            fleet.kill(running[pick]);
            running.erase(running.begin() + qsizetype(pick));
            ++kills;
            start(o.seconds - timer.elapsed() / 1000.0);
        }
    }
    QStringList problems;
    fleet.waitAll(int(o.seconds * 1000) + 120000, problems);
    const double elapsed = timer.elapsed() / 1000.0;

    std::unique_ptr<Database> check = o.server.isEmpty() ? openDataDirectory(dataDir, clock)
                                                         : openServerDatabase(ServerAddress::parse(server), clock);
    const StressVerdict verdict = StressVerdict::check(*check, fleet.journals(), before, kills);
    check.reset();
    if (!o.server.isEmpty())
        PostgresStore(ServerAddress::parse(o.server))
            .exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(QString::fromLatin1(SoakSchema)));

    qint64 committed = 0;
    for (const qint64 n : verdict.done)
        committed += n;
    std::printf("%s: %d processes at once for %.1f s, %d killed\n",
                o.server.isEmpty() ? "SQLite data directory" : "PostgreSQL", o.workers, elapsed, kills);
    std::printf("operations tried by workers that ended by themselves: %lld (%.0f per second)\n",
                static_cast<long long>(fleet.attempted()), fleet.attempted() / elapsed);
    std::printf("committed and checked: %lld (%.0f per second):", static_cast<long long>(committed), committed / elapsed);
    for (auto it = verdict.done.cbegin(); it != verdict.done.cend(); ++it)
        std::printf(" %s %lld", qPrintable(it.key()), static_cast<long long>(it.value()));
    std::printf("\ngiven up to a lock held elsewhere: %lld\n", static_cast<long long>(fleet.conflicts()));
    problems += verdict.problems;
    for (const QString& problem : problems)
        std::printf("PROBLEM: %s\n", qPrintable(problem));
    std::printf("%s\n", problems.isEmpty() ? "every check held" : "CHECKS FAILED");
    return problems.isEmpty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Many workstations on one store for a long time, then checks."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("workers"), QStringLiteral("Worker processes at once (8)."), QStringLiteral("N")});
    parser.addOption({QStringLiteral("seconds"), QStringLiteral("How long they work (300)."), QStringLiteral("S")});
    parser.addOption({QStringLiteral("kill-every-ms"), QStringLiteral("Kill a random worker this often and start "
                                                                      "another (never)."),
                      QStringLiteral("MS")});
    parser.addOption({QStringLiteral("server"), QStringLiteral("Use this PostgreSQL database."),
                      QStringLiteral("HOST[:PORT]/DATABASE")});
    parser.process(app);
    bool ok = true;
    // A positive number, or the default when the option is not given.
    const auto number = [&](const QString& name, double fallback) {
        if (!parser.isSet(name))
            return fallback;
        bool read = false;
        const double value = parser.value(name).toDouble(&read);
        ok = ok && read && value > 0;
        return value;
    };
    SoakOptions o;
    o.workers = int(number(QStringLiteral("workers"), o.workers));
    o.seconds = number(QStringLiteral("seconds"), o.seconds);
    o.killEveryMs = int(number(QStringLiteral("kill-every-ms"), 0));
    o.server = parser.value(QStringLiteral("server"));
    if (!ok || o.workers < 1) {
        std::fprintf(stderr, "%s", qPrintable(parser.helpText()));
        return 2;
    }
    try {
        return soak(o);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
