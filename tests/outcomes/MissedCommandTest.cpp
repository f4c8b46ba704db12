// The headless missed command through the real executable: its answers,
// refusals and output, and two workstations marking one route at once.

#include "OutcomesFixture.h"

#include "RunCommand.h"

#include <QProcess>
#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

class MissedCommandTest : public OutcomesFixture
{
protected:
    void SetUp() override
    {
        OutcomesFixture::SetUp();
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
        qputenv("LC_ALL", "en_US.UTF-8");
        for (int p = 1; p <= 20; ++p)
            addClient(p);
        ASSERT_EQ(saveRun(monday), 20);
    }

    QStringList words(const QStringList& command) const
    {
        return data.commandLocation() +
               QStringList{QStringLiteral("--user"), QStringLiteral("keeperin"), QStringLiteral("missed")} +
               command;
    }
    CommandResult missed(const QStringList& command) { return runKettlebrook(words(command)); }
    static QStringList persons(int from, int to)
    {
        QStringList list;
        for (int p = from; p <= to; ++p)
            list.append(QString::number(p));
        return list;
    }
    qint64 misses(int person)
    {
        return count(
            QStringLiteral("Select Count(*) from History where Person_ID = :P and Event like '%Missed "
                           "Delivery%'"),
            {{QStringLiteral("P"), person}});
    }

    QTemporaryDir home;
};

TEST_P(MissedCommandTest, RecordExcuseClearAndSummarize)
{
    db().execute(QStringLiteral("Update Deliveri set Delivery_Status = 'C' where Person_ID = 3"));
    // Without --yes the comped delivery is left alone, Tuesday's undelivered
    // one too: nothing recorded, exit 1, the screen's words on stderr.
    CommandResult none =
        missed({QStringLiteral("record"), QStringLiteral("2024-03-04"), QStringLiteral("3")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.contains("The delivery for First3 Last3 was comped! Change it to missed?"))
        << none.err.toStdString();
    EXPECT_EQ(statusOf(3, monday), "C");

    CommandResult recorded =
        missed({QStringLiteral("record"), QStringLiteral("2024-03-04"), QStringLiteral("1"),
                QStringLiteral("3"), QStringLiteral("--excused"), QStringLiteral("--yes")});
    ASSERT_EQ(recorded.exitCode, 0) << recorded.err.toStdString();
    EXPECT_EQ(recorded.out, "recorded\n2\n");
    EXPECT_EQ(statusOf(1, monday), "E");
    EXPECT_EQ(statusOf(3, monday), "E");

    CommandResult plain =
        missed({QStringLiteral("record"), QStringLiteral("2024-03-04"), QStringLiteral("2")});
    ASSERT_EQ(plain.exitCode, 0) << plain.err.toStdString();
    CommandResult excused =
        missed({QStringLiteral("excuse"), QStringLiteral("2024-03-04"), QStringLiteral("2")});
    ASSERT_EQ(excused.exitCode, 0) << excused.err.toStdString();
    EXPECT_EQ(statusOf(2, monday), "E");
    CommandResult notThere =
        missed({QStringLiteral("excuse"), QStringLiteral("2024-03-05"), QStringLiteral("2")});
    EXPECT_EQ(notThere.exitCode, 1);
    EXPECT_TRUE(notThere.err.contains("Error locating the missed delivery using the Delivery Date."));

    CommandResult cleared =
        missed({QStringLiteral("clear"), QStringLiteral("2024-03-04"), QStringLiteral("1")});
    ASSERT_EQ(cleared.exitCode, 0) << cleared.err.toStdString();
    EXPECT_TRUE(statusOf(1, monday).isNull());

    CommandResult summary =
        missed({QStringLiteral("summarize"), QStringLiteral("--since"), QStringLiteral("2024-03-01")});
    ASSERT_EQ(summary.exitCode, 0) << summary.err.toStdString();
    EXPECT_EQ(summary.out.toStdString(), "Person_ID,Client_ID,Missed_Deliveries,Excused_Deliveries\n"
                                         "2,C002,,1\n"
                                         "3,C003,,1\n");

    EXPECT_EQ(missed({QStringLiteral("record"), QStringLiteral("2024-13-04"), QStringLiteral("1")}).exitCode,
              2);
    EXPECT_EQ(missed({QStringLiteral("excuse"), QStringLiteral("2024-03-04"), QStringLiteral("1"),
                      QStringLiteral("--excused")})
                  .exitCode,
              2);
    EXPECT_EQ(missed({QStringLiteral("mark"), QStringLiteral("2024-03-04")}).exitCode, 2);
    const CommandResult unknown =
        missed({QStringLiteral("record"), QStringLiteral("2024-03-04"), QStringLiteral("99")});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_TRUE(unknown.err.contains("No person has Person_ID 99.")) << unknown.err.toStdString();
}

TEST_P(MissedCommandTest, TwoWorkstationsMarkingOneRouteAtOnceLoseNothing)
{
    // Two workstations mark overlapping halves of route R1 at the same time.
    const QList<QStringList> lists{persons(1, 14), persons(7, 20)};
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QStringList& list : lists) {
        auto process = std::make_unique<QProcess>();
        process->start(kettlebrookPath(),
                       words(QStringList{QStringLiteral("record"), QStringLiteral("2024-03-04")} + list));
        processes.push_back(std::move(process));
    }
    qint64 recorded = 0;
    for (auto& process : processes) {
        ASSERT_TRUE(process->waitForFinished(120000));
        const QString out = QString::fromUtf8(process->readAllStandardOutput());
        ASSERT_EQ(process->exitCode(), 0) << QString::fromUtf8(process->readAllStandardError()).toStdString();
        recorded += out.split(u'\n', Qt::SkipEmptyParts).value(1).toLongLong();
    }
    EXPECT_EQ(recorded, 20);
    for (int p = 1; p <= 20; ++p) {
        EXPECT_EQ(statusOf(p, monday), "M") << p;
        EXPECT_EQ(misses(p), 1) << p;
    }
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt")), 20);
}

INSTANTIATE_TEST_SUITE_P(Stores, MissedCommandTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
