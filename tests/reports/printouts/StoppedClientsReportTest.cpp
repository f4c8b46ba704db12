// "Print Report" of the stop and inactivation lists laid out by its
// template: the title and the clients with their stop dates and reasons.

#include "ReportTestSupport.h"

#include "ReportHolder.h"
#include "ReportOutput.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "printouts/StoppedClientsReport.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::reports;

namespace {

TEST(StoppedClientsReport, TheListsClientsReachThePage)
{
    ensureGuiApplication();
    TempDataDir data(StoreKind::SQLite);
    ResultSet rows({sql::OutputColumn{QStringLiteral("Client_ID"), FieldType::String, 7},
                    sql::OutputColumn{QStringLiteral("First_Name"), FieldType::String, 0},
                    sql::OutputColumn{QStringLiteral("Last_Name"), FieldType::String, 0},
                    sql::OutputColumn{QStringLiteral("Stop_Dte"), FieldType::Date, 0},
                    sql::OutputColumn{QStringLiteral("Stop_Reason"), FieldType::String, 0}});
    rows.appendRow({QStringLiteral("101"), QStringLiteral("Ada"), QStringLiteral("Abernathy"),
                    QDate(2024, 2, 28), QStringLiteral("Moved away")});
    rows.appendRow(
        {QStringLiteral("102"), QStringLiteral("Bo"), QStringLiteral("Brightwater"), QVariant(), QString()});
    rows.setHasRows(true);

    ScriptedUserInterface ui;
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("stopped.pdf"));
    PdfFileOutput output(pdf);
    const DeliveryReportContext context{data.db(), data.clock(), ui, QStringLiteral("pat"),
                                        nullptr,   QString()};
    ReportHolder holder(output, data.clock());
    ASSERT_TRUE(StoppedClientsReport(context).print(
        holder, rows, QStringLiteral("Active Clients with stop dates prior to 3/5/2024"),
        ReportDestination::Screen));
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
            .simplified();
    EXPECT_TRUE(text.contains(QStringLiteral("Active Clients with stop dates prior to 3/5/2024")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("101 Ada Abernathy 2/28/2024 Moved away")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("102 Bo Brightwater")));
    EXPECT_TRUE(text.contains(QStringLiteral("2 clients")));

    // A data directory without the template says so and prints nothing.
    QTemporaryDir folder;
    const DeliveryReportContext inFolder{data.db(), data.clock(), ui, QStringLiteral("pat"),
                                         nullptr,   folder.path()};
    EXPECT_FALSE(
        StoppedClientsReport(inFolder).print(holder, rows, QStringLiteral("x"), ReportDestination::Screen));
    ASSERT_EQ(ui.texts(ScriptedUserInterface::Kind::Error).size(), 1);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Error)
                    .front()
                    .startsWith(QStringLiteral("Could not locate the report template file:\n\r")));
    EXPECT_EQ(output.reportsWritten(), 1);
}

} // namespace
