// The dated delivery screens offscreen over a small store: the scheduled
// deliveries of a client with the calendar and grid, adding by the
// calendar, and Auto Schedule previewing and making a pattern's rows. With
// KB_SCREENSHOTS set to a folder, each screen is saved there as a picture.

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"

#include "dataset/QueryDataSet.h"
#include "dated/DatedDeliveries.h"
#include "dated/TFormAssignDeliveriesToNewDate.h"
#include "dated/TFormClientEpisodicItems.h"
#include "dated/TFormEditEpisodicDeliveries.h"
#include "items/TFormSetEpisodicItems.h"
#include "records/RecordServices.h"
#include "recurrence/TFormRecurrence.h"
#include "schedule/SetEpisodicItemsView.h"
#include "schedule/dated/AssignDeliveriesToNewDateView.h"
#include "schedule/dated/ClientEpisodicItemsView.h"
#include "schedule/dated/DatedDeliveriesView.h"
#include "schedule/dated/RecurrenceView.h"
#include "settings/SettingsFile.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class DatedDeliveriesScreens : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ensureWidgetApplication();
        insertRow(data.db(), QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
                   {QStringLiteral("Service_Type"), QStringLiteral("D")}});
        for (const char* route : {"R1", "R2"})
            insertRow(
                data.db(), QStringLiteral("Routes"),
                {{QStringLiteral("Route_ID"), QString::fromLatin1(route)},
                 {QStringLiteral("Route_Desc"), QStringLiteral("Route ") + QString::fromLatin1(route)}});
        insertRow(data.db(), QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), 10},
                   {QStringLiteral("Client_ID"), QStringLiteral("C010")},
                   {QStringLiteral("First_Name"), QStringLiteral("Ada")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Lovelace")},
                   {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
                   {QStringLiteral("Svcs_Used"), 1},
                   {QStringLiteral("Start_Dte"), QDate(2024, 1, 1)},
                   {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                   {QStringLiteral("Def_Stop"), 4.0}});
    }

    static void keepPicture(QWidget& widget, const QString& name)
    {
        const QString folder = qEnvironmentVariable("KB_SCREENSHOTS");
        if (folder.isEmpty()) return;
        widget.show();
        QApplication::processEvents();
        widget.grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
    }

    TempDataDir data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
};

TEST_F(DatedDeliveriesScreens, TheScheduledScreenAddsByTheCalendarAndRemembersTheBoldChoice)
{
    SettingsFile settings(appData.path());
    TFormEditScheduledDeliveries presenter(data.db(), ui, QStringLiteral("Pat Tester"), 10);
    ui::DatedDeliveriesView view(presenter, data.db(), ui, settings, QStringLiteral("Pat Tester"));
    EXPECT_EQ(view.windowTitle(), QStringLiteral("Maintain Scheduled Deliveries for Ada Lovelace"));
    EXPECT_FALSE(view.button(QStringLiteral("Delete "))->isEnabled());
    emit view.calendar()->activated(QDate(2024, 3, 12));
    emit view.calendar()->activated(QDate(2024, 3, 19));
    EXPECT_EQ(view.grid()->model()->rowCount(), 2);
    EXPECT_TRUE(view.button(QStringLiteral("Delete "))->isEnabled());
    keepPicture(view, QStringLiteral("TFormEditScheduledDeliveries"));
    view.accept();
    EXPECT_EQ(settings.readString(QStringLiteral("TFormEditScheduledDeliveries"),
                                  QStringLiteral("BoldCalendarDates")),
              QStringLiteral("Checked"));
}

TEST_F(DatedDeliveriesScreens, AutoSchedulePreviewsAndMakesThePatternsRows)
{
    SettingsFile settings(appData.path());
    TFormRecurrence presenter(data.db(), ui, QStringLiteral("Pat Tester"),
                              *DatedClient::byPersonId(data.db(), 10));
    presenter.SetDeliveryType(QStringLiteral("Scheduled"));
    presenter.setLimitIndex(int(RecurrenceLimit::None));
    ui::RecurrenceView view(presenter, settings);
    EXPECT_EQ(view.windowTitle(), QStringLiteral("Auto-Create Scheduled Deliveries"));
    EXPECT_FALSE(view.okButton()->isEnabled()) << "no start date yet";
    view.occurrences()->setValue(5); // selects "End after:" and starts today
    EXPECT_TRUE(view.okButton()->isEnabled());
    EXPECT_EQ(view.preview()->count(), 5);
    view.pages()->setCurrentIndex(1); // weekly without a weekday
    EXPECT_FALSE(view.okButton()->isEnabled());
    view.pages()->setCurrentIndex(0);
    keepPicture(view, QStringLiteral("TFormRecurrence"));
    ui.answerNext(Answer::Yes);
    view.okButton()->click();
    EXPECT_EQ(view.result(), QDialog::Accepted);
    EXPECT_EQ(
        data.db().execute(QStringLiteral("Select count(*) from EpisodicDeliveries")).value(0, 0).toInt(), 5);
}

TEST_F(DatedDeliveriesScreens, ShiftDeliveriesMovesASavedDay)
{
    SettingsFile settings(appData.path());
    const QDate tuesday(2024, 3, 5), wednesday(2024, 3, 6);
    insertRow(data.db(), QStringLiteral("Deliveri"),
              {{QStringLiteral("Deliv_ID"), 1},
               {QStringLiteral("Deliv_Dt"), tuesday},
               {QStringLiteral("DOW"), QStringLiteral("TUE")},
               {QStringLiteral("Person_ID"), 10}});
    TFormAssignDeliveriesToNewDate presenter(data.db(), ui, QStringLiteral("Pat Tester"), wednesday);
    ui::AssignDeliveriesToNewDateView view(presenter, settings);
    EXPECT_EQ(view.windowTitle(), QStringLiteral("Shift Deliveries From One Date To Another"));
    EXPECT_EQ(view.oldDateEdit()->date(), tuesday);
    EXPECT_EQ(view.newDateEdit()->date(), wednesday);
    EXPECT_TRUE(view.okButton()->isEnabled());
    view.newDateEdit()->setDate(tuesday);
    EXPECT_FALSE(view.okButton()->isEnabled()) << "the same date";
    view.newDateEdit()->setDate(wednesday);
    keepPicture(view, QStringLiteral("TFormAssignDeliveriesToNewDate"));
    ui.answerNext(Answer::Yes);
    view.okButton()->click();
    EXPECT_EQ(view.result(), QDialog::Accepted);
    EXPECT_EQ(
        data.db()
            .execute(QStringLiteral("Select count(*) from Deliveri where Deliv_Dt = :D and DOW = 'WED'"),
                     {{QStringLiteral("D"), wednesday}})
            .value(0, 0)
            .toInt(),
        1);
}

TEST_F(DatedDeliveriesScreens, CalendarItemsRetrieveAndSaveAMeal)
{
    SettingsFile settings(appData.path());
    insertRow(data.db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), 7},
               {QStringLiteral("Meal"), QStringLiteral("L")},
               {QStringLiteral("Meal_Item"), QStringLiteral("Soup")}});
    DatedDeliveries rules(data.db(), ui, QStringLiteral("Pat Tester"));
    const qint64 id =
        rules.add(*DatedClient::byPersonId(data.db(), 10), DatedKind::Scheduled, QDate(2024, 3, 8));
    TFormClientEpisodicItems presenter(data.db(), ui, QStringLiteral("Pat Tester"), 10, QDate(2024, 3, 6));
    ui::ClientEpisodicItemsView view(presenter, settings);
    EXPECT_EQ(view.windowTitle(), QStringLiteral("Calendar-Based Delivery Items"));
    view.retrieveButton()->click();
    ASSERT_EQ(view.grid()->rowCount(), 1);
    EXPECT_FALSE(view.saveButton()->isEnabled());
    auto* lunch = qobject_cast<QComboBox*>(view.grid()->cellWidget(0, 5));
    ASSERT_NE(lunch, nullptr);
    lunch->setCurrentIndex(lunch->findData(7));
    qobject_cast<QSpinBox*>(view.grid()->cellWidget(0, 4))->setValue(2);
    EXPECT_TRUE(view.saveButton()->isEnabled());
    keepPicture(view, QStringLiteral("TFormClientEpisodicItems"));
    view.saveButton()->click();
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("Select Quantity from DefDels where Deliv_ID = :D and Item_ID = 7"),
                           {{QStringLiteral("D"), id}})
                  .value(0, 0)
                  .toInt(),
              2);
    view.reject(); // nothing left to ask about
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Question).isEmpty());
}

TEST_F(DatedDeliveriesScreens, SetDeliveryItemsOpensTheRowsOwnList)
{
    SettingsFile settings(appData.path());
    insertRow(data.db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), 7}, {QStringLiteral("Meal_Item"), QStringLiteral("Soup")}});
    insertRow(data.db(), QStringLiteral("Defdels"),
              {{QStringLiteral("Person_ID"), 0},
               {QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Del_Day"), QStringLiteral("FRI")},
               {QStringLiteral("Item_ID"), 7},
               {QStringLiteral("Quantity"), 1},
               {QStringLiteral("Sort_Order"), 1}});
    TFormEditScheduledDeliveries dated(data.db(), ui, QStringLiteral("Pat Tester"), 10);
    dated.ActionAddDelivery(QDate(2024, 3, 8));
    {
        ui::DatedDeliveriesView datedView(dated, data.db(), ui, settings, QStringLiteral("Pat Tester"));
        EXPECT_TRUE(datedView.button(QStringLiteral("Set Delivery Items"))->isEnabled());
        EXPECT_EQ(datedView.button(QStringLiteral("Set Delivery Items"))->toolTip(),
                  QStringLiteral("Ctrl+I"));
    }
    RecordServices services(data.db(), ui);
    const std::unique_ptr<TFormSetEpisodicItems> presenter = dated.ActionSetItems(services);
    ASSERT_TRUE(presenter);
    ui::SetEpisodicItemsView view(*presenter, settings);
    EXPECT_TRUE(view.windowTitle().startsWith(QStringLiteral("Scheduled Items for ")))
        << view.windowTitle().toStdString();
    EXPECT_FALSE(view.services()->isEnabled());
    EXPECT_FALSE(view.button(QStringLiteral("Dupe Monday"))->isVisibleTo(&view));
    ASSERT_EQ(view.comparison()->rowCount(), 1);
    EXPECT_EQ(view.comparison()->item(0, 1)->text(), QStringLiteral("Soup"));
    EXPECT_EQ(view.grid()->rowCount(), 0);
    EXPECT_FALSE(view.button(QStringLiteral("Clear Selected Day of All Items"))->isEnabled());
    view.button(QStringLiteral("Copy Selected Day from Defaults"))->click();
    EXPECT_EQ(view.grid()->rowCount(), 1);
    view.button(QStringLiteral("Add Item"))->click();
    EXPECT_EQ(view.grid()->rowCount(), 2);
    EXPECT_TRUE(view.button(QStringLiteral("Clear Selected Day of All Items"))->isEnabled());
    keepPicture(view, QStringLiteral("TFormSetEpisodicItems"));
    view.accept();
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("Select count(*) from DefDels where Deliv_ID = :D"),
                           {{QStringLiteral("D"), dated.dataSet().fieldValue(u"RecordID")}})
                  .value(0, 0)
                  .toInt(),
              2);

    // A user who may only read sees the lines without the commands that change them.
    data.db().setWriteRefusal(QStringLiteral("Read only"));
    ui::SetEpisodicItemsView readOnly(*presenter, settings);
    EXPECT_EQ(readOnly.grid()->rowCount(), 2);
    for (const char* command : {"Add Item", "Delete Item", "Move Up", "Clear Selected Day of All Items",
                                "Copy Selected Day from Defaults"})
        EXPECT_FALSE(readOnly.button(QString::fromLatin1(command))->isVisibleTo(&readOnly)) << command;
    EXPECT_TRUE(readOnly.button(QStringLiteral("Close"))->isVisibleTo(&readOnly));
    data.db().setWriteRefusal({});
}

} // namespace
