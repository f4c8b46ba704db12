// "System Configuration" driven as a user would: the rules of saving and
// closing, the list limits, the dependent fields, the user's preferences with
// the tab bit order, the component tree and the visible fields; and the data
// module around it (start-up positions, damaged settings files, closing).

#include "ModuleFixture.h"

#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "session/TFormDisplayLogins.h"
#include "settings/ComponentTree.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "settings/TFormEditConfig.h"
#include "settings/TVisibleFieldsDlg.h"

#include <QDir>
#include <QFile>

using namespace kb;
using namespace kb::test;
using Kind = ScriptedUserInterface::Kind;

namespace {

class ConfigScreen : public ModuleFixture
{
protected:
    QVariant stored(const char* column)
    {
        return ConfigRecord::read(db()).value(QString::fromLatin1(column));
    }
    QStringList lines(int n)
    {
        QStringList list;
        for (int i = 1; i <= n; ++i)
            list.append(QStringLiteral("Entry %1").arg(i));
        return list;
    }
};

TEST_P(ConfigScreen, SavingBlanksQuotesFillsServiceDaysAndKeepsTheMeals)
{
    db().execute(QStringLiteral("Update Config set DMON = null, DTUE = True, MEALS_LINE_ITEMS = 5"));
    TDataModule1& m = signIn(QStringLiteral("userW"));
    TFormEditConfig form(m);
    ASSERT_TRUE(form.open());
    EXPECT_EQ(TFormEditConfig::caption(), "System Configuration");
    EXPECT_TRUE(form.isMealChecked(0));
    EXPECT_FALSE(form.isMealChecked(1));
    EXPECT_TRUE(form.isMealChecked(2));
    EXPECT_TRUE(form.setValue(QStringLiteral("NO_DELIVERY_LABEL"), QStringLiteral("No \"meal\" 'today'")));
    form.setMealChecked(1, true);
    form.setMealChecked(6, true);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.close());
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{"Save your changes to the data before closing this window?"});
    EXPECT_EQ(stored("NO_DELIVERY_LABEL").toString(), "No  meal   today ");
    EXPECT_EQ(stored("DMON"), false);
    EXPECT_EQ(stored("DTUE"), true);
    EXPECT_EQ(stored("DSUN"), false);
    EXPECT_EQ(stored("MEALS_LINE_ITEMS").toInt(), 1 + 2 + 4 + 64);
    EXPECT_FALSE(stored("LAST_UPDATED").isNull());

    // No drops the change; closing without a change asks nothing.
    TFormEditConfig again(m);
    ASSERT_TRUE(again.open());
    EXPECT_TRUE(again.setValue(QStringLiteral("ORGANIZATN"), QStringLiteral("Dropped")));
    ui.clear();
    ui.answerNext(Answer::No);
    EXPECT_TRUE(again.close());
    EXPECT_NE(stored("ORGANIZATN").toString(), "Dropped");
    TFormEditConfig quiet(m);
    ASSERT_TRUE(quiet.open());
    ui.clear();
    EXPECT_TRUE(quiet.close());
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());
}

TEST_P(ConfigScreen, ListsOfThirtyOneEntriesPassAndLongerOnesKeepTheFocus)
{
    TDataModule1& m = signIn(QStringLiteral("userW"));
    TFormEditConfig form(m);
    ASSERT_TRUE(form.open());
    for (const char* column : {"USERDEF3", "APPUSERDEF2", "INCOME_LIST", "APP_DENIAL_REASONS"}) {
        SCOPED_TRACE(column);
        const QString name = QString::fromLatin1(column);
        ui.clear();
        form.setValue(name, lines(31).join(u'\n') + u'\n');
        EXPECT_TRUE(form.leaveMemo(name));
        form.setValue(name, lines(32).join(QLatin1String("\r\n")));
        EXPECT_FALSE(form.leaveMemo(name));
        EXPECT_EQ(ui.texts(Kind::Warning),
                  QStringList{"You may have exceeded the allowable number of items in the \r\nlist!"});
    }
    // Other memos have no limit.
    form.setValue(QStringLiteral("RELATIONSHIP_LIST"), lines(40).join(u'\n'));
    EXPECT_TRUE(form.leaveMemo(QStringLiteral("RELATIONSHIP_LIST")));
    EXPECT_EQ(TFormEditConfig::lineCount(QString()), 0);
    ui.answerNext(Answer::No);
    EXPECT_TRUE(form.close());
}

TEST_P(ConfigScreen, DependentFieldsFollowWhatTheyDependOn)
{
    TDataModule1& m = signIn(QStringLiteral("userW"));
    TFormEditConfig form(m);
    ASSERT_TRUE(form.open());
    for (int n = 1; n <= 5; ++n) {
        form.setValue(specialLabelColumn(n), QString());
        form.setValue(specialAbbrevColumn(n), QString());
    }
    EXPECT_TRUE(form.isFieldEnabled(specialLabelColumn(1)));
    EXPECT_FALSE(form.isFieldEnabled(specialLabelColumn(2)));
    form.setValue(specialAbbrevColumn(1), QStringLiteral("K"));
    form.setValue(specialLabelColumn(2), QStringLiteral("Kosher Plus"));
    form.setValue(specialLabelColumn(3), QStringLiteral("Third"));
    EXPECT_TRUE(form.isFieldEnabled(specialAbbrevColumn(3)));
    EXPECT_FALSE(form.isFieldEnabled(specialLabelColumn(4)) &&
                 form.value(specialLabelColumn(3)).toString().isEmpty());
    // Clearing meal 1 clears every meal after it.
    form.setValue(specialAbbrevColumn(1), QString());
    EXPECT_TRUE(form.value(specialLabelColumn(2)).toString().isEmpty());
    EXPECT_TRUE(form.value(specialLabelColumn(3)).toString().isEmpty());
    EXPECT_FALSE(form.isFieldEnabled(specialLabelColumn(2)));

    form.setValue(QStringLiteral("NSI_SCORE_FIELDNAME"), QString());
    EXPECT_FALSE(form.isFieldEnabled(QStringLiteral("NSI_SCORE_VALUE")));
    form.setValue(QStringLiteral("NSI_SCORE_FIELDNAME"), QStringLiteral("FOOTNSI_Score"));
    EXPECT_TRUE(form.isFieldEnabled(QStringLiteral("NSI_SCORE_VALUE")));
    EXPECT_TRUE(form.isFieldEnabled(QStringLiteral("NSI_FOLLOWUP_DAYS")));

    form.setValue(QStringLiteral("DELIV_REPORT_SHOW_ITEMS"), QStringLiteral("A"));
    EXPECT_FALSE(form.mealsListVisible());
    form.setValue(QStringLiteral("DELIV_REPORT_SHOW_ITEMS"), QStringLiteral("M"));
    EXPECT_TRUE(form.mealsListVisible());

    form.setValue(QStringLiteral("CASE_MGT_DEFAULT_LENGTH"), 1.25);
    EXPECT_EQ(form.sessionLengthWords(), "1 hour 15 minutes");
    EXPECT_EQ(TFormEditConfig::hoursInWords(2.5), "2 hours 30 minutes");
    EXPECT_EQ(TFormEditConfig::hoursInWords(0), "0 hours 0 minutes");

    EXPECT_TRUE(form.setDeliveryFont(QStringLiteral("DejaVu Sans"), 14));
    EXPECT_EQ(form.value(QStringLiteral("DELIV_DEFAULT_FONT_SIZE")).toInt(), 14);
    EXPECT_TRUE(form.choices(QStringLiteral("DSORT_ORDER")).size() > 5);
    EXPECT_EQ(form.choices(QStringLiteral("POSTAL_FORMAT")).size(), 4);
    EXPECT_TRUE(form.isEnabled(TFormEditConfig::Command::SetDefaultItems));
    EXPECT_FALSE(form.isEnabled(TFormEditConfig::Command::SetIntakeDocuments));
    EXPECT_TRUE(form.isEnabled(TFormEditConfig::Command::ShowLogIns));
    ui.answerNext(Answer::No);
    EXPECT_TRUE(form.close());
}

TEST_P(ConfigScreen, PreferencesKeepTheTabBitOrderAndAlwaysOneTab)
{
    TDataModule1& m = signIn(QStringLiteral("userW"));
    TFormEditConfig form(m);
    ASSERT_TRUE(form.open());
    UserPreferences& prefs = form.preferences();
    ASSERT_TRUE(prefs.isEditable());
    // Nothing chosen shows every page.
    EXPECT_TRUE(prefs.isTabChecked(0) && prefs.isTabChecked(10));
    for (int item = 1; item < 11; ++item)
        prefs.setTabChecked(item, false);
    EXPECT_EQ(prefs.value(QStringLiteral("Visible_Tabs")).toInt(), 1); // Client Services only
    ui.clear();
    prefs.setTabChecked(0, false);
    EXPECT_EQ(
        ui.texts(Kind::Warning),
        QStringList{"At least one tab must be selected! The first tab will now be \r\nset to be visible."});
    EXPECT_TRUE(prefs.isTabChecked(0));
    prefs.setTabChecked(10, true); // Map
    prefs.setTabChecked(2, true);  // Biographic Info
    EXPECT_EQ(prefs.value(QStringLiteral("Visible_Tabs")).toInt(), 1 | 4 | 1024);
    prefs.leaveTabList();
    QStringList offered;
    for (const Choice& c : prefs.preferredTabChoices())
        offered.append(c.text);
    EXPECT_EQ(offered, (QStringList{"Client Services\t10", "Biographic Info\t8", "Map\t0"}));
    EXPECT_EQ(prefs.preferredTabChoices()[1].value.toInt(), 8);
    prefs.setValue(QStringLiteral("DTab"), 8);
    prefs.setValue(QStringLiteral("Conserve_Resources"), QStringLiteral("Y"));
    ui.answerNext(Answer::Yes);
    ASSERT_TRUE(form.close());
    const ResultSet row = db().execute(
        QStringLiteral("select Visible_Tabs, DTab, Conserve_Resources from Staff where User_ID = 'userW'"));
    EXPECT_EQ(row.value(0, 0).toInt(), 1029);
    EXPECT_EQ(row.value(0, 1).toInt(), 8);
    EXPECT_EQ(row.value(0, 2).toString(), "Y");
}

TEST_P(ConfigScreen, TheBuiltInAdministratorHasNoPreferences)
{
    TDataModule1& m = signIn(QStringLiteral("keeperin"));
    TFormEditConfig form(m);
    ASSERT_TRUE(form.open());
    EXPECT_FALSE(form.preferences().isEditable());
    EXPECT_EQ(UserPreferences::notEditableText(), "Preferences are not editable.");
    EXPECT_FALSE(form.preferences().setValue(QStringLiteral("DTab"), 3));
    // The agency's settings stay editable for the administrator.
    EXPECT_TRUE(form.setValue(QStringLiteral("ORGANIZATN"), QStringLiteral("Admin's Agency")));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.close());
    EXPECT_EQ(stored("ORGANIZATN").toString(), "Admin's Agency");
    EXPECT_EQ(form.systemUsers().rowCount(), 4);
    EXPECT_EQ(form.systemUsers().columnName(5), "PreferredTab");
}

TEST_P(ConfigScreen, TheComponentTreeIsSavedOnLeavingAndRepopulatedByText)
{
    TDataModule1& m = signIn(QStringLiteral("userW"));
    TFormEditConfig form(m);
    ASSERT_TRUE(form.open());
    const ComponentTree& tree = form.componentTree();
    int ssn = -1;
    int income = -1;
    for (int i = 0; i < tree.nodes().size(); ++i) {
        if (tree.nodes()[i].text == QLatin1String("Social Security Number")) ssn = i;
        if (tree.nodes()[i].text == QLatin1String("[Income]")) income = i;
    }
    ASSERT_GE(ssn, 0);
    ASSERT_GE(income, 0);
    EXPECT_EQ(tree.nodes()[ssn].level, 2);
    form.setComponentChecked(ssn, false);
    form.setComponentChecked(income, false);
    form.leaveComponentTree();
    ui.answerNext(Answer::Yes);
    ASSERT_TRUE(form.close());

    const ComponentTree saved = ComponentTree::fromText(stored("VISIBLE_COMPONENTS").toString());
    EXPECT_FALSE(saved.isVisible(QStringLiteral("Social Security Number")));
    EXPECT_FALSE(saved.isVisible(QStringLiteral("Income Sources"))); // under an unchecked heading
    EXPECT_TRUE(saved.isVisible(QStringLiteral("Date of Birth")));
    EXPECT_TRUE(saved.isVisible(QStringLiteral("Not a node")));
    // An old tree without some nodes: rebuilding adds them checked and keeps the rest.
    ComponentTree old(
        {{QStringLiteral("[Client Address]"), 0, true}, {QStringLiteral("Organization Client"), 1, false}});
    const ComponentTree rebuilt = old.repopulated();
    EXPECT_EQ(rebuilt.nodes().size(), ComponentTree::standard().nodes().size());
    EXPECT_FALSE(rebuilt.isVisible(QStringLiteral("Organization Client")));
    EXPECT_TRUE(rebuilt.isVisible(QStringLiteral("Cross Street")));
    EXPECT_EQ(ComponentTree::fromText(QStringLiteral("garbage\n\x01\t\t")).nodes().size(),
              ComponentTree::standard().nodes().size());
}

TEST_P(ConfigScreen, VisibleFieldsAreSavedInOrderAndBadLinesAreTold)
{
    TDataModule1& m = signIn(QStringLiteral("userW"));
    {
        TVisibleFieldsDlg dialog(m, VisibleFieldsList::Assessments);
        EXPECT_EQ(TVisibleFieldsDlg::caption(), "Visible Fields Selection");
        ASSERT_GT(dialog.available().size(), 3);
        EXPECT_TRUE(dialog.visible().isEmpty());
        dialog.showField(2);
        dialog.showField(0);
        dialog.moveUp(1);
        dialog.modifyLabel(0, QStringLiteral("First\tShown"), 7);
        EXPECT_TRUE(dialog.information(0).contains(QLatin1String("Tag: 7")));
        ASSERT_TRUE(dialog.accept());
    }
    const QStringList memo = stored("ASSESSMENT_VISIBLE_FIELDS").toString().split(u'\n');
    ASSERT_EQ(memo.size(), 2);
    EXPECT_TRUE(memo[0].startsWith(QLatin1String("First Shown\t")));
    EXPECT_TRUE(memo[0].endsWith(QLatin1String("\t7")));

    const QList<VisibleField> fields = {{QStringLiteral("RecordID"), QStringLiteral("RecordID")},
                                        {QStringLiteral("Staff_ID"), QStringLiteral("Staff")},
                                        {QStringLiteral("Person_ID"), QStringLiteral("Person")},
                                        {QStringLiteral("Weight"), QStringLiteral("Weight")}};
    ui.clear();
    const QList<VisibleField> laid = TVisibleFieldsDlg::SetFieldVisibility(
        fields, QStringLiteral("Pounds\tweight \t3\nWho\tNoSuchField\t0\nBy\tSTAFF_ID\t0\nP\tPerson_ID\t0"),
        VisibleFieldsList::Assessments, ui);
    EXPECT_EQ(ui.texts(Kind::Error),
              QStringList{
                  "An error was encountered while setting the visibility of\r\nNoSuchField\r\nThe Assessment "
                  "Visible Fields list may have a bad field name in it."});
    ASSERT_EQ(laid.size(), 4);
    EXPECT_EQ(laid[0].name, "Weight");
    EXPECT_EQ(laid[0].label, "Pounds");
    EXPECT_EQ(laid[0].tag, 3);
    EXPECT_TRUE(laid[0].visible);
    EXPECT_EQ(laid[1].name, "Staff_ID");
    EXPECT_TRUE(laid[1].visible); // shows among the assessments despite its "_ID"
    EXPECT_EQ(laid[2].name, "Person_ID");
    EXPECT_FALSE(laid[2].visible);
    EXPECT_FALSE(laid[3].visible); // RecordID, not listed
    const QList<VisibleField> screening = TVisibleFieldsDlg::SetFieldVisibility(
        fields, QStringLiteral("By\tSTAFF_ID\t0"), VisibleFieldsList::Screening, ui);
    EXPECT_FALSE(screening[0].visible);
}

TEST_P(ConfigScreen, TheModuleOpensItsDataAndSurvivesADamagedSettingsFile)
{
    db().execute(QStringLiteral("Update Config set DSORT_ORDER = 'LAST_FIRST'"));
    db().execute(QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name, First_Name) values "
                                "(1, '1', 'Zed', 'A'), (2, '2', 'Abel', 'B')"));
    db().execute(QStringLiteral("Update Staff set DSort_Order = 'CLIENT_ID' where User_ID = 'userA'"));
    QDir().mkpath(appData.filePath(QStringLiteral("Kettlebrook")));
    const QString ini = appData.filePath(QStringLiteral("Kettlebrook/Kettbrk.ini"));
    {
        QFile file(ini);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray("[Form_Positions]\nTFormEditConfig=1,2,3,4\n[Half\n\x00\x01\x02\xff", 48));
    }
    TDataModule1& m = signIn(QStringLiteral("userW"));
    for (const QString& table : TDataModule1::startupTables())
        EXPECT_TRUE(m.table(table).isActive()) << table.toStdString();
    for (const QString& query : TDataModule1::longLivedQueries())
        EXPECT_TRUE(m.query(query).isActive()) << query.toStdString();
    EXPECT_EQ(m.clients().indexName(), "LAST_FIRST");
    EXPECT_EQ(m.clients().fieldValue(u"Last_Name").toString(), "Abel");
    EXPECT_EQ(m.userSettings().formPosition(QStringLiteral("TFormEditConfig")), QRect(1, 2, 3, 4));
    m.userSettings().setFormPosition(QStringLiteral("TFormDisplayLogins"), QRect(5, 6, 700, 500));

    // An unsaved client at closing: Yes posts.
    m.clients().edit();
    m.clients().setFieldValue(u"First_Name", QStringLiteral("Changed"));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(m.closeQuery());
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{"Save your changes to the data before closing this window?"});
    m.shutdown();
    module.reset();
    EXPECT_EQ(db().execute(QStringLiteral("select First_Name from Clients where Person_ID = 2")).value(0, 0),
              "Changed");
    QFile rewritten(ini);
    ASSERT_TRUE(rewritten.open(QIODevice::ReadOnly));
    const QByteArray text = rewritten.readAll();
    EXPECT_EQ(text, "[Form_Positions]\nTFormEditConfig=1,2,3,4\nTFormDisplayLogins=5,6,700,500\n");

    // The user's own index wins over the agency's.
    TDataModule1& a = signIn(QStringLiteral("userA"));
    EXPECT_EQ(a.clients().indexName(), "CLIENT_ID");
    EXPECT_EQ(a.clients().fieldValue(u"Last_Name").toString(), "Zed");
}

TEST_P(ConfigScreen, ClosingRunsTheUsersClosingStatementAndShowsTheLogIns)
{
    db().execute(QStringLiteral("Insert into Queries (Query_Name, Query_Lines) values ('EXECUTE_ON_CLOSE', "
                                "'Update Config set ORG_PHONE = ''555-0100''')"));
    db().execute(
        QStringLiteral("Update Staff set Execute_OnClose_Query = True where User_ID in ('userW', 'userR')"));
    // A read-only user's closing statement is refused like any change, and closing goes on.
    signIn(QStringLiteral("userR"));
    module->shutdown();
    module.reset();
    EXPECT_TRUE(stored("ORG_PHONE").toString().isEmpty());
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"You have read-only access: the data cannot be changed."});
    signIn(QStringLiteral("userO"));
    module->shutdown();
    module.reset();
    EXPECT_TRUE(stored("ORG_PHONE").toString().isEmpty());
    TDataModule1& m = signIn(QStringLiteral("userW"));
    m.shutdown();
    EXPECT_EQ(stored("ORG_PHONE").toString(), "555-0100");

    TFormDisplayLogins logins(db());
    logins.refresh();
    EXPECT_EQ(logins.rows().rowCount(), 6); // three users in and out today
    int out = 0;
    for (qsizetype r = 0; r < logins.rows().rowCount(); ++r)
        out += logins.rows().value(r, 3).toString() == QLatin1String("Logged Out");
    EXPECT_EQ(out, 3);
}

INSTANTIATE_TEST_SUITE_P(Stores, ConfigScreen, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
