// Which clients a prepared run holds, on real data directories: the rules on
// dates, weekdays, frequencies, suspensions and dated deliveries.

#include "RunFixture.h"

using namespace kb;
using namespace kb::test;

namespace {

using RunSelection = RunFixture;

TEST_F(RunSelection, OngoingClientsByStatusDatesServiceAndWeekday)
{
    addClient(1);                                                             // due
    addClient(2, {{QStringLiteral("Start_Dte"), monday}});                   // starts that day: due
    addClient(3, {{QStringLiteral("Stop_Dte"), monday}});                    // stops that day: not due
    addClient(4, {{QStringLiteral("Stop_Dte"), monday.addDays(1)}});         // stops the day after: due
    addClient(5, {{QStringLiteral("Start_Dte"), monday.addDays(1)}});        // not started
    addClient(6, {{QStringLiteral("Status"), QStringLiteral("I")}});         // inactive
    addClient(7, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});  // episodic only
    addClient(8, {{QStringLiteral("Client_ID"), QVariant()}});               // no client number
    addClient(9, {{QStringLiteral("Svcs_Used"), 0}});                        // no service
    addClient(10, {{QStringLiteral("Monday"), false}});                      // not on Mondays
    addClient(11, {{QStringLiteral("Start_Dte"), QVariant()}});              // no start date
    const ResultSet rows = prepare(monday, u'O');
    EXPECT_EQ(persons(rows), (QList<int>{1, 2, 4}));
    // Tuesday flag off, Monday on: the Tuesday run leaves client 12 out.
    addClient(12, {{QStringLiteral("Tuesday"), false}});
    EXPECT_TRUE(persons(prepare(monday, u'O')).contains(12));
    EXPECT_FALSE(persons(prepare(monday.addDays(1), u'O')).contains(12));
}

TEST_F(RunSelection, SuspensionCoversItsStopDateAndEndsTheDayBeforeItsResumeDate)
{
    addClient(1);
    addClient(2);
    addClient(3);
    addClient(4);
    addSuspension(1, monday, monday.addDays(7));           // stops that day
    addSuspension(2, monday.addDays(-7), monday);          // resumes that day
    addSuspension(3, monday.addDays(-7), monday.addDays(1)); // covers it
    addSuspension(4, monday.addDays(1), monday.addDays(7)); // starts later
    EXPECT_EQ(persons(prepare(monday, u'O')), (QList<int>{2, 4}));
}

TEST_F(RunSelection, FrequencyDecidesTheWeeks)
{
    // 11 March 2024: week 6480 (even), the second Monday of March.
    addClient(1, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral("O")}});
    addClient(2, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral("E")}});
    addClient(3, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral("2")}});
    addClient(4, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral("1")}});
    addClient(5, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral(" ")}});
    addClient(6, {{QStringLiteral("Ongoing_Frequency"), QVariant()}});
    EXPECT_EQ(persons(prepare(monday, u'O')), (QList<int>{2, 3, 5, 6}));
    // The Sunday after is still week 6480; the Monday after is odd, third in its month.
    EXPECT_EQ(persons(prepare(QDate(2024, 3, 17), u'O')), (QList<int>{2, 5, 6}));
    EXPECT_EQ(persons(prepare(QDate(2024, 3, 18), u'O')), (QList<int>{1, 5, 6}));
}

TEST_F(RunSelection, RouteAndStopFollowTheWeekdayRoute)
{
    addClient(1, {{QStringLiteral("Mon_Stop"), 5.0}});                        // weekday route empty: defaults
    addClient(2, {{QStringLiteral("Mon_Rte"), QStringLiteral("R2")}});        // weekday route, no stop: 0
    addClient(3, {{QStringLiteral("Mon_Rte"), QStringLiteral("R2")}, {QStringLiteral("Mon_Stop"), 7.5}});
    addClient(4, {{QStringLiteral("Def_Stop"), QVariant()}});                 // no stop at all: 0
    const ResultSet rows = prepare(monday, u'O');
    EXPECT_EQ(field(rows, 1, QStringLiteral("Route_ID")).toString(), "R1");
    EXPECT_DOUBLE_EQ(field(rows, 1, QStringLiteral("Stop")).toDouble(), 1.0);
    EXPECT_EQ(field(rows, 2, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_DOUBLE_EQ(field(rows, 2, QStringLiteral("Stop")).toDouble(), 0.0);
    EXPECT_FALSE(field(rows, 2, QStringLiteral("Stop")).isNull());
    EXPECT_DOUBLE_EQ(field(rows, 3, QStringLiteral("Stop")).toDouble(), 7.5);
    EXPECT_DOUBLE_EQ(field(rows, 4, QStringLiteral("Stop")).toDouble(), 0.0);
    // The run's order: route, stop, client.
    EXPECT_EQ(persons(rows), (QList<int>{4, 1, 2, 3}));
    // On Tuesday client 2 and 3 fall back to the defaults.
    const ResultSet tuesday = prepare(monday.addDays(1), u'O');
    EXPECT_EQ(field(tuesday, 3, QStringLiteral("Route_ID")).toString(), "R1");
    EXPECT_DOUBLE_EQ(field(tuesday, 3, QStringLiteral("Stop")).toDouble(), 3.0);
}

TEST_F(RunSelection, MissingRouteIsToldAndTheRowStays)
{
    addClient(1, {{QStringLiteral("Def_Rte"), QVariant()}, {QStringLiteral("Mid_Name"), QStringLiteral("Q")}});
    addClient(2, {{QStringLiteral("Def_Rte"), QStringLiteral("     ")}});
    addClient(3);
    const ResultSet rows = prepare(monday, u'O');
    EXPECT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error),
              (QStringList{QStringLiteral("First1 Q Last1 is missing a Route for this day. Processing can not proceed!"),
                           QStringLiteral("First2 Last2 is missing a Route for this day. Processing can not proceed!")}));
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Route_ID")).isNull());
}

TEST_F(RunSelection, DatedDeliveriesByScheduleTypeAndClientType)
{
    const Params episodic = {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}};
    addClient(1, episodic);
    addClient(2, episodic);
    addClient(3, {{QStringLiteral("Monday"), false}, {QStringLiteral("Ongoing_Frequency"), QStringLiteral("O")}});
    addClient(4, episodic);
    addClient(5);
    addClient(6, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}, {QStringLiteral("Status"), QStringLiteral("S")}});
    addDated(1, monday, QStringLiteral("E"));
    addDated(2, monday, QStringLiteral("E"), {{QStringLiteral("Delivery_Type"), QStringLiteral("W")},
                                              {QStringLiteral("Fulfilled"), QStringLiteral("Y")}});
    addDated(3, monday, QStringLiteral("S"));           // weekday and frequency play no part
    addDated(4, monday, QStringLiteral("S"));           // "S" needs an ongoing client
    addDated(5, monday, QStringLiteral("E"));           // "E" needs an episodic client
    addDated(5, monday, QStringLiteral("S"));           // due twice: ongoing and scheduled
    addDated(6, monday, QStringLiteral("E"));           // not active
    addDated(1, monday.addDays(1), QStringLiteral("E")); // another date

    const ResultSet rows = prepare(monday, u'A');
    EXPECT_EQ(persons(rows), (QList<int>{5, 1, 2, 3, 5}));
    const int type = rows.columnIndex(u"Delivery_Type");
    const int delivId = rows.columnIndex(u"Deliv_ID");
    QStringList types;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        types.append(rows.value(r, type).toString());
    EXPECT_EQ(types, (QStringList{"OD", "ED", "EW", "SD", "SD"}));
    // Dated rows carry their record number, route and stop; ongoing rows 0.
    const ResultSet ids = db().execute(QStringLiteral("select RecordID from EpisodicDeliveries where Person_ID = 1 and "
                                                      "Deliv_Date = :D"), {{QStringLiteral("D"), monday}});
    EXPECT_EQ(field(rows, 1, QStringLiteral("Deliv_ID")).toLongLong(), ids.value(0, 0).toLongLong());
    EXPECT_EQ(rows.value(0, delivId).toLongLong(), 0);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_DOUBLE_EQ(field(rows, 1, QStringLiteral("Stop")).toDouble(), 51.0);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Svcs_Used")).toInt(), 2);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Services_Used_Named")).toString(), "Frozen Meals");
}

TEST_F(RunSelection, DeliveryTypeLettersChooseTheSelections)
{
    addClient(1);
    addClient(2, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addClient(3);
    addDated(2, monday, QStringLiteral("E"));
    addDated(3, monday, QStringLiteral("S"));
    const auto typesOf = [&](QChar letter) {
        const ResultSet rows = prepare(monday, letter);
        QStringList types;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            types.append(rows.value(r, QStringLiteral("Delivery_Type")).toString());
        types.sort();
        return types;
    };
    EXPECT_EQ(typesOf(u'A'), (QStringList{"ED", "OD", "OD", "SD"}));
    EXPECT_EQ(typesOf(u'O'), (QStringList{"OD", "OD"}));
    EXPECT_EQ(typesOf(u'E'), (QStringList{"ED"}));
    EXPECT_EQ(typesOf(u'S'), (QStringList{"SD"}));
    EXPECT_EQ(typesOf(u'B'), (QStringList{"ED", "SD"}));
    EXPECT_THROW(form().SetDeliveryType(u'X'), std::invalid_argument);
}

TEST_F(RunSelection, SuspendedClientsAndDatedDeliveries)
{
    addClient(1);                                                             // ongoing, suspended
    addClient(2, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});  // episodic, suspended
    addSuspension(1, monday.addDays(-1), monday.addDays(3));
    addSuspension(2, monday.addDays(-1), monday.addDays(3));
    addDated(1, monday, QStringLiteral("S"));
    addDated(2, monday, QStringLiteral("E"));

    setConfig(QStringLiteral("SUSPEND_SCHEDULED_DELIVERIES"), true);
    EXPECT_EQ(persons(prepare(monday)), (QList<int>{2}));
    setConfig(QStringLiteral("SUSPEND_SCHEDULED_DELIVERIES"), false);
    EXPECT_EQ(persons(prepare(monday)), (QList<int>{1, 2}));
    EXPECT_EQ(field(prepare(monday), 1, QStringLiteral("Delivery_Type")).toString(), "SD");
}

} // namespace
