// Access levels and settings from the command line: sql and config under
// --user go through the one access check, config set through the screen's
// rules, and a Config change made by one process is seen by the next.

#include "InsertRow.h"
#include "RunCommand.h"
#include "TempDataDir.h"

#include "ScriptedUserInterface.h"
#include "dataset/TableDataSet.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/TDataModule1.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using kb::test::runKettlebrook;

namespace {

class AccessCommands : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
        int id = 30;
        for (const char* level : {"W", "R", "O"})
            test::insertRow(
                data->db(), QStringLiteral("Staff"),
                {{QStringLiteral("Staff_ID"), id++},
                 {QStringLiteral("User_ID"), QStringLiteral("user") + QLatin1String(level)},
                 {QStringLiteral("Staff_Name"), QStringLiteral("Level %1").arg(QLatin1String(level))},
                 {QStringLiteral("Access_Level"), QString::fromLatin1(level)},
                 {QStringLiteral("Active"), true}});
        data->db().execute(QStringLiteral("Insert into History (Event) values ('Kept')"));
    }
    test::CommandResult run(const QString& user, const QStringList& words)
    {
        QStringList args = data->commandLocation();
        if (!user.isEmpty()) args << QStringLiteral("--user") << user;
        return runKettlebrook(args + words);
    }
    QString scalar(const QString& text) { return data->db().execute(text).value(0, 0).toString(); }

    std::unique_ptr<test::TempDataDir> data;
};

TEST_P(AccessCommands, SqlUnderAUserSignsInAndRefusesChangesForReadOnlyAndReportsOnly)
{
    for (const char* user : {"userR", "userO"}) {
        SCOPED_TRACE(user);
        const auto denied =
            run(QString::fromLatin1(user), {QStringLiteral("sql"), QStringLiteral("Delete from History")});
        EXPECT_EQ(denied.exitCode, 1);
        EXPECT_TRUE(denied.out.isEmpty());
        EXPECT_TRUE(denied.err.contains(QLatin1String("access: the data cannot be changed.")))
            << denied.err.toStdString();
        const auto update = run(QString::fromLatin1(user),
                                {QStringLiteral("sql"),
                                 QStringLiteral("select 1 from Config; Update Config set ORGANIZATN = 'X'")});
        EXPECT_EQ(update.exitCode, 1);
        const auto read =
            run(QString::fromLatin1(user),
                {QStringLiteral("sql"), QStringLiteral("select Event from History where Event = 'Kept'")});
        EXPECT_EQ(read.exitCode, 0) << read.err.toStdString();
        EXPECT_EQ(read.out, "Event\nKept\n");
    }
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from History where Event = 'Kept'")), "1");
    EXPECT_NE(scalar(QStringLiteral("select ORGANIZATN from Config")), "X");
    // Signed in like every command: in and out rows for each run.
    EXPECT_EQ(scalar(QStringLiteral(
                  "select count(*) from History where Event = 'Level R logged into Kettlebrook'")),
              "3");
    EXPECT_EQ(scalar(QStringLiteral(
                  "select count(*) from History where Event = 'Level O logged out of Kettlebrook'")),
              "3");

    const auto unknown =
        run(QStringLiteral("nobody"), {QStringLiteral("sql"), QStringLiteral("Delete from History")});
    EXPECT_NE(unknown.exitCode, 0);
    EXPECT_TRUE(unknown.err.contains(QLatin1String("could not be located"))) << unknown.err.toStdString();
    // A full user, and the data owner without --user, may change data.
    EXPECT_EQ(run(QStringLiteral("userW"),
                  {QStringLiteral("sql"), QStringLiteral("Delete from History where Event = 'Kept'")})
                  .out,
              "1\n");
    EXPECT_EQ(
        run(QString(), {QStringLiteral("sql"), QStringLiteral("Update Config set ORG_CITY = 'Owner'")}).out,
        "1\n");
}

TEST_P(AccessCommands, ConfigGoesThroughTheScreensRules)
{
    const auto set = run(QStringLiteral("userW"),
                         {QStringLiteral("config"), QStringLiteral("set"),
                          QStringLiteral("NO_DELIVERY_LABEL"), QStringLiteral("No \"meal\", sorry")});
    ASSERT_EQ(set.exitCode, 0) << set.err.toStdString();
    const auto get = run(QStringLiteral("userR"), {QStringLiteral("config"), QStringLiteral("get"),
                                                   QStringLiteral("no_delivery_label")});
    EXPECT_EQ(get.exitCode, 0) << get.err.toStdString();
    EXPECT_EQ(get.out, "NO_DELIVERY_LABEL\n\"No  meal , sorry\"\n");

    const auto refused = run(QStringLiteral("userR"), {QStringLiteral("config"), QStringLiteral("set"),
                                                       QStringLiteral("ORGANIZATN"), QStringLiteral("Mine")});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(
        refused.err.contains(QLatin1String("You have read-only access: the data cannot be changed.")));
    QStringList entries;
    for (int i = 1; i <= 32; ++i)
        entries.append(QStringLiteral("Source %1").arg(i));
    const auto tooMany = run(QStringLiteral("userW"), {QStringLiteral("config"), QStringLiteral("set"),
                                                       QStringLiteral("INCOME_LIST"), entries.join(u'\n')});
    EXPECT_EQ(tooMany.exitCode, 1);
    EXPECT_TRUE(tooMany.err.contains(
        QLatin1String("You may have exceeded the allowable number of items in the \r\nlist!")));
    entries.removeLast();
    EXPECT_EQ(run(QStringLiteral("userW"), {QStringLiteral("config"), QStringLiteral("set"),
                                            QStringLiteral("INCOME_LIST"), entries.join(u'\n')})
                  .exitCode,
              0);
    const auto badCode =
        run(QStringLiteral("userW"), {QStringLiteral("config"), QStringLiteral("set"),
                                      QStringLiteral("POSTAL_FORMAT"), QStringLiteral("MARS")});
    EXPECT_EQ(badCode.exitCode, 1);
    EXPECT_TRUE(badCode.err.contains(QLatin1String("USA, CAN, UK, OTH"))) << badCode.err.toStdString();
    const auto badNumber =
        run(QStringLiteral("userW"), {QStringLiteral("config"), QStringLiteral("set"),
                                      QStringLiteral("ADVANCE_PREP_DAYS"), QStringLiteral("two")});
    EXPECT_EQ(badNumber.exitCode, 1);
    const auto retired = run(QStringLiteral("userW"),
                             {QStringLiteral("config"), QStringLiteral("get"), QStringLiteral("PASSWORD")});
    EXPECT_EQ(retired.exitCode, 2);
    const auto noUser = runKettlebrook(data->commandLocation() +
                                       QStringList{QStringLiteral("config"), QStringLiteral("get")});
    EXPECT_EQ(noUser.exitCode, 2);

    EXPECT_EQ(scalar(QStringLiteral("select POSTAL_FORMAT from Config")), "USA");
    EXPECT_EQ(scalar(QStringLiteral("select INCOME_LIST from Config")).count(u'\n'), 30);
    EXPECT_TRUE(scalar(QStringLiteral("select ADVANCE_PREP_DAYS from Config")) != "two");
}

TEST_P(AccessCommands, AConfigChangeOnOneWorkstationIsSeenByAnotherAtItsNextStart)
{
    // A workstation already running keeps the settings it started with.
    test::ScriptedUserInterface ui;
    QTemporaryDir appData;
    SessionSettings settings;
    const QStringList location = data->commandLocation();
    if (location.front() == QLatin1String("--data"))
        settings.applyDataOption(location.back());
    else
        settings.applyServerOption(location.back());
    TDataModule1 running(data->clock(), ui);
    running.start(settings, appData.path());
    const QString before = running.config().fieldValue(u"ORGANIZATN").toString();

    const auto set =
        run(QStringLiteral("userW"), {QStringLiteral("config"), QStringLiteral("set"),
                                      QStringLiteral("ORGANIZATN"), QStringLiteral("Second, Workstation")});
    ASSERT_EQ(set.exitCode, 0) << set.err.toStdString();
    const auto seen = run(QStringLiteral("userO"),
                          {QStringLiteral("config"), QStringLiteral("get"), QStringLiteral("ORGANIZATN")});
    EXPECT_EQ(seen.out, "ORGANIZATN\n\"Second, Workstation\"\n");
    EXPECT_EQ(running.config().fieldValue(u"ORGANIZATN").toString(), before);
    running.shutdown();

    TDataModule1 restarted(data->clock(), ui);
    restarted.start(settings, appData.path());
    EXPECT_EQ(restarted.config().fieldValue(u"ORGANIZATN").toString(), "Second, Workstation");
    restarted.shutdown();
}

INSTANTIATE_TEST_SUITE_P(Stores, AccessCommands,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
