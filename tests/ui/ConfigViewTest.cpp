// "System Configuration", "User Preferences", the visible fields and the
// log-ins, offscreen over real presenters on a demo agency: a value typed and
// saved, the preferences kept, the menus as each level sees them. With
// KB_SCREENSHOTS set to a folder the screens are also saved there as
// pictures, for looking at them under a real display.

#include "ConfigView.h"
#include "DemoAgency.h"
#include "DisplayLoginsView.h"
#include "clientwindow/MainWindow.h"
#include "window/TFormClients.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "VisibleFieldsView.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/TDataModule1.h"
#include "session/TFormDisplayLogins.h"
#include "settings/SettingsFile.h"
#include "settings/TFormEditConfig.h"
#include "settings/TVisibleFieldsDlg.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <gtest/gtest.h>

#include <functional>

using namespace kb;
using namespace kb::test;
using Kind = ScriptedUserInterface::Kind;
using Command = TFormEditConfig::Command;

namespace {

void screenshot(QWidget& widget, const QString& name)
{
    const QString folder = qEnvironmentVariable("KB_SCREENSHOTS");
    if (folder.isEmpty()) return;
    QApplication::processEvents();
    widget.grab().save(QDir(folder).filePath(name + QStringLiteral(".png")));
}

class ConfigViews : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static int argc = 1;
        static char name[] = "ui_tests";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance()) new QApplication(argc, argv);
    }

    void SetUp() override
    {
        DemoOptions options;
        options.clients = 60;
        generateDemoAgency(data.db(), options);
    }
    void TearDown() override
    {
        if (module) module->shutdown();
    }

    TDataModule1& signIn(const QString& level)
    {
        const QString user =
            level.isEmpty() ? SignIn::builtInUser
                            : data.db()
                                  .execute(QStringLiteral("select User_ID from Staff where Active = True and "
                                                          "Access_Level = :L order by User_ID"),
                                           {{QStringLiteral("L"), level}})
                                  .value(0, 0)
                                  .toString();
        SessionSettings settings;
        settings.alias = data.path();
        module = std::make_unique<TDataModule1>(data.clock(), ui);
        module->start(settings, appData.path());
        SignIn::complete(module->db(), module->session(), SignIn::lookUp(module->db(), user));
        module->userSignedIn();
        return *module;
    }
    QString stored(const char* text)
    {
        return data.db().execute(QString::fromLatin1(text)).value(0, 0).toString();
    }

    TempDataDir data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
    std::unique_ptr<TDataModule1> module;
};

TEST_F(ConfigViews, SystemConfigurationSavesATypedValueOnClose)
{
    TDataModule1& m = signIn(QStringLiteral("W"));
    TFormEditConfig presenter(m);
    ASSERT_TRUE(presenter.open());
    ui::ConfigView view(presenter);
    view.show();
    EXPECT_EQ(view.windowTitle(), "System Configuration");
    QStringList titles;
    for (int i = 0; i < view.pages()->count(); ++i)
        titles.append(view.pages()->tabText(i));
    EXPECT_EQ(titles, (QStringList{"Organization Defaults", "Application Defaults", "User-Defined Fields",
                                   "Meal Deliveries", "Nutritional Counseling", "Client Services",
                                   "Case Management", "User Preferences", "System Users"}));
    screenshot(view, QStringLiteral("config-organization"));

    auto* name = qobject_cast<QLineEdit*>(view.editor(QStringLiteral("ORGANIZATN")));
    ASSERT_NE(name, nullptr);
    EXPECT_FALSE(name->text().isEmpty());
    name->selectAll();
    name->insert(QStringLiteral("Riverside Meals, Inc."));
    auto* label = qobject_cast<QLineEdit*>(view.editor(QStringLiteral("NO_DELIVERY_LABEL")));
    label->selectAll();
    label->insert(QStringLiteral("No \"delivery\""));
    // The meals list follows the line items choice.
    auto* items = qobject_cast<QComboBox*>(view.editor(QStringLiteral("DELIV_REPORT_SHOW_ITEMS")));
    ASSERT_NE(items, nullptr);
    view.pages()->setCurrentIndex(3);
    items->setCurrentIndex(items->findData(QStringLiteral("M")));
    emit items->activated(items->currentIndex());
    EXPECT_TRUE(presenter.mealsListVisible());
    screenshot(view, QStringLiteral("config-meals"));
    view.pages()->setCurrentIndex(1);
    screenshot(view, QStringLiteral("config-application"));
    view.pages()->setCurrentIndex(4);
    QTableWidget* events = view.eventDefaultsGrid();
    ASSERT_GT(events->rowCount(), 0);
    const QString eventId = events->item(0, 0)->text();
    events->item(0, 3)->setText(QStringLiteral("4"));
    screenshot(view, QStringLiteral("config-counseling"));
    view.pages()->setCurrentIndex(6);
    screenshot(view, QStringLiteral("config-case-management"));
    EXPECT_TRUE(view.commandButton(int(Command::SetDefaultItems))->isEnabled());
    EXPECT_FALSE(view.commandButton(int(Command::SetIntakeDocuments))->isEnabled());
    EXPECT_TRUE(view.commandButton(int(Command::ShowLogIns))->isEnabled());

    ui.answerNext(Answer::Yes);
    view.commandButton(int(Command::Close))->click();
    EXPECT_FALSE(view.isVisible());
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{"Save your changes to the data before closing this window?"});
    EXPECT_EQ(stored("select ORGANIZATN from Config"), "Riverside Meals, Inc.");
    EXPECT_EQ(stored("select NO_DELIVERY_LABEL from Config"), "No  delivery ");
    EXPECT_EQ(stored("select DELIV_REPORT_SHOW_ITEMS from Config"), "M");
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select DEFAULT_SESSIONS from EventCds where EVENT_ID = :E"),
                           {{QStringLiteral("E"), eventId}})
                  .value(0, 0)
                  .toInt(),
              4);
    EXPECT_TRUE(m.userSettings().formPosition(QStringLiteral("TFormEditConfig")).has_value());
}

TEST_F(ConfigViews, UserPreferencesKeepTheTabsAndTheAdministratorHasNone)
{
    TDataModule1& m = signIn(QStringLiteral("W"));
    {
        TFormEditConfig presenter(m);
        ASSERT_TRUE(presenter.open());
        ui::ConfigView view(presenter);
        view.show();
        view.pages()->setCurrentIndex(7);
        EXPECT_FALSE(view.preferencesNote()->isVisible());
        QListWidget* tabs = view.tabList();
        ASSERT_EQ(tabs->count(), 11);
        EXPECT_EQ(tabs->item(0)->text(), "Client Services");
        EXPECT_EQ(tabs->item(10)->text(), "Map");
        tabs->item(10)->setCheckState(Qt::Unchecked); // Map
        tabs->item(1)->setCheckState(Qt::Unchecked);  // Case Management
        screenshot(view, QStringLiteral("config-preferences"));
        view.pages()->setCurrentIndex(8);
        EXPECT_GT(view.usersGrid()->rowCount(), 3);
        EXPECT_EQ(view.usersGrid()->horizontalHeaderItem(0)->text(), "User ID");
        screenshot(view, QStringLiteral("config-users"));
        ui.answerNext(Answer::Yes);
        view.commandButton(int(Command::Close))->click();
    }
    EXPECT_EQ(stored("select Visible_Tabs from Staff where User_ID = (select min(User_ID) from Staff where "
                     "Active = True "
                     "and Access_Level = 'W')")
                  .toInt(),
              0x7FF & ~(1 << 10) & ~(1 << 1));
    module->shutdown();

    TDataModule1& admin = signIn(QString());
    TFormEditConfig presenter(admin);
    ASSERT_TRUE(presenter.open());
    ui::ConfigView view(presenter);
    view.show();
    view.pages()->setCurrentIndex(7);
    EXPECT_TRUE(view.preferencesNote()->isVisible());
    EXPECT_EQ(view.preferencesNote()->text(), "Preferences are not editable.");
    EXPECT_FALSE(view.tabList()->isEnabled());
    screenshot(view, QStringLiteral("config-preferences-admin"));
    view.commandButton(int(Command::Close))->click();
}

TEST_F(ConfigViews, LogInsAndVisibleFieldsOpenFromTheScreen)
{
    TDataModule1& m = signIn(QStringLiteral("W"));
    TFormDisplayLogins logins(m.db());
    ui::DisplayLoginsView loginsView(logins, ui, m.userSettings());
    loginsView.show();
    EXPECT_EQ(loginsView.windowTitle(), "User Login Activity");
    EXPECT_EQ(loginsView.grid()->rowCount(), 1);
    EXPECT_EQ(loginsView.grid()->item(0, 1)->text(), "Logged In");
    screenshot(loginsView, QStringLiteral("logins"));
    loginsView.accept();

    TVisibleFieldsDlg fields(m, VisibleFieldsList::Screening);
    ui::VisibleFieldsView fieldsView(fields, ui);
    fieldsView.show();
    EXPECT_EQ(fieldsView.windowTitle(), "Visible Fields Selection");
    const auto click = [&](const char* text) {
        for (QPushButton* b : fieldsView.findChildren<QPushButton*>())
            if (b->text() == QLatin1String(text)) b->click();
    };
    fieldsView.availableList()->setCurrentRow(3);
    click(">");
    fieldsView.availableList()->setCurrentRow(0);
    click(">");
    EXPECT_EQ(fieldsView.visibleList()->count(), 2);
    EXPECT_EQ(fieldsView.availableList()->count(), int(fields.available().size()));
    screenshot(fieldsView, QStringLiteral("visible-fields"));
    // Leaving with changes asks first; No keeps the screen open.
    ui.clear();
    fieldsView.reject();
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{ui::VisibleFieldsView::discardQuestion()});
    EXPECT_TRUE(fieldsView.isVisible());
    fieldsView.accept();
    EXPECT_EQ(stored("select ADL_VISIBLE_FIELDS from Config").count(u'\n'), 1);
}

TEST_F(ConfigViews, TheMenusFollowTheAccessLevel)
{
    const auto window = [&](const char* level, const std::function<void(ui::MainWindow&)>& check) {
        TDataModule1& m = signIn(QString::fromLatin1(level));
        TFormClients form(m, ui);
        form.create();
        ui::MainWindow w(form, ui);
        form.firstShow();
        w.showUser();
        check(w);
        module->shutdown();
    };
    window("W", [](ui::MainWindow& w) {
        EXPECT_TRUE(w.action(QStringLiteral("TFormEditConfig"))->isEnabled());
        EXPECT_TRUE(w.menu(QStringLiteral("Edit/Table Maintenance"))->isEnabled());
        EXPECT_TRUE(w.menu(QStringLiteral("Edit"))->menuAction()->isVisible());
    });
    window("R", [](ui::MainWindow& w) {
        EXPECT_FALSE(w.menu(QStringLiteral("Edit/Table Maintenance"))->isEnabled());
        EXPECT_FALSE(w.menu(QStringLiteral("Reports/Process"))->isEnabled());
        EXPECT_TRUE(w.menu(QStringLiteral("Edit"))->menuAction()->isVisible());
    });
    window("O", [](ui::MainWindow& w) {
        EXPECT_FALSE(w.menu(QStringLiteral("Edit"))->menuAction()->isVisible());
        EXPECT_FALSE(w.menu(QStringLiteral("Reports/Process"))->menuAction()->isVisible());
        EXPECT_FALSE(w.menu(QStringLiteral("Reports/Analyze"))->menuAction()->isVisible());
    });
}

} // namespace
