// The maintenance screens of the code tables driven as a user would: the
// navigator, the pages, numbering of new rows, the row limits, the ordered
// delete guards, code changes, the close question and the screens' own
// parts (visibility, postal masks, choices, cold bag combinations).

#include "DataSetFixture.h"
#include "ScriptedUserInterface.h"

#include "records/RecordServices.h"
#include "dataset/DataSet.h"
#include "reference/TFormDietCombinations.h"
#include "reference/TFormEditBase.h"

using namespace kb;
using Kind = kb::test::ScriptedUserInterface::Kind;
using Command = kb::TFormEditBase::Command;
using Page = kb::TFormEditBase::Page;

namespace {

class TFormEditBaseTest : public test::DataSetFixture
{
protected:
    void SetUp() override
    {
        DataSetFixture::SetUp();
        if (IsSkipped()) return;
        services = std::make_unique<RecordServices>(db(), ui);
    }

    // The screen of a form name, open.
    std::unique_ptr<TFormEditBase> openScreen(const char* formName)
    {
        const EditorScreen* screen = referenceEditorScreen(QString::fromLatin1(formName));
        if (!screen) {
            ADD_FAILURE() << "no screen " << formName;
            return nullptr;
        }
        auto form = std::make_unique<TFormEditBase>(*services, *screen);
        EXPECT_TRUE(form->open()) << ui.texts(Kind::Error).join(QLatin1Char('\n')).toStdString();
        return form;
    }

    qint64 count(const QString& text) { return db().execute(text).value(0, 0).toLongLong(); }

    // One column of the grid, as texts.
    static QStringList gridColumn(const TFormEditBase& form, int column)
    {
        QStringList values;
        for (const QVariantList& row : form.grid().rows)
            values.append(row.value(column).toString());
        return values;
    }

    test::ScriptedUserInterface ui;
    std::unique_ptr<RecordServices> services;
};

TEST_P(TFormEditBaseTest, NewRowsAreNumberedAndRequiredFieldsKeepTheRowInEdit)
{
    auto form = openScreen("TFormEditDietMods");
    EXPECT_EQ(form->caption(), "Edit Diet Codes");
    EXPECT_EQ(form->page(), Page::Browse);
    EXPECT_TRUE(form->isEnabled(Command::Insert));
    EXPECT_FALSE(form->isEnabled(Command::Delete)); // nothing to delete yet
    EXPECT_FALSE(form->isEnabled(Command::Post));

    ASSERT_TRUE(form->run(Command::Insert));
    EXPECT_EQ(form->page(), Page::Edit);
    EXPECT_EQ(form->value(QStringLiteral("DIET_ID")).toInt(), 1);
    EXPECT_EQ(form->value(QStringLiteral("DATE_CREATED")).toDate(), QDate(2024, 3, 6));
    EXPECT_TRUE(form->isEnabled(Command::Post));
    EXPECT_FALSE(form->isEnabled(Command::Insert));
    EXPECT_FALSE(form->isEnabled(Command::Next));

    // An empty new row is not saved.
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{TFormEditBase::nothingToSaveText()});
    EXPECT_EQ(form->dataSet().state(), DataSet::State::Insert);
    // Without a code the post is refused and the row stays to be completed.
    ASSERT_TRUE(form->setValue(QStringLiteral("DIET_DESC"), QStringLiteral("Low Salt")));
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"The Diet Identifier (AKA Diet Code or Abbreviation) can't be left \r\nblank!"});
    EXPECT_EQ(form->dataSet().state(), DataSet::State::Insert);
    ASSERT_TRUE(form->setValue(QStringLiteral("DIET_CODE"), QStringLiteral("LS")));
    ASSERT_TRUE(form->run(Command::Post));
    EXPECT_EQ(form->dataSet().state(), DataSet::State::Browse);
    EXPECT_EQ(form->value(QStringLiteral("LAST_UPDATED")).toDateTime(), test::fixedNow());

    ASSERT_TRUE(form->run(Command::Insert));
    EXPECT_EQ(form->value(QStringLiteral("DIET_ID")).toInt(), 2);
    form->setValue(QStringLiteral("DIET_CODE"), QStringLiteral("DB"));
    ASSERT_TRUE(form->run(Command::Post));
    // A new row stands where it was inserted until the rows are read again.
    EXPECT_EQ(gridColumn(*form, 1), (QStringList{"DB", "LS"}));
    ASSERT_TRUE(form->run(Command::Refresh));
    EXPECT_EQ(gridColumn(*form, 1), (QStringList{"LS", "DB"}));
    EXPECT_EQ(form->grid().current, 1);

    // Typing into a row at rest puts it into edit.
    ASSERT_TRUE(form->run(Command::First));
    EXPECT_FALSE(form->isEnabled(Command::Prior));
    EXPECT_TRUE(form->isEnabled(Command::Last));
    ASSERT_TRUE(form->setValue(QStringLiteral("DIET_DESC"), QStringLiteral("Low Sodium")));
    EXPECT_EQ(form->dataSet().state(), DataSet::State::Edit);
    ASSERT_TRUE(form->run(Command::Post));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Diet where Diet_Desc = 'Low Sodium'")), 1);
}

TEST_P(TFormEditBaseTest, TheThirtySecondDietIsRefused)
{
    Query diet = db().query(QStringLiteral("Insert into Diet (Diet_ID, Diet_Code) values (:Id, :Code)"));
    for (int i = 1; i <= 31; ++i)
        diet.bind(QStringLiteral("Id"), i)
            .bind(QStringLiteral("Code"), QStringLiteral("D%1").arg(i))
            .execCommand();
    auto form = openScreen("TFormEditDietMods");
    EXPECT_FALSE(form->run(Command::Insert));
    EXPECT_EQ(
        ui.texts(Kind::Warning),
        QStringList{"This program does not support more than 31 diet types. 31 have already been defined!"});
    EXPECT_EQ(form->page(), Page::Browse);
    EXPECT_EQ(form->dataSet().state(), DataSet::State::Browse);
    EXPECT_EQ(db().recordCount(QStringLiteral("Diet")), 31);
}

TEST_P(TFormEditBaseTest, ItemDeletesRefuseInOrderBeforeTheyConfirm)
{
    db().execute(QStringLiteral(
        "Insert into Items (Item_ID, Meal, Meal_Item) values (1, 'L', 'Soup'), (2, 'L', 'Stew')"));
    db().execute(
        QStringLiteral("Insert into Defdels (Person_ID, Service_ID, Item_ID, Quantity) values (0, 1, 1, 1)"));
    db().execute(
        QStringLiteral("Insert into Lists (List_Name, Reason, Item_to_Deliver) values ('Party', 'LST', 1)"));
    db().execute(
        QStringLiteral("Insert into Mealcrdt (Deliv_ID, Person_ID, Item_ID, Quantity) values (5, 1, 1, 1)"));
    auto form = openScreen("TFormEditMealItem");
    ASSERT_TRUE(form->dataSet().locate(QStringLiteral("ITEM_ID"), 1));

    const QString inDefaults = QStringLiteral("The Item you are deleting is in use by at least one Service "
                                              "or Client.\r\nAs long as any Services or Clients "
                                              "are using this Item you can not delete it.");
    const QString inLists =
        QStringLiteral("The Item you are deleting is used as by at least one List.\r\nAs long as "
                       "any Lists are using this Item you can not delete it.");
    const QString hasDeliveries =
        QStringLiteral("The Item you are deleting has Deliveries which use it. If you \r\ndelete it then the "
                       "Item for the deliveries "
                       "using it will be \r\nunidentified. Proceed with the deletion anyway?");

    // Every refusal comes alone, the first that applies.
    EXPECT_FALSE(form->run(Command::Delete));
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{inDefaults});
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());
    db().execute(QStringLiteral("Delete from Defdels"));
    ui.clear();
    EXPECT_FALSE(form->run(Command::Delete));
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{inLists});
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());

    // Only then the confirmation; No keeps the row, Yes deletes it.
    db().execute(QStringLiteral("Delete from Lists"));
    ui.clear();
    EXPECT_FALSE(form->run(Command::Delete));
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{hasDeliveries});
    EXPECT_EQ(db().recordCount(QStringLiteral("Items")), 2);
    ui.clear();
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form->run(Command::Delete));
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{hasDeliveries});
    EXPECT_EQ(count(QStringLiteral("select count(*) from Items where Item_ID = 1")), 0);
    EXPECT_EQ(gridColumn(*form, 2), QStringList{"Stew"});
}

TEST_P(TFormEditBaseTest, AServiceThatMayGoTakesItsItemsAndFundingUses)
{
    db().execute(QStringLiteral("Insert into Services (Service_ID, Service_Desc, Service_Type) values "
                                "(1, 'Hot Meals', 'D'), (2, 'Frozen Meals', 'D')"));
    db().execute(QStringLiteral("Insert into Defdels (Person_ID, Service_ID, Item_ID, Quantity) values "
                                "(0, 2, 1, 1), (0, 1, 1, 1)"));
    db().execute(QStringLiteral("Insert into FundUses (Service_ID) values (2), (1)"));
    addClients();
    db().execute(QStringLiteral("Update Clients set Svcs_Used = 1"));
    auto form = openScreen("TFormEditServices");

    ASSERT_TRUE(form->dataSet().locate(QStringLiteral("SERVICE_ID"), 1));
    EXPECT_FALSE(form->run(Command::Delete));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{
                  "The Service you are deleting is in use by at least one Client.\r\n As long as any Clients "
                  "are assigned to this Service you can not delete it."});

    ASSERT_TRUE(form->dataSet().locate(QStringLiteral("SERVICE_ID"), 2));
    ui.clear();
    EXPECT_FALSE(form->run(Command::Delete)) << "No keeps the row";
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{TFormEditBase::deleteQuestion()});
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form->run(Command::Delete));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Defdels where Service_ID = 2")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Service_ID = 2")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Defdels where Service_ID = 1")), 1);
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Service_ID = 1")), 1);
}

TEST_P(TFormEditBaseTest, ServiceFieldsShowByTypeAndFrequency)
{
    auto form = openScreen("TFormEditServices");
    ASSERT_TRUE(form->run(Command::Insert));
    EXPECT_EQ(form->value(QStringLiteral("MUTL_EXCL")).toBool(), false);
    form->setValue(QStringLiteral("SERVICE_TYPE"), QStringLiteral("C"));
    EXPECT_FALSE(form->isFieldVisible(QStringLiteral("DEFAULT_FREQUENCY")));
    EXPECT_FALSE(form->isFieldVisible(QStringLiteral("MUTL_EXCL")));
    EXPECT_FALSE(form->isFieldVisible(QStringLiteral("DMON")));
    EXPECT_TRUE(form->isFieldVisible(QStringLiteral("SERVICE_DESC")));
    form->setValue(QStringLiteral("SERVICE_TYPE"), QStringLiteral("D"));
    EXPECT_TRUE(form->isFieldVisible(QStringLiteral("DEFAULT_FREQUENCY")));
    EXPECT_TRUE(form->isFieldVisible(QStringLiteral("DEFAULT_DELIVERY_TYPE")));
    EXPECT_TRUE(form->isFieldVisible(QStringLiteral("MUTL_EXCL")));
    EXPECT_FALSE(form->isFieldVisible(QStringLiteral("DSUN")));
    form->setValue(QStringLiteral("DEFAULT_FREQUENCY"), QStringLiteral("O"));
    EXPECT_TRUE(form->isFieldVisible(QStringLiteral("DSUN")));
    form->setValue(QStringLiteral("DEFAULT_FREQUENCY"), QStringLiteral("E"));
    EXPECT_FALSE(form->isFieldVisible(QStringLiteral("DMON")));
}

TEST_P(TFormEditBaseTest, ClosingWhileEditingAsksToSave)
{
    auto form = openScreen("TFormEditStopReasons");
    ASSERT_TRUE(form->dataSet().locate(QStringLiteral("STOP_ID"), 1));
    form->setValue(QStringLiteral("STOP_REASON"), QStringLiteral("Relocated"));
    // No cancels the change.
    ASSERT_TRUE(form->close());
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{"Save changes to data before closing window?"});
    EXPECT_EQ(db().execute(QStringLiteral("select Stop_Reason from StopReasons where Stop_ID = 1"))
                  .value(0, 0)
                  .toString(),
              "Moved");

    // Yes posts it; a new row takes the next number.
    ui.clear();
    form = openScreen("TFormEditStopReasons");
    ASSERT_TRUE(form->run(Command::Insert));
    EXPECT_EQ(form->value(QStringLiteral("STOP_ID")).toInt(), 8);
    form->setValue(QStringLiteral("STOP_REASON"), QStringLiteral("Relocated"));
    ui.answerNext(Answer::Yes);
    ASSERT_TRUE(form->close());
    EXPECT_EQ(db().execute(QStringLiteral("select Stop_Reason from StopReasons where Stop_ID = 8"))
                  .value(0, 0)
                  .toString(),
              "Relocated");

    // Closing at rest asks nothing.
    ui.clear();
    form = openScreen("TFormEditStopReasons");
    ASSERT_TRUE(form->close());
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());
}

TEST_P(TFormEditBaseTest, AScreenThatCannotSaveStaysOpenInEdit)
{
    auto form = openScreen("TFormEditZIPs");
    ASSERT_TRUE(form->run(Command::Insert));
    form->setValue(QStringLiteral("ZIP"), QStringLiteral("12345"));
    ASSERT_TRUE(form->run(Command::Post));
    ASSERT_TRUE(form->run(Command::Insert));
    form->setValue(QStringLiteral("ZIP"), QStringLiteral("12345"));
    ui.answerNext(Answer::Yes);
    EXPECT_FALSE(form->close());
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"Not able to save this record- it creates a duplicated Code."});
    EXPECT_EQ(form->dataSet().state(), DataSet::State::Insert);
    EXPECT_TRUE(form->run(Command::Cancel));
    EXPECT_TRUE(form->close());
}

TEST_P(TFormEditBaseTest, ARaceCodeChangeIsCarriedToClientsOnYes)
{
    addClients();
    auto form = openScreen("TFormEditRace");
    ASSERT_TRUE(form->dataSet().locate(QStringLiteral("RACE_CD"), QStringLiteral("W")));
    // A code that exists already is refused.
    form->setValue(QStringLiteral("RACE_CD"), QStringLiteral("B"));
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"Not able to save this change- it creates a duplicated Code."});
    ui.clear();
    form->setValue(QStringLiteral("RACE_CD"), QStringLiteral("C"));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form->run(Command::Post));
    EXPECT_EQ(
        ui.texts(Kind::Question),
        QStringList{
            "The Race Code you are changing is in use by at least one client.\r\nThe current data must be "
            "updated to reflect this change. \r\nProceed with the change?"});
    EXPECT_EQ(count(QStringLiteral("select count(*) from Clients where Race = 'C'")), 2);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Clients where Race = 'W'")), 0);
}

TEST_P(TFormEditBaseTest, CaseManagementScreensShowAndAddTheirOwnList)
{
    auto methods = openScreen("TFormEditCaseManagementContactTypes");
    EXPECT_EQ(gridColumn(*methods, 1), (QStringList{"Face-to-Face", "Mail/Fax", "Other", "Telephone"}));
    ASSERT_TRUE(methods->run(Command::Insert));
    methods->setValue(QStringLiteral("CONTACT_CD"), QStringLiteral("E"));
    methods->setValue(QStringLiteral("CONTACT_DESC"), QStringLiteral("E-mail"));
    ASSERT_TRUE(methods->run(Command::Post));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Case_Management_Choices where Usage = 'C'")), 5);

    auto types = openScreen("TFormEditCaseManagementEventCodes");
    EXPECT_EQ(types->grid().rows.size(), 4);
    // An event type in use refuses its delete with the event type's words.
    db().execute(QStringLiteral("Insert into Events (Person_ID, Contact_Type) values (1, 'H')"));
    ASSERT_TRUE(types->dataSet().locate(QStringLiteral("CONTACT_CD"), QStringLiteral("H")));
    EXPECT_FALSE(types->run(Command::Delete));
    EXPECT_EQ(
        ui.texts(Kind::Warning),
        QStringList{
            "The Event Type you are deleting is in use by at least one case management event.\r\nAs long "
            "as any case management events have this Event Type you can not delete it."});
}

TEST_P(TFormEditBaseTest, LocationsFollowThePostalFormat)
{
    db().execute(QStringLiteral("Update Config set POSTAL_FORMAT = 'CAN'"));
    auto form = openScreen("TFormEditLoc");
    EXPECT_EQ(form->caption(), "Location and Site Maintenance");
    auto fieldNamed = [&](const char* name) {
        for (const EditorField& f : form->fields())
            if (f.name.compare(QLatin1String(name), Qt::CaseInsensitive) == 0) return f;
        ADD_FAILURE() << "no field " << name;
        return EditorField{};
    };
    EXPECT_EQ(fieldNamed("LOCATION_CITY").label, "City/Prov/Postal:");
    EXPECT_EQ(fieldNamed("LOCATION_ZIP").mask, postalFormat(QStringLiteral("CAN")).postalMask);
    EXPECT_EQ(fieldNamed("LOCATION_PHONE").mask, "###-###-####[ x#][#][#][#][#]");

    db().execute(QStringLiteral("Update Config set POSTAL_FORMAT = 'OTH'"));
    form = openScreen("TFormEditLoc");
    EXPECT_EQ(fieldNamed("LOCATION_CITY").label, "City/State/Postal:");
    EXPECT_TRUE(fieldNamed("LOCATION_ZIP").mask.isEmpty());
}

TEST_P(TFormEditBaseTest, EventCodesOfferServicesByName)
{
    db().execute(
        QStringLiteral("Insert into Services (Service_ID, Service_Desc) values (1, 'Nutrition Counseling'), "
                       "(2, 'Case Management')"));
    auto form = openScreen("TFormEditEventCds");
    ASSERT_TRUE(form->run(Command::Insert));
    EXPECT_EQ(form->value(QStringLiteral("EVENT_ID")).toInt(), 1);
    const QList<Choice> choices = form->choices(QStringLiteral("SERVICE_ID"));
    ASSERT_EQ(choices.size(), 2);
    EXPECT_EQ(choices[0].text, "Case Management");
    EXPECT_EQ(choices[0].value.toInt(), 2);
    form->setValue(QStringLiteral("SERVICE_ID"), choices[0].value);
    form->setValue(QStringLiteral("EVENT_DESC"), QStringLiteral("Home visit"));
    ASSERT_TRUE(form->run(Command::Post));
    EXPECT_EQ(form->grid().rows.value(0).value(2).toString(), "Case Management");
}

TEST_P(TFormEditBaseTest, ColdBagUsageShowsMasksInWordsAndAddsMissingCombinations)
{
    db().execute(
        QStringLiteral("Insert into Diet (Diet_ID, Diet_Code) values (1, 'LS'), (2, 'DB'), (3, 'RN')"));
    db().execute(QStringLiteral("Insert into Cold_Bag_Codes (Bag_Code) values ('Blue')"));
    db().execute(QStringLiteral("Insert into Cold_Bag_Usage (Diet_Restr, Bag_ID) values (5, 1)"));
    addClients();
    db().execute(QStringLiteral("Update Clients set Diet_Restr = 3 where Person_ID = 1"));
    db().execute(QStringLiteral("Update Clients set Diet_Restr = 5 where Person_ID = 2"));
    db().execute(QStringLiteral("Update Clients set Diet_Restr = 0 where Person_ID in (3, 4)"));

    auto form = openScreen("TFormEditColdBagCodeUsage");
    ASSERT_EQ(form->grid().rows.size(), 1);
    EXPECT_EQ(form->grid().rows[0].value(1).toString(), "LS / RN");
    EXPECT_EQ(form->grid().rows[0].value(2).toString(), "Blue");
    ASSERT_TRUE(form->offersMissingCombinations());

    auto missing = form->missingCombinations();
    ASSERT_EQ(missing->combinations().size(), 2);
    EXPECT_EQ(missing->combinations()[0].mask.toInt(), 0);
    EXPECT_EQ(missing->combinations()[0].words, "");
    EXPECT_EQ(missing->combinations()[1].mask.toInt(), 3);
    EXPECT_EQ(missing->combinations()[1].words, "LS / DB");
    missing->setChecked(0, true);
    missing->setChecked(1, true);
    missing->createChecked();
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList{"Finished creating records for the missing diet combinations."});
    form->combinationsCreated();
    EXPECT_EQ(gridColumn(*form, 0), (QStringList{"0", "3", "5"}));
    EXPECT_TRUE(TFormDietCombinations(db(), ui).combinations().isEmpty());
    EXPECT_FALSE(openScreen("TFormEditColdBagCodes")->offersMissingCombinations());
}

TEST_P(TFormEditBaseTest, CustomLookupChoicesOfferTheDialoguesColumns)
{
    auto form = openScreen("TFormCustomLookupChoices");
    ASSERT_TRUE(form->run(Command::Insert));
    form->setValue(QStringLiteral("Dialogue"), QStringLiteral("ASSESSMENTS"));
    QStringList names;
    for (const Choice& c : form->choices(QStringLiteral("Field_Name")))
        names.append(c.value.toString());
    EXPECT_TRUE(names.contains(QStringLiteral("ASSESSMENT_DATE")));
    EXPECT_FALSE(names.contains(QStringLiteral("HEADAssessment_Date")));
    form->setValue(QStringLiteral("Dialogue"), QStringLiteral("NSI ADL IADL"));
    names.clear();
    for (const Choice& c : form->choices(QStringLiteral("Field_Name")))
        names.append(c.value.toString());
    EXPECT_TRUE(names.contains(QStringLiteral("HEADAssessment_Date")));

    // A choice without all four fields is silently not kept.
    form->setValue(QStringLiteral("Field_Name"), QStringLiteral("HEADAssessment_Type"));
    form->setValue(QStringLiteral("Field_Code"), QStringLiteral("I"));
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_TRUE(ui.messages().isEmpty());
    form->setValue(QStringLiteral("Field_Choice"), QStringLiteral("Initial"));
    EXPECT_TRUE(form->run(Command::Post));
    EXPECT_EQ(db().recordCount(QStringLiteral("Custom_Lookup_Choices")), 1);
}

TEST_P(TFormEditBaseTest, StoredStatementsOfferTheReservedNames)
{
    auto form = openScreen("TFormEditSQLStatements");
    ASSERT_TRUE(form->run(Command::Insert));
    QStringList names;
    for (const Choice& c : form->choices(QStringLiteral("QUERY_NAME")))
        names.append(c.value.toString());
    EXPECT_EQ(names.size(), 18);
    EXPECT_TRUE(names.contains(QStringLiteral("EXECUTE_ON_SAVE_DELIVERIES")));
    form->setValue(QStringLiteral("QUERY_NAME"), QStringLiteral("EXECUTE_ON_OPEN"));
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"Either the name of the query or the query statement is blank.\r\nBoth "
                          "must be completed in order to save this entry."});
}

TEST(ReferenceEditorScreens, EveryScreenNamesATableOfTheCatalogue)
{
    EXPECT_EQ(referenceEditorScreens().size(), size_t(20));
    for (const EditorScreen& s : referenceEditorScreens()) {
        const TableDef* def = Catalogue::standard().table(s.table);
        ASSERT_NE(def, nullptr) << s.formName.toStdString();
        EXPECT_FALSE(s.caption.isEmpty()) << s.formName.toStdString();
        if (!s.indexName.isEmpty()) {
            EXPECT_NE(def->index(s.indexName), nullptr) << s.formName.toStdString();
        }
    }
    EXPECT_EQ(referenceEditorScreen(QStringLiteral("TFormEditServices"))->caption, "Services Maintenance");
    EXPECT_EQ(referenceEditorScreen(QStringLiteral("TFormEditStaff"))->caption, "Staff Maintenance");
    EXPECT_EQ(referenceEditorScreen(QStringLiteral("TFormEditMealItem"))->caption, "Add and Edit Meal Items");
    EXPECT_EQ(referenceEditorScreen(QStringLiteral("TFormNoSuchScreen")), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Stores, TFormEditBaseTest,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
