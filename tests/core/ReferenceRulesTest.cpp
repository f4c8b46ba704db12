// The rules of the reference tables: numbering, limits, required fields,
// code changes carried to clients, and the ordered delete guards.

#include "store/Database.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "reference/DeleteGuards.h"
#include "reference/ReferenceRules.h"

#include <QHash>

#include <gtest/gtest.h>

using namespace kb;
using Kind = kb::test::ScriptedUserInterface::Kind;

namespace {

// A row being edited, as a screen would hold it.
struct Row
{
    QHash<QString, QVariant> values;
    RowReader reader() const
    {
        return [this](const QString& c) { return values.value(c.toUpper()); };
    }
    RowWriter writer()
    {
        return [this](const QString& c, const QVariant& v) { values.insert(c.toUpper(), v); };
    }
};

RowReader noOriginal()
{
    return [](const QString&) { return QVariant(); };
}

class ReferenceRules : public ::testing::Test
{
protected:
    Database& db() { return data.db(); }
    test::TempDataDir data;
    test::ScriptedUserInterface ui;
};

TEST_F(ReferenceRules, NumberingTakesTheHighestPlusOne)
{
    EXPECT_EQ(nextNumber(db(), QStringLiteral("Diet"), QStringLiteral("DIET_ID")), 1);
    Row row;
    initialiseNewRow(db(), QStringLiteral("Services"), row.writer());
    EXPECT_EQ(row.values.value(QStringLiteral("SERVICE_ID")).toInt(), 1);
    EXPECT_EQ(row.values.value(QStringLiteral("CREATE_DATE")).toDate(), QDate(2024, 3, 6));
    EXPECT_EQ(row.values.value(QStringLiteral("MUTL_EXCL")).toBool(), false);

    db().execute(QStringLiteral("Insert into Items (Item_ID, Meal_Item) values (4, 'Soup'), (9, 'Bread')"));
    EXPECT_EQ(nextNumber(db(), QStringLiteral("Items"), QStringLiteral("ITEM_ID")), 10);
    // Deleting the highest and adding again reuses its number.
    db().execute(QStringLiteral("Delete from Items where Item_ID = 9"));
    EXPECT_EQ(nextNumber(db(), QStringLiteral("Items"), QStringLiteral("ITEM_ID")), 5);
    EXPECT_EQ(numberedColumn(QStringLiteral("stopreasons")), "STOP_ID");
    EXPECT_TRUE(numberedColumn(QStringLiteral("Zips")).isEmpty());
}

TEST_F(ReferenceRules, LimitsRefuseTheThirtySecondDietAndService)
{
    Query diet = db().query(QStringLiteral("Insert into Diet (Diet_ID, Diet_Code) values (:Id, :Code)"));
    for (int i = 1; i <= 30; ++i)
        diet.bind(QStringLiteral("Id"), i).bind(QStringLiteral("Code"), QStringLiteral("D%1").arg(i)).execCommand();
    EXPECT_TRUE(allowsInsert(db(), ui, QStringLiteral("Diet")));
    diet.bind(QStringLiteral("Id"), 31).bind(QStringLiteral("Code"), QStringLiteral("D31")).execCommand();
    EXPECT_FALSE(allowsInsert(db(), ui, QStringLiteral("Diet")));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"This program does not support more than 31 diet types. 31 have already been defined!"});
    EXPECT_TRUE(allowsInsert(db(), ui, QStringLiteral("Services")));

    // The 51st mutually exclusive service is saved, but not as exclusive.
    Query service = db().query(QStringLiteral("Insert into Services (Service_ID, Mutl_Excl) values (:Id, True)"));
    for (int i = 1; i <= 51; ++i)
        service.bind(QStringLiteral("Id"), i).execCommand();
    ui.clear();
    Row row;
    row.values.insert(QStringLiteral("MUTL_EXCL"), true);
    EXPECT_TRUE(beforeReferencePost(db(), ui, QStringLiteral("Services"), row.reader(), row.writer(), noOriginal()));
    EXPECT_FALSE(row.values.value(QStringLiteral("MUTL_EXCL")).toBool());
    EXPECT_EQ(ui.texts(Kind::Warning).size(), 1);
    EXPECT_EQ(row.values.value(QStringLiteral("LAST_UPDATED")).toDateTime(), test::fixedNow());
}

TEST_F(ReferenceRules, RequiredFieldsAbandonThePost)
{
    Row diet;
    diet.values.insert(QStringLiteral("DIET_CODE"), QStringLiteral("LS"));
    EXPECT_FALSE(beforeReferencePost(db(), ui, QStringLiteral("Diet"), diet.reader(), diet.writer(), noOriginal()));
    diet.values.insert(QStringLiteral("DIET_ID"), 3);
    diet.values.insert(QStringLiteral("DIET_CODE"), QStringLiteral("  "));
    EXPECT_FALSE(beforeReferencePost(db(), ui, QStringLiteral("Diet"), diet.reader(), diet.writer(), noOriginal()));
    EXPECT_EQ(ui.texts(Kind::Warning),
              (QStringList{"The Diet ID can't be left blank!",
                           "The Diet Identifier (AKA Diet Code or Abbreviation) can't be left \r\nblank!"}));

    Row query;
    query.values.insert(QStringLiteral("QUERY_NAME"), QStringLiteral("EXECUTE_ON_OPEN"));
    EXPECT_FALSE(beforeReferencePost(db(), ui, QStringLiteral("Queries"), query.reader(), query.writer(), noOriginal()));

    ui.clear();
    Row choice;
    choice.values.insert(QStringLiteral("DIALOGUE"), QStringLiteral("ASSESSMENTS"));
    EXPECT_FALSE(
        beforeReferencePost(db(), ui, QStringLiteral("Custom_Lookup_Choices"), choice.reader(), choice.writer(), noOriginal()));
    EXPECT_TRUE(ui.messages().isEmpty());

    Row doc;
    doc.values.insert(QStringLiteral("DOC_DESCRIPTION"), QStringLiteral("Proof of income"));
    EXPECT_TRUE(beforeReferencePost(db(), ui, QStringLiteral("Docs"), doc.reader(), doc.writer(), noOriginal()));
    EXPECT_EQ(doc.values.value(QStringLiteral("DOC_NAME")).toString(), "Proof of income");
}

TEST_F(ReferenceRules, ChangingARaceCodeIsCarriedToItsClients)
{
    db().execute(QStringLiteral("Insert into Clients (Person_ID, Race) values (1, 'W'), (2, 'W'), (3, 'B')"));
    Row original;
    original.values.insert(QStringLiteral("RACE_CD"), QStringLiteral("W"));
    Row row = original;

    // The code changed to itself needs no question.
    EXPECT_TRUE(beforeReferencePost(db(), ui, QStringLiteral("Race"), row.reader(), row.writer(), original.reader()));
    EXPECT_TRUE(ui.messages().isEmpty());

    // A code another row has is refused.
    row.values.insert(QStringLiteral("RACE_CD"), QStringLiteral("B"));
    EXPECT_FALSE(beforeReferencePost(db(), ui, QStringLiteral("Race"), row.reader(), row.writer(), original.reader()));
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{"Not able to save this change- it creates a duplicated Code."});

    // No keeps the clients as they are and abandons the post; Yes updates them.
    row.values.insert(QStringLiteral("RACE_CD"), QStringLiteral("X"));
    ui.answerNext(Answer::No);
    EXPECT_FALSE(beforeReferencePost(db(), ui, QStringLiteral("Race"), row.reader(), row.writer(), original.reader()));
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from Clients where Race = 'W'")).value(0, 0).toInt(), 2);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(beforeReferencePost(db(), ui, QStringLiteral("Race"), row.reader(), row.writer(), original.reader()));
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from Clients where Race = 'X'")).value(0, 0).toInt(), 2);
    EXPECT_EQ(ui.texts(Kind::Question).last(),
              "The Race Code you are changing is in use by at least one client.\r\nThe current data must be updated to "
              "reflect this change. \r\nProceed with the change?");

    // The marital status asks in its own words.
    db().execute(QStringLiteral("Update Clients set Marital_St = 'M'"));
    Row marital;
    marital.values.insert(QStringLiteral("MART_ID"), QStringLiteral("MA"));
    Row maritalBefore;
    maritalBefore.values.insert(QStringLiteral("MART_ID"), QStringLiteral("M"));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(beforeReferencePost(db(), ui, QStringLiteral("Martst"), marital.reader(), marital.writer(),
                                    maritalBefore.reader()));
    EXPECT_TRUE(ui.texts(Kind::Question).last().startsWith(QLatin1String("The Marital Status Code you are changing")));
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from Clients where Marital_St = 'MA'")).value(0, 0).toInt(), 3);
}

TEST_F(ReferenceRules, DeleteGuardsRefuseBeforeTheyConfirm)
{
    Row item;
    item.values.insert(QStringLiteral("ITEM_ID"), 12);
    EXPECT_TRUE(passesDeleteGuards(db(), ui, QStringLiteral("Items"), item.reader()));
    EXPECT_TRUE(ui.messages().isEmpty());

    // Delivered only: asked, and No keeps it.
    db().execute(QStringLiteral("Insert into MealCrdt (Deliv_ID, Item_ID) values (1, 12)"));
    ui.answerNext(Answer::No);
    EXPECT_FALSE(passesDeleteGuards(db(), ui, QStringLiteral("Items"), item.reader()));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(passesDeleteGuards(db(), ui, QStringLiteral("Items"), item.reader()));
    EXPECT_EQ(ui.texts(Kind::Question).size(), 2);

    // In a list and in a schedule: the first refusal in order is told, and
    // nothing is asked.
    db().execute(QStringLiteral("Insert into Lists (List_Name, Item_to_Deliver) values ('Holiday', 12)"));
    db().execute(QStringLiteral("Insert into DefDels (Person_ID, Item_ID) values (0, 12)"));
    ui.clear();
    EXPECT_FALSE(passesDeleteGuards(db(), ui, QStringLiteral("Items"), item.reader()));
    ASSERT_EQ(ui.messages().size(), 1);
    EXPECT_TRUE(ui.messages().front().text.startsWith(QLatin1String("The Item you are deleting is in use by at least "
                                                                    "one Service or Client.")));
    db().execute(QStringLiteral("Delete from DefDels"));
    ui.clear();
    EXPECT_FALSE(passesDeleteGuards(db(), ui, QStringLiteral("Items"), item.reader()));
    EXPECT_TRUE(ui.messages().front().text.startsWith(QLatin1String("The Item you are deleting is used as by at least one List.")));

    // A service with uncredited episodic deliveries is refused; credited ones do not count.
    Row service;
    service.values.insert(QStringLiteral("SERVICE_ID"), 3);
    db().execute(QStringLiteral("Insert into EpisodicDeliveries (Person_ID, Svcs_Used, Fulfilled) values (1, 3, 'Y')"));
    ui.clear();
    EXPECT_TRUE(passesDeleteGuards(db(), ui, QStringLiteral("Services"), service.reader()));
    db().execute(QStringLiteral("Insert into EpisodicDeliveries (Person_ID, Svcs_Used, Fulfilled) values (1, 3, 'N')"));
    EXPECT_FALSE(passesDeleteGuards(db(), ui, QStringLiteral("Services"), service.reader()));

    // A service that goes takes its default items and funding uses with it.
    db().execute(QStringLiteral("Insert into DefDels (Person_ID, Service_ID, Item_ID) values (0, 3, 1), (0, 4, 1)"));
    db().execute(QStringLiteral("Insert into FundUses (Person_ID, Service_ID) values (5, 3)"));
    deleteDependentRows(db(), QStringLiteral("Services"), service.reader());
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from DefDels")).value(0, 0).toInt(), 1);
    EXPECT_EQ(db().recordCount(QStringLiteral("FundUses")), 0);

    // The two lists of case management choices have guards of their own.
    db().execute(QStringLiteral("Insert into Events (Person_ID, Contact_Method) values (1, 'P')"));
    Row method;
    method.values.insert(QStringLiteral("CONTACT_CD"), QStringLiteral("P"));
    method.values.insert(QStringLiteral("USAGE"), QStringLiteral("C"));
    ui.clear();
    EXPECT_FALSE(passesDeleteGuards(db(), ui, QStringLiteral("Case_Management_Choices"), method.reader()));
    EXPECT_TRUE(ui.messages().front().text.startsWith(QLatin1String("The Contact Method you are deleting")));
    method.values.insert(QStringLiteral("USAGE"), QStringLiteral("E"));
    EXPECT_TRUE(passesDeleteGuards(db(), ui, QStringLiteral("Case_Management_Choices"), method.reader()));
}

TEST(PostalFormats, LabelsAndMasksFollowTheConfiguredCountry)
{
    EXPECT_EQ(postalFormat(QStringLiteral("USA")).postalMask, "#####[-####]");
    EXPECT_EQ(postalFormat(QStringLiteral("CAN")).label, "City/Prov/Postal:");
    EXPECT_EQ(postalFormat(QStringLiteral("UK")).phoneMask, "{##### ######,#### ### ####,### #### ####}[x#][#][#][#][#]");
    EXPECT_TRUE(postalFormat(QStringLiteral("OTH")).postalMask.isEmpty());
    EXPECT_EQ(postalFormat(QStringLiteral("OTH")).label, "City/State/Postal:");
}

} // namespace
