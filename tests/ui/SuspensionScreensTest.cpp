// The suspension form and the status utilities offscreen, over real
// presenters: the form's views carry one range, the utility stops its
// clients from its button, and the list writes what its rows say. With
// KB_SCREENSHOTS set, each view is also saved there as a picture.

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"

#include "clients/AddSuspensionView.h"
#include "clients/StoppedClientsUtilityView.h"
#include "clients/StoppedClientsView.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "rules/ClientRules.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"
#include "suspensions/TFormAddSuspension.h"
#include "suspensions/TFormStoppedClients.h"
#include "suspensions/TFrmStopClients.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;

namespace {

void screenshot(QWidget& view, const QString& name)
{
    const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
    if (!dir.isEmpty()) view.grab().save(QDir(dir).filePath(name + QStringLiteral(".png")));
}

class SuspensionScreensTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { test::ensureWidgetApplication(); }

    QTemporaryDir folder;
    SettingsFile settings{folder.path()};
    test::TempDataDir data;
    test::ScriptedUserInterface ui;
    RecordServices services{data.db(), ui};
};

} // namespace

TEST_F(SuspensionScreensTest, TheFormShowsOneRangeInBothViews)
{
    QueryDataSet row(data.db(), QStringLiteral("select * from Suspends"));
    row.setRequestLive(true);
    row.open();
    row.append();
    row.setFieldValue(u"Stop_Dt", QDate(2024, 3, 11));
    row.setFieldValue(u"Resume_Dt", QDate(2024, 3, 14));
    row.setFieldValue(u"User", QStringLiteral("Pat Tester"));
    TFormAddSuspension form(row, &settings);
    {
        ui::AddSuspensionView view(form, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Service Suspension");
        EXPECT_EQ(view.calendar()->selectedDate(), QDate(2024, 3, 11));
        screenshot(view, QStringLiteral("suspension-calendar"));
        view.showView(int(TFormAddSuspension::View::Dates));
        EXPECT_EQ(view.resumeEdit()->date(), QDate(2024, 3, 14));
        view.stopEdit()->setDate(QDate(2024, 3, 20)); // after the resume date
        EXPECT_EQ(view.resumeEdit()->date(), QDate(2024, 3, 21));
        screenshot(view, QStringLiteral("suspension-dates"));
        view.accept();
    }
    form.close();
    EXPECT_EQ(row.fieldValue(u"Resume_Dt").toDate(), QDate(2024, 3, 21));
    EXPECT_EQ(settings.readString(QStringLiteral("FormAddSuspension"), QStringLiteral("CalendarOrDates")),
              "Dates");
    row.cancel();
}

TEST_F(SuspensionScreensTest, TheUtilityStopsItsClientsAndTheListWritesItsRows)
{
    for (int person : {1, 2, 3})
        test::insertRow(data.db(), QStringLiteral("Clients"),
                        {{QStringLiteral("Person_ID"), person},
                         {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(person)},
                         {QStringLiteral("First_Name"), QStringLiteral("Member")},
                         {QStringLiteral("Last_Name"), QStringLiteral("Number %1").arg(person)},
                         {QStringLiteral("Status"), QStringLiteral("A")},
                         {QStringLiteral("Stop_Dte"), QDate(2024, 3, person)}});
    SessionState session;
    session.userFullName = QStringLiteral("Pat Tester");
    TableDataSet clients(data.db(), QStringLiteral("Clients"));
    ClientRules rules(services, ui, data.clock(), session);
    rules.attach(clients);
    clients.open();
    TFrmStopClients utility(services, ui, clients, data.clock());
    {
        TFormStoppedClients list(utility);
        ui::StoppedClientsView view(list, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Active Clients with stop dates prior to 3/5/2024");
        ASSERT_EQ(view.table()->rowCount(), 3);
        auto* status = qobject_cast<QComboBox*>(view.table()->cellWidget(1, 3));
        ASSERT_NE(status, nullptr);
        status->setCurrentIndex(status->findData(QStringLiteral("S")));
        screenshot(view, QStringLiteral("stopped-clients"));
        view.accept();
        ASSERT_TRUE(list.ActionOk());
    }
    EXPECT_EQ(data.db().execute(QStringLiteral("select Status from Clients where Person_ID = 2")).value(0, 0),
              "S");

    ui::StoppedClientsUtilityView view(utility, ui, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Update Stop Status Utility");
    EXPECT_EQ(view.dateEdit()->date(), QDate(2024, 3, 5));
    screenshot(view, QStringLiteral("stop-utility"));
    view.dateEdit()->setDate(QDate(2024, 3, 1));
    view.allButton()->click();
    EXPECT_EQ(data.db().execute(QStringLiteral("select Status from Clients order by Person_ID")).value(0, 0),
              "S");
    EXPECT_EQ(data.db().execute(QStringLiteral("select Status from Clients where Person_ID = 3")).value(0, 0),
              "A");
    EXPECT_TRUE(view.allButton()->isEnabled());
    clients.close();
    rules.detach();
}
