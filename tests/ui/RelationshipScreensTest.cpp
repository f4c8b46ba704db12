// The individual, relationship, related clients, list membership and
// recent stops screens offscreen, over real presenters. With
// KB_SCREENSHOTS set, each view is also saved there as a picture.

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"

#include "clients/IndividualFieldsPanel.h"
#include "clients/IndividualView.h"
#include "clients/ListMembershipView.h"
#include "clients/RecentStopsView.h"
#include "clients/RelatedClientsView.h"
#include "clients/RelationshipView.h"
#include "dataset/TableDataSet.h"
#include "individuals/TFormIndividual.h"
#include "individuals/TFormRelatedClients.h"
#include "individuals/TFormRelationship.h"
#include "lists/TFormListMembership.h"
#include "records/RecordServices.h"
#include "settings/SettingsFile.h"
#include "suspensions/TFormRecentStops.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
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

class RelationshipScreensTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { test::ensureWidgetApplication(); }
    void SetUp() override
    {
        for (int p = 1; p <= 2; ++p)
            test::insertRow(
                data.db(), QStringLiteral("Clients"),
                {{QStringLiteral("Person_ID"), p},
                 {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(p)},
                 {QStringLiteral("First_Name"), p == 1 ? QStringLiteral("Rose") : QStringLiteral("Hal")},
                 {QStringLiteral("Last_Name"), QStringLiteral("Lindqvist")},
                 {QStringLiteral("Address1"), QStringLiteral("48 Orchard Way")},
                 {QStringLiteral("City"), QStringLiteral("Millbrook")},
                 {QStringLiteral("Status"), QStringLiteral("A")}});
        test::insertRow(data.db(), QStringLiteral("Individuals"),
                        {{QStringLiteral("Indiv_ID"), 50},
                         {QStringLiteral("First_Name"), QStringLiteral("Ann")},
                         {QStringLiteral("Last_Name"), QStringLiteral("Lindqvist-Moore")},
                         {QStringLiteral("Address1"), QStringLiteral("7 Harbor Street")},
                         {QStringLiteral("City"), QStringLiteral("Eastport")},
                         {QStringLiteral("State"), QStringLiteral("ME")},
                         {QStringLiteral("Phone1_Desc"), QStringLiteral("Cell/Mobile")},
                         {QStringLiteral("Phone1"), QStringLiteral("207-555-0142")}});
        test::insertRow(data.db(), QStringLiteral("Individuals"),
                        {{QStringLiteral("Indiv_ID"), 51},
                         {QStringLiteral("Organization"), QStringLiteral("Millbrook Family Practice")}});
    }

    QTemporaryDir folder;
    SettingsFile settings{folder.path()};
    test::TempDataDir data;
    test::ScriptedUserInterface ui;
    RecordServices services{data.db(), ui};
};

} // namespace

TEST_F(RelationshipScreensTest, ARelationshipIsMadeWithItsIndividualAndListedForTheIndividual)
{
    {
        TFormRelationship form(services, ui, data.clock(), QStringLiteral("Pat Tester"), 1);
        form.EditRelationships(TFormRelationship::Mode::Add);
        ui::RelationshipView view(form, services, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Relationship");
        EXPECT_NE(view.relationshipBox()->findText(QStringLiteral("Bill-To")), -1);
        // Nothing chosen: OK keeps the screen open with the message.
        view.accept();
        EXPECT_TRUE(view.isVisible());
        EXPECT_EQ(ui.texts(test::ScriptedUserInterface::Kind::Warning),
                  QStringList{TFormRelationship::requiredText()});

        view.relationshipBox()->setCurrentText(QStringLiteral("Bill-To"));
        view.individualBox()->setCurrentIndex(view.individualBox()->findData(50));
        QLineEdit* address = view.fields()->lineEdit(QStringLiteral("ADDRESS1"));
        ASSERT_NE(address, nullptr);
        EXPECT_EQ(address->text(), "7 Harbor Street");
        EXPECT_FALSE(address->isReadOnly());
        address->setText(QStringLiteral("9 Harbor Street"));
        emit address->textEdited(address->text());
        screenshot(view, QStringLiteral("relationship"));
        view.accept();
        EXPECT_FALSE(view.isVisible());
    }
    const ResultSet saved = data.db().execute(QStringLiteral(
        "select Relationships.Relationship, Individuals.Address1 from Relationships join Individuals on "
        "Relationships.Indiv_ID = Individuals.Indiv_ID where Relationships.Person_ID = 1"));
    ASSERT_EQ(saved.rowCount(), 1);
    EXPECT_EQ(saved.value(0, 0).toString(), "Bill-To");
    EXPECT_EQ(saved.value(0, 1).toString(), "9 Harbor Street");

    TFormRelatedClients related(data.db(), 50);
    qint64 movedTo = 0;
    related.setClientMover([&](qint64 personId) { movedTo = personId; });
    ui::RelatedClientsView list(related, settings);
    list.show();
    EXPECT_EQ(list.windowTitle(), "Clients related to Ann Lindqvist-Moore");
    ASSERT_EQ(list.table()->rowCount(), 1);
    EXPECT_EQ(list.table()->item(0, 3)->text(), "Bill-To");
    screenshot(list, QStringLiteral("related-clients"));
    emit list.table()->cellDoubleClicked(0, 0);
    EXPECT_EQ(movedTo, 1);
}

TEST_F(RelationshipScreensTest, TheIndividualScreenImportsTheClient)
{
    TableDataSet individuals(data.db(), QStringLiteral("Individuals"));
    individuals.open();
    ASSERT_TRUE(individuals.locate(QStringLiteral("INDIV_ID"), 50));
    TableDataSet clients(data.db(), QStringLiteral("Clients"));
    clients.open();
    TFormIndividual form(individuals, ui, data.clock(), QStringLiteral("Pat Tester"), QStringLiteral("USA"));
    form.Edit();
    ui::IndividualView view(form, services, clients, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Related Individuals Maintenance");
    screenshot(view, QStringLiteral("individual"));
    ui.answerNext(Answer::No);
    ui.answerNext(Answer::Yes);
    ui.answerNext(Answer::No);
    auto* import = view.findChild<QPushButton*>();
    for (QPushButton* b : view.findChildren<QPushButton*>())
        if (b->text() == QLatin1String("&Import Client")) import = b;
    import->click();
    EXPECT_EQ(view.fields()->lineEdit(QStringLiteral("ADDRESS1"))->text(), "48 Orchard Way");
    EXPECT_EQ(view.fields()->lineEdit(QStringLiteral("FIRST_NAME"))->text(), "Ann");
    view.accept();
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select City from Individuals where Indiv_ID = 50"))
                  .value(0, 0)
                  .toString(),
              "Millbrook");
}

TEST_F(RelationshipScreensTest, ListMembershipsAreAddedFromTheAvailableLists)
{
    for (const auto& [id, name] : {std::pair{10, "Newsletter"}, {11, "Holiday Party"}, {12, "Volunteers"}})
        test::insertRow(data.db(), QStringLiteral("Lists"),
                        {{QStringLiteral("Record_ID"), id},
                         {QStringLiteral("List_Name"), QString::fromLatin1(name)},
                         {QStringLiteral("Reason"), QStringLiteral("LST")}});
    {
        TFormListMembership form(services, ui, data.clock(), QStringLiteral("Pat Tester"),
                                 QStringLiteral("W"),
                                 {1, QStringLiteral("1.0"), QStringLiteral("Rose Lindqvist")});
        ASSERT_TRUE(form.FormShow());
        ui::ListMembershipView view(form, services, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "List Memberships for Rose Lindqvist");
        EXPECT_EQ(view.available()->count(), 3);
        view.available()->setCurrentRow(1); // Newsletter
        view.addButton()->click();
        view.addButton()->click(); // Holiday Party, now the first
        ASSERT_EQ(view.members()->rowCount(), 2);
        EXPECT_EQ(view.available()->count(), 1);
        view.members()->item(0, 1)->setCheckState(Qt::Checked);
        screenshot(view, QStringLiteral("list-membership"));
    }
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select count(*) from List_Members where Invited = 'Y'"))
                  .value(0, 0)
                  .toInt(),
              1);
    TFormListMembership reader(services, ui, data.clock(), QStringLiteral("Pat Tester"), QStringLiteral("R"),
                               {1, QStringLiteral("1.0"), QStringLiteral("Rose Lindqvist")});
    ASSERT_TRUE(reader.FormShow());
    ui::ListMembershipView view(reader, services, settings);
    EXPECT_FALSE(view.addButton()->isVisibleTo(&view));
    EXPECT_FALSE(view.removeButton()->isVisibleTo(&view));
    EXPECT_EQ(view.members()->rowCount(), 2);
}

TEST_F(RelationshipScreensTest, TheRecentStopsScreenPrintsItsDates)
{
    QFile file(QDir(folder.path()).filePath(TFormRecentStops::templateFileName()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    TFormRecentStops form(data.db(), ui, data.clock(), folder.path());
    std::optional<TFormRecentStops::Report> printed;
    form.setPrinter([&](const TFormRecentStops::Report& report) { printed = report; });
    ui::RecentStopsView view(form, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Recent Stops and Suspensions");
    EXPECT_EQ(view.stopDateEdit()->date(), QDate(2024, 3, 6));
    EXPECT_EQ(view.recencyDateEdit()->date(), QDate(2024, 3, 5));
    screenshot(view, QStringLiteral("recent-stops"));
    view.stopDateEdit()->setDate(QDate(2024, 3, 7));
    view.printerButton()->setChecked(true);
    view.print();
    ASSERT_TRUE(printed.has_value());
    EXPECT_EQ(printed->stopDate, QDate(2024, 3, 7));
    EXPECT_EQ(printed->destination, TFormRecentStops::Destination::Printer);
}
