// The Relationships page of the client window: its buttons follow the
// user's level, and the individual chosen in the "All Individuals" grid is
// the one the commands work on.

#include "ClientWindowViewFixture.h"
#include "InsertRow.h"

#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/MainWindow.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "individuals/IndividualActions.h"
#include "rules/ModuleClientRules.h"
#include "session/TDataModule1.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/TFormClients.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>

using namespace kb;
using namespace kb::test;
namespace cmd = client_command;

namespace {

class RelationshipPage : public ClientWindowViewFixture
{
protected:
    void SetUp() override
    {
        ClientWindowViewFixture::SetUp();
        if (!data) return;
        insertRow(db(), QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), 1},
                   {QStringLiteral("Client_ID"), QStringLiteral("1.0")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Lindqvist")},
                   {QStringLiteral("First_Name"), QStringLiteral("Rose")},
                   {QStringLiteral("Status"), QStringLiteral("A")}});
        for (const auto& [id, last] : {std::pair{900, "Unrelated"}, {901, "Daughter"}})
            insertRow(db(), QStringLiteral("Individuals"),
                      {{QStringLiteral("Indiv_ID"), id},
                       {QStringLiteral("First_Name"), QStringLiteral("Ann")},
                       {QStringLiteral("Last_Name"), QString::fromLatin1(last)},
                       {QStringLiteral("Address1"), QStringLiteral("7 Harbor Street")},
                       {QStringLiteral("City"), QStringLiteral("Eastport")},
                       {QStringLiteral("State"), QStringLiteral("ME")},
                       {QStringLiteral("ZIP"), QStringLiteral("04631")}});
        insertRow(db(), QStringLiteral("Relationships"),
                  {{QStringLiteral("Person_ID"), 1},
                   {QStringLiteral("Indiv_ID"), 901},
                   {QStringLiteral("Relationship"), QStringLiteral("Daughter")}});
    }
    ui::MainWindow& openRelationships(const QString& user)
    {
        ui::MainWindow& w = openWindow(user);
        w.notebook()->setCurrentIndex(w.tabOfPage(client_page::Relationships));
        QApplication::processEvents();
        return w;
    }
    // Chooses the individual in the "All Individuals" grid.
    void choose(ui::MainWindow& w, int indivId)
    {
        DataSet& individuals = module->table(QStringLiteral("Individuals"));
        ASSERT_TRUE(individuals.locate(QStringLiteral("INDIV_ID"), indivId));
        auto* grid = w.findChild<QTableView*>(QStringLiteral("Individuals"));
        ASSERT_NE(grid, nullptr);
        grid->setCurrentIndex(grid->model()->index(individuals.recNo() - 1, 0));
        individuals.first(); // the command must take the grid's row, not the set's
    }
};

TEST_P(RelationshipPage, TheCommandsWorkOnTheIndividualChosenInTheGrid)
{
    ui::MainWindow& w = openRelationships(QStringLiteral("userW"));
    EXPECT_EQ(w.findChild<QTableView*>(QStringLiteral("QueryRelationships"))->model()->rowCount(), 1);
    for (const QString& id :
         {cmd::AddRelationship, cmd::EditRelationship, cmd::DeleteRelationship, cmd::AddIndividual,
          cmd::EditIndividual, cmd::DeleteIndividual, cmd::ShowRelatedClients}) {
        QPushButton* button = w.fields()->button(id);
        ASSERT_NE(button, nullptr) << id.toStdString();
        EXPECT_TRUE(form->hasHandler(id)) << id.toStdString();
    }

    if (const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
        !dir.isEmpty() && GetParam() == StoreKind::SQLite)
        w.grab().save(QDir(dir).filePath(QStringLiteral("client-window-relationships.png")));

    choose(w, 900);
    EXPECT_TRUE(form->run(cmd::ShowRelatedClients));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Information),
              QStringList{IndividualActions::noRelatedText()});

    // "Copy Individual" takes the chosen one's name and address.
    choose(w, 901);
    EXPECT_TRUE(form->run(cmd::CopyIndividual));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "Ann Daughter\n7 Harbor Street\nEastport, ME 04631");

    // The unrelated individual goes after OK; the grid follows.
    choose(w, 900);
    ui.answerNext(Answer::Ok);
    EXPECT_TRUE(form->run(cmd::DeleteIndividual));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Individuals where Indiv_ID = 900")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Individuals where Indiv_ID = 901")), 1);
    EXPECT_EQ(w.findChild<QTableView*>(QStringLiteral("Individuals"))->model()->rowCount(), 1);
}

TEST_P(RelationshipPage, AReadOnlyUserSeesTheRelationshipsWithoutTheirChangingButtons)
{
    ui::MainWindow& w = openRelationships(QStringLiteral("userR"));
    EXPECT_FALSE(w.fields()->button(cmd::AddRelationship)->isVisibleTo(&w));
    EXPECT_FALSE(w.fields()->button(cmd::DeleteIndividual)->isVisibleTo(&w));
    EXPECT_FALSE(form->run(cmd::DeleteIndividual));
    EXPECT_EQ(form->pageData().query(QStringLiteral("QueryRelationships")).recordCount(), 1);
    EXPECT_EQ(form->currentPage(), client_page::Relationships);
    EXPECT_EQ(form->clients().fieldValue(u"PERSON_ID").toInt(), 1);
    EXPECT_EQ(w.findChild<QTableView*>(QStringLiteral("QueryRelationships"))->model()->rowCount(), 1);
}

INSTANTIATE_TEST_SUITE_P(Stores, RelationshipPage,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
