// A client's list memberships: which lists are offered, what a membership
// row holds, and what each access level may do.

#include "ClientRulesFixture.h"

#include "Clock.h"
#include "lists/TFormListMembership.h"

namespace kb::test {

namespace {

using Kind = ScriptedUserInterface::Kind;

class ListMemberships : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        addClient(1);
        addClient(2);
        list(10, "Newsletter", "LST");
        list(11, "Holiday Party", "LST");
        list(12, "Volunteers", "LST");
        list(13, "Thanksgiving Extra", "SCH"); // a list of dated deliveries, not a mailing list
        // Client 2 is already on the newsletter: that does not hide it from client 1.
        insertRow(db(), QStringLiteral("List_Members"),
                  {{QStringLiteral("List_ID"), 10},
                   {QStringLiteral("Person_ID"), 2},
                   {QStringLiteral("Client_ID"), QStringLiteral("2.0")}});
    }
    void list(int id, const char* name, const char* reason)
    {
        insertRow(db(), QStringLiteral("Lists"),
                  {{QStringLiteral("Record_ID"), id},
                   {QStringLiteral("List_Name"), QString::fromLatin1(name)},
                   {QStringLiteral("Reason"), QString::fromLatin1(reason)}});
    }
    std::unique_ptr<TFormListMembership> form(const QString& level)
    {
        return std::make_unique<TFormListMembership>(
            ws->services, ui(), data->clock(), QStringLiteral("Pat Tester"), level,
            TFormListMembership::Client{1, QStringLiteral("1.0"), QStringLiteral("First1 Last1")});
    }
    static QStringList names(DataSet& set, const char* field)
    {
        QStringList list;
        for (int r = 0; r < set.recordCount(); ++r)
            list.append(set.fieldValueAt(r, set.fieldIndex(QString::fromLatin1(field))).toString());
        return list;
    }
};

} // namespace

TEST_P(ListMemberships, AClientIsAddedToTheListsLeftAndRemovedAfterAsking)
{
    auto f = form(QStringLiteral("W"));
    EXPECT_EQ(f->caption(), QStringLiteral("List Memberships for First1 Last1"));
    ASSERT_TRUE(f->FormShow());
    EXPECT_TRUE(f->mayChange());
    EXPECT_EQ(names(f->available(), "List_Name"),
              (QStringList{QStringLiteral("Holiday Party"), QStringLiteral("Newsletter"),
                           QStringLiteral("Volunteers")}));
    EXPECT_EQ(f->members().recordCount(), 0);

    // The second available one, "Newsletter".
    ASSERT_TRUE(f->AddClientToList(1));
    EXPECT_EQ(names(f->members(), "List_Name"), QStringList{QStringLiteral("Newsletter")});
    EXPECT_EQ(names(f->available(), "List_Name"),
              (QStringList{QStringLiteral("Holiday Party"), QStringLiteral("Volunteers")}));
    const ResultSet row = db().execute(QStringLiteral(
        "select List_ID, RecVisible, Client_ID, Create_Date, Updated_By, Last_Update from List_Members where "
        "Person_ID = 1"));
    ASSERT_EQ(row.rowCount(), 1);
    EXPECT_EQ(row.value(0, 0).toInt(), 10);
    EXPECT_TRUE(row.value(0, 1).toBool());
    EXPECT_EQ(row.value(0, 2).toString(), QStringLiteral("1.0"));
    EXPECT_EQ(row.value(0, 3).toDate(), today());
    EXPECT_EQ(row.value(0, 4).toString(), QStringLiteral("Pat Tester"));
    EXPECT_EQ(row.value(0, 5).toDateTime(), data->clock().now());

    // An edit of the membership is stamped.
    f->setMemberValue(0, QStringLiteral("Confirmed"), QStringLiteral("Y"));
    EXPECT_EQ(
        db().execute(QStringLiteral("select Confirmed from List_Members where Person_ID = 1")).value(0, 0),
        QStringLiteral("Y"));

    ASSERT_TRUE(f->AddClientToList(0));
    ASSERT_TRUE(f->AddClientToList(0));
    EXPECT_EQ(f->available().recordCount(), 0);
    EXPECT_FALSE(f->AddClientToList(0));
    EXPECT_EQ(ui().texts(Kind::Information), QStringList{TFormListMembership::noListText()});

    // No keeps it, Yes removes it and offers the list again.
    ui().answerNext(Answer::No);
    EXPECT_FALSE(f->RemoveClientFromList(0));
    EXPECT_EQ(f->members().recordCount(), 3);
    ui().answerNext(Answer::Yes);
    EXPECT_TRUE(f->RemoveClientFromList(0));
    EXPECT_EQ(f->members().recordCount(), 2);
    EXPECT_EQ(f->available().recordCount(), 1);
    EXPECT_EQ(ui().texts(Kind::Question),
              (QStringList{TFormListMembership::removeQuestion(), TFormListMembership::removeQuestion()}));
    // The other client's membership was never touched.
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from List_Members where Person_ID = 2"))
                  .value(0, 0)
                  .toInt(),
              1);
}

TEST_P(ListMemberships, TheAccessLevelDecidesWhatTheScreenOffers)
{
    insertRow(db(), QStringLiteral("List_Members"),
              {{QStringLiteral("List_ID"), 11},
               {QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Client_ID"), QStringLiteral("1.0")}});

    // "A" works like "W".
    EXPECT_TRUE(form(QStringLiteral("A"))->mayChange());

    // Read-only: the lists show, nothing changes.
    auto reader = form(QStringLiteral("R"));
    ASSERT_TRUE(reader->FormShow());
    EXPECT_TRUE(reader->listsVisible());
    EXPECT_FALSE(reader->mayChange());
    EXPECT_EQ(reader->members().recordCount(), 1);
    EXPECT_TRUE(reader->members().isReadOnly());
    EXPECT_FALSE(reader->AddClientToList(0));
    ui().answerNext(Answer::Yes);
    EXPECT_FALSE(reader->RemoveClientFromList(0));
    EXPECT_TRUE(ui().texts(Kind::Question).isEmpty());
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from List_Members where Person_ID = 1"))
                  .value(0, 0)
                  .toInt(),
              1);

    // Reports only: no lists at all.
    auto reports = form(QStringLiteral("O"));
    ASSERT_TRUE(reports->FormShow());
    EXPECT_FALSE(reports->listsVisible());
    EXPECT_FALSE(reports->members().isActive());
    EXPECT_FALSE(reports->available().isActive());

    // A level outside the four is the end of the program.
    auto unknown = form(QStringLiteral("Z"));
    EXPECT_FALSE(unknown->FormShow());
    EXPECT_EQ(ui().texts(Kind::Error), QStringList{TFormListMembership::badLevelText()});
    EXPECT_EQ(ui().terminationRequests(), 1);
    EXPECT_FALSE(unknown->members().isActive());
}

INSTANTIATE_TEST_SUITE_P(Stores, ListMemberships, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace kb::test
