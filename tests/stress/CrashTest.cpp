// Processes killed (SIGKILL) at random points of making a new agency and of
// posting client edits: afterwards the data is as before the step or as
// after it, and the next process opens it and works on without repair.

#include "StressFixture.h"

#include "RunCommand.h"

#include "session/DataDirectory.h"
#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <iostream>

using namespace kb;
using namespace kb::stress;
using test::runKettlebrook;

namespace {

constexpr int DemoClients = 150;

class InitCrashTest : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override { KB_REQUIRE_STORE(GetParam()); }
    bool server() const { return GetParam() == test::StoreKind::PostgreSQL; }
};

class PostCrashTest : public StressFixture
{
};

// Where round n of the init test makes its agency, as the command names it.
QStringList initLocation(bool server, const QTemporaryDir& dir, int round, QStringList& initWords)
{
    if (!server) {
        const QString path = dir.filePath(QStringLiteral("agency%1").arg(round));
        initWords = {QStringLiteral("--today"), QStringLiteral("2024-03-06"), QStringLiteral("init"), path};
        return {QStringLiteral("--data"), path};
    }
    const QString address = test::postgresTestAddress() + QStringLiteral("#kbt_crash_%1_%2")
                                                              .arg(QCoreApplication::applicationPid())
                                                              .arg(round);
    initWords = {QStringLiteral("--today"), QStringLiteral("2024-03-06"), QStringLiteral("--server"), address,
                 QStringLiteral("init")};
    return {QStringLiteral("--server"), address};
}

// The counts that tell a whole agency of the demo from part of one.
QString agencyCounts(const QStringList& location)
{
    const auto r = runKettlebrook(location + QStringList{QStringLiteral("sql"),
                                                         QStringLiteral("select count(*) as N from Config union all "
                                                                        "select count(*) from Clients union all "
                                                                        "select count(*) from IDNOS")});
    return r.exitCode == 0 ? r.out : QStringLiteral("unreadable: ") + r.err;
}

TEST_P(InitCrashTest, AnInitKilledAnywhereLeavesNothingOrAWholeAgency)
{
    QTemporaryDir dir;
    const QStringList demo = {QStringLiteral("--demo"), QString::number(DemoClients)};
    // How long a whole init takes here, to aim the kills within it.
    QStringList initWords;
    const QStringList reference = initLocation(server(), dir, 0, initWords);
    QElapsedTimer timer;
    timer.start();
    ASSERT_EQ(runKettlebrook(initWords + demo).exitCode, 0);
    const qint64 whole = std::max<qint64>(timer.elapsed(), 50);
    const QString wholeCounts = agencyCounts(reference);
    EXPECT_EQ(wholeCounts, QStringLiteral("N\n1\n%1\n1\n").arg(DemoClients));

    int killed = 0;
    int madeBeforeTheKill = 0;
    const int rounds = 10;
    for (int round = 1; round <= rounds; ++round) {
        const QStringList location = initLocation(server(), dir, round, initWords);
        QProcess init;
        init.start(test::kettlebrookPath(), initWords + demo);
        ASSERT_TRUE(init.waitForStarted());
        QThread::msleep(ulong(QRandomGenerator::global()->bounded(int(whole))));
        if (init.state() != QProcess::NotRunning) {
            init.kill();
            ++killed;
        }
        init.waitForFinished();
        const bool ended = init.exitStatus() == QProcess::NormalExit && init.exitCode() == 0;

        // Either the agency is whole, or there is none and init makes it now.
        const QString counts = agencyCounts(location);
        if (counts == wholeCounts) {
            ++madeBeforeTheKill;
        } else {
            EXPECT_FALSE(ended) << counts.toStdString();
            if (!server()) {
                EXPECT_FALSE(QFileInfo::exists(location.back())) << "round " << round;
            }
            const auto again = runKettlebrook(initWords + demo);
            ASSERT_EQ(again.exitCode, 0) << "round " << round << ": " << again.err.toStdString();
            EXPECT_EQ(agencyCounts(location), wholeCounts);
        }
        if (!server()) {
            // Nothing half-made stays beside the agencies once an init of the same folder has run.
            for (const QString& entry : QDir(dir.path()).entryList(QDir::Hidden | QDir::AllEntries | QDir::NoDotAndDotDot))
                EXPECT_FALSE(entry.startsWith(u'.')) << entry.toStdString();
        } else {
            PostgresStore(ServerAddress::parse(test::postgresTestAddress()))
                .exec(QStringLiteral("DROP SCHEMA IF EXISTS \"%1\" CASCADE").arg(location.back().section(u'#', 1)));
        }
    }
    if (server())
        PostgresStore(ServerAddress::parse(test::postgresTestAddress()))
            .exec(QStringLiteral("DROP SCHEMA IF EXISTS \"%1\" CASCADE").arg(reference.back().section(u'#', 1)));
    std::cout << test::storeName(GetParam()) << ": " << killed << " inits killed in " << rounds << " rounds ("
              << madeBeforeTheKill << " of them after the agency was whole), a whole init taking " << whole << " ms\n";
    EXPECT_GT(killed, rounds / 2);
}

TEST_P(PostCrashTest, WorkersKilledWhilePostingLeaveWholeRowsAndNoLocks)
{
    int started = 0;
    const auto startWorker = [&](double seconds) {
        WorkerOptions options = worker(QStringLiteral("K%1").arg(++started));
        options.seconds = seconds;
        options.seed = QRandomGenerator::global()->generate();
        // Edits posted through data sets and statements, and number draws:
        // the steps a kill may cut in two.
        options.operations = {QStringLiteral("edit"), QStringLiteral("update"), QStringLiteral("draw")};
        options.maxPauseMs = 5;
        fleet.start(options);
    };
    constexpr int Running = 3;
    constexpr int Kills = 12;
    for (int i = 0; i < Running; ++i)
        startWorker(600);
    // Each kill takes a worker at a random moment of its work; a new one,
    // signing in to the data the dead one left, takes its place.
    std::vector<int> alive = {0, 1, 2};
    for (int k = 0; k < Kills; ++k) {
        QThread::msleep(ulong(300 + QRandomGenerator::global()->bounded(400)));
        const size_t pick = QRandomGenerator::global()->bounded(quint32(alive.size()));
        fleet.kill(alive[pick]);
        startWorker(600);
        alive[pick] = fleet.size() - 1;
    }
    for (const int index : alive)
        fleet.kill(index);
    // The last word goes to workers that finish by themselves.
    for (int i = 0; i < Running; ++i)
        startWorker(2);
    QStringList problems;
    fleet.waitAll(60000, problems);
    EXPECT_TRUE(problems.isEmpty()) << problems.join(u'\n').toStdString();

    const StressVerdict verdict =
        StressVerdict::check(*data->openAnother(), fleet.journals(), before, Kills + Running);
    EXPECT_TRUE(verdict.problems.isEmpty()) << verdict.problems.join(u'\n').toStdString();
    EXPECT_GT(verdict.done.value(QStringLiteral("edit")), 0);
    std::cout << test::storeName(GetParam()) << ": " << Kills + Running << " workers killed while posting, "
              << verdict.done.value(QStringLiteral("edit")) + verdict.done.value(QStringLiteral("update"))
              << " edits and " << verdict.done.value(QStringLiteral("draw")) << " numbers committed\n";
}

INSTANTIATE_TEST_SUITE_P(Stores, InitCrashTest,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });
INSTANTIATE_TEST_SUITE_P(Stores, PostCrashTest,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
