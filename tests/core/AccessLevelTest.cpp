// Access levels on real data: a read-only or reports-only user is refused by
// every write path there is, is told why, and leaves the data as it was;
// full users change it; everyone leaves the sign-in and sign-out rows.

#include "DataSetFixture.h"
#include "ModuleFixture.h"

#include "Csv.h"
#include "MessageError.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "reference/EditorScreen.h"
#include "reference/TFormDietCombinations.h"
#include "reference/TFormEditBase.h"
#include "settings/TFormEditConfig.h"
#include "settings/TVisibleFieldsDlg.h"
#include "store/DbError.h"

#include <QTextStream>

using namespace kb;
using namespace kb::test;
using Kind = ScriptedUserInterface::Kind;

namespace {

class AccessLevels : public ModuleFixture
{
protected:
    // Everything the write paths below could touch, as text.
    QString snapshot()
    {
        QString text;
        QTextStream out(&text);
        for (const char* table :
             {"Diet", "Race", "Martst", "Staff", "Config", "IDNOS", "Clients", "Cold_Bag_Usage"})
            writeCsv(out,
                     db().execute(QStringLiteral("select * from %1 order by 1").arg(QLatin1String(table))));
        writeCsv(out,
                 db().execute(QStringLiteral("select Event from History where Event not like '%logged%'")));
        out.flush();
        return text;
    }
    int historyRows(const char* like)
    {
        return db()
            .execute(QStringLiteral("select count(*) from History where Event like :E"),
                     {{QStringLiteral("E"), QString::fromLatin1(like)}})
            .value(0, 0)
            .toInt();
    }
    // The statement's error code, 0 when it ran.
    int codeOf(Database& session, const QString& text)
    {
        try {
            session.execute(text);
        } catch (const DbError& e) {
            return e.engineCode();
        }
        return 0;
    }
};

TEST_P(AccessLevels, ReadOnlyAndReportsOnlyUsersChangeNothing)
{
    db().execute(
        QStringLiteral("Insert into Diet (Diet_ID, Diet_Code, Diet_Desc) values (1, 'LS', 'Low Salt')"));
    db().execute(
        QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name) values (1, '101', 'Ames')"));
    const QString before = snapshot();

    for (const char* level : {"R", "O"}) {
        SCOPED_TRACE(level);
        ui.clear();
        TDataModule1& m = signIn(QStringLiteral("user") + QLatin1String(level));
        const QString refusal = m.session().access().refusal();
        ASSERT_FALSE(refusal.isEmpty());
        Database& session = m.db();

        // Statements of any kind against stored tables.
        const int denied = int(DbErrorCode::AccessDenied);
        EXPECT_EQ(codeOf(session, QStringLiteral("Delete from History")), denied);
        EXPECT_EQ(codeOf(session, QStringLiteral("Update Clients set Last_Name = 'X'")), denied);
        EXPECT_EQ(codeOf(session, QStringLiteral("Insert into Diet (Diet_ID, Diet_Code) values (2, 'X')")),
                  denied);
        EXPECT_EQ(codeOf(session, QStringLiteral("select * from Clients; delete from Clients")), denied);
        EXPECT_EQ(codeOf(session, QStringLiteral("Empty table Race")), denied);
        EXPECT_EQ(codeOf(session, QStringLiteral("select count(*) from Clients")), 0);
        try {
            session.execute(QStringLiteral("Delete from Staff"));
        } catch (const DbError& e) {
            EXPECT_EQ(e.message(), refusal);
        }
        // Scratch work in the session's own memory tables stays possible.
        EXPECT_EQ(codeOf(session, QStringLiteral("Create table Memory Scratch (N Integer); "
                                                 "Insert into Memory Scratch (N) values (1)")),
                  0);

        // The module's shared data sets are read-only and refuse edits.
        EXPECT_TRUE(m.clients().isReadOnly());
        EXPECT_FALSE(m.clients().canModify());
        EXPECT_EQ(engineCodeOf([&] { m.clients().edit(); }), denied);
        EXPECT_EQ(engineCodeOf([&] { m.config().edit(); }), denied);
        EXPECT_EQ(engineCodeOf([&] { m.services().GetUniqueID(QStringLiteral("PERSON_ID")); }), denied);

        // A table opened by a screen of its own refuses as well.
        {
            TableDataSet race(session, QStringLiteral("Race"));
            race.open();
            EXPECT_FALSE(race.canModify());
            EXPECT_EQ(engineCodeOf([&] { race.edit(); }), denied);
            EXPECT_EQ(engineCodeOf([&] { race.insert(); }), denied);
            EXPECT_EQ(engineCodeOf([&] { race.remove(); }), denied);
        }

        // Every code-table screen: nothing to insert or delete, typing refused with the message.
        for (const EditorScreen& screen : referenceEditorScreens()) {
            SCOPED_TRACE(screen.formName.toStdString());
            TFormEditBase form(m.services(), screen);
            ASSERT_TRUE(form.open());
            EXPECT_FALSE(form.isEnabled(TFormEditBase::Command::Insert));
            EXPECT_FALSE(form.isEnabled(TFormEditBase::Command::Delete));
            EXPECT_FALSE(form.run(TFormEditBase::Command::Insert));
            if (!form.dataSet().isEmpty() && !form.fields().isEmpty()) {
                ui.clear();
                EXPECT_FALSE(form.setValue(form.fields().last().name, QStringLiteral("1")));
                EXPECT_EQ(ui.texts(Kind::Error), QStringList{refusal});
            }
            EXPECT_TRUE(form.close());
        }
        TFormDietCombinations combinations(session, ui);
        ASSERT_FALSE(combinations.combinations().isEmpty());
        for (int i = 0; i < combinations.combinations().size(); ++i)
            combinations.setChecked(i, true);
        EXPECT_EQ(engineCodeOf([&] { combinations.createChecked(); }), denied);

        // System Configuration and the user's own preferences.
        {
            TFormEditConfig config(m);
            ASSERT_TRUE(config.open());
            ui.clear();
            EXPECT_FALSE(config.setValue(QStringLiteral("ORGANIZATN"), QStringLiteral("Changed")));
            EXPECT_EQ(ui.texts(Kind::Error), QStringList{refusal});
            EXPECT_TRUE(config.preferences().isEditable());
            EXPECT_FALSE(
                config.preferences().setValue(QStringLiteral("Conserve_Resources"), QStringLiteral("Y")));
            config.setMealChecked(3, !config.isMealChecked(3));
            EXPECT_FALSE(config.close()); // the meals could not be kept: the screen stays
            config.setMealChecked(3, !config.isMealChecked(3));
            EXPECT_TRUE(config.close());
        }
        TVisibleFieldsDlg fields(m, VisibleFieldsList::Assessments);
        fields.showAll();
        EXPECT_FALSE(fields.accept());

        m.shutdown();
        module.reset();
        EXPECT_EQ(snapshot(), before);
    }
    // Both users signed in and out all the same.
    EXPECT_EQ(historyRows("%logged into%"), 2);
    EXPECT_EQ(historyRows("%logged out%"), 2);
}

TEST_P(AccessLevels, FullUsersChangeTheDataAndMaySeeEveryCommand)
{
    for (const char* user : {"userW", "userA", "keeperin"}) {
        SCOPED_TRACE(user);
        TDataModule1& m = signIn(QString::fromLatin1(user));
        EXPECT_TRUE(m.session().access().mayChangeData());
        EXPECT_FALSE(m.clients().isReadOnly());
        TFormEditConfig config(m);
        ASSERT_TRUE(config.open());
        EXPECT_TRUE(config.setValue(QStringLiteral("ORGANIZATN"), QString::fromLatin1(user)));
        ui.answerNext(Answer::Yes);
        EXPECT_TRUE(config.close());
        m.shutdown();
        module.reset();
        EXPECT_EQ(db().execute(QStringLiteral("select ORGANIZATN from Config")).value(0, 0).toString(),
                  QString::fromLatin1(user));
    }
    EXPECT_TRUE(AccessLevel::fromCode(QStringLiteral("W")).mayEditRoutes());
    EXPECT_FALSE(AccessLevel::fromCode(QStringLiteral("A")).mayEditRoutes());
    EXPECT_TRUE(AccessLevel::fromCode(QStringLiteral("O")).reportsOnly());
    EXPECT_THROW(AccessLevel::fromCode(QStringLiteral("X")), MessageError);
}

TEST_P(AccessLevels, StaffAccessLevelIsShownButNeverTyped)
{
    TDataModule1& m = signIn(QStringLiteral("userW"));
    TFormEditBase staff(m.services(), *referenceEditorScreen(QStringLiteral("TFormEditStaff")));
    ASSERT_TRUE(staff.open());
    bool shown = false;
    for (const EditorField& f : staff.fields())
        if (f.name.compare(QLatin1String("Access_Level"), Qt::CaseInsensitive) == 0) shown = f.readOnly;
    EXPECT_TRUE(shown);
    EXPECT_FALSE(staff.setValue(QStringLiteral("Access_Level"), QStringLiteral("W")));
    EXPECT_TRUE(staff.setValue(QStringLiteral("Staff_Name"), QStringLiteral("Renamed")));
    EXPECT_TRUE(staff.run(TFormEditBase::Command::Post));
    EXPECT_TRUE(staff.close());
    EXPECT_EQ(
        db().execute(QStringLiteral("select Access_Level from Staff where User_ID = 'userR'")).value(0, 0),
        QStringLiteral("R"));
}

INSTANTIATE_TEST_SUITE_P(Stores, AccessLevels, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
