// "Client Listing for Route" printed from the stop ordering screen through
// the report engine: the listing's rows and heading reach the page, and a
// data directory without the template says so.

#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "ScriptedUserInterface.h"
#include "TFormOrderRoutes.h"
#include "TempDataDir.h"
#include "printouts/RouteListReport.h"
#include "session/SessionState.h"
#include "template/TemplateRegistry.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::reports;

namespace {

void addClient(Database& db, int person, const QString& first, const QString& last, double stop)
{
    insertRow(db, QStringLiteral("Clients"),
              {{QStringLiteral("Person_ID"), person},
               {QStringLiteral("Client_ID"), QString::number(1000 + person)},
               {QStringLiteral("First_Name"), first},
               {QStringLiteral("Last_Name"), last},
               {QStringLiteral("Status"), QStringLiteral("A")},
               {QStringLiteral("Def_Rte"), QStringLiteral("N7")},
               {QStringLiteral("Def_Stop"), stop},
               {QStringLiteral("Address1"), QStringLiteral("%1 Orchard Lane").arg(person * 10)},
               {QStringLiteral("City"), QStringLiteral("Millbrook")},
               {QStringLiteral("State"), QStringLiteral("PA")},
               {QStringLiteral("ZIP"), QStringLiteral("19001")}});
}

TEST(RouteListReport, TheOrderingScreensListingPrintsThroughTheReportEngine)
{
    ensureGuiApplication();
    TempDataDir data(StoreKind::SQLite);
    Database& db = data.db();
    insertRow(db, QStringLiteral("Routes"),
              {{QStringLiteral("Route_ID"), QStringLiteral("N7")},
               {QStringLiteral("Route_Desc"), QStringLiteral("North Hills")}});
    addClient(db, 1, QStringLiteral("Ada"), QStringLiteral("Abernathy"), 2);
    addClient(db, 2, QStringLiteral("Bo"), QStringLiteral("Brightwater"), 1);
    addClient(db, 3, QStringLiteral("Cy"), QStringLiteral("Castellano"), 3.5);

    ScriptedUserInterface ui;
    SessionState session;
    QTemporaryDir appData;
    session.cAppDataFolder = appData.path() + QLatin1Char('/');
    TFormOrderRoutes form(db, session, ui);

    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("listing.pdf"));
    PdfFileOutput output(pdf);
    // Data on a server: the program's own template.
    const DeliveryReportContext context{db, db.clock(), ui, QStringLiteral("pat"), nullptr, QString()};
    bool shown = false;
    form.setListingPrinter([&](const RouteListing& listing) {
        ReportHolder holder(output, db.clock());
        shown = RouteListReport(context).print(holder, listing.rows, listing.parameters());
    });
    ASSERT_TRUE(form.setRoute(QStringLiteral("N7")));
    form.ActionRetrieve();
    form.ActionPrintListing();
    ASSERT_TRUE(shown) << ui.texts(ScriptedUserInterface::Kind::Error).join(u'\n').toStdString();
    EXPECT_EQ(output.reportsWritten(), 1);

    // Words as they stand on the page, one blank between them.
    const QString text =
        runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
            .simplified();
    EXPECT_TRUE(text.contains(QStringLiteral("Client Listing for Route N7 - North Hills")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Default Route")));
    EXPECT_TRUE(text.contains(QStringLiteral("Route N7 3 clients")));
    // The clients in stop order, with their places and addresses.
    const qsizetype bo = text.indexOf(QStringLiteral("Brightwater, Bo"));
    const qsizetype ada = text.indexOf(QStringLiteral("Abernathy, Ada"));
    const qsizetype cy = text.indexOf(QStringLiteral("Castellano, Cy"));
    ASSERT_GE(bo, 0);
    EXPECT_LT(bo, ada);
    EXPECT_LT(ada, cy);
    EXPECT_TRUE(text.contains(QStringLiteral("3.5")));
    EXPECT_TRUE(text.contains(QStringLiteral("30 Orchard Lane")));
    EXPECT_TRUE(text.contains(QStringLiteral("1002")));

    // A data directory without the template: the report screens' message, nothing printed.
    QTemporaryDir folder;
    const DeliveryReportContext inFolder{db, db.clock(), ui, QStringLiteral("pat"), nullptr, folder.path()};
    ReportHolder holder(output, db.clock());
    EXPECT_FALSE(RouteListReport(inFolder).print(holder, form.listing().rows, form.listing().parameters()));
    ASSERT_EQ(ui.texts(ScriptedUserInterface::Kind::Error).size(), 1);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Error)
                    .front()
                    .startsWith(QStringLiteral("Could not locate the report template file:\n\r")));
    EXPECT_EQ(output.reportsWritten(), 1);
    // Once installed, the folder's template is the one used.
    ui.clear();
    TemplateRegistry::install(folder.path());
    EXPECT_TRUE(QFileInfo::exists(folder.filePath(RouteListReport::templateFileName())));
    EXPECT_TRUE(RouteListReport(inFolder).print(holder, form.listing().rows, form.listing().parameters()));
    EXPECT_EQ(output.reportsWritten(), 2);
}

} // namespace
