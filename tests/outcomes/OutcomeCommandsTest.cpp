// The deliveries and reassign-funding commands through the real
// kettlebrook executable: what they print, what they refuse, and that a
// refusal or a No changes nothing.

#include "SavedDeliveriesFixture.h"

#include "RunCommand.h"

#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

const QDate monday(2024, 3, 4);

class OutcomeCommands : public SavedDeliveriesFixture
{
protected:
    void SetUp() override
    {
        SavedDeliveriesFixture::SetUp();
        if (IsSkipped()) return;
        isolateHome();
        addUsers({QStringLiteral("W"), QStringLiteral("R")});
        addClient(11, QStringLiteral("C11"), QStringLiteral("Abbott"), QStringLiteral("Ann"));
        addService(1, QStringLiteral("Home Meals"), 7);
        addItem(1, QStringLiteral("Lunch"), QStringLiteral("L"), QStringLiteral("4.50"));
        addFunding(QStringLiteral("AAA"), QStringLiteral("Area Agency"));
        addFunding(QStringLiteral("T3"), QStringLiteral("Title III"));
        addDelivery(1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 2}});
        addDelivery(2, 11, monday, 1, QStringLiteral("EW"), QStringLiteral("AAA"), {}, {{1, 1}});
        addDelivery(3, 11, monday.addDays(1), 1, QStringLiteral("OD"), QStringLiteral("AAA"),
                    QStringLiteral("M"), {{1, 1}});
        addEvent(11, monday, 7, QStringLiteral("AAA"));
    }

    CommandResult run(const QStringList& words, const QString& user = QStringLiteral("userW"))
    {
        return runAs(user, words);
    }
    QString fundings()
    {
        const ResultSet r =
            db().execute(QStringLiteral("Select Funding_Desc from Deliveri order by Deliv_ID"));
        QStringList out;
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            out << r.value(i, 0).toString();
        return out.join(u',');
    }
};

TEST_P(OutcomeCommands, DeliveriesListsCompsReversesAndDeletes)
{
    const auto list = run({QStringLiteral("deliveries"), QStringLiteral("11")});
    ASSERT_EQ(list.exitCode, 0) << list.err.toStdString();
    QStringList lines = list.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Deliv_Dt,Svcs_Used,Delivery_Type,DOW,")));
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("2024-03-05,1,OD,TUE,"))) << lines[1].toStdString();
    const auto range =
        run({QStringLiteral("deliveries"), QStringLiteral("11"), QStringLiteral("--from"),
             QStringLiteral("2024-03-05"), QStringLiteral("--to"), QStringLiteral("2024-03-31")});
    EXPECT_EQ(range.out.split(u'\n', Qt::SkipEmptyParts).size(), 2);
    EXPECT_EQ(run({QStringLiteral("deliveries"), QStringLiteral("11"), QStringLiteral("--from"),
                   QStringLiteral("2024-03-05")})
                  .exitCode,
              2);

    // Two deliveries on Monday: the command wants to know which.
    const auto ambiguous = run({QStringLiteral("deliveries"), QStringLiteral("comp"), QStringLiteral("11"),
                                QStringLiteral("2024-03-04")});
    EXPECT_EQ(ambiguous.exitCode, 2);
    EXPECT_TRUE(ambiguous.err.contains(QStringLiteral("--deliv-id"))) << ambiguous.err.toStdString();

    const auto comp = run({QStringLiteral("deliveries"), QStringLiteral("comp"), QStringLiteral("11"),
                           QStringLiteral("2024-03-04"), QStringLiteral("--deliv-id"), QStringLiteral("1"),
                           QStringLiteral("--reason"), QStringLiteral("Late")});
    ASSERT_EQ(comp.exitCode, 0) << comp.err.toStdString();
    EXPECT_EQ(comp.out, QStringLiteral("Deliv_ID,Deliv_Dt,Delivery_Status,Deleted\n1,2024-03-04,C,false\n"));
    EXPECT_TRUE(historyEvents().contains(QStringLiteral("3/4/2024 deliv comped-Late")));

    // A missed delivery is comped only with --yes.
    const QStringList compMissed{QStringLiteral("deliveries"), QStringLiteral("comp"), QStringLiteral("11"),
                                 QStringLiteral("2024-03-05")};
    const auto refused = run(compMissed);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("That delivery was missed! Change it to Comped?")));
    EXPECT_EQ(scalar(QStringLiteral("Select Delivery_Status from Deliveri where Deliv_ID = 3")).toString(),
              QStringLiteral("M"));
    EXPECT_EQ(run(compMissed + QStringList{QStringLiteral("--yes")}).exitCode, 0);
    EXPECT_EQ(scalar(QStringLiteral("Select Delivery_Status from Deliveri where Deliv_ID = 3")).toString(),
              QStringLiteral("C"));
    const auto reverse = run({QStringLiteral("deliveries"), QStringLiteral("reverse"), QStringLiteral("11"),
                              QStringLiteral("2024-03-05"), QStringLiteral("--yes")});
    EXPECT_EQ(reverse.out,
              QStringLiteral("Deliv_ID,Deliv_Dt,Delivery_Status,Deleted\n3,2024-03-05,,false\n"));

    // A read-only user changes nothing.
    const auto readOnly = run({QStringLiteral("deliveries"), QStringLiteral("delete"), QStringLiteral("11"),
                               QStringLiteral("2024-03-05"), QStringLiteral("--yes")},
                              QStringLiteral("userR"));
    EXPECT_EQ(readOnly.exitCode, 1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 3);

    const auto deleted = run({QStringLiteral("deliveries"), QStringLiteral("delete"), QStringLiteral("11"),
                              QStringLiteral("2024-03-05"), QStringLiteral("--yes")});
    ASSERT_EQ(deleted.exitCode, 0) << deleted.err.toStdString();
    EXPECT_EQ(deleted.out, QStringLiteral("Deliv_ID,Deliv_Dt,Delivery_Status,Deleted\n3,,,true\n"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt where Deliv_ID = 3")), 0);

    // The group of walk-ins of Monday, then nothing left to match.
    const QStringList group{QStringLiteral("deliveries"), QStringLiteral("delete"),
                            QStringLiteral("2024-03-04"), QStringLiteral("--client"),
                            QStringLiteral("11"),         QStringLiteral("--kinds"),
                            QStringLiteral("walk-ins")};
    const auto walkIns = run(group);
    ASSERT_EQ(walkIns.exitCode, 0) << walkIns.err.toStdString();
    EXPECT_EQ(walkIns.out, QStringLiteral("Deliveries,Items\n1,1\n"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 1);
    const auto none = run(group);
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.contains(QStringLiteral("did not have any deliveries")));
}

TEST_P(OutcomeCommands, ReassignFundingAsksPrintsTheRowsMovedAndChecksItsWords)
{
    const QStringList words{QStringLiteral("reassign-funding"),
                            QStringLiteral("11"),
                            QStringLiteral("--service"),
                            QStringLiteral("1"),
                            QStringLiteral("--from"),
                            QStringLiteral("2024-03-04"),
                            QStringLiteral("--to"),
                            QStringLiteral("2024-03-04"),
                            QStringLiteral("--to-funding"),
                            QStringLiteral("t3")};
    const auto no = run(words);
    EXPECT_EQ(no.exitCode, 1);
    EXPECT_EQ(fundings(), QStringLiteral("AAA,AAA,AAA"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History where Person_ID = 11")), 0);

    const auto yes = run(words + QStringList{QStringLiteral("--yes")});
    ASSERT_EQ(yes.exitCode, 0) << yes.err.toStdString();
    EXPECT_EQ(yes.out,
              QStringLiteral(
                  "Deliv_ID,Deliv_Dt,Old_Funding,New_Funding\n1,2024-03-04,AAA,T3\n2,2024-03-04,AAA,T3\n"));
    EXPECT_EQ(fundings(), QStringLiteral("T3,T3,AAA"));
    EXPECT_EQ(scalar(QStringLiteral("Select Funding_Desc from Events")).toString(), QStringLiteral("T3"));

    const auto removed = run(
        {QStringLiteral("reassign-funding"), QStringLiteral("11"), QStringLiteral("--service"),
         QStringLiteral("1"), QStringLiteral("--from"), QStringLiteral("2024-03-01"), QStringLiteral("--to"),
         QStringLiteral("2024-03-31"), QStringLiteral("--remove"), QStringLiteral("--yes")});
    ASSERT_EQ(removed.exitCode, 0) << removed.err.toStdString();
    EXPECT_EQ(removed.out.count(u'\n'), 4);
    EXPECT_EQ(fundings(), QStringLiteral(",,"));

    // Bad words and unknown keys change nothing.
    EXPECT_EQ(run({QStringLiteral("reassign-funding"), QStringLiteral("11"), QStringLiteral("--service"),
                   QStringLiteral("1"), QStringLiteral("--from"), QStringLiteral("2024-03-01"),
                   QStringLiteral("--to"), QStringLiteral("2024-03-31"), QStringLiteral("--yes")})
                  .exitCode,
              2);
    const auto unknown =
        run({QStringLiteral("reassign-funding"), QStringLiteral("11"), QStringLiteral("--service"),
             QStringLiteral("1"), QStringLiteral("--from"), QStringLiteral("2024-03-01"),
             QStringLiteral("--to"), QStringLiteral("2024-03-31"), QStringLiteral("--to-funding"),
             QStringLiteral("ZZZ"), QStringLiteral("--yes")});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_TRUE(unknown.err.contains(QStringLiteral("ZZZ"))) << unknown.err.toStdString();
    EXPECT_EQ(fundings(), QStringLiteral(",,"));
}

INSTANTIATE_TEST_SUITE_P(Stores, OutcomeCommands, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
