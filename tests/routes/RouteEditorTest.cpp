// "Add and Edit Routes" driven as a user would: the generic editor with the
// route rules on its posts, deletes and close; and the address override
// screen's postal code look-up, web map and directions command.

#include "OrderRoutesFixture.h"

#include "assign/TFormEditRoutes.h"
#include "dataset/QueryDataSet.h"
#include "overrides/TFormAddressOverride.h"
#include "records/RecordServices.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;
using Command = TFormEditBase::Command;

class RouteEditor : public OrderRoutesFixture
{
protected:
    // Moves the editor to the row of a route code.
    void goTo(TFormEditBase& form, const QString& code)
    {
        for (int i = 0; i < int(form.grid().rows.size()); ++i)
            if (form.grid().rows[i].value(0).toString() == code) {
                form.openRow(i);
                return;
            }
        ADD_FAILURE() << "no route " << code.toStdString();
    }
    QString routeOf(const QString& table, const QString& column, const QString& key, int id)
    {
        return db()
            .execute(QStringLiteral("Select %1 from %2 where %3 = :Id").arg(column, table, key),
                     {{QStringLiteral("Id"), id}})
            .value(0, 0)
            .toString();
    }
};

TEST_P(RouteEditor, TheRoutesScreenAppliesTheRouteRules)
{
    insertRow(db(), QStringLiteral("Locatns"),
              {{QStringLiteral("Location_ID"), 3},
               {QStringLiteral("Location_CD"), QStringLiteral("NK")},
               {QStringLiteral("Location"), QStringLiteral("North Kitchen")},
               {QStringLiteral("Distribution_Center"), true}});
    insertRow(db(), QStringLiteral("Locatns"),
              {{QStringLiteral("Location_ID"), 4},
               {QStringLiteral("Location_CD"), QStringLiteral("HQ")},
               {QStringLiteral("Location"), QStringLiteral("Office")},
               {QStringLiteral("Distribution_Center"), false}});
    addClient(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R2")},
                  {QStringLiteral("Wed_Rte"), QStringLiteral("R1")}});
    addDated(1, QDate(2024, 3, 20), QStringLiteral("S"));
    insertRow(db(), QStringLiteral("Deliveri"),
              {{QStringLiteral("Deliv_ID"), 9},
               {QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Deliv_Dt"), QDate(2024, 3, 1)},
               {QStringLiteral("Route_ID"), QStringLiteral("R1")}});
    insertRow(db(), QStringLiteral("Address_Overrides"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Override_Type"), QStringLiteral("T")},
               {QStringLiteral("Route"), QStringLiteral("R1")}});
    RecordServices services(db(), ui);
    auto form = std::make_unique<TFormEditRoutes>(services);
    ASSERT_TRUE(form->open());
    EXPECT_EQ(form->caption(), "Add and Edit Routes");
    QStringList labels;
    for (const EditorField& f : form->fields())
        labels << f.label;
    EXPECT_EQ(labels, (QStringList{"Route Code:", "Route Description:", "Route Type:", "Distribution Center:",
                                   "Dist. Center Code:"}));
    QStringList types;
    for (const Choice& c : form->choices(QStringLiteral("ROUTE_TYPE")))
        types << c.text;
    EXPECT_EQ(types, (QStringList{"Driving", "Walking", "Truck", "Walk-In", "Congregate"}));
    const QList<Choice> centers = form->choices(QStringLiteral("DIST_CENTER_ID"));
    ASSERT_EQ(centers.size(), 1); // distribution centers only
    EXPECT_EQ(centers.front().text, "NK - North Kitchen");

    // Typing finds a route by the first letters of its code, else of its description.
    EXPECT_TRUE(form->hasIncrementalSearch());
    EXPECT_TRUE(form->searchIncrementally(QStringLiteral("r2")));
    EXPECT_EQ(form->value(QStringLiteral("ROUTE_ID")).toString().trimmed(), "R2");
    EXPECT_TRUE(form->searchIncrementally(QStringLiteral("route r1")));
    EXPECT_EQ(form->value(QStringLiteral("ROUTE_ID")).toString().trimmed(), "R1");
    EXPECT_FALSE(form->searchIncrementally(QStringLiteral("X")));
    EXPECT_EQ(form->value(QStringLiteral("ROUTE_ID")).toString().trimmed(), "R1");

    // A new route needs a code; it is stamped, and the cursor goes to its code.
    ASSERT_TRUE(form->run(Command::Insert));
    EXPECT_EQ(form->newRowField(), "ROUTE_ID");
    EXPECT_FALSE(form->searchIncrementally(QStringLiteral("R2"))); // not while a row is new
    EXPECT_EQ(form->value(QStringLiteral("CREATE_DATE")).toDate(), QDate(2024, 3, 6));
    ASSERT_TRUE(form->setValue(QStringLiteral("ROUTE_DESC"), QStringLiteral("Riverside")));
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{"You must enter a value for the Route Code."});
    ASSERT_TRUE(form->setValue(QStringLiteral("ROUTE_ID"), QStringLiteral("R3")));
    ASSERT_TRUE(form->setValue(QStringLiteral("DIST_CENTER_ID"), 3));
    ASSERT_TRUE(form->run(Command::Post));
    EXPECT_EQ(form->value(QStringLiteral("LAST_UPDATED")).toDateTime(), fixedNow());

    // A code changed to one that exists is refused.
    ui.clear();
    goTo(*form, QStringLiteral("R1"));
    ASSERT_TRUE(form->setValue(QStringLiteral("ROUTE_ID"), QStringLiteral("R2")));
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"Not able to save this change- it creates a duplicated Code."});
    ASSERT_TRUE(form->run(Command::Cancel));

    // A code in use changes everywhere only on the user's word.
    ui.clear();
    goTo(*form, QStringLiteral("R1"));
    ASSERT_TRUE(form->setValue(QStringLiteral("ROUTE_ID"), QStringLiteral("R1EST")));
    ui.answerNext(Answer::No);
    EXPECT_FALSE(form->run(Command::Post));
    EXPECT_EQ(routeOf(QStringLiteral("Clients"), QStringLiteral("Wed_Rte"), QStringLiteral("Person_ID"), 1),
              "R1");
    ui.answerNext(Answer::Yes);
    ASSERT_TRUE(form->run(Command::Post));
    EXPECT_EQ(routeOf(QStringLiteral("Clients"), QStringLiteral("Wed_Rte"), QStringLiteral("Person_ID"), 1),
              "R1EST");
    EXPECT_EQ(routeOf(QStringLiteral("Deliveri"), QStringLiteral("Route_ID"), QStringLiteral("Deliv_ID"), 9),
              "R1EST");
    EXPECT_EQ(routeOf(QStringLiteral("EpisodicDeliveries"), QStringLiteral("Route"),
                      QStringLiteral("Person_ID"), 1),
              "R1EST");
    // An alternate address keeps the old code.
    EXPECT_EQ(
        routeOf(QStringLiteral("Address_Overrides"), QStringLiteral("Route"), QStringLiteral("Person_ID"), 1),
        "R1");

    // A route in use is not deleted; an unused one is, once the user agrees.
    ui.clear();
    goTo(*form, QStringLiteral("R2"));
    EXPECT_FALSE(form->run(Command::Delete));
    ASSERT_EQ(ui.texts(Kind::Warning).size(), 1);
    EXPECT_TRUE(ui.texts(Kind::Warning)
                    .front()
                    .startsWith("The Route you are deleting is in use by at least one Client.\r\n"));
    goTo(*form, QStringLiteral("R1EST"));
    EXPECT_FALSE(form->run(Command::Delete));
    EXPECT_TRUE(ui.texts(Kind::Warning)
                    .last()
                    .startsWith("The Route you are deleting is in use by at least one Client and one or more "
                                "Scheduled/Episodic Deliveries."));
    goTo(*form, QStringLiteral("R3"));
    ui.answerNext(Answer::No);
    EXPECT_FALSE(form->run(Command::Delete));
    EXPECT_EQ(db().execute(QStringLiteral("Select count(*) from Routes")).value(0, 0).toInt(), 3);

    // Closing brings the distribution center codes up to date.
    EXPECT_TRUE(form->close());
    EXPECT_EQ(db().execute(QStringLiteral("Select Dist_Center_Cd from Routes where Route_ID = 'R3'"))
                  .value(0, 0)
                  .toString(),
              "NK");
    EXPECT_EQ(db().execute(QStringLiteral("Select Dist_Center_Cd from Routes where Route_ID = 'R2'"))
                  .value(0, 0)
                  .toString(),
              "");
}

TEST_P(RouteEditor, TheOverrideScreenLooksUpPostalCodesMapsAndPrintsDirections)
{
    addClient(1);
    insertRow(db(), QStringLiteral("Zips"),
              {{QStringLiteral("Zip"), QStringLiteral("19107")},
               {QStringLiteral("City"), QStringLiteral("Philadelphia")},
               {QStringLiteral("St"), QStringLiteral("PA")}});
    db().execute(
        QStringLiteral("Update Config set Mapping = 'Q', Mapping_URL = :U"),
        {{QStringLiteral("U"), QStringLiteral("https://maps.example/?a=AXXX&c=CXXX&s=SXXX&z=ZXXX")}});
    RecordServices services(db(), ui);
    TFormAddressOverride form(services, session, {1, QStringLiteral("C001"), 0});
    EXPECT_FALSE(form.canPrintDirections()); // no printer, no row
    std::vector<std::pair<qint64, qint64>> printed;
    form.setDirectionsPrinter([&](qint64 person, qint64 record) { printed.emplace_back(person, record); });
    EXPECT_FALSE(form.canPrintDirections()); // no row yet
    EXPECT_TRUE(form.mappedAddressUrl().isEmpty());

    form.ActionAddAddress();
    QueryDataSet& set = form.dataSet();
    set.edit();
    set.setFieldValue(u"Address1", QStringLiteral("12 Elm St"));
    set.setFieldValue(u"ZIP", QStringLiteral("19107-1234"));
    EXPECT_TRUE(form.zipLeft());
    EXPECT_EQ(set.fieldValue(u"City").toString(), "Philadelphia");
    EXPECT_EQ(set.fieldValue(u"State").toString(), "PA");
    set.setFieldValue(u"DOW", QStringLiteral("MON"));
    set.setFieldValue(u"Route", QStringLiteral("R2"));
    EXPECT_EQ(form.mappedAddressUrl().toString(),
              "https://maps.example/?a=12+Elm+St&c=Philadelphia&s=PA&z=19107-1234");

    // An unposted row is asked about before printing; No drops the change.
    ASSERT_TRUE(form.canPrintDirections());
    ui.answerNext(Answer::Yes);
    form.ActionPrintDeliveryDirections();
    EXPECT_EQ(ui.texts(Kind::Question).last(), "Save the changes to this address?");
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].first, 1);
    EXPECT_EQ(printed[0].second, set.fieldValue(u"RecordID").toLongLong());
    EXPECT_EQ(db().execute(QStringLiteral("Select City from Address_Overrides")).value(0, 0).toString(),
              "Philadelphia");

    // Another agency maps with the desktop program, not on the web.
    db().execute(QStringLiteral("Update Config set Mapping = 'M'"));
    TFormAddressOverride other(services, session, {1, QStringLiteral("C001"), 0});
    EXPECT_FALSE(other.canLocateOnMap());
    EXPECT_TRUE(other.mappedAddressUrl().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Stores, RouteEditor, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
