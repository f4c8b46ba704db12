// Making a new data directory is one step: a failure, or two inits of one
// folder at once, leave either nothing or one whole data directory.

#include "RunCommand.h"
#include "TempDataDir.h"

#include "session/DataDirectory.h"
#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace kb;
using test::runKettlebrook;

namespace {

QStringList everythingIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

// A whole data directory: every table, the starting rows.
void expectWhole(const QStringList& location)
{
    const auto counts = runKettlebrook(location + QStringList{QStringLiteral("sql"),
                                                              QStringLiteral("select count(*) as N from Config union all "
                                                                             "select count(*) from IDNOS union all "
                                                                             "select count(*) from Race")});
    ASSERT_EQ(counts.exitCode, 0) << counts.err.toStdString();
    const QStringList lines = counts.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_EQ(lines[1], QStringLiteral("1"));
    EXPECT_EQ(lines[2], QStringLiteral("1"));
    EXPECT_GT(lines[3].toInt(), 0);
}

TEST(InitCommand, AFailedInitLeavesNothingAndTheNextOneWorks)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("agency"));
    FixedClock clock(test::fixedNow());
    EXPECT_THROW(createDataDirectory(path, clock, [](Database&) { throw std::runtime_error("generator failed"); }),
                 std::runtime_error);
    EXPECT_EQ(everythingIn(dir.path()), QStringList());
    createDataDirectory(path, clock).reset();
    EXPECT_EQ(everythingIn(dir.path()), QStringList{QStringLiteral("agency")});
    expectWhole({QStringLiteral("--data"), path});

    // An empty folder made beforehand is taken; so is an empty one again after a failure.
    const QString made = dir.filePath(QStringLiteral("made"));
    QDir().mkpath(made);
    EXPECT_THROW(createDataDirectory(made, clock, [](Database&) { throw std::runtime_error("generator failed"); }),
                 std::runtime_error);
    EXPECT_TRUE(QDir(made).exists());
    EXPECT_FALSE(isDataDirectory(made));
    createDataDirectory(made, clock).reset();
    expectWhole({QStringLiteral("--data"), made});
}

TEST(InitCommand, WhatACrashedInitLeftBesideTheFolderIsClearedAway)
{
    QTemporaryDir dir;
    // The leftovers of a builder that is gone (a process that has ended),
    // and of one on another machine, which may still be at work.
    QProcess ended;
    ended.start(QStringLiteral("true"));
    const qint64 pid = ended.processId();
    ended.waitForFinished();
    const QString gone = QStringLiteral(".agency.new-%1-%2-x1").arg(QSysInfo::machineHostName()).arg(pid);
    const QString elsewhere = QStringLiteral(".agency.new-some-other-host-1-x2");
    QDir().mkpath(dir.filePath(gone));
    QDir().mkpath(dir.filePath(elsewhere));
    const auto made = runKettlebrook({QStringLiteral("init"), dir.filePath(QStringLiteral("agency"))});
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    EXPECT_EQ(everythingIn(dir.path()), (QStringList{elsewhere, QStringLiteral("agency")}));
}

TEST(InitCommand, TwoInitsOfOneFolderAtOnceMakeItOnce)
{
    for (int round = 0; round < 8; ++round) {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("agency"));
        if (round % 2 == 1)
            QDir().mkpath(path); // an empty folder made beforehand
        QProcess first;
        QProcess second;
        first.start(test::kettlebrookPath(), {QStringLiteral("init"), path});
        second.start(test::kettlebrookPath(), {QStringLiteral("init"), path});
        ASSERT_TRUE(first.waitForFinished(60000));
        ASSERT_TRUE(second.waitForFinished(60000));
        const QString firstOut = QString::fromUtf8(first.readAllStandardOutput());
        const QString secondOut = QString::fromUtf8(second.readAllStandardOutput());
        const QString secondErr = QString::fromUtf8(second.readAllStandardError());
        const QString firstErr = QString::fromUtf8(first.readAllStandardError());
        // Exactly one says it made the folder; the other says why it did not.
        EXPECT_EQ((first.exitCode() == 0) + (second.exitCode() == 0), 1) << round;
        const QString& loserErr = first.exitCode() == 0 ? secondErr : firstErr;
        const QString& winnerOut = first.exitCode() == 0 ? firstOut : secondOut;
        EXPECT_TRUE(winnerOut.startsWith(QLatin1String("Created data directory"))) << winnerOut.toStdString();
        EXPECT_TRUE(loserErr.contains(QLatin1String("already a data directory"))) << loserErr.toStdString();
        EXPECT_EQ(everythingIn(dir.path()), QStringList{QStringLiteral("agency")});
        expectWhole({QStringLiteral("--data"), path});
    }
}

TEST(InitCommand, TwoInitsOfOneServerDatabaseAtOnceMakeItOnce)
{
    KB_REQUIRE_STORE(test::StoreKind::PostgreSQL);
    for (int round = 0; round < 3; ++round) {
        const QString schema = QStringLiteral("kbt_init_%1_%2").arg(QCoreApplication::applicationPid()).arg(round);
        const QString server = test::postgresTestAddress() + QLatin1Char('#') + schema;
        QProcess first;
        QProcess second;
        const QStringList words = {QStringLiteral("--server"), server, QStringLiteral("init")};
        first.start(test::kettlebrookPath(), words);
        second.start(test::kettlebrookPath(), words);
        ASSERT_TRUE(first.waitForFinished(60000));
        ASSERT_TRUE(second.waitForFinished(60000));
        EXPECT_EQ((first.exitCode() == 0) + (second.exitCode() == 0), 1) << round;
        const QString loserErr = QString::fromUtf8((first.exitCode() == 0 ? second : first).readAllStandardError());
        EXPECT_TRUE(loserErr.contains(QLatin1String("already holds Kettlebrook data"))) << loserErr.toStdString();
        expectWhole({QStringLiteral("--server"), server});
        PostgresStore(ServerAddress::parse(test::postgresTestAddress()))
            .exec(QStringLiteral("DROP SCHEMA IF EXISTS \"%1\" CASCADE").arg(schema));
    }
}

} // namespace
