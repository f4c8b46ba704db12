// The page grids of the client window typed into in their cells, offscreen
// over the real window and page queries: a funding use chosen in its cell
// and saved with Enter, its method bringing up the item rate groups, and a
// second source on the same days refused with the cursor kept on it, and
// the time method's rate and period typed in their group beside the grid.

#include "ClientWindowViewFixture.h"

#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/MainWindow.h"
#include "clientwindow/PageGridModel.h"
#include "dataset/QueryDataSet.h"
#include "funding/FundingTerms.h"
#include "funding/FundingUses.h"
#include "rules/ModuleClientRules.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/TFormClients.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

using namespace kb;
using namespace kb::test;
namespace cmd = client_command;

namespace {

class PageGridCells : public ClientWindowViewFixture
{
protected:
    void SetUp() override
    {
        ModuleFixture::SetUp();
        if (!data) return;
        insertRow(db(), QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Home Meals")},
                   {QStringLiteral("Service_Type"), QStringLiteral("D")}});
        for (const auto& [id, code, name] :
             {std::tuple{1, "MOW", "Meals Fund"}, std::tuple{2, "T3", "Title III"}})
            insertRow(db(), QStringLiteral("Fundsrcs"),
                      {{QStringLiteral("Fund_ID"), id},
                       {QStringLiteral("Fund_CD"), QString::fromLatin1(code)},
                       {QStringLiteral("Fund_Srce"), QString::fromLatin1(name)}});
        insertRow(db(), QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), 1},
                   {QStringLiteral("Client_ID"), QStringLiteral("101.0")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Ames")},
                   {QStringLiteral("First_Name"), QStringLiteral("Ann")},
                   {QStringLiteral("Status"), QStringLiteral("A")},
                   {QStringLiteral("Svcs_Used"), 1}});
        insertRow(db(), QStringLiteral("Pricing"),
                  {{QStringLiteral("Person_ID"), 0},
                   {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
                   {QStringLiteral("Method"), QStringLiteral("F")},
                   {QStringLiteral("Unit"), QStringLiteral("L")},
                   {QStringLiteral("Amount"), 4.5}});
    }

    // The cell editor open in the grid (editors closed before are gone).
    template <typename Editor> Editor* openEditor(QTableView* grid)
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (Editor* editor : grid->viewport()->findChildren<Editor*>())
            if (editor->isVisible()) return editor;
        return nullptr;
    }
    // Opens a cell's editor in the grid, as a double click does.
    void openCell(QTableView* grid, int row, const QString& field)
    {
        auto* model = qobject_cast<ui::PageGridModel*>(grid->model());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (int c = 0; c < model->columnCount(); ++c)
            if (model->columns()[c].field == field) {
                const QModelIndex index = model->index(row, c);
                grid->setCurrentIndex(index);
                grid->edit(index);
                QApplication::processEvents();
            }
    }
    // Picks a caption in the open drop-down of a cell.
    void choose(QTableView* grid, const QString& caption)
    {
        auto* list = openEditor<QComboBox>(grid);
        ASSERT_NE(list, nullptr);
        const int i = list->findText(caption);
        ASSERT_GE(i, 0) << caption.toStdString();
        list->setCurrentIndex(i);
        emit list->activated(i);
        QApplication::processEvents();
    }
    void press(QWidget* widget, int key)
    {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(widget, &down);
        QApplication::processEvents();
    }
    void shoot(ui::MainWindow& w, const QString& name)
    {
        const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
        if (dir.isEmpty() || GetParam() != StoreKind::SQLite) return;
        QApplication::processEvents();
        w.grab().save(QDir(dir).filePath(name));
    }
};

TEST_P(PageGridCells, AFundingUseIsChosenInItsCellsAndItsRulesDecideWhenItIsSaved)
{
    ui::MainWindow& w = openWindow(QStringLiteral("userW"));
    w.notebook()->setCurrentIndex(client_page::FundingBilling);
    w.findChild<QTabWidget*>(QStringLiteral("Funding/Billing Sheets"))->setCurrentIndex(0);
    QApplication::processEvents();
    QTableView* grid = w.fields()->grid(QStringLiteral("QueryFundUses"));
    ASSERT_NE(grid, nullptr);
    auto* clientRates = w.findChild<QGroupBox*>(ClientRatesGroup);
    auto* resulting = w.findChild<QGroupBox*>(ResultingRatesGroup);
    ASSERT_NE(clientRates, nullptr);
    ASSERT_NE(resulting, nullptr);
    EXPECT_TRUE(clientRates->isHidden());
    EXPECT_TRUE(resulting->isHidden());
    QueryDataSet& uses = form->pageData().query(QStringLiteral("QueryFundUses"));

    // "Add Funding" opens the new row's first cell: the source, by its name.
    w.fields()->button(cmd::AddFunding)->click();
    QApplication::processEvents();
    ASSERT_EQ(grid->model()->rowCount(), 1);
    choose(grid, QStringLiteral("Meals Fund (MOW)"));
    EXPECT_EQ(uses.state(), DataSet::State::Insert);
    EXPECT_EQ(uses.fieldValue(u"Fund_CD").toString(), "MOW");
    EXPECT_EQ(grid->model()->index(0, 0).data().toString(), "Meals Fund");
    shoot(w, QStringLiteral("funding-no-method.png"));

    // The method typed in its cell brings up the item rates at once.
    openCell(grid, 0, QStringLiteral("Method_Text"));
    choose(grid, QStringLiteral("Meals or Meal Items"));
    EXPECT_FALSE(clientRates->isHidden());
    EXPECT_FALSE(resulting->isHidden());
    // Sunday's box, then Enter saves the row through the rules.
    auto* model = qobject_cast<ui::PageGridModel*>(grid->model());
    int sunday = -1;
    for (int c = 0; c < model->columnCount(); ++c)
        if (model->columns()[c].field == QLatin1String("Sunday")) sunday = c;
    ASSERT_GE(sunday, 0);
    EXPECT_TRUE(model->flags(model->index(0, sunday)) & Qt::ItemIsUserCheckable);
    EXPECT_EQ(model->index(0, sunday).data(Qt::CheckStateRole).toInt(), Qt::Checked);
    ASSERT_TRUE(model->setData(model->index(0, sunday), Qt::Unchecked, Qt::CheckStateRole));
    grid->setFocus();
    press(grid, Qt::Key_Return);
    EXPECT_EQ(uses.state(), DataSet::State::Browse);
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Fund_CD = 'MOW' and "
                                   "Reimbursement_Method = 'I' and Sunday = False and Saturday = True")),
              1);
    w.fields()->button(cmd::ResultingRates)->click();
    QApplication::processEvents();
    shoot(w, QStringLiteral("funding-items.png"));

    // A second source on the same days is refused: the warning is the
    // rule's, and the cursor stays on the new row with what was chosen.
    ui.clear();
    w.fields()->button(cmd::AddFunding)->click();
    QApplication::processEvents();
    ASSERT_EQ(grid->model()->rowCount(), 2);
    choose(grid, QStringLiteral("Title III (T3)"));
    grid->setFocus();
    press(grid, Qt::Key_Return);
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::overlapText()});
    EXPECT_EQ(uses.state(), DataSet::State::Insert);
    EXPECT_EQ(grid->currentIndex().row(), 1);
    // Moving to the other row is refused the same way.
    ui.clear();
    grid->selectionModel()->setCurrentIndex(model->index(0, 0),
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QApplication::processEvents();
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::overlapText()});
    EXPECT_EQ(grid->currentIndex().row(), 1);

    // Sunday alone, paid by the day: the time rate opens for this method only.
    for (int c = 0; c < model->columnCount(); ++c)
        if (model->flags(model->index(1, c)) & Qt::ItemIsUserCheckable)
            model->setData(model->index(1, c), c == sunday ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
    auto* timeRates = w.findChild<QGroupBox*>(TimeRatesGroup);
    ASSERT_NE(timeRates, nullptr);
    EXPECT_TRUE(timeRates->isHidden());
    openCell(grid, 1, QStringLiteral("Method_Text"));
    choose(grid, QStringLiteral("Time Period"));
    EXPECT_TRUE(clientRates->isHidden());
    EXPECT_FALSE(timeRates->isHidden());
    // The rate and period are typed in their group, into the same row.
    auto* period = timeRates->findChild<QComboBox*>(QStringLiteral("Period_Text"));
    auto* rate = timeRates->findChild<QLineEdit*>(QStringLiteral("Reimbursement_Rate"));
    ASSERT_NE(period, nullptr);
    ASSERT_NE(rate, nullptr);
    EXPECT_FALSE(rate->isReadOnly());
    period->setCurrentIndex(period->findText(QStringLiteral("Day")));
    emit period->activated(period->currentIndex());
    EXPECT_EQ(uses.fieldValue(u"Reimbursement_Period").toString(), "D");
    rate->setFocus();
    for (const QChar c : QStringLiteral("6.75")) {
        QKeyEvent key(QEvent::KeyPress, c == QLatin1Char('.') ? Qt::Key_Period : Qt::Key_0 + c.digitValue(),
                      Qt::NoModifier, QString(c));
        QApplication::sendEvent(rate, &key);
    }
    EXPECT_EQ(rate->text(), "6.75");
    EXPECT_EQ(uses.state(), DataSet::State::Insert);
    EXPECT_EQ(grid->model()->index(1, 3).data().toString(), "6.75");
    press(rate, Qt::Key_Return);
    EXPECT_EQ(uses.state(), DataSet::State::Browse);
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Fund_CD = 'T3' and Sunday = True and "
                                   "Monday = False and Reimbursement_Rate = 6.75 and Reimbursement_Period = "
                                   "'D'")),
              1);
    shoot(w, QStringLiteral("funding-time.png"));
    // The grid's cell edits the same rate.
    openCell(grid, 1, QStringLiteral("Reimbursement_Rate"));
    auto* money = openEditor<QDoubleSpinBox>(grid);
    ASSERT_NE(money, nullptr);
    EXPECT_DOUBLE_EQ(money->value(), 6.75);
    press(money, Qt::Key_Escape);
    // Back on the first row, its item rates come back and the time rate goes.
    grid->selectionModel()->setCurrentIndex(model->index(0, 0),
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QApplication::processEvents();
    EXPECT_FALSE(clientRates->isHidden());
    EXPECT_TRUE(timeRates->isHidden());
    grid->selectionModel()->setCurrentIndex(model->index(1, 0),
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QApplication::processEvents();
    EXPECT_FALSE(timeRates->isHidden());
    EXPECT_EQ(rate->text(), "6.75");
}

TEST_P(PageGridCells, AnApplicationsStatusIsChosenInItsCell)
{
    ui::MainWindow& w = openWindow(QStringLiteral("userW"));
    w.notebook()->setCurrentIndex(client_page::ClientServices);
    QApplication::processEvents();
    QTableView* grid = w.fields()->grid(QStringLiteral("QueryServiceApps"));
    ASSERT_NE(grid, nullptr);
    w.fields()->button(cmd::AddApplication)->click();
    QApplication::processEvents();
    ASSERT_EQ(grid->model()->rowCount(), 1);
    // The new application opens its date first; the status is chosen by its word.
    EXPECT_NE(openEditor<QDateEdit>(grid), nullptr);
    openCell(grid, 0, QStringLiteral("Status_Text"));
    choose(grid, QStringLiteral("Pending"));
    grid->setFocus();
    press(grid, Qt::Key_Return);
    EXPECT_EQ(
        count(QStringLiteral("select count(*) from ServiceApps where Person_ID = 1 and App_Status = 'P'")),
        1);
    EXPECT_EQ(
        count(QStringLiteral("select count(*) from History where Person_ID = 1 and Event = 'Service App "
                             "created with status of Pending.'")),
        1);
    shoot(w, QStringLiteral("client-services.png"));
}

INSTANTIATE_TEST_SUITE_P(Stores, PageGridCells, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
