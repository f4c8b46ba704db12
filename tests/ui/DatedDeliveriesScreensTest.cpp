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
#include "routes/ReassignRoutesView.h"
#include "schedule/SetEpisodicItemsView.h"
#include "schedule/dated/AssignDeliveriesToNewDateView.h"
#include "schedule/dated/ClientEpisodicItemsView.h"
#include "schedule/dated/DatedDeliveriesView.h"
#include "schedule/dated/RecurrenceView.h"
#include "settings/SettingsFile.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>

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

TEST_F(DatedDeliveriesScreens, TheItemsColumnAndReassignRoutesOfFutureDeliveries)
{
    SettingsFile settings(appData.path());
    for (const auto& [id, name] : {std::pair{7, "Hot Meal"}, std::pair{8, "Milk"}})
        insertRow(
            data.db(), QStringLiteral("Items"),
            {{QStringLiteral("Item_ID"), id}, {QStringLiteral("Meal_Item"), QString::fromLatin1(name)}});
    insertRow(data.db(), QStringLiteral("Defdels"),
              {{QStringLiteral("Person_ID"), 0},
               {QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Del_Day"), QStringLiteral("MON")},
               {QStringLiteral("Item_ID"), 7},
               {QStringLiteral("Quantity"), 1},
               {QStringLiteral("Sort_Order"), 1}});
    TFormEditScheduledDeliveries dated(data.db(), ui, QStringLiteral("Pat Tester"), 10);
    for (const QDate& d : {QDate(2024, 3, 4), QDate(2024, 3, 11), QDate(2024, 3, 12), QDate(2024, 3, 18)})
        dated.ActionAddDelivery(d);
    ASSERT_TRUE(dated.locateDate(QDate(2024, 3, 12)));
    for (const auto& [item, quantity] : {std::pair{7, 2}, std::pair{8, 1}})
        insertRow(data.db(), QStringLiteral("Defdels"),
                  {{QStringLiteral("Person_ID"), 10},
                   {QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Del_Day"), QStringLiteral("TUE")},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity},
                   {QStringLiteral("Sort_Order"), item},
                   {QStringLiteral("Deliv_ID"), dated.dataSet().fieldValue(u"RecordID")}});
    dated.reload();
    ui::DatedDeliveriesView view(dated, data.db(), ui, settings, QStringLiteral("Pat Tester"));
    QAbstractItemModel* grid = view.grid()->model();
    const int items = grid->columnCount() - 1;
    EXPECT_EQ(grid->headerData(items, Qt::Horizontal).toString(), QStringLiteral("Items"));
    QStringList shown;
    for (int r = 0; r < grid->rowCount(); ++r)
        shown << grid->index(r, items).data().toString();
    // Newest first: a Monday with the default, the Tuesday's own lines, two Mondays.
    EXPECT_EQ(shown, (QStringList{QStringLiteral("1 \u00d7 Hot Meal"),
                                  QStringLiteral("2 \u00d7 Hot Meal, 1 \u00d7 Milk"),
                                  QStringLiteral("1 \u00d7 Hot Meal"), QStringLiteral("1 \u00d7 Hot Meal")}));
    EXPECT_TRUE(
        grid->index(0, items).data(Qt::ToolTipRole).toString().contains(QStringLiteral("for Monday")));
    keepPicture(view, QStringLiteral("TFormEditScheduledDeliveriesItems"));

    // Reassign Routes: Mondays from today on go to R2; the past Monday and the Tuesday stay.
    QPushButton* reassign = view.button(QStringLiteral("Reassign Routes"));
    ASSERT_TRUE(reassign);
    EXPECT_TRUE(reassign->isEnabled());
    bool seen = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<ui::ReassignRoutesView*>(QApplication::activeModalWidget());
        if (!dialog) return;
        seen = true;
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Reassign Routes of Future Deliveries"));
        EXPECT_EQ(dialog->routeList()->currentText(), QStringLiteral("R1 - Route R1"));
        EXPECT_FALSE(dialog->okButton()->isEnabled());
        dialog->dayMenu()->actions().at(3)->trigger(); // "Check Weekend Days"
        EXPECT_TRUE(dialog->dayBox(5)->isChecked() && dialog->dayBox(6)->isChecked());
        dialog->dayMenu()->actions().at(0)->trigger(); // "Uncheck All Days"
        EXPECT_FALSE(dialog->dayBox(5)->isChecked());
        dialog->dayBox(0)->setChecked(true);
        dialog->routeList()->setCurrentText(QStringLiteral("R2 - Route R2"));
        EXPECT_TRUE(dialog->okButton()->isEnabled());
        keepPicture(*dialog, QStringLiteral("TFormReassignScheduledAndEpisodicRoutes"));
        dialog->okButton()->click();
    });
    reassign->click();
    EXPECT_TRUE(seen);
    QStringList routes;
    const int routeColumn = 2;
    EXPECT_EQ(grid->headerData(routeColumn, Qt::Horizontal).toString(), QStringLiteral("Route"));
    for (int r = 0; r < grid->rowCount(); ++r)
        routes << grid->index(r, routeColumn).data().toString().trimmed();
    EXPECT_EQ(routes, (QStringList{"R2", "R1", "R2", "R1"})) << "the grid shows the moved rows";
}

} // namespace
