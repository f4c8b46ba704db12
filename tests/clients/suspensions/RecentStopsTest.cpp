// "Recent Stops and Suspensions": the clients of a date's deliveries who
// were stopped or suspended by changes entered since the recency date, and
// nobody else.

#include "ClientRulesFixture.h"
#include "RunCommand.h"

#include "suspensions/RecentStops.h"
#include "suspensions/TFormRecentStops.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace kb::test {

namespace {

using Kind = ScriptedUserInterface::Kind;

class RecentStopsReportData : public ClientRulesFixture
{
protected:
    // Deliveries of Thursday 7 March; changes entered on or after Tuesday 5 March count.
    const QDate delivery{2024, 3, 7};
    const QDate recency{2024, 3, 5};

    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        for (int p = 1; p <= 9; ++p)
            addClient(p, {{QStringLiteral("Def_Rte"), QStringLiteral("R%1").arg(10 - p)}});
        for (int p = 1; p <= 8; ++p)
            insertRow(db(), QStringLiteral("Deliveri"),
                      {{QStringLiteral("Deliv_ID"), 100 + p},
                       {QStringLiteral("Person_ID"), p},
                       {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(p)},
                       {QStringLiteral("Deliv_Dt"), delivery}});
        // A delivery of another date only: client 9 is on no list of the 7th.
        insertRow(db(), QStringLiteral("Deliveri"),
                  {{QStringLiteral("Deliv_ID"), 200},
                   {QStringLiteral("Person_ID"), 9},
                   {QStringLiteral("Client_ID"), QStringLiteral("9.0")},
                   {QStringLiteral("Deliv_Dt"), delivery.addDays(1)}});

        // 1: a stop date entered yesterday, from the 7th on.
        history(1, "Stop date of 03/07/2024 added.", QDateTime(QDate(2024, 3, 5), QTime(9, 15)), delivery);
        // 2: the same stop entered before the recency date: not recent.
        history(2, "Stop date of 03/07/2024 added.", QDateTime(QDate(2024, 3, 4), QTime(16, 0)), delivery);
        // 3: a stop date entered today, but from the 6th: it already applied when the list was made.
        history(3, "Stop date of 03/06/2024 added.", QDateTime(QDate(2024, 3, 6), QTime(8, 0)),
                QDate(2024, 3, 6));
        // 4: a suspension entered today that covers the 7th.
        suspension(4, QDate(2024, 3, 6), QDate(2024, 3, 7), QDate(2024, 3, 9));
        // 5: a suspension entered today that starts after the 7th.
        suspension(5, QDate(2024, 3, 6), QDate(2024, 3, 8), QDate(2024, 3, 9));
        // 6: a suspension covering the 7th, entered before the recency date.
        suspension(6, QDate(2024, 3, 1), QDate(2024, 3, 4), QDate(2024, 3, 12));
        // 7: the status turned to stopped today, and a suspension as well.
        history(7, "Status changed from Active to Stopped.", QDateTime(QDate(2024, 3, 6), QTime(10, 0)),
                delivery);
        suspension(7, QDate(2024, 3, 6), QDate(2024, 3, 7), QDate(2024, 3, 8));
        // 8: another status change (to inactive) does not count.
        history(8, "Status changed from Active to Inactive.", QDateTime(QDate(2024, 3, 6), QTime(10, 0)),
                delivery);
        // 9: stopped recently, but not on the list of the 7th.
        history(9, "Stop date of 03/07/2024 added.", QDateTime(QDate(2024, 3, 6), QTime(9, 0)), delivery);
    }
    void history(int personId, const char* event, const QDateTime& entered, const QDate& eventDate)
    {
        insertRow(db(), QStringLiteral("History"),
                  {{QStringLiteral("Person_ID"), personId},
                   {QStringLiteral("Event"), QString::fromLatin1(event)},
                   {QStringLiteral("Tran_Date"), entered},
                   {QStringLiteral("Event_Date"), eventDate},
                   {QStringLiteral("User"), QStringLiteral("Pat Tester")}});
    }
    void suspension(int personId, const QDate& created, const QDate& stop, const QDate& resume)
    {
        insertRow(db(), QStringLiteral("Suspends"),
                  {{QStringLiteral("Person_ID"), personId},
                   {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(personId)},
                   {QStringLiteral("Stop_Dt"), stop},
                   {QStringLiteral("Resume_Dt"), resume},
                   {QStringLiteral("Tran_Type"), QStringLiteral("SUSP")},
                   {QStringLiteral("Valid"), true},
                   {QStringLiteral("Create_Date"), created}});
    }
    // "Person_ID:Changes" of each row, in the report's order.
    static QStringList listed(const ResultSet& rows)
    {
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append(rows.value(r, u"PERSON_ID").toString() + QLatin1Char(':') +
                        rows.value(r, u"Changes").toString());
        return list;
    }
};

} // namespace

TEST_P(RecentStopsReportData, OnlyRecentChangesToClientsOnTheDatesListAreSelected)
{
    const ResultSet rows = RecentStops::select(db(), delivery, recency);
    // By default route: client 7 is on R3, 4 on R6, 1 on R9.
    EXPECT_EQ(listed(rows), (QStringList{QStringLiteral("7:Suspension, Stopped"),
                                         QStringLiteral("4:Suspension"), QStringLiteral("1:Stop date")}));
    // The rows carry the clients' own columns for the report.
    ASSERT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows.value(2, u"LAST_NAME").toString(), QStringLiteral("Last1"));
    EXPECT_EQ(rows.value(2, u"DEF_RTE").toString(), QStringLiteral("R9"));

    // A recency date two days earlier takes in client 2's stop and client 6's suspension.
    EXPECT_EQ(listed(RecentStops::select(db(), delivery, QDate(2024, 3, 1))),
              (QStringList{QStringLiteral("7:Suspension, Stopped"), QStringLiteral("6:Suspension"),
                           QStringLiteral("4:Suspension"), QStringLiteral("2:Stop date"),
                           QStringLiteral("1:Stop date")}));
    // A date without deliveries lists nobody, and has no delivery date.
    EXPECT_EQ(RecentStops::select(db(), QDate(2024, 3, 11), recency).rowCount(), 0);
    EXPECT_FALSE(RecentStops::deliveryDate(db(), QDate(2024, 3, 11)).isValid());
    EXPECT_EQ(RecentStops::deliveryDate(db(), delivery), delivery);
    // Running it again finds the same (its scratch tables do not linger).
    EXPECT_EQ(RecentStops::select(db(), delivery, recency).rowCount(), 3);
}

TEST_P(RecentStopsReportData, TheScreenStartsOnTodayAndHandsTheRowsToTheReport)
{
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    TFormRecentStops form(db(), ui(), data->clock(), folder.path());
    EXPECT_EQ(form.stopDate(), today());
    EXPECT_EQ(form.recencyDate(), today().addDays(-1));
    EXPECT_EQ(form.destination(), TFormRecentStops::Destination::ScreenAndFile);

    int printed = 0;
    form.setPrinter([&](const TFormRecentStops::Report& report) {
        ++printed;
        EXPECT_EQ(report.rows.rowCount(), 3);
        EXPECT_EQ(report.deliveryDate, delivery);
        EXPECT_EQ(report.destination, TFormRecentStops::Destination::Printer);
    });
    form.setStopDate(delivery);
    form.setRecencyDate(recency);
    form.setDestination(TFormRecentStops::Destination::Printer);

    // Without the template: its message, and no report.
    EXPECT_FALSE(form.ActionPrint());
    EXPECT_EQ(ui().texts(Kind::Error),
              QStringList{
                  QStringLiteral("The requested report template file:\r\n") +
                  QDir::toNativeSeparators(QDir(folder.path()).filePath(QStringLiteral("RecentStops.rtm"))) +
                  QStringLiteral("\r\ncould not be found.")});
    EXPECT_EQ(printed, 0);

    QFile file(QDir(folder.path()).filePath(QStringLiteral("RecentStops.rtm")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_TRUE(form.ActionPrint());
    EXPECT_EQ(printed, 1);
    EXPECT_EQ(ui().busyDepth(), 0);
}

TEST_P(RecentStopsReportData, TheCommandPrintsTheListAsCsv)
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    insertRow(db(), QStringLiteral("Staff"),
              {{QStringLiteral("Staff_ID"), 3},
               {QStringLiteral("User_ID"), QStringLiteral("pat")},
               {QStringLiteral("Staff_Name"), QStringLiteral("Pat Tester")},
               {QStringLiteral("Access_Level"), QStringLiteral("O")},
               {QStringLiteral("Active"), true}});
    const auto run = [&](const QStringList& words) {
        return runKettlebrook(data->commandLocation() +
                              QStringList{QStringLiteral("--today"), QStringLiteral("2024-03-06"),
                                          QStringLiteral("--user"), QStringLiteral("pat"),
                                          QStringLiteral("recent-stops")} +
                              words);
    };
    // A reports-only user may run it.
    const CommandResult listed = run({QStringLiteral("--date"), QStringLiteral("2024-03-07"),
                                      QStringLiteral("--since"), QStringLiteral("2024-03-05")});
    ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
    const QStringList lines = listed.out.trimmed().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 4) << listed.out.toStdString();
    EXPECT_EQ(lines[0],
              QStringLiteral("Person_ID,Client_ID,Last_Name,First_Name,Def_Rte,Def_Stop,Status,Stop_Dte,"
                             "Address1,City,Phone,Changes"));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("7,7.0,Last7,First7,R3,"))) << lines[1].toStdString();
    EXPECT_TRUE(lines[1].endsWith(QStringLiteral(",\"Suspension, Stopped\""))) << lines[1].toStdString();
    EXPECT_TRUE(lines[3].startsWith(QStringLiteral("1,1.0,Last1,First1,R9,"))) << lines[3].toStdString();
    EXPECT_TRUE(lines[3].endsWith(QStringLiteral(",Stop date"))) << lines[3].toStdString();

    // Today's deliveries (the 6th, none saved) by default: the header alone.
    const CommandResult none = run({});
    ASSERT_EQ(none.exitCode, 0) << none.err.toStdString();
    EXPECT_EQ(none.out.trimmed().split(QLatin1Char('\n')).size(), 1);
    // A bad date is a usage error.
    EXPECT_EQ(run({QStringLiteral("--date"), QStringLiteral("7 March")}).exitCode, 2);
}

INSTANTIATE_TEST_SUITE_P(Stores, RecentStopsReportData,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL), storeParamName);

} // namespace kb::test
