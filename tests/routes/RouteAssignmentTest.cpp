// Routes and a client's place on them, and alternate addresses: the route
// table's rules, the weekday routes screen, reassigning future deliveries,
// and the address override screen with the rule that picks a date's address.

#include "OrderRoutesFixture.h"

#include "overrides/AddressOverrideRules.h"
#include "assign/RouteRules.h"
#include "assign/TFormAltRoutes.h"
#include "assign/TFormReassignScheduledAndEpisodicRoutes.h"
#include "dataset/QueryDataSet.h"
#include "overrides/TFormAddressOverride.h"
#include "records/RecordServices.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class RouteAssignment : public OrderRoutesFixture
{
protected:
    void addOverride(int person, const QString& type, const Params& values)
    {
        Params all = {{QStringLiteral("Person_ID"), person},
                      {QStringLiteral("Client_ID"), QStringLiteral("C%1").arg(person, 3, 10, QLatin1Char('0'))},
                      {QStringLiteral("Override_Type"), type},
                      {QStringLiteral("Route"), QStringLiteral("R2")}};
        for (const auto& [name, value] : values)
            all = with(all, name, value);
        insertRow(db(), QStringLiteral("Address_Overrides"), all);
    }
    qint64 overrideId(const QString& address)
    {
        return db()
            .execute(QStringLiteral("Select RecordID from Address_Overrides where Address1 = :A"),
                     {{QStringLiteral("A"), address}})
            .value(0, 0)
            .toLongLong();
    }
};

TEST_P(RouteAssignment, ARouteCodeChangeIsCarriedOverOnlyWithConsent)
{
    addClient(1, {{QStringLiteral("Tue_Rte"), QStringLiteral("R1")}});
    addDated(1, QDate(2024, 3, 12), QStringLiteral("S"));
    addOverride(1, QStringLiteral("O"), {{QStringLiteral("Route"), QStringLiteral("R1")}});
    const auto row = [](const QString& code) { return [code](const QString&) { return QVariant(code); }; };
    QVariantMap written;
    const RouteRules::Write write = [&](const QString& c, const QVariant& v) { written[c] = v; };

    EXPECT_FALSE(RouteRules::beforePost(db(), ui, row(QString()), write, {}));
    EXPECT_EQ(ui.texts(Kind::Warning).value(0), "You must enter a value for the Route Code.");
    EXPECT_TRUE(written.contains("LAST_UPDATED"));
    EXPECT_FALSE(RouteRules::beforePost(db(), ui, row("R2"), write, row("R1")));
    EXPECT_EQ(ui.texts(Kind::Warning).value(1), "Not able to save this change- it creates a duplicated Code.");

    // No: nothing changes.
    EXPECT_FALSE(RouteRules::beforePost(db(), ui, row("R1NEW"), write, row("R1")));
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Rte")).toString(), "R1");
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(RouteRules::beforePost(db(), ui, row("R1NEW"), write, row("R1")));
    EXPECT_EQ(ui.texts(Kind::Question).size(), 2);
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Rte")).toString(), "R1NEW");
    EXPECT_EQ(clientValue(1, QStringLiteral("Tue_Rte")).toString(), "R1NEW");
    EXPECT_EQ(db().execute(QStringLiteral("Select Route from EpisodicDeliveries")).value(0, 0).toString(), "R1NEW");
    // An alternate address keeps the old code.
    EXPECT_EQ(db().execute(QStringLiteral("Select Route from Address_Overrides")).value(0, 0).toString(), "R1");

    EXPECT_TRUE(RouteRules::deleteRefusal(db(), QStringLiteral("R1")).isEmpty());
    EXPECT_TRUE(RouteRules::deleteRefusal(db(), QStringLiteral("R1NEW")).startsWith(
        "The Route you are deleting is in use by at least one Client and one or more"));
    db().execute(QStringLiteral("Delete from EpisodicDeliveries"));
    EXPECT_TRUE(RouteRules::deleteRefusal(db(), QStringLiteral("R1NEW")).startsWith(
        "The Route you are deleting is in use by at least one Client.\r\n"));

    insertRow(db(), QStringLiteral("Locatns"), {{QStringLiteral("Location_ID"), 7},
                                                {QStringLiteral("Location_CD"), QStringLiteral("KIT")},
                                                {QStringLiteral("Distribution_Center"), true}});
    db().execute(QStringLiteral("Update Routes set Dist_Center_ID = 7 where Route_ID = 'R1'"));
    RouteRules::updateDistributionCenterCodes(db());
    const ResultSet codes = db().execute(QStringLiteral("Select Route_ID, Dist_Center_Cd from Routes order by Route_ID"));
    EXPECT_EQ(codes.value(0, 1).toString(), "KIT");
    EXPECT_EQ(codes.value(1, 1).toString(), "");
}

TEST_P(RouteAssignment, WeekdayRoutesFollowServedDaysAndLiveOverridesAndCancelPutsBack)
{
    addClient(1, {{QStringLiteral("Mon_Rte"), QStringLiteral("R2")},
                  {QStringLiteral("Mon_Stop"), 4.0},
                  {QStringLiteral("Wed_Stop"), 7.0}});
    db().execute(QStringLiteral("Update Config set DMon = true, DTue = true, DWed = true, DThu = true, DFri = true, "
                                "DSat = false, DSun = false"));
    addOverride(1, QStringLiteral("O"), {{QStringLiteral("DOW"), QStringLiteral("TUE")},
                                         {QStringLiteral("Effective_Date"), QDate(2024, 1, 1)}});
    addOverride(1, QStringLiteral("O"), {{QStringLiteral("DOW"), QStringLiteral("THU")},
                                         {QStringLiteral("Expire_Date"), QDate(2024, 3, 1)}});
    QueryDataSet client(db(), QStringLiteral("select * from Clients where Person_ID = 1"));
    client.setRequestLive(true);
    client.open();
    {
        TFormAltRoutes form(client);
        EXPECT_EQ(client.state(), DataSet::State::Edit);
        EXPECT_TRUE(form.routeEnabled(0));
        EXPECT_FALSE(form.routeEnabled(1)); // a live override holds Tuesday
        EXPECT_TRUE(form.hasAddressOverride(1));
        EXPECT_TRUE(form.routeEnabled(3));  // Thursday's expired
        EXPECT_FALSE(form.routeEnabled(5)); // Saturday is not served
        EXPECT_TRUE(form.stopEnabled(0));
        EXPECT_FALSE(form.stopEnabled(2));
        form.setRoute(0, QStringLiteral("R1 - Route R1 (D)"));
        form.setStop(0, -3);
        EXPECT_EQ(form.stop(0).toDouble(), 0.0);
        form.close(false);
    }
    EXPECT_EQ(client.fieldValue(u"Mon_Rte").toString(), "R2");
    EXPECT_EQ(client.fieldValue(u"Mon_Stop").toDouble(), 4.0);
    EXPECT_EQ(client.fieldValue(u"Wed_Stop").toDouble(), 7.0); // put back as it was
    {
        TFormAltRoutes form(client);
        form.close(true);
    }
    EXPECT_TRUE(client.fieldValue(u"Wed_Stop").isNull()); // no route beside it
    clearWeekdayRoutes(client);
    clearWeekdayStops(client);
    client.post();
    EXPECT_TRUE(clientValue(1, QStringLiteral("Mon_Rte")).isNull());
    EXPECT_TRUE(clientValue(1, QStringLiteral("Mon_Stop")).isNull());
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Rte")).toString(), "R1");
}

TEST_P(RouteAssignment, ReassigningMovesFutureDeliveriesOfTheCheckedDaysOnly)
{
    addClient(1);
    addDated(1, QDate(2024, 3, 4), QStringLiteral("S"));                                      // past Monday
    addDated(1, QDate(2024, 3, 11), QStringLiteral("S"), {{QStringLiteral("Fulfilled"), QStringLiteral("Y")}}); // Monday
    addDated(1, QDate(2024, 3, 12), QStringLiteral("S"));                                     // Tuesday
    addDated(1, QDate(2024, 3, 16), QStringLiteral("E"));                                     // Saturday, episodic
    TFormReassignScheduledAndEpisodicRoutes form(db(), 1, QStringLiteral("O"));
    EXPECT_EQ(form.routeEntry(), "R1 - Route R1");
    EXPECT_EQ(form.defaultRoute(), "R1");
    EXPECT_TRUE(form.showsDayRoutes()) << "an ongoing client";
    EXPECT_FALSE(TFormReassignScheduledAndEpisodicRoutes(db(), 1, QStringLiteral("E")).showsDayRoutes());
    EXPECT_FALSE(form.okEnabled());
    form.checkAllDays();
    form.checkAllWeekdays();
    form.reverseCheckmarks();
    EXPECT_FALSE(form.okEnabled());
    form.setDayChecked(0, true);
    form.checkWeekendDays();
    form.setRouteEntry(QStringLiteral("R2 - Route R2"));
    EXPECT_TRUE(form.statement().endsWith("( EXTRACT(DAYOFWEEK FROM Deliv_Date) = 1 or EXTRACT(DAYOFWEEK FROM "
                                          "Deliv_Date) = 6 or EXTRACT(DAYOFWEEK FROM Deliv_Date) = 7 )"));
    EXPECT_EQ(form.apply(), 1);
    const ResultSet rows = db().execute(QStringLiteral("Select Route, Stop from EpisodicDeliveries order by Deliv_Date"));
    EXPECT_EQ(rows.value(0, 0).toString(), "R1");
    EXPECT_EQ(rows.value(1, 0).toString(), "R2"); // fulfilled rows move too
    EXPECT_EQ(rows.value(1, 1).toDouble(), 1.0);  // the stop stays
    EXPECT_EQ(rows.value(2, 0).toString(), "R1");
    EXPECT_EQ(rows.value(3, 0).toString(), "R1"); // an episodic row of an ongoing client is not his kind
}

TEST_P(RouteAssignment, TheAddressOfADateAndThePostingRule)
{
    addClient(1, {{QStringLiteral("Household_ID"), 5}});
    const QDate tuesday(2024, 3, 12);
    addOverride(1, QStringLiteral("D"), {{QStringLiteral("Deliv_Date"), tuesday}, {QStringLiteral("Address1"), "D"}});
    addOverride(1, QStringLiteral("O"), {{QStringLiteral("DOW"), QStringLiteral("TUE")},
                                         {QStringLiteral("Effective_Date"), QDate(2024, 3, 1)},
                                         {QStringLiteral("Address1"), "O"}});
    addOverride(1, QStringLiteral("T"), {{QStringLiteral("Effective_Date"), QDate(2024, 3, 1)},
                                         {QStringLiteral("Expire_Date"), QDate(2024, 3, 20)},
                                         {QStringLiteral("Address1"), "T"}});
    addOverride(1, QStringLiteral("M"), {{QStringLiteral("Address1"), "M"}});
    EXPECT_EQ(AddressOverrideRules::overrideOfDate(db(), 1, tuesday), overrideId("D"));
    EXPECT_EQ(AddressOverrideRules::overrideOfDate(db(), 1, tuesday.addDays(7)), overrideId("O"));
    EXPECT_EQ(AddressOverrideRules::overrideOfDate(db(), 1, QDate(2024, 3, 20)), overrideId("T")); // its last day
    EXPECT_FALSE(AddressOverrideRules::overrideOfDate(db(), 1, QDate(2024, 3, 21)));
    EXPECT_FALSE(AddressOverrideRules::overrideOfDate(db(), 1, QDate(2024, 2, 27))); // before the O row starts

    const auto refusal = [](const char* type, QVariant route, QVariant effective, QVariant expire, QVariant date,
                            QVariant dow) {
        return AddressOverrideRules::postRefusal(QString::fromLatin1(type), route, effective, expire, date, dow);
    };
    const QDate d(2024, 3, 6);
    EXPECT_EQ(refusal("O", QVariant(), d, QVariant(), QVariant(), "MON"), "You must provide a Route for this address!");
    EXPECT_EQ(refusal("T", "R1", d, d, QVariant(), QVariant()),
              "If there is an Expiration Date it must be later than the Effective Date!");
    EXPECT_EQ(refusal("D", "R1", QVariant(), QVariant(), QVariant(), QVariant()), "You must provide an Effective Date!");
    EXPECT_EQ(refusal("O", "R1", d, QVariant(), QVariant(), QVariant()),
              "You must provide a Day of the Week for the selected Day-of-the-Week address!");
    EXPECT_EQ(refusal("M", QVariant(), QVariant(), d, QVariant(), QVariant()), "");
    EXPECT_EQ(AddressOverrideRules::clearedColumns("D"), (QStringList{"Effective_Date", "Expire_Date", "DOW"}));
}

TEST_P(RouteAssignment, TheAddressOverridesScreenAddsDuplicatesAndDeletes)
{
    addClient(1, {{QStringLiteral("Household_ID"), 5}});
    addOverride(1, QStringLiteral("T"), {{QStringLiteral("Effective_Date"), QDate(2024, 3, 1)},
                                         {QStringLiteral("Address1"), "9 Elm St"},
                                         {QStringLiteral("Route"), QStringLiteral("R2")}});
    RecordServices services(db(), ui);
    TFormAddressOverride form(services, session, {1, QStringLiteral("C001"), 5});
    EXPECT_TRUE(form.fieldsEnabled());
    EXPECT_FALSE(form.isShown(QStringLiteral("DOW")));
    EXPECT_EQ(form.cityLabel(), "City State Zip:");

    form.ActionDuplicateAddress();
    EXPECT_EQ(form.dataSet().recordCount(), 2);
    EXPECT_EQ(form.dataSet().fieldValue(u"Address1").toString(), "9 Elm St");
    EXPECT_EQ(form.dataSet().fieldValue(u"Override_Type").toString(), "O");
    EXPECT_EQ(form.dataSet().fieldValue(u"Effective_Date").toDate(), QDate(2024, 3, 6));
    EXPECT_EQ(form.dataSet().fieldValue(u"Created_By").toString(), "Pat Tester");
    EXPECT_EQ(ui.texts(Kind::Information).value(0), "This client is a member of a household. You may need to see if "
                                                    "\r\nthe other household members need the same alternate address.");
    // A new weekday address has no weekday and cannot be posted yet.
    ui.answerNext(Answer::Yes);
    EXPECT_FALSE(form.close());
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"You must provide a Day of the Week for the selected Day-of-the-Week address!"});
    form.dataSet().setFieldValue(u"DOW", QStringLiteral("WED"));
    form.dataSet().post();
    EXPECT_EQ(db().execute(QStringLiteral("Select count(*) from Address_Overrides where DOW = 'WED' and Route = 'R2'"))
                  .value(0, 0)
                  .toInt(),
              1);

    EXPECT_TRUE(form.ActionLocateDate(QDate(2024, 3, 13)));
    EXPECT_EQ(form.dataSet().fieldValue(u"DOW").toString(), "WED");
    EXPECT_FALSE(form.ActionLocateDate(QDate(2024, 2, 1)));
    EXPECT_EQ(ui.texts(Kind::Information).last(), "There is no alternate address on file which is valid for that date.");
    // "Locate Address" first offers the agency's today, a Wednesday, on which the new address applies.
    EXPECT_EQ(form.locateDateDefault(), QDate(2024, 3, 6));
    EXPECT_TRUE(form.ActionLocateDate(form.locateDateDefault()));
    EXPECT_EQ(form.dataSet().fieldValue(u"DOW").toString(), "WED");

    form.ActionDeleteAddress(); // the script answers No: Cancel
    EXPECT_EQ(form.dataSet().recordCount(), 2);
    ui.answerNext(Answer::Ok);
    form.ActionDeleteAddress();
    EXPECT_EQ(form.dataSet().recordCount(), 1);
    EXPECT_TRUE(ui.texts(Kind::Information).last().contains("which needs to be deleted."));
    form.setType(QStringLiteral("D"));
    EXPECT_TRUE(form.dataSet().fieldValue(u"Effective_Date").isNull());
    EXPECT_TRUE(form.close()); // No: the change is dropped
    EXPECT_EQ(db().execute(QStringLiteral("Select Override_Type from Address_Overrides")).value(0, 0).toString(), "T");
}

INSTANTIATE_TEST_SUITE_P(Stores, RouteAssignment, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
