// Special meals on real stores: the flags and Special_Diets rows each rule
// gives when a run is saved, the dialog that sets a date's rules, and the
// screens that list, add, edit and copy the dates' special meal setups.

#include "SaveFixture.h"

#include "MessageError.h"
#include "specialmeals/SpecialMealFlags.h"
#include "specialmeals/TFormBrowseSpecialMealDates.h"
#include "specialmeals/TFormCopySpecialMeals.h"
#include "specialmeals/TFormSetSpecialMeals.h"
#include "specialmeals/TableSpecialLabels.h"

#include <QLocale>

using namespace kb;
using namespace kb::test;

namespace {

class SpecialMealsTest : public SaveFixture
{
protected:
    void SetUp() override
    {
        SaveFixture::SetUp();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        const char* const descriptions[] = {"Low Sodium", "Diabetic", "Low Fat"};
        for (int i = 0; i < 3; ++i)
            db().execute(QStringLiteral("Update Diet set Diet_Desc = :Desc where Diet_ID = :Id"),
                         {{QStringLiteral("Desc"), QString::fromLatin1(descriptions[i])},
                          {QStringLiteral("Id"), i + 1}});
        setConfig(QStringLiteral("DELIV_REPORT_SHOW_SPEC_LABELS"), true);
        setConfig(QStringLiteral("SPECIAL1_LABEL"), QStringLiteral("Sugar-Free Dessert"));
        setConfig(QStringLiteral("SPECIAL2_LABEL"), QStringLiteral("Kosher"));
        setConfig(QStringLiteral("SPECIAL3_LABEL"), QStringLiteral("Low Fat"));
        setConfig(QStringLiteral("SPECIAL4_ABBREV"), QStringLiteral("S4"));
        setConfig(QStringLiteral("SPECIAL5_LABEL"), QStringLiteral("Fifth"));
    }

    // Clients with diets LS+DB (1, with his own items), DB+LF (2), LS (3),
    // none (4), and all three (5, with a scheduled delivery besides).
    void addClients()
    {
        addItem(1, QStringLiteral("Hot Lunch"), 1, 1);
        addClient(1, {{QStringLiteral("Diet_Restr"), 3}});
        addLine(1, 1, QStringLiteral("MON"), 1, 1, 1);
        addClient(2, {{QStringLiteral("Diet_Restr"), 6}});
        addClient(3, {{QStringLiteral("Diet_Restr"), 1}});
        addClient(4);
        addClient(5, {{QStringLiteral("Diet_Restr"), 7}});
        addDated(5, monday, QStringLiteral("S"));
    }

    static SpecialMealsSetup everyRule()
    {
        SpecialMealsSetup setup;
        setup.meal(1) = {QStringLiteral("I"), 0, false, QStringLiteral("Dessert")};
        setup.meal(2) = {QStringLiteral("S"), 3, false, QString()};
        setup.meal(3) = {QStringLiteral("S"), 3, true, QString()};
        setup.meal(4) = {QStringLiteral("S"), 4, false, QString()};
        setup.meal(5) = {QStringLiteral("S"), 1, true, QString()};
        return setup;
    }

    // The flags of each stored delivery: "person type:123" with 1, 2, 3 for
    // the flags that are set.
    QStringList flags()
    {
        const ResultSet rows =
            db().execute(QStringLiteral("Select Person_ID, Delivery_Type, Label_Created, Label2_Created, "
                                        "Label3_Created from Deliveri order by "
                                        "Person_ID, Delivery_Type"));
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r) {
            QString set;
            for (int f = 0; f < 3; ++f)
                if (rows.value(r, 2 + f).toBool()) set += QString::number(f + 1);
            list << QStringLiteral("%1 %2:%3")
                        .arg(rows.value(r, 0).toInt())
                        .arg(rows.value(r, 1).toString(), set);
        }
        return list;
    }

    // Special_Diets as "person meal:mask text" for every meal set.
    QStringList specialDiets()
    {
        const ResultSet rows =
            db().execute(QStringLiteral("Select * from Special_Diets order by Person_ID, Deliv_ID"));
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r) {
            QString line = QString::number(rows.value(r, QStringLiteral("Person_ID")).toInt());
            EXPECT_EQ(rows.value(r, QStringLiteral("Deliv_Dt")).toDate(), monday);
            for (int n = 1; n <= 5; ++n) {
                const QString prefix =
                    n == 1 ? QStringLiteral("Special_Diet_") : QStringLiteral("Special%1_Diet_").arg(n);
                const QVariant& mask = rows.value(r, prefix + QStringLiteral("Restr"));
                if (!mask.isNull())
                    line += QStringLiteral(" %1:%2 %3")
                                .arg(n)
                                .arg(mask.toInt())
                                .arg(rows.value(r, prefix + QStringLiteral("Descr")).toString());
            }
            list << line;
        }
        return list;
    }
};

TEST_P(SpecialMealsTest, EachRuleFlagsItsDeliveriesAndMatchAnyNamesTheMatchingDiets)
{
    addClients();
    everyRule().store(db(), monday);
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_EQ(flags(), (QStringList{"1 OD:123", "2 OD:2", "3 OD:2", "4 OD:", "5 OD:2", "5 SD:2"}));
    EXPECT_EQ(specialDiets(), (QStringList{"1 2:3 LS / DB", "2 2:2 DB 4:4 LF", "3 2:1 LS",
                                           "5 2:3 LS / DB 4:4 LF", "5 2:3 LS / DB 4:4 LF"}));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{"Filtering on All Matching Diets was attempted for Special Meal 4 or 5!"});
    // The run screen holds the rules of the save; the stored row is as it was.
    EXPECT_EQ(form().specialMeals(), everyRule());
    EXPECT_EQ(*SpecialMealsSetup::read(db(), monday), everyRule());

    // A client's rows on the date are all flagged under Match Any, also one
    // whose own diets do not match: the join goes by Person_ID.
    db().execute(QStringLiteral("Update Clients set Diet_Restr = 4 where Person_ID = 5"));
    addDated(4, monday, QStringLiteral("S"));
    db().execute(QStringLiteral("Update Clients set Diet_Restr = 2 where Person_ID = 4"));
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_EQ(flags(), (QStringList{"1 OD:123", "2 OD:2", "3 OD:2", "4 OD:2", "4 SD:2", "5 OD:", "5 SD:"}));
    EXPECT_EQ(specialDiets(), (QStringList{"1 2:3 LS / DB", "2 2:2 DB 4:4 LF", "3 2:1 LS", "4 2:2 DB",
                                           "4 2:2 DB", "5 4:4 LF", "5 4:4 LF"}));
}

TEST_P(SpecialMealsTest, WithTheFeatureOffOrTheDialogCancelledNothingIsFlagged)
{
    addClients();
    bool asked = false;
    dialogs.specialMeals = [&](TFormSetSpecialMeals& f) {
        asked = true;
        f.reject();
        return false;
    };
    setConfig(QStringLiteral("DELIV_REPORT_SHOW_SPEC_LABELS"), false);
    everyRule().store(db(), monday);
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_FALSE(asked);
    EXPECT_EQ(flags(), (QStringList{"1 OD:", "2 OD:", "3 OD:", "4 OD:", "5 OD:", "5 SD:"}));
    EXPECT_TRUE(specialDiets().isEmpty());

    // Cancelled: the stored setup stays, and nothing is flagged.
    setConfig(QStringLiteral("DELIV_REPORT_SHOW_SPEC_LABELS"), true);
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_TRUE(asked);
    EXPECT_EQ(flags(), (QStringList{"1 OD:", "2 OD:", "3 OD:", "4 OD:", "5 OD:", "5 SD:"}));
    EXPECT_TRUE(specialDiets().isEmpty());
    EXPECT_EQ(*SpecialMealsSetup::read(db(), monday), everyRule());
    EXPECT_EQ(form().specialMeals(), SpecialMealsSetup());

    // A date without a setup is cancelled without one being added.
    ASSERT_TRUE(save(tuesday)) << errors();
    EXPECT_FALSE(SpecialMealsSetup::read(db(), tuesday));

    // OK on the proposal of such a date stores the answer before the save.
    dialogs.specialMeals = [](TFormSetSpecialMeals& f) {
        EXPECT_TRUE(f.isProposal());
        EXPECT_FALSE(f.copyVisible());
        f.setDietChecked(1, 2, true);
        for (int meal = 2; meal <= 5; ++meal)
            f.setRuleIndex(meal, 0);
        return f.accept();
    };
    ASSERT_TRUE(save(tuesday)) << errors();
    const std::optional<SpecialMealsSetup> stored = SpecialMealsSetup::read(db(), tuesday);
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->meal(1), (SpecialMealRule{QStringLiteral("S"), 4, false, QString()}));
    EXPECT_EQ(stored->meal(2), SpecialMealRule());
    EXPECT_EQ(db().execute(QStringLiteral(
                               "Select Person_ID from Deliveri where Deliv_Dt = :D and Label_Created = True "
                               "order by Person_ID"),
                           {{QStringLiteral("D"), tuesday}})
                  .rowCount(),
              2); // clients 2 and 5 have Low Fat
}

TEST_P(SpecialMealsTest, TheDialogProposesFillsAndRefusesSelectedDietsWithoutADiet)
{
    TFormSetSpecialMeals form(db(), ui);
    EXPECT_EQ(form.caption(), "Set Special Meal Qualifications");
    EXPECT_EQ(form.panelCount(), 5);
    EXPECT_EQ(TFormSetSpecialMeals::heading(1), "First Special Meal (Special Meal One)");
    EXPECT_EQ(TFormSetSpecialMeals::heading(5), "Fifth Special Meal (Special Meal Five)");
    EXPECT_EQ(TFormSetSpecialMeals::ruleEntries(2),
              (QStringList{"", "Items other than the default", "Any diet restriction",
                           "Selected diet restrictions"}));
    EXPECT_EQ(TFormSetSpecialMeals::ruleEntries(4), (QStringList{"", "Selected diet restrictions"}));
    EXPECT_EQ(form.dietLines(), (QStringList{"Low Sodium   [LS]", "Diabetic   [DB]", "Low Fat   [LF]"}));

    // Meals in use by label or abbreviation get the proposal; 2 is not in use.
    setConfig(QStringLiteral("SPECIAL2_LABEL"), QString());
    form.propose();
    EXPECT_TRUE(form.isProposal());
    EXPECT_EQ(form.ruleIndex(1), 3);
    EXPECT_EQ(form.ruleIndex(2), 0);
    EXPECT_EQ(form.ruleIndex(4), 1);
    EXPECT_TRUE(form.dietEnabled(1));
    EXPECT_FALSE(form.dietEnabled(2));
    EXPECT_FALSE(form.accept());
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Warning),
        QStringList{
            "You chose the 'Selected Diets' option for First Special Meal (Special Meal One)\r\nbut did "
            "not select any diets!"});

    // A stored row: a code meal 4 does not offer shows the blank entry; the
    // mask and Match All of a rule other than "S" do not count.
    SpecialMealsSetup setup;
    setup.meal(1) = {QStringLiteral("D"), 5, true, QStringLiteral("Title")};
    setup.meal(3) = {QStringLiteral("S"), 5, true, QString()};
    setup.meal(4) = {QStringLiteral("I"), 0, false, QString()};
    form.fill(setup);
    EXPECT_FALSE(form.isProposal());
    EXPECT_EQ(form.ruleIndex(1), 2);
    EXPECT_EQ(form.ruleIndex(4), 0);
    EXPECT_TRUE(form.isDietChecked(3, 0));
    EXPECT_FALSE(form.isDietChecked(3, 1));
    EXPECT_TRUE(form.isDietChecked(3, 2));
    EXPECT_TRUE(form.matchAll(3));
    EXPECT_EQ(form.action(1), "Title");
    ASSERT_TRUE(form.accept());
    EXPECT_EQ(form.result().meal(1),
              (SpecialMealRule{QStringLiteral("D"), 0, false, QStringLiteral("Title")}));
    EXPECT_EQ(form.result().meal(3), (SpecialMealRule{QStringLiteral("S"), 5, true, QString()}));
    EXPECT_EQ(form.result().meal(4), SpecialMealRule());

    form.reject();
    EXPECT_EQ(form.result(), SpecialMealsSetup());
    EXPECT_EQ(form.ruleIndex(3), 0);
    EXPECT_FALSE(form.isDietChecked(3, 0));
}

TEST_P(SpecialMealsTest, FlaggingOutsideTheFiveMealsFails)
{
    TableSpecialLabels labels(db());
    labels.create();
    SpecialMealFlags flagger(db(), ui, labels, monday, form().aDietCodes());
    EXPECT_THROW(
        {
            try {
                flagger.FlagSpecialMeals(6, SpecialMealRule());
            } catch (const MessageError& e) {
                EXPECT_EQ(e.message(), "An unexpected value was passed to FlagSpecialMeals.");
                throw;
            }
        },
        MessageError);
    labels.drop();
}

TEST_P(SpecialMealsTest, TheBrowseListsAddsAndEditsDates)
{
    SpecialMealsSetup setup;
    setup.meal(2) = {QStringLiteral("S"), 2, false, QString()};
    setup.insert(db(), monday);
    // Filter_All alone marks a meal; a row with nothing set marks none.
    insertRow(db(), QStringLiteral("Special_Meals"),
              {{QStringLiteral("Deliv_Date"), tuesday}, {QStringLiteral("Filter_All3"), true}});
    insertRow(db(), QStringLiteral("Special_Meals"), {{QStringLiteral("Deliv_Date"), QDate(2024, 3, 1)}});

    TFormBrowseSpecialMealDates browse(db(), ui, dialogs);
    EXPECT_EQ(TFormBrowseSpecialMealDates::caption(), "Special Meals by Date");
    EXPECT_EQ(browse.mealColumns(), 5);
    EXPECT_EQ(browse.mealTitle(1), "Sugar-Free");
    EXPECT_EQ(browse.mealTitle(4), "Meal 4");
    ASSERT_EQ(browse.rows().size(), 3);
    EXPECT_EQ(browse.rows()[0].date, tuesday);
    EXPECT_EQ(browse.rows()[0].marks, (std::array<bool, 5>{false, false, true, false, false}));
    EXPECT_EQ(browse.rows()[1].marks, (std::array<bool, 5>{false, true, false, false, false}));
    EXPECT_EQ(browse.rows()[2].marks, (std::array<bool, 5>{}));

    // Edit: OK writes the dialog's values back to the row.
    QString caption;
    dialogs.specialMeals = [&](TFormSetSpecialMeals& f) {
        caption = f.caption();
        EXPECT_TRUE(f.copyVisible());
        f.setRuleIndex(1, 1);
        return f.accept();
    };
    browse.setCurrentRow(1);
    browse.ActionEditDate();
    EXPECT_EQ(caption, "Set Special Meal Qualifications: Monday, March 11, 2024");
    EXPECT_EQ(SpecialMealsSetup::read(db(), monday)->meal(1).selectionOption, "I");
    EXPECT_EQ(SpecialMealsSetup::read(db(), monday)->meal(2), setup.meal(2));

    // Add: a new date gets a row and is edited; Cancel leaves it empty.
    dialogs.date = QDate(2024, 3, 20);
    dialogs.specialMeals = [](TFormSetSpecialMeals& f) {
        f.setRuleIndex(1, 2);
        f.reject();
        return false;
    };
    browse.ActionAddDate();
    EXPECT_EQ(SpecialMealsSetup::read(db(), QDate(2024, 3, 20)), SpecialMealsSetup());
    EXPECT_EQ(browse.rows()[browse.currentRow()].date, QDate(2024, 3, 20));
    EXPECT_EQ(browse.rows().size(), 4);

    // An existing date is told and edited.
    dialogs.date = monday;
    dialogs.specialMeals = [](TFormSetSpecialMeals& f) {
        f.setRuleIndex(3, 2);
        return f.accept();
    };
    browse.ActionAddDate();
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Information),
        QStringList{
            "The Special Meal specifications for that date already exist. \r\nThat date will be presented "
            "for editing in the next window."});
    EXPECT_EQ(SpecialMealsSetup::read(db(), monday)->meal(3).selectionOption, "D");
    EXPECT_EQ(browse.rows().size(), 4);
}

TEST_P(SpecialMealsTest, CopyingAddsTheValuesToNewDatesOnly)
{
    SpecialMealsSetup values;
    values.meal(1) = {QStringLiteral("S"), 6, true, QStringLiteral("Copied")};
    SpecialMealsSetup existing;
    existing.meal(2) = {QStringLiteral("D"), 0, false, QString()};
    existing.insert(db(), QDate(2024, 3, 13));

    TFormCopySpecialMeals early(db(), ui, values, QDate(1899, 12, 30));
    EXPECT_EQ(early.calendarDate(), QDate(2024, 3, 6));

    TFormCopySpecialMeals copy(db(), ui, values, monday);
    EXPECT_EQ(TFormCopySpecialMeals::caption(), "Copy Special Meal Restrictions");
    EXPECT_EQ(copy.calendarDate(), monday);
    for (const QDate& d : {QDate(2024, 3, 14), QDate(2024, 3, 13), QDate(2024, 3, 12), QDate(2024, 3, 15)}) {
        copy.setCalendarDate(d);
        copy.ActionAddSelectedDate();
    }
    copy.ActionAddSelectedDate();
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{"That date already exists in the list and can't be added more than once."});
    ASSERT_EQ(copy.destinations().size(), 4);
    EXPECT_EQ(copy.boldDates(),
              (QList<QDate>{QDate(2024, 3, 12), QDate(2024, 3, 13), QDate(2024, 3, 14), QDate(2024, 3, 15)}));

    // The 12th goes from the list; the 14th stays marked and is asked about.
    copy.setDeletionCandidate(0, true);
    copy.ActionDeleteSelectedDate();
    ASSERT_EQ(copy.destinations().size(), 3);
    copy.setDeletionCandidate(1, true);

    ui.clear();
    copy.ActionCopyToSelectedDates(); // No
    EXPECT_FALSE(SpecialMealsSetup::read(db(), QDate(2024, 3, 15)));

    ui.clear();
    ui.answerNext(Answer::Yes);
    ui.answerNext(Answer::No);
    copy.ActionCopyToSelectedDates();
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Question),
        (QStringList{
            "Copy the current diet modifications to the selected dates?",
            "3/14/24 is marked for deletion, but has not yet been deleted. \r\nCreate the record anyway?"}));
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Information),
        QStringList{
            "3/13/24 already exist. \r\nThat date will NOT have the current modifications copied to it!"});
    EXPECT_EQ(*SpecialMealsSetup::read(db(), QDate(2024, 3, 13)), existing);
    EXPECT_FALSE(SpecialMealsSetup::read(db(), QDate(2024, 3, 14)));
    EXPECT_FALSE(SpecialMealsSetup::read(db(), QDate(2024, 3, 12)));
    EXPECT_EQ(*SpecialMealsSetup::read(db(), QDate(2024, 3, 15)), values);
    EXPECT_EQ(copy.calendarDate(), monday);
}

INSTANTIATE_TEST_SUITE_P(Stores, SpecialMealsTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
