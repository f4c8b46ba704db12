// The screens over a demo agency, offscreen: the sign-in dialog and the run
// screen preparing a run. The client window has tests of its own.

#include "WidgetApplication.h"
#include "DemoAgency.h"
#include "PasswordDialog.h"
#include "RunPrepareView.h"
#include "ScriptedUserInterface.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/TDataModule1.h"
#include "TFormRunPrepare.h"
#include "session/TPasswordDlg.h"
#include "TempDataDir.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDateEdit>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class Shell : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { kb::test::ensureWidgetApplication(); }

    void SetUp() override
    {
        DemoOptions options;
        options.clients = 300;
        generateDemoAgency(data.db(), options);
        SessionSettings settings;
        settings.alias = data.path();
        module = std::make_unique<TDataModule1>(data.clock(), ui);
        module->start(settings, appData.path());
    }

    TempDataDir data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
    std::unique_ptr<TDataModule1> module;
};

QString activeStaffUser(Database& db)
{
    return db.execute(QStringLiteral("select User_ID from Staff where Active = True and Access_Level = 'W'"))
        .value(0, 0)
        .toString();
}

TEST_F(Shell, SignInDialogRefusesThenAccepts)
{
    TPasswordDlg presenter(module->db(), module->session(), ui);
    ui::PasswordDialog dialog(presenter);
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), "Please sign in...");
    // Wide enough for its title in a window frame.
    EXPECT_GE(dialog.width(), dialog.fontMetrics().horizontalAdvance(dialog.windowTitle()) + 120);
    EXPECT_FALSE(dialog.okButton()->isEnabled());

    dialog.nameEdit()->setText(QStringLiteral("no such user"));
    EXPECT_TRUE(dialog.okButton()->isEnabled());
    dialog.okButton()->click();
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{QStringLiteral("That User ID could not be located! Please try again...")});
    EXPECT_EQ(dialog.nameEdit()->text(), "");
    EXPECT_FALSE(dialog.okButton()->isEnabled());
    EXPECT_FALSE(dialog.signedIn());

    dialog.show();
    const QString user = activeStaffUser(module->db());
    ASSERT_FALSE(user.isEmpty());
    dialog.nameEdit()->setText(user);
    dialog.okButton()->click();
    EXPECT_TRUE(dialog.signedIn());
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(module->session().cUserName, user);
}

TEST_F(Shell, RunScreenPreparesARun)
{
    SignIn::complete(module->db(), module->session(), SignIn::lookUp(module->db(), QStringLiteral("keeperin")));
    TFormRunPrepare presenter(module->db(), module->session(), ui);
    {
        ui::RunPrepareView view(presenter, ui);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Daily Run Preparation");
        EXPECT_EQ(view.dateEdit()->date(), QDate(2024, 3, 7));
        EXPECT_EQ(view.deliveryTypeList()->count(), 5);
        EXPECT_FALSE(view.grid()->isVisible());

        view.dateEdit()->setDate(QDate(2024, 3, 11));
        EXPECT_EQ(presenter.prepareDate(), QDate(2024, 3, 11));
        view.deliveryTypeList()->setCurrentIndex(1); // Ongoing Only
        view.prepareButton()->click();
        const int rows = view.grid()->model()->rowCount();
        EXPECT_GT(rows, 0);
        EXPECT_TRUE(view.grid()->isVisible());
        EXPECT_EQ(view.clientCountLabel()->text(), QStringLiteral("Client Count: %1").arg(rows));
        EXPECT_TRUE(view.windowTitle().startsWith(QStringLiteral("Daily Run Preparation: ")));
        EXPECT_EQ(view.grid()->model()->headerData(7, Qt::Horizontal).toString(), "Client");

        // The title "Client" sorts by last name; a double click tells the client's details.
        emit view.grid()->horizontalHeader()->sectionClicked(7);
        EXPECT_EQ(presenter.model()->currentIndex(), DeliveriesIndex::Last_Name);
        emit view.grid()->doubleClicked(view.grid()->model()->index(0, 7));
        EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Information).size(), 1);
        EXPECT_EQ(module->db().execute(QStringLiteral("select count(*) from Memory MemTableDeliveries")).value(0, 0).toInt(),
                  rows);
        // The README's picture of the run screen, when KB_SCREENSHOTS is set.
        const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
        if (!dir.isEmpty()) {
            view.resize(1100, 640);
            QApplication::processEvents();
            view.grab().save(QDir(dir).filePath(QStringLiteral("run-screen.png")));
        }
    }
    // Closing the screen drops its working table.
    EXPECT_FALSE(presenter.table().exists());
}

} // namespace
