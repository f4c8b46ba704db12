// The delivery outcome screens offscreen over their real presenters: the
// Recent Deliveries list and its commands' states, Reassign Funding's OK
// following its guards and doing the work, Delete Delivery Credits and
// Client Invoices enabling OK as their rules say.

#include "InsertRow.h"
#include "Money.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"
#include "bills/TFormClientBills.h"
#include "funding/TFormReassignFunding.h"
#include "outcomes/ClientBillsView.h"
#include "outcomes/ClientLookupDialog.h"
#include "outcomes/ClientLookupField.h"
#include "outcomes/DeleteDeliveryCreditsView.h"
#include "outcomes/DeliveredItemsView.h"
#include "outcomes/ReassignFundingView.h"
#include "outcomes/RecentDeliveriesView.h"
#include "records/TFormDelDeliv.h"
#include "records/TFormDeliveries.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QKeyEvent>
#include <QTableWidget>
#include <QTimer>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::ui;

namespace {

class RecordsAndBillsViews : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { ensureWidgetApplication(); }

    void SetUp() override
    {
        session.userFullName = QStringLiteral("Dana Clerk");
        Database& db = data.db();
        insertRow(db, QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), 11},
                   {QStringLiteral("Client_ID"), QStringLiteral("C11")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Abbott")},
                   {QStringLiteral("First_Name"), QStringLiteral("Ann")},
                   {QStringLiteral("Address1"), QStringLiteral("1 Elm St")}});
        insertRow(db, QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Home Meals")},
                   {QStringLiteral("Service_Type"), QStringLiteral("D")},
                   {QStringLiteral("Mutl_Excl"), true}});
        insertRow(db, QStringLiteral("Items"),
                  {{QStringLiteral("Item_ID"), 1},
                   {QStringLiteral("Meal_Item"), QStringLiteral("Hot Lunch")},
                   {QStringLiteral("Meal"), QStringLiteral("L")},
                   {QStringLiteral("Number_Meals"), 1},
                   {QStringLiteral("Billed_Amount"), QVariant::fromValue(Money::fromUnits(42500))}});
        for (const char* code : {"AAA", "T3"})
            insertRow(db, QStringLiteral("Fundsrcs"),
                      {{QStringLiteral("Fund_CD"), QString::fromLatin1(code)},
                       {QStringLiteral("Fund_Srce"), QStringLiteral("Source ") + QLatin1String(code)}});
        for (int i = 1; i <= 3; ++i) {
            insertRow(
                db, QStringLiteral("Deliveri"),
                {{QStringLiteral("Deliv_ID"), i},
                 {QStringLiteral("Deliv_Dt"), QDate(2024, 3, i)},
                 {QStringLiteral("DOW"), QStringLiteral("FRI")},
                 {QStringLiteral("Person_ID"), 11},
                 {QStringLiteral("Client_ID"), QStringLiteral("C11")},
                 {QStringLiteral("Route_ID"), QStringLiteral("R1")},
                 {QStringLiteral("Stop"), 2.0},
                 {QStringLiteral("Delivery_Type"), QStringLiteral("OD")},
                 {QStringLiteral("Svcs_Used"), 1},
                 {QStringLiteral("Number_Meals"), 1},
                 {QStringLiteral("Diet_Descr"), QStringLiteral("LS")},
                 {QStringLiteral("Funding_Desc"), QStringLiteral("AAA")},
                 {QStringLiteral("Delivery_Status"), i == 2 ? QVariant(QStringLiteral("C")) : QVariant()}});
            insertRow(db, QStringLiteral("MealCrdt"),
                      {{QStringLiteral("Deliv_ID"), i},
                       {QStringLiteral("Person_ID"), 11},
                       {QStringLiteral("Deliv_Dt"), QDate(2024, 3, i)},
                       {QStringLiteral("Item_ID"), 1},
                       {QStringLiteral("Quantity"), i}});
        }
    }

    // With KB_SCREENSHOTS set, the window is kept as a picture there.
    static void shoot(QWidget& window, const char* name)
    {
        const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
        if (dir.isEmpty()) return;
        window.show();
        window.grab().save(QDir(dir).filePath(QString::fromLatin1(name) + QStringLiteral(".png")));
    }

    TempDataDir data;
    ScriptedUserInterface ui;
    SessionState session;
    SettingsFile settings;
};

TEST_F(RecordsAndBillsViews, RecentDeliveriesListFollowsTheRowAndComps)
{
    TFormDeliveries presenter(data.db(), session, ui);
    presenter.FormShow(11);
    RecentDeliveriesView view(presenter, settings);
    shoot(view, "recent-deliveries");
    ASSERT_EQ(view.table()->rowCount(), 3);
    EXPECT_EQ(view.table()->item(0, 0)->text(), QStringLiteral("03/03/2024"));
    EXPECT_EQ(view.table()->horizontalHeaderItem(6)->text(), QStringLiteral("Number\nof Meals"));
    EXPECT_TRUE(view.compButton()->isEnabled());
    EXPECT_FALSE(view.reverseButton()->isEnabled());
    view.table()->setCurrentCell(1, 0); // the comped one
    EXPECT_FALSE(view.compButton()->isEnabled());
    EXPECT_TRUE(view.reverseButton()->isEnabled());
    ui.answerNext(Answer::Yes);
    view.reverseButton()->click();
    EXPECT_TRUE(data.db()
                    .execute(QStringLiteral("Select Delivery_Status from Deliveri where Deliv_ID = 2"))
                    .value(0, 0)
                    .isNull());

    // The items window opens beside the list, not modal, and follows it.
    view.show();
    view.table()->setCurrentCell(0, 0); // 3 March: three Hot Lunches
    view.itemsButton()->click();
    DeliveredItemsView* items = view.itemsView();
    ASSERT_TRUE(items);
    EXPECT_TRUE(items->isVisible());
    EXPECT_EQ(items->windowModality(), Qt::NonModal);
    EXPECT_EQ(items->windowTitle(), QStringLiteral("Delivered Items"));
    ASSERT_EQ(items->table()->rowCount(), 1);
    EXPECT_EQ(items->table()->item(0, 0)->text(), QStringLiteral("03/03/2024"));
    EXPECT_EQ(items->table()->item(0, 2)->text(), QStringLiteral("3"));
    EXPECT_EQ(items->table()->item(0, 3)->text(), QStringLiteral("Hot Lunch"));
    shoot(*items, "delivered-items");
    view.table()->setCurrentCell(2, 0); // 1 March: one
    EXPECT_EQ(items->table()->item(0, 0)->text(), QStringLiteral("03/01/2024"));
    EXPECT_EQ(items->table()->item(0, 5)->text(), QStringLiteral("1"));
    // Deleting the delivery shown moves both to the next one.
    ui.answerNext(Answer::Yes);
    view.deleteButton()->click();
    ASSERT_EQ(view.table()->rowCount(), 2);
    EXPECT_EQ(items->table()->item(0, 0)->text(),
              view.table()->item(view.table()->currentRow(), 0)->text());
    // Closed, it stays out of the way; the button shows it again.
    items->close();
    EXPECT_FALSE(items->isVisible());
    view.itemsButton()->click();
    EXPECT_TRUE(items->isVisible());
    EXPECT_EQ(view.itemsView(), items);
}

TEST_F(RecordsAndBillsViews, ReassignFundingOkFollowsTheGuards)
{
    TFormReassignFunding presenter(data.db(), session, ui);
    ReassignFundingView view(presenter, settings);
    EXPECT_FALSE(view.okButton()->isEnabled());
    view.clientField()->setClient(presenter.clientLookup().client(11));
    EXPECT_EQ(view.clientField()->edit()->text(), QStringLiteral("Abbott, Ann  [C11]"));
    view.serviceBox()->setCurrentIndex(1);
    view.startEdit()->setDate(QDate(2024, 3, 1));
    view.endEdit()->setDate(QDate(2024, 3, 2));
    EXPECT_FALSE(view.okButton()->isEnabled());
    view.reassignButton()->setChecked(true);
    EXPECT_FALSE(view.okButton()->isEnabled());
    view.fundingBox()->setCurrentIndex(2);
    EXPECT_TRUE(view.okButton()->isEnabled());
    shoot(view, "reassign-funding");
    ui.answerNext(Answer::Yes);
    view.okButton()->click();
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("Select Count(*) from Deliveri where Funding_Desc = 'T3'"))
                  .value(0, 0)
                  .toInt(),
              2);
}

TEST_F(RecordsAndBillsViews, DeleteCreditsAndClientInvoicesEnableOk)
{
    TFormDelDeliv deletion(data.db(), session, ui);
    DeleteDeliveryCreditsView deleteView(deletion, settings);
    EXPECT_FALSE(deleteView.okButton()->isEnabled());
    deleteView.findChild<QDateEdit*>()->setDate(QDate(2024, 3, 1));
    const auto boxes = deleteView.findChildren<QComboBox*>();
    for (QComboBox* box : boxes)
        if (box->count() > 1) box->setCurrentIndex(1);
    EXPECT_TRUE(deleteView.okButton()->isEnabled());
    shoot(deleteView, "delete-delivery-credits");

    TFormClientBills bills(data.db(), session, ui, settings);
    bills.FormShow();
    ClientBillsView billsView(bills, settings);
    EXPECT_FALSE(billsView.okButton()->isEnabled());
    EXPECT_FALSE(billsView.pledgeBox()->isVisibleTo(&billsView));
    billsView.methodBox()->setCurrentIndex(1);
    EXPECT_TRUE(billsView.pledgeBox()->isVisibleTo(&billsView));
    billsView.fileEdit()->setText(QStringLiteral("invoices.txt"));
    EXPECT_TRUE(billsView.okButton()->isEnabled());
    shoot(billsView, "client-bills");
}

TEST_F(RecordsAndBillsViews, ClientLookupFindsByNameAndNumberAndChooses)
{
    Database& db = data.db();
    const std::pair<const char*, const char*> names[] = {
        {"Baker", "Bo"}, {"baker", "Al"}, {"Cole", "Cy"}, {"Dunn", "Di"}, {"Evans", "Eve"}};
    qint64 id = 20;
    for (const auto& [last, first] : names)
        insertRow(db, QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), ++id},
                   {QStringLiteral("Client_ID"), QStringLiteral("C%1").arg(id)},
                   {QStringLiteral("Last_Name"), QString::fromLatin1(last)},
                   {QStringLiteral("First_Name"), QString::fromLatin1(first)},
                   {QStringLiteral("City"), QStringLiteral("Troy")}});
    // A person without a Client_ID is no client of the look-up.
    insertRow(db, QStringLiteral("Clients"),
              {{QStringLiteral("Person_ID"), 40}, {QStringLiteral("Last_Name"), QStringLiteral("Baker")}});

    TFormDelDeliv deletion(db, session, ui);
    ClientLookupDialog dialog(deletion.clientLookup(), settings, QStringLiteral("BAK"));
    EXPECT_EQ(dialog.windowTitle(), TFormDelDeliv::clientLookupTitle());
    QAbstractItemModel* model = dialog.table()->model();
    // From the first Baker on, without regard to case: Al before Bo.
    ASSERT_EQ(model->rowCount(), 5);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("Name"));
    EXPECT_EQ(model->index(0, 0).data().toString(), QStringLiteral("baker, Al"));
    EXPECT_EQ(model->index(1, 1).data().toString(), QStringLiteral("C21"));
    EXPECT_EQ(dialog.table()->currentIndex().row(), 0);
    dialog.searchEdit()->setText(QStringLiteral("baker, b"));
    EXPECT_EQ(model->index(0, 0).data().toString(), QStringLiteral("Baker, Bo"));
    shoot(dialog, "client-lookup");
    // By number.
    dialog.searchByBox()->setCurrentIndex(1);
    dialog.searchEdit()->setText(QStringLiteral("C24"));
    EXPECT_EQ(model->index(0, 0).data().toString(), QStringLiteral("Dunn, Di"));
    EXPECT_EQ(model->rowCount(), 2);
    dialog.searchEdit()->setText(QStringLiteral("Z"));
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_FALSE(dialog.okButton()->isEnabled());
    dialog.searchEdit()->setText(QStringLiteral("C23"));
    dialog.okButton()->click();
    ASSERT_TRUE(dialog.chosen());
    EXPECT_EQ(dialog.chosen()->personId, 23);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);

    // The screen's field opens the look-up at its text and shows the choice.
    deletion.clientLookup().setSearchBy(ClientLookup::SearchBy::ClientName);
    DeleteDeliveryCreditsView view(deletion, settings);
    ClientLookupField* field = view.clientField();
    field->edit()->setText(QStringLiteral("evans"));
    QTimer::singleShot(0, [] {
        auto* open = qobject_cast<ClientLookupDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(open);
        EXPECT_EQ(open->table()->model()->index(0, 0).data().toString(), QStringLiteral("Evans, Eve"));
        open->okButton()->click();
    });
    EXPECT_TRUE(field->openLookup());
    EXPECT_EQ(field->personId(), 25);
    EXPECT_EQ(field->edit()->text(), QStringLiteral("Evans, Eve  [C25]"));
    view.findChild<QTabWidget*>()->setCurrentIndex(1);
    view.findChild<QDateEdit*>()->setDate(QDate(2024, 3, 1));
    view.findChildren<QComboBox*>().back()->setCurrentIndex(1);
    EXPECT_TRUE(view.okButton()->isEnabled());
    // Typing over the choice un-chooses it.
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(field->edit(), &typed);
    EXPECT_EQ(field->personId(), 0);
    EXPECT_FALSE(view.okButton()->isEnabled());
    field->setClient(deletion.clientLookup().client(25));
    shoot(view, "delete-delivery-credits-by-client");
}

} // namespace
