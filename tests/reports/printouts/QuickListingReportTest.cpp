// "Quick Clients Listing" of a delivery grid through the report engine: the
// grid's rows reach the page in the grid's order, under the heading given,
// and a data directory without the template says so.

#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "ScriptedUserInterface.h"
#include "TFormRunPrepare.h"
#include "TempDataDir.h"
#include "printouts/QuickListingReport.h"
#include "session/SessionState.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::reports;

namespace {

TEST(QuickListingReport, ARunsGridIsListedInTheGridsOrder)
{
    ensureGuiApplication();
    TempDataDir data(StoreKind::SQLite);
    Database& db = data.db();
    insertRow(db, QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
               {QStringLiteral("Service_Type"), QStringLiteral("D")}});
    insertRow(db, QStringLiteral("Routes"),
              {{QStringLiteral("Route_ID"), QStringLiteral("N7")},
               {QStringLiteral("Route_Desc"), QStringLiteral("North")}});
    const char* const names[][2] = {{"Cy", "Castellano"}, {"Ada", "Abernathy"}};
    for (int p = 1; p <= 2; ++p) {
        Params values = {{QStringLiteral("Person_ID"), p},
                         {QStringLiteral("Client_ID"), QString::number(1000 + p)},
                         {QStringLiteral("First_Name"), QString::fromLatin1(names[p - 1][0])},
                         {QStringLiteral("Last_Name"), QString::fromLatin1(names[p - 1][1])},
                         {QStringLiteral("Status"), QStringLiteral("A")},
                         {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
                         {QStringLiteral("Ongoing_Frequency"), QStringLiteral("A")},
                         {QStringLiteral("Svcs_Used"), 1},
                         {QStringLiteral("Start_Dte"), QDate(2024, 1, 1)},
                         {QStringLiteral("Def_Rte"), QStringLiteral("N7")},
                         {QStringLiteral("Def_Stop"), double(p)},
                         {QStringLiteral("Address1"), QStringLiteral("%1 Orchard Lane").arg(p * 10)},
                         {QStringLiteral("City"), QStringLiteral("Millbrook")}};
        for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
            values.emplace_back(QString::fromLatin1(day), true);
        insertRow(db, QStringLiteral("Clients"), values);
    }
    ScriptedUserInterface ui;
    SessionState session;
    TFormRunPrepare form(db, session, ui);
    form.FormShow();
    form.SetPrepareDate(QDate(2024, 3, 4));
    form.ActionPrepare();
    form.sortByTitle(QStringLiteral("Client"));
    const ResultSet rows = form.table().select(form.model()->currentIndex());
    ASSERT_EQ(rows.rowCount(), 2);

    QTemporaryDir out;
    PdfFileOutput output(out.filePath(QStringLiteral("listing.pdf")));
    // Data on a server: the program's own template.
    const DeliveryReportContext context{db, db.clock(), ui, QStringLiteral("pat"), nullptr, QString()};
    ReportHolder holder(output, db.clock());
    ASSERT_TRUE(QuickListingReport(context).prepare(holder, rows, QStringLiteral("Daily Run 3/4/24")));
    const QString text = documentTexts(*holder.layout()).join(u' ');
    EXPECT_TRUE(text.contains(QStringLiteral("Daily Run 3/4/24"))) << text.toStdString();
    const qsizetype ada = text.indexOf(QStringLiteral("Ada Abernathy"));
    const qsizetype cy = text.indexOf(QStringLiteral("Cy Castellano"));
    ASSERT_GE(ada, 0) << text.toStdString();
    EXPECT_LT(ada, cy);
    EXPECT_TRUE(text.contains(QStringLiteral("3/4/2024")));
    EXPECT_TRUE(text.contains(QStringLiteral("20 Orchard Lane")));
    EXPECT_TRUE(text.contains(QStringLiteral("Client Count: 2")));
    holder.clearPipes();

    // A data directory without the template: the report screens' message.
    QTemporaryDir folder;
    const DeliveryReportContext inFolder{db, db.clock(), ui, QStringLiteral("pat"), nullptr, folder.path()};
    EXPECT_FALSE(QuickListingReport(inFolder).print(holder, rows, QString(), ReportDestination::Screen));
    ASSERT_EQ(ui.texts(ScriptedUserInterface::Kind::Error).size(), 1);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Error)
                    .front()
                    .startsWith(QStringLiteral("Could not locate the report template file:\n\r")));
    EXPECT_EQ(output.reportsWritten(), 0);
    form.FormClose();
}

} // namespace
