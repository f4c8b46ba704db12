// The headless save on a demo agency, through the real kettlebrook
// executable: what it prints and refuses, two workstations saving at once
// (different dates, and the same date), and a save killed in the middle.

#include "SaveFixture.h"

#include "DemoAgency.h"
#include "RunCommand.h"
#include "TempDataDir.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

const QDate friday(2024, 3, 8);

QString kettlebrookPathForTests()
{
    return qEnvironmentVariable("KB_APP");
}

class SaveCommandTest : public ::testing::TestWithParam<StoreKind>
{
protected:
    SaveCommandTest()
        : data(GetParam() == StoreKind::PostgreSQL && postgresTestAddress().isEmpty() ? StoreKind::SQLite
                                                                                      : GetParam())
    {
    }

    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        // The user's own settings and folders stay untouched by the program.
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
        DemoOptions demo;
        demo.clients = 3000;
        generateDemoAgency(data.db(), demo);
    }

    QStringList words(const QString& user, const QStringList& command) const
    {
        return data.commandLocation() + QStringList{QStringLiteral("--user"), user} + command;
    }
    CommandResult save(const QDate& date, const QStringList& more = {},
                       const QString& user = QStringLiteral("treyes"))
    {
        return runKettlebrook(
            words(user, QStringList{QStringLiteral("save"), date.toString(Qt::ISODate)} + more));
    }

    struct Saved
    {
        qint64 deliveries = 0;
        qint64 first = 0;
        qint64 last = 0;
    };
    static Saved parse(const CommandResult& result)
    {
        const QStringList lines = result.out.split(u'\n', Qt::SkipEmptyParts);
        EXPECT_EQ(lines.size(), 2) << result.out.toStdString() << result.err.toStdString();
        EXPECT_EQ(lines.value(0), "deliveries,first_deliv_id,last_deliv_id");
        const QStringList fields = lines.value(1).split(u',');
        return {fields.value(0).toLongLong(), fields.value(1).toLongLong(), fields.value(2).toLongLong()};
    }

    qint64 count(const QString& statement, const QDate& date)
    {
        return data.db().execute(statement, {{QStringLiteral("D"), date}}).value(0, 0).toLongLong();
    }
    qint64 deliveries(const QDate& date)
    {
        return count(QStringLiteral("Select Count(*) from Deliveri where Deliv_Dt = :D"), date);
    }
    // The date's rows all carry numbers of one save's range.
    void expectOneSave(const QDate& date, const Saved& saved)
    {
        EXPECT_EQ(deliveries(date), saved.deliveries);
        EXPECT_EQ(count(QStringLiteral("Select Min(Deliv_ID) from Deliveri where Deliv_Dt = :D"), date),
                  saved.first);
        EXPECT_EQ(count(QStringLiteral("Select Max(Deliv_ID) from Deliveri where Deliv_Dt = :D"), date),
                  saved.last);
        EXPECT_EQ(
            count(QStringLiteral("Select Count(*) from MealCrdt where Deliv_Dt = :D and (Deliv_ID < (Select "
                                 "Min(Deliv_ID) from Deliveri where Deliv_Dt = :D) or Deliv_ID > (Select "
                                 "Max(Deliv_ID) from Deliveri where Deliv_Dt = :D))"),
                  date),
            0);
    }

    QTemporaryDir home;
    TempDataDir data;
};

TEST_P(SaveCommandTest, PrintsTheDeliveriesSavedAndTheirNumbers)
{
    const qint64 counter =
        data.db().execute(QStringLiteral("Select Deliv_ID from IDNOS")).value(0, 0).toLongLong();
    CommandResult result = save(monday, {QStringLiteral("--confirm"), QStringLiteral("all")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const Saved first = parse(result);
    EXPECT_GT(first.deliveries, 500);
    EXPECT_EQ(first.first, counter > 0 ? counter : first.first);
    expectOneSave(monday, first);
    EXPECT_EQ(data.db().execute(QStringLiteral("Select Deliv_ID from IDNOS")).value(0, 0).toLongLong(),
              first.last + 2);

    // Saved again: the same rows under new numbers.
    result = save(monday, {QStringLiteral("--confirm"), QStringLiteral("all"), QStringLiteral("--progress")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const Saved second = parse(result);
    EXPECT_EQ(second.deliveries, first.deliveries);
    EXPECT_EQ(second.first, first.last + 2);
    expectOneSave(monday, second);
    EXPECT_TRUE(
        result.err.contains(QStringLiteral("Saving new data. Please do not interrupt! Client Count: ")));
    EXPECT_TRUE(result.err.contains(QStringLiteral("100%")));

    // The same run as the screen would save, ongoing only.
    result = save(monday, {QStringLiteral("--type"), QStringLiteral("O")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_LT(parse(result).deliveries, first.deliveries);
}

TEST_P(SaveCommandTest, RefusesWhatItMayNotOrCannotSave)
{
    const QString before = savedRunFingerprint(data.db());
    CommandResult result = save(monday, {}, QStringLiteral("mhale"));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains(QStringLiteral("read-only access"))) << result.err.toStdString();
    // Nobody has an episodic delivery on a date so far ahead.
    result = save(QDate(2031, 1, 6), {QStringLiteral("--type"), QStringLiteral("E")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains(
        QStringLiteral("No deliveries are due on 2031-01-06 for Episodic Only; nothing was "
                       "saved.")))
        << result.err.toStdString();
    result = save(monday, {QStringLiteral("--confirm"), QStringLiteral("several")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(savedRunFingerprint(data.db()), before);
}

TEST_P(SaveCommandTest, TwoWorkstationsSavingAtOnceBothSucceedAndNeverMix)
{
    // Two workstations save different dates and two others the same date,
    // all at once.
    const QList<QDate> dates{monday, tuesday, friday, friday};
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QDate& date : dates) {
        auto process = std::make_unique<QProcess>();
        process->start(kettlebrookPathForTests(),
                       words(QStringLiteral("treyes"), {QStringLiteral("save"), date.toString(Qt::ISODate)}));
        processes.push_back(std::move(process));
    }
    QList<Saved> saved;
    for (auto& process : processes) {
        ASSERT_TRUE(process->waitForFinished(120000));
        const CommandResult result{process->exitCode(), QString::fromUtf8(process->readAllStandardOutput()),
                                   QString::fromUtf8(process->readAllStandardError())};
        ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
        saved << parse(result);
    }
    expectOneSave(monday, saved[0]);
    expectOneSave(tuesday, saved[1]);
    // The date saved twice holds the rows of the save that came last, whole.
    const qint64 fridayFirst =
        count(QStringLiteral("Select Min(Deliv_ID) from Deliveri where Deliv_Dt = :D"), friday);
    expectOneSave(friday, fridayFirst == saved[2].first ? saved[2] : saved[3]);
    // No two saves drew the same numbers.
    for (int a = 0; a < saved.size(); ++a)
        for (int b = a + 1; b < saved.size(); ++b)
            EXPECT_TRUE(saved[a].last < saved[b].first || saved[b].last < saved[a].first)
                << a << " and " << b;
}

TEST_P(SaveCommandTest, ASaveKilledInTheMiddleLeavesTheDateAsItWas)
{
    const CommandResult first = save(monday);
    ASSERT_EQ(first.exitCode, 0) << first.err.toStdString();
    const qint64 rows = parse(first).deliveries;
    int killedBefore = 0;
    // Killed at one of the save's steps, at random within it.
    for (const char* step :
         {"Deleting prior credits", "Identifying various defaults", "Saving new data", "%"}) {
        SCOPED_TRACE(step);
        const QString before = savedRunFingerprint(data.db());
        QProcess process;
        process.setReadChannel(QProcess::StandardError);
        process.start(kettlebrookPathForTests(),
                      words(QStringLiteral("treyes"), {QStringLiteral("save"), monday.toString(Qt::ISODate),
                                                       QStringLiteral("--progress")}));
        QByteArray seen;
        while (!seen.contains(step) && process.waitForReadyRead(60000))
            seen += process.readAllStandardError();
        ASSERT_TRUE(seen.contains(step)) << seen.toStdString();
        QThread::usleep(QRandomGenerator::global()->bounded(2000));
        process.kill();
        process.waitForFinished();
        const QString after = savedRunFingerprint(data.db());
        if (after == before) {
            ++killedBefore;
        } else {
            // The save had committed: the date holds one whole save.
            SCOPED_TRACE("the save committed before it was killed");
            const qint64 low =
                count(QStringLiteral("Select Min(Deliv_ID) from Deliveri where Deliv_Dt = :D"), monday);
            const qint64 high =
                count(QStringLiteral("Select Max(Deliv_ID) from Deliveri where Deliv_Dt = :D"), monday);
            expectOneSave(monday, {rows, low, high});
        }
    }
    EXPECT_GT(killedBefore, 0);
    // Nothing is left held: the next save goes through.
    const CommandResult result = save(monday);
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    expectOneSave(monday, parse(result));
}

INSTANTIATE_TEST_SUITE_P(Stores, SaveCommandTest, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
