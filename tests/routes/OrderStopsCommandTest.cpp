#include "RouteTestSupport.h"

#include <QFile>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>

namespace {

struct AppRun
{
    int exitCode = -1;
    QString out;
    QString err;
};

AppRun runApp(const QStringList& args)
{
    QString app = qEnvironmentVariable("KB_APP");
#ifdef KB_APP_PATH
    if (app.isEmpty())
        app = QStringLiteral(KB_APP_PATH);
#endif
    AppRun run;
    if (app.isEmpty()) {
        ADD_FAILURE() << "KB_APP is not set";
        return run;
    }
    QProcess process;
    process.start(app, args);
    if (!process.waitForFinished(30000)) {
        ADD_FAILURE() << "kettlebrook did not finish";
        return run;
    }
    run.exitCode = process.exitCode();
    run.out = QString::fromUtf8(process.readAllStandardOutput());
    run.err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace

TEST(OrderStopsCommand, PrintsLengthBoundTimeAndTour)
{
    const AppRun run = runApp({"order-stops", "--tsplib", kb::routes::testing::tsplibDir() + "/eil51.tsp"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3 + 51);
    EXPECT_EQ(lines[0], QStringLiteral("length,lower_bound,ms"));
    const QStringList row = lines[1].split(',');
    ASSERT_EQ(row.size(), 3);
    EXPECT_EQ(row[0].toLongLong(), 426); // the proven optimum
    EXPECT_LE(row[1].toLongLong(), 426);
    EXPECT_GT(row[1].toLongLong(), 400);
    bool ok = false;
    EXPECT_GE(row[2].toDouble(&ok), 0.0);
    EXPECT_TRUE(ok);
    EXPECT_EQ(lines[2], QStringLiteral("tour"));
    std::set<int> nodes;
    for (int k = 3; k < lines.size(); ++k)
        nodes.insert(lines[k].toInt());
    EXPECT_EQ(nodes.size(), 51u);
    EXPECT_EQ(*nodes.begin(), 1);
    EXPECT_EQ(*nodes.rbegin(), 51);
}

TEST(OrderStopsCommand, OpenRouteWithFixedEnds)
{
    const AppRun run = runApp({"order-stops", "--tsplib", kb::routes::testing::tsplibDir() + "/eil51.tsp",
                               "--open", "--fix-first", "--fix-last", "--time-limit-ms", "500"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3 + 51);
    EXPECT_EQ(lines[3], QStringLiteral("1"));
    EXPECT_EQ(lines.last(), QStringLiteral("51"));
}

TEST(OrderStopsCommand, ErrorsGoToStderrWithNonZeroExit)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString bad = dir.filePath("bad.tsp");
    {
        QFile f(bad);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("NAME: bad\nDIMENSION: 2\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n1 0 0\n");
    }
    AppRun run = runApp({"order-stops", "--tsplib", bad});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(run.err.contains("DIMENSION is 2 but 1 node coordinates were given."))
        << run.err.toStdString();

    run = runApp({"order-stops"});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_TRUE(run.err.contains("--tsplib")) << run.err.toStdString();

    run = runApp({"order-stops", "--tsplib", bad, "--time-limit-ms", "soon"});
    EXPECT_NE(run.exitCode, 0);
    EXPECT_FALSE(run.err.isEmpty());
}

TEST(OrderStopsCommand, AFileThatDoesNotAddUpIsRefused)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("twice.tsp");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("NAME: twice\nTYPE: TSP\nDIMENSION: 3\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n"
               "1 0 0\n2 3 4\n3 6 8\nDIMENSION: 3\nEOF\n");
    file.close();
    const AppRun run = runApp({"order-stops", "--tsplib", path});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.out.isEmpty());
    EXPECT_TRUE(run.err.contains("line 9: DIMENSION is given twice.")) << run.err.toStdString();
}
