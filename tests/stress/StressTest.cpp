// Several workstations at once on one data directory and on one server
// database: each signs in and mixes client edits in data sets, plain
// updates, number draws, history writes, missed marks, run saves,
// suspensions and reads on a handful of shared clients, so that locks meet
// all the time. Afterwards nothing is lost, doubled, half-applied or left
// locked.

#include "StressFixture.h"

#include <QElapsedTimer>

#include <iostream>

using namespace kb;
using namespace kb::stress;

namespace {

constexpr int Workers = 4;

// How long the workers work; KB_STRESS_SECONDS makes a run longer or shorter.
double workSeconds()
{
    bool ok = false;
    const double seconds = qEnvironmentVariable("KB_STRESS_SECONDS").toDouble(&ok);
    return ok && seconds > 0 ? seconds : 20;
}

class StressTest : public StressFixture
{
};

TEST_P(StressTest, WorkstationsAtOnceLoseNothingDoubleNothingAndLeaveNoLock)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 1; i <= Workers; ++i) {
        WorkerOptions options = worker(QStringLiteral("W%1").arg(i));
        options.seconds = workSeconds();
        options.seed = quint32(i * 7919 + QDateTime::currentSecsSinceEpoch());
        fleet.start(options);
    }
    QStringList problems;
    fleet.waitAll(int(workSeconds() * 1000) + 60000, problems);
    const double elapsed = timer.elapsed() / 1000.0;
    EXPECT_TRUE(problems.isEmpty()) << problems.join(u'\n').toStdString();

    const StressVerdict verdict = StressVerdict::check(*data->openAnother(), fleet.journals(), before, 0);
    EXPECT_TRUE(verdict.problems.isEmpty()) << verdict.problems.join(u'\n').toStdString();
    for (const QString& operation : {QStringLiteral("edit"), QStringLiteral("update"), QStringLiteral("draw"),
                                    QStringLiteral("history"), QStringLiteral("save"), QStringLiteral("suspend")})
        EXPECT_GT(verdict.done.value(operation), 0) << operation.toStdString();
    // The locks did meet: some work was given up to another workstation.
    EXPECT_GT(fleet.conflicts(), 0);

    qint64 committed = 0;
    for (const qint64 n : verdict.done)
        committed += n;
    QStringList byOperation;
    for (auto it = verdict.done.cbegin(); it != verdict.done.cend(); ++it)
        byOperation << QStringLiteral("%1 %2").arg(it.key()).arg(it.value());
    std::cout << test::storeName(GetParam()) << ": " << Workers << " processes, " << fleet.attempted()
              << " operations in " << elapsed << " s (" << qRound(fleet.attempted() / elapsed) << " per second), "
              << committed << " committed (" << byOperation.join(QStringLiteral(", ")).toStdString() << "), "
              << fleet.conflicts() << " given up to a lock held elsewhere\n";
}

INSTANTIATE_TEST_SUITE_P(Stores, StressTest, ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
