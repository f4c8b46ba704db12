// The standing schedule's and funding's screens offscreen over real
// presenters: default lists, the delivery weeks calendar, the condition
// check, the funding sources with their rates and the application comments.

#include "WidgetApplication.h"

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "clients/FundingSourcesView.h"
#include "dataset/QueryDataSet.h"
#include "defaults/TFormDeliveryConditionsVerification.h"
#include "defaults/TFormScheduleCalendar.h"
#include "defaults/TFormSetDefaultDeliveries.h"
#include "funding/TFormEditFundingSources.h"
#include "records/RecordServices.h"
#include "schedule/DeliveryConditionsView.h"
#include "schedule/ScheduleCalendarView.h"
#include "schedule/SetDefaultDeliveriesView.h"
#include "settings/SettingsFile.h"

#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

// Saves a picture of a screen when KB_SCREENSHOTS is set, for looking at it.
void picture(QWidget& screen, const char* name)
{
    const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
    if (!dir.isEmpty()) screen.grab().save(QDir(dir).filePath(QString::fromLatin1(name)));
}

class ScheduleScreens : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { ensureWidgetApplication(); }
    void SetUp() override
    {
        insertRow(data.db(), QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
                   {QStringLiteral("Service_Type"), QStringLiteral("D")}});
        for (int item = 1; item <= 2; ++item)
            insertRow(data.db(), QStringLiteral("Items"),
                      {{QStringLiteral("Item_ID"), item},
                       {QStringLiteral("Meal_Item"), QStringLiteral("Item %1").arg(item)}});
    }

    TempDataDir data;
    ScriptedUserInterface ui;
    RecordServices services{data.db(), ui};
    QTemporaryDir folder;
    SettingsFile settings{folder.path()};
};

TEST_F(ScheduleScreens, DefaultDeliveriesAddAnItemAndPickIt)
{
    TFormSetDefaultDeliveries presenter(services);
    ui::SetDefaultDeliveriesView view(presenter, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Set Default Deliveries");
    EXPECT_EQ(view.services()->currentText(), "1 - Hot Meals");
    view.button(QStringLiteral("Add Item"))->click();
    ASSERT_EQ(view.grid()->rowCount(), 1);
    EXPECT_EQ(view.grid()->item(0, 0)->text(), "MON");
    auto* items = qobject_cast<QComboBox*>(view.grid()->cellWidget(0, 2));
    ASSERT_NE(items, nullptr);
    items->setCurrentIndex(items->findText(QStringLiteral("Item 2")));
    view.grid()->item(0, 1)->setText(QStringLiteral("3"));
    view.button(QStringLiteral("Dupe Monday"))->click();
    picture(view, "set-default-deliveries.png");
    view.button(QStringLiteral("Close"))->click();
    const ResultSet rows = data.db().execute(QStringLiteral(
        "select Del_Day, Item_ID, Quantity from DefDels where Person_ID = 0 order by RecordID"));
    ASSERT_EQ(rows.rowCount(), 5); // Monday and the four other days a new agency serves
    EXPECT_EQ(rows.value(0, 1).toInt(), 2);
    EXPECT_EQ(rows.value(4, 2).toInt(), 3);
}

TEST_F(ScheduleScreens, CalendarAndConditionCheckShowTheirResults)
{
    ClientSchedule client;
    client.personId = 1;
    client.name = QStringLiteral("Ann Ames");
    client.status = QStringLiteral("A");
    client.frequency = QStringLiteral("E");
    client.days[0] = true;
    TFormScheduleCalendar calendar(client, QDate(2024, 3, 6), ui);
    ui::ScheduleCalendarView calendarView(calendar, settings);
    calendarView.show();
    EXPECT_EQ(calendarView.calendars().size(), 3);
    EXPECT_EQ(calendarView.findChild<QLabel*>(QStringLiteral("Title"))->text(), "\"B\" Delivery Weeks");
    calendarView.calendars().front()->setCurrentPage(2024, 6);
    EXPECT_EQ(calendar.firstShown(), QDate(2024, 6, 1));
    EXPECT_EQ(calendarView.calendars().last()->monthShown(), 8);
    picture(calendarView, "delivery-weeks.png");

    TFormDeliveryConditionsVerification check(data.db(), client, QDate(2024, 3, 11));
    ui::DeliveryConditionsView checkView(check, settings);
    checkView.show();
    EXPECT_EQ(checkView.lines()->rowCount(), 7);
    EXPECT_EQ(checkView.lines()->item(1, 1)->text(), "No service has been assigned");
    EXPECT_TRUE(checkView.verdict()->text().contains(QStringLiteral("No delivery")));
    picture(checkView, "delivery-conditions.png");
}

TEST_F(ScheduleScreens, FundingSourcesShowTheirRatesBehindViewRates)
{
    insertRow(data.db(), QStringLiteral("Fundsrcs"),
              {{QStringLiteral("Fund_ID"), 1},
               {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
               {QStringLiteral("Fund_Srce"), QStringLiteral("Meals Fund")},
               {QStringLiteral("Billed_Party"), QStringLiteral("3")},
               {QStringLiteral("Reimbursement_Method"), QStringLiteral("I")}});
    insertRow(data.db(), QStringLiteral("Pricing"),
              {{QStringLiteral("Person_ID"), 0},
               {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
               {QStringLiteral("Method"), QStringLiteral("F")},
               {QStringLiteral("Unit"), QStringLiteral("2")},
               {QStringLiteral("Item_ID"), 2},
               {QStringLiteral("Amount"), 3.5}});
    TFormEditFundingSources presenter(services, QStringLiteral("pat"));
    ASSERT_TRUE(presenter.open());
    ui::FundingSourcesView view(presenter, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Funding Sources Maintenance");
    EXPECT_FALSE(view.ratesBox()->isVisible());
    view.ratesButton()->click();
    EXPECT_TRUE(view.ratesBox()->isVisible());
    EXPECT_EQ(view.ratesButton()->text(), "Hide Rates");
    ASSERT_EQ(view.ratesGrid()->rowCount(), 1);
    EXPECT_EQ(view.ratesGrid()->item(0, 1)->text(), "3.50");
    EXPECT_EQ(qobject_cast<QComboBox*>(view.ratesGrid()->cellWidget(0, 0))->currentText(), "Item 2");
    picture(view, "funding-sources.png");

    // The billed party and the method read as words; the time rate stays
    // away from a source paid by items.
    EXPECT_EQ(view.grid()->item(0, 2)->text(), "Third Party");
    EXPECT_EQ(view.grid()->item(0, 3)->text(), "Meals or Meal Items");
    presenter.editor().openRow(0);
    auto* billed = qobject_cast<QComboBox*>(view.editor(QStringLiteral("BILLED_PARTY")));
    auto* method = qobject_cast<QComboBox*>(view.editor(QStringLiteral("REIMBURSEMENT_METHOD")));
    ASSERT_NE(billed, nullptr);
    ASSERT_NE(method, nullptr);
    EXPECT_EQ(billed->currentText(), "Third Party");
    EXPECT_EQ(billed->count(), 3);
    EXPECT_EQ(method->currentText(), "Meals or Meal Items");
    EXPECT_FALSE(view.editor(QStringLiteral("REIMBURSEMENT_RATE"))->isVisible());
    billed->setCurrentIndex(billed->findText(QStringLiteral("No Billing")));
    emit billed->activated(billed->currentIndex());
    EXPECT_EQ(presenter.editor().value(QStringLiteral("BILLED_PARTY")).toString(), "N");
    EXPECT_FALSE(method->isVisible());
    EXPECT_FALSE(view.ratesBox()->isVisible());
    // The rows below close up at once: no gap where the method stood.
    QWidget* below = view.editor(QStringLiteral("BS1_CUSTOMERNO"));
    ASSERT_NE(below, nullptr);
    EXPECT_LT(below->geometry().top() - billed->geometry().bottom(), billed->height() / 2);
    picture(view, "funding-sources-edit.png");
    presenter.editor().run(TFormEditBase::Command::Cancel);
}

} // namespace
