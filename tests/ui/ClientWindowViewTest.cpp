// The client window offscreen over a demo agency, with the client rules on
// the data module's Clients set as in the program: its menus and panes, moving
// through clients from the navigator and the list, the search, a page change,
// the status filter, and a client edited and posted through the rules. One
// test grabs the window as a picture, to check it renders with data (saved
// in KB_SCREENSHOTS when that is set).

#include "ClientWindowViewFixture.h"
#include "DemoAgency.h"
#include "ModuleFixture.h"
#include "QtClientDialogs.h"
#include "WidgetApplication.h"

#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/MainWindow.h"
#include "clientwindow/StatusFilterDialog.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "funding/FundingTerms.h"
#include "routes/AltRoutesView.h"
#include "rules/ModuleClientRules.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/TFormClients.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace kb;
using namespace kb::test;
namespace cmd = client_command;

namespace {

class ClientWindowView : public ClientWindowViewFixture
{
protected:
    void SetUp() override
    {
        ModuleFixture::SetUp();
        if (!data) return;
        DemoOptions options;
        options.clients = 300;
        generateDemoAgency(db(), options);
    }
};

QString shownText(QWidget* editor)
{
    if (auto* line = qobject_cast<QLineEdit*>(editor)) return line->text();
    if (auto* label = qobject_cast<QLabel*>(editor)) return label->text();
    return {};
}

TEST_P(ClientWindowView, TheWindowShowsTheClientsAndMovesThroughThem)
{
    ui::MainWindow& w = openWindow();
    EXPECT_EQ(w.windowTitle(), "Kettlebrook Clients");
    EXPECT_EQ(w.statusPane(1)->text(), "System Administrator");
    EXPECT_EQ(w.statusPane(2)->text(), "Filter: Off");
    EXPECT_EQ(w.clientList()->model()->rowCount(), count(QStringLiteral("select count(*) from Clients")));
    // The screens that existed before stay reachable.
    for (const QString& id : {cmd::PrepareDeliveries, cmd::OrderStopsByRoute, cmd::FindCoordinates,
                              cmd::Configuration, QStringLiteral("TFormEditStaff"), cmd::DeliveryReports,
                              cmd::DeliveryReportMessages, cmd::SpecialMeals, cmd::LabelStock,
                              cmd::PrintClientIdCard})
        EXPECT_TRUE(w.action(id)->isEnabled()) << id.toStdString();
    EXPECT_EQ(w.action(cmd::PrepareDeliveries)->shortcut(), QKeySequence(QStringLiteral("Ctrl+D")));
    // A screen still to come is there, disabled, and says so.
    QAction* notes = w.action(QStringLiteral("ActionEditNotes"));
    EXPECT_FALSE(notes->isEnabled());
    EXPECT_EQ(notes->toolTip(), "Not available yet");
    EXPECT_GE(w.menu(QStringLiteral("Edit/Table Maintenance"))->actions().size(), 21);

    // The navigator and the list move together.
    EXPECT_EQ(form->position(), 0);
    w.navigatorButton(QStringLiteral("Next"))->click();
    EXPECT_EQ(form->position(), 1);
    EXPECT_EQ(w.clientList()->currentIndex().row(), 1);
    w.clientList()->setCurrentIndex(w.clientList()->model()->index(40, 0));
    EXPECT_EQ(form->position(), 40);
    EXPECT_EQ(shownText(w.fields()->editor(QStringLiteral("LAST_NAME"))),
              form->value(QStringLiteral("LAST_NAME")).toString());
    EXPECT_EQ(w.statusPane(3)->text(), QStringLiteral("Viewing  41 of %1").arg(form->rowCount()));

    // The search finds a client as the user types.
    const QString last = db().execute(QStringLiteral("select Last_Name from Clients where Person_ID = 200"))
                             .value(0, 0)
                             .toString();
    w.searchEdit()->setText(last.left(4));
    emit w.searchEdit()->textEdited(last.left(4));
    EXPECT_TRUE(
        form->value(QStringLiteral("LAST_NAME")).toString().startsWith(last.left(4), Qt::CaseInsensitive));
    EXPECT_EQ(w.clientList()->currentIndex().row(), form->position());

    // A page change opens the page's data into its grid.
    const int person = form->value(QStringLiteral("PERSON_ID")).toInt();
    w.notebook()->setCurrentIndex(client_page::Suspensions);
    EXPECT_EQ(form->currentPage(), client_page::Suspensions);
    QTableView* suspensions = w.fields()->grid(QStringLiteral("QuerySuspends"));
    ASSERT_NE(suspensions, nullptr);
    EXPECT_EQ(suspensions->model()->rowCount(),
              count(QStringLiteral("select count(*) from Suspends where Person_ID = %1").arg(person)));
    EXPECT_TRUE(form->pageData().isOpen(QStringLiteral("QuerySuspends")));
    w.notebook()->setCurrentIndex(client_page::Map);
    EXPECT_FALSE(form->pageData().isOpen(QStringLiteral("QuerySuspends")));

    // Plug-ins put their commands in a menu of their own.
    QMenu* plugIns = w.menu(QStringLiteral("Plug-Ins"));
    EXPECT_FALSE(plugIns->menuAction()->isVisible());
    w.loadPlugIns(QStringLiteral(KB_PLUGIN_DIR));
    EXPECT_EQ(w.plugIns().loaded(), QStringList{"ExamplePlugIn"});
    EXPECT_TRUE(plugIns->menuAction()->isVisible());
    ASSERT_EQ(plugIns->actions().size(), 1);
    EXPECT_EQ(plugIns->actions().front()->text(), "Example Plug-In");
}

TEST_P(ClientWindowView, ServiceHeadingsToggleAndThePledgeMethodBringsUpItsGroup)
{
    ui::MainWindow& w = openWindow();
    // The application grids (and their buttons) are live for a client who has applied.
    for (int i = 0;
         i < form->rowCount() && count(QStringLiteral("select count(*) from ServiceApps where "
                                                      "Person_ID = %1")
                                           .arg(form->value(QStringLiteral("PERSON_ID")).toInt())) == 0;
         ++i)
        form->moveTo(i + 1);
    w.notebook()->setCurrentIndex(client_page::ClientServices);
    const QStringList grids = {QStringLiteral("QueryServiceApps"), QStringLiteral("QueryDocs"),
                               QStringLiteral("QueryConditions")};
    QPushButton* headings = w.fields()->button(cmd::ShowColumnHeadings);
    ASSERT_NE(headings, nullptr);
    EXPECT_EQ(headings->text(), "Show Column Headings");
    EXPECT_TRUE(headings->isCheckable());
    EXPECT_TRUE(headings->isChecked());
    for (const QString& g : grids)
        EXPECT_FALSE(w.fields()->grid(g)->horizontalHeader()->isHidden()) << g.toStdString();

    headings->click();
    EXPECT_FALSE(headings->isChecked());
    EXPECT_FALSE(form->serviceColumnHeadings());
    for (const QString& g : grids)
        EXPECT_TRUE(w.fields()->grid(g)->horizontalHeader()->isHidden()) << g.toStdString();
    // The choice is the user's and outlives the session.
    module->userSettings().save();
    EXPECT_FALSE(SettingsFile(QFileInfo(module->userSettings().path()).absolutePath())
                     .readBool(QStringLiteral("ClientEdit"), QStringLiteral("ServiceColumnHeadings"), true));
    w.fields()->refresh();
    EXPECT_TRUE(w.fields()->grid(grids.front())->horizontalHeader()->isHidden());

    headings->click();
    EXPECT_TRUE(headings->isChecked());
    for (const QString& g : grids)
        EXPECT_FALSE(w.fields()->grid(g)->horizontalHeader()->isHidden()) << g.toStdString();

    // "Time Period" pledges one amount; "Meals or Meal Items" pledges by item.
    w.notebook()->setCurrentIndex(client_page::FundingBilling);
    auto* amount = w.findChild<QGroupBox*>(PledgedAmountGroup);
    auto* items = w.findChild<QGroupBox*>(PledgeItemsGroup);
    ASSERT_NE(amount, nullptr);
    ASSERT_NE(items, nullptr);
    EXPECT_EQ(amount->title(), "Pledged Amount");
    EXPECT_EQ(items->title(), "Set Pledge for Specific Items");
    ASSERT_TRUE(form->setValue(QStringLiteral("PLEDGE_METHOD"), QStringLiteral("I")));
    w.fields()->refresh();
    EXPECT_TRUE(amount->isHidden());
    EXPECT_FALSE(items->isHidden());
    ASSERT_TRUE(form->setValue(QStringLiteral("PLEDGE_METHOD"), QStringLiteral("T")));
    w.fields()->refresh();
    EXPECT_FALSE(amount->isHidden());
    EXPECT_TRUE(items->isHidden());
    form->cancel();
}

TEST_P(ClientWindowView, TheStatusFilterLimitsTheList)
{
    ui::MainWindow& w = openWindow();
    ui::StatusFilterDialog dialog(form->filterForm(), &w);
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), "Limit Clients View");
    EXPECT_FALSE(dialog.suspensionList()->isEnabled());
    dialog.statusList()->setCurrentRow(1); // Stopped
    EXPECT_FALSE(dialog.suspensionList()->isEnabled());
    dialog.statusList()->setCurrentRow(0); // Active
    EXPECT_TRUE(dialog.suspensionList()->isEnabled());
    dialog.statusList()->setCurrentRow(1);
    dialog.accept();
    form->statusFilterClosed(true);
    EXPECT_EQ(w.statusPane(2)->text(), "Filter: Stopped Status");
    EXPECT_EQ(w.clientList()->model()->rowCount(),
              count(QStringLiteral("select count(*) from Clients where Status = 'S'")));
    EXPECT_EQ(w.clientList()->model()->index(0, 2).data().toString(), "Stopped");
    form->statusFilterClosed(false);
    EXPECT_EQ(w.statusPane(2)->text(), "Filter: Off");
    EXPECT_EQ(w.clientList()->model()->rowCount(), count(QStringLiteral("select count(*) from Clients")));
}

TEST_P(ClientWindowView, AClientEditedInTheWindowIsSavedThroughTheClientRules)
{
    ui::MainWindow& w = openWindow();
    // An active client with a street address.
    ASSERT_TRUE(module->clients().locate(QStringLiteral("STATUS"), QStringLiteral("A")));
    form->SetControlsState(true);
    w.showUser();
    const int person = form->value(QStringLiteral("PERSON_ID")).toInt();
    const QString oldAddress = form->value(QStringLiteral("ADDRESS1")).toString();
    auto* address = qobject_cast<QLineEdit*>(w.fields()->editor(QStringLiteral("ADDRESS1")));
    ASSERT_NE(address, nullptr);
    EXPECT_FALSE(w.navigatorButton(QStringLiteral("Post"))->isEnabled());
    address->setText(QStringLiteral("1 New Lane"));
    emit address->textEdited(address->text());
    EXPECT_TRUE(form->isEditing());
    EXPECT_EQ(w.statusPane(3)->text().section(QLatin1Char(' '), 0, 0), "Editing");
    EXPECT_TRUE(w.navigatorButton(QStringLiteral("Post"))->isEnabled());
    w.navigatorButton(QStringLiteral("Post"))->click();
    EXPECT_FALSE(form->isEditing());
    EXPECT_EQ(db().execute(QStringLiteral("select Address1 from Clients where Person_ID = %1").arg(person))
                  .value(0, 0),
              "1 New Lane");
    // The rules wrote the address history.
    EXPECT_EQ(count(QStringLiteral(
                        "select count(*) from History where Person_ID = %1 and Event = 'Old address: %2'")
                        .arg(person)
                        .arg(oldAddress)),
              1);

    // A refused save leaves the client in edit with what was typed.
    auto* dob = w.fields()->editor(QStringLiteral("DOB"));
    ASSERT_NE(dob, nullptr);
    form->setValue(QStringLiteral("DOB"), QDate(2030, 1, 1));
    ui.clear();
    w.navigatorButton(QStringLiteral("Next"))->click();
    EXPECT_TRUE(form->isEditing());
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{"You have entered a birth date that is in the future!"});
    EXPECT_EQ(form->value(QStringLiteral("PERSON_ID")).toInt(), person);
    w.navigatorButton(QStringLiteral("Cancel"))->click();
    EXPECT_FALSE(form->isEditing());
}

TEST_P(ClientWindowView, EditRoutesAndStopsSavesTheWeekdayRouteThroughTheRules)
{
    ui::MainWindow& w = openWindow();
    ASSERT_TRUE(module->clients().locate(QStringLiteral("STATUS"), QStringLiteral("A")));
    form->SetControlsState(true);
    const int person = form->value(QStringLiteral("PERSON_ID")).toInt();
    QString chosen;
    int day = -1;
    QTimer::singleShot(0, [&] {
        auto* view = qobject_cast<ui::AltRoutesView*>(QApplication::activeModalWidget());
        if (!view) return;
        for (int d = 0; d < 7 && day < 0; ++d)
            if (view->routeList(d)->isEnabled()) day = d;
        if (day >= 0) {
            view->routeList(day)->setCurrentIndex(1);
            emit view->routeList(day)->activated(1);
            chosen = view->routeList(day)->itemText(1).section(QLatin1Char('-'), 0, 0).trimmed();
        }
        view->accept();
    });
    EXPECT_TRUE(w.action(cmd::EditRoutesStops)->isEnabled());
    EXPECT_TRUE(form->run(cmd::EditRoutesStops));
    ASSERT_GE(day, 0);
    EXPECT_FALSE(form->isEditing()) << "OK saved the client";
    const char* const columns[] = {"Mon_Rte", "Tue_Rte", "Wed_Rte", "Thu_Rte",
                                   "Fri_Rte", "Sat_Rte", "Sun_Rte"};
    EXPECT_EQ(db().execute(QStringLiteral("select %1 from Clients where Person_ID = %2")
                               .arg(QLatin1String(columns[day]))
                               .arg(person))
                  .value(0, 0)
                  .toString(),
              chosen);
}

TEST_P(ClientWindowView, AReadOnlyUserSeesTheClientButChangesNothingAndReportsOnlySeesNoClient)
{
    {
        ui::MainWindow& w = openWindow(QStringLiteral("userR"));
        EXPECT_TRUE(w.header()->isVisibleTo(&w));
        EXPECT_FALSE(w.navigatorButton(QStringLiteral("Edit"))->isVisibleTo(&w));
        auto* name = qobject_cast<QLineEdit*>(w.fields()->editor(QStringLiteral("LAST_NAME")));
        ASSERT_NE(name, nullptr);
        EXPECT_TRUE(name->isReadOnly());
        EXPECT_FALSE(w.menu(QStringLiteral("Utilities"))->isEnabled());
        TearDown();
    }
    ui::MainWindow& w = openWindow(QStringLiteral("userO"));
    EXPECT_FALSE(w.header()->isVisibleTo(&w));
    EXPECT_FALSE(w.menu(QStringLiteral("Edit"))->menuAction()->isVisible());
    EXPECT_TRUE(w.menu(QStringLiteral("Reports"))->menuAction()->isVisible());
    EXPECT_FALSE(w.menu(QStringLiteral("Reports/Process"))->menuAction()->isVisible());
}

// The window rendered with data, as a picture: a check that it draws, and
// the README's picture when KB_SCREENSHOTS is set.
TEST_P(ClientWindowView, TheWindowRendersWithData)
{
    ui::MainWindow& w = openWindow();
    w.notebook()->setCurrentIndex(client_page::DeliveryRoute);
    QApplication::processEvents();
    const QImage picture = w.grab().toImage();
    ASSERT_FALSE(picture.isNull());
    EXPECT_EQ(picture.size(), w.size() * picture.devicePixelRatio());
    // A window with text on it has many colours; an empty one a few.
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 3)
        for (int x = 0; x < picture.width(); x += 3)
            colours.insert(picture.pixel(x, y));
    EXPECT_GT(colours.size(), 30);
    EXPECT_GT(w.clientList()->model()->rowCount(), 0);
    EXPECT_FALSE(shownText(w.fields()->editor(QStringLiteral("LAST_NAME"))).isEmpty());
    const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
    if (!dir.isEmpty() && GetParam() == StoreKind::SQLite) {
        picture.save(QDir(dir).filePath(QStringLiteral("client-window.png")));
        for (int page = 0; page < client_page::Count; ++page) {
            w.notebook()->setCurrentIndex(page);
            QApplication::processEvents();
            w.grab().save(QDir(dir).filePath(QStringLiteral("client-window-page%1.png").arg(page)));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientWindowView,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
