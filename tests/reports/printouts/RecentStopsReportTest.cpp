// "Recent Stops and Suspensions" laid out by its template: the clients and
// what put them on the list reach the page, by the program's own template
// and by the one installed in a data directory.

#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "printouts/RecentStopsReport.h"
#include "template/TemplateRegistry.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::reports;

namespace {

TEST(RecentStopsReport, TheClientsAndTheirChangesReachThePage)
{
    ensureGuiApplication();
    TempDataDir data(StoreKind::SQLite);
    Database& db = data.db();
    for (int p = 1; p <= 2; ++p)
        insertRow(db, QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), p},
                   {QStringLiteral("Client_ID"), QString::number(500 + p)},
                   {QStringLiteral("First_Name"), p == 1 ? QStringLiteral("Ada") : QStringLiteral("Bo")},
                   {QStringLiteral("Last_Name"),
                    p == 1 ? QStringLiteral("Abernathy") : QStringLiteral("Brightwater")},
                   {QStringLiteral("Def_Rte"), QStringLiteral("N%1").arg(p)},
                   {QStringLiteral("Def_Stop"), 4},
                   {QStringLiteral("Stop_Dte"), QDate(2024, 3, 7)},
                   {QStringLiteral("Address1"), QStringLiteral("%1 Orchard Lane").arg(p * 10)}});
    const auto rows = [&] {
        return db.execute(
            QStringLiteral("Select Clients.*, 'Stop date, Suspension' as Changes from Clients order "
                           "by Def_Rte"));
    };
    const RecentStopsReport::Dates dates{QDate(2024, 3, 7), QDate(2024, 3, 5), QDate(2024, 3, 7)};

    ScriptedUserInterface ui;
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("recent.pdf"));
    PdfFileOutput output(pdf);
    const DeliveryReportContext context{db, db.clock(), ui, QStringLiteral("pat"), nullptr, QString()};
    ReportHolder holder(output, db.clock());
    ASSERT_TRUE(RecentStopsReport(context).print(holder, rows(), dates, ReportDestination::Screen));
    EXPECT_EQ(output.reportsWritten(), 1);
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
            .simplified();
    EXPECT_TRUE(text.contains(QStringLiteral("Recent Stops and Suspensions"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Deliveries of Thursday, March 7, 2024"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Abernathy, Ada")));
    EXPECT_TRUE(text.contains(QStringLiteral("Stop date 3/7/2024")));
    EXPECT_TRUE(text.contains(QStringLiteral("Stop date, Suspension")));
    EXPECT_TRUE(text.contains(QStringLiteral("2 clients")));
    EXPECT_LT(text.indexOf(QStringLiteral("Abernathy")), text.indexOf(QStringLiteral("Brightwater")));

    // A folder without the template prints nothing; once installed it does.
    QTemporaryDir folder;
    const DeliveryReportContext inFolder{db, db.clock(), ui, QStringLiteral("pat"), nullptr, folder.path()};
    EXPECT_FALSE(RecentStopsReport(inFolder).print(holder, rows(), dates, ReportDestination::Screen));
    TemplateRegistry::install(folder.path());
    EXPECT_TRUE(RecentStopsReport(inFolder).print(holder, rows(), dates, ReportDestination::Screen));
    EXPECT_EQ(output.reportsWritten(), 2);
}

} // namespace
