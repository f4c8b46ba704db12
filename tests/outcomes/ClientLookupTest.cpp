// The client look-up on both stores: found by name without regard to case,
// by "Last, First" and by client number, read a window at a time in a
// stable order, persons without a Client_ID left out, hostile text harmless.

#include "ClientLookup.h"
#include "InsertRow.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class ClientLookupTest : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
    }
    Database& db() { return data->db(); }
    void client(qint64 person, const QVariant& clientId, const QString& last, const QString& first)
    {
        insertRow(db(), QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Client_ID"), clientId},
                   {QStringLiteral("Last_Name"), last},
                   {QStringLiteral("First_Name"), first},
                   {QStringLiteral("City"), QStringLiteral("Troy")}});
    }
    static QStringList names(const ClientLookup& lookup)
    {
        QStringList out;
        for (const auto& r : lookup.rows())
            out << r.lastFirst;
        return out;
    }

    std::unique_ptr<TempDataDir> data;
};

TEST_P(ClientLookupTest, FindsByNameAndNumberAWindowAtATime)
{
    client(1, QStringLiteral("100"), QStringLiteral("Baker"), QStringLiteral("Bo"));
    client(2, QStringLiteral("101"), QStringLiteral("baker"), QStringLiteral("al"));
    client(3, QStringLiteral("102"), QStringLiteral("BAKER"), QStringLiteral("Cy"));
    client(4, QStringLiteral("200"), QStringLiteral("Bakerson"), QStringLiteral("Ann"));
    client(5, QStringLiteral("201"), QStringLiteral("Abbott"), QStringLiteral("Zed"));
    client(6, QVariant(), QStringLiteral("Baker"), QStringLiteral("Aaron")); // no Client_ID: not a client
    client(7, QStringLiteral(""), QStringLiteral("Baker"), QStringLiteral("Abe"));
    // 230 more, so that the list needs more than two windows.
    for (int i = 0; i < 230; ++i)
        client(100 + i, QStringLiteral("Z%1").arg(i, 3, 10, QLatin1Char('0')), QStringLiteral("Young"),
               QStringLiteral("F%1").arg(i, 3, 10, QLatin1Char('0')));

    ClientLookup lookup(db(), QStringLiteral("Locate"));
    lookup.search(QStringLiteral("bak"));
    ASSERT_GE(lookup.rows().size(), 4u);
    EXPECT_TRUE(lookup.found());
    EXPECT_EQ(names(lookup).mid(0, 4), (QStringList{"baker, al", "Baker, Bo", "BAKER, Cy", "Bakerson, Ann"}));
    EXPECT_EQ(lookup.current(), 0);
    EXPECT_EQ(lookup.choose()->personId, 2);

    // "Last, First": the first name counts within the same last name only.
    lookup.search(QStringLiteral("baker, c"));
    EXPECT_EQ(names(lookup).mid(0, 2), (QStringList{"BAKER, Cy", "Bakerson, Ann"}));
    EXPECT_TRUE(lookup.found());
    lookup.search(QStringLiteral("Baker, D"));
    EXPECT_EQ(names(lookup).front(), QStringLiteral("Bakerson, Ann"));
    EXPECT_FALSE(lookup.found());
    lookup.search(QStringLiteral("Zzz"));
    EXPECT_TRUE(lookup.rows().empty());
    EXPECT_FALSE(lookup.okEnabled());
    EXPECT_FALSE(lookup.choose());

    // From the top, a window at a time; a further window keeps the rows
    // already read and in the same order.
    lookup.search(QString());
    ASSERT_EQ(lookup.rows().size(), size_t(ClientLookup::windowSize));
    EXPECT_EQ(lookup.rows().front().lastFirst, QStringLiteral("Abbott, Zed"));
    EXPECT_TRUE(lookup.canFetchMore());
    const QStringList first = names(lookup);
    lookup.fetchMore();
    ASSERT_EQ(lookup.rows().size(), size_t(2 * ClientLookup::windowSize));
    EXPECT_EQ(names(lookup).mid(0, ClientLookup::windowSize), first);
    lookup.fetchMore();
    EXPECT_EQ(lookup.rows().size(), 235u); // 5 named clients and 230 more
    EXPECT_FALSE(lookup.canFetchMore());
    EXPECT_EQ(lookup.rows().back().lastFirst, QStringLiteral("Young, F229"));

    // By number: from the number typed on, in Client_ID order.
    lookup.setSearchBy(ClientLookup::SearchBy::ClientId);
    lookup.search(QStringLiteral("20"));
    EXPECT_EQ(lookup.rows().front().personId, 4);
    EXPECT_TRUE(lookup.found());
    lookup.setCurrent(1);
    EXPECT_EQ(lookup.choose()->clientId, QStringLiteral("201"));
    lookup.setCurrent(99999);
    EXPECT_FALSE(lookup.okEnabled());

    // Quotes, wild cards and a pasted page find nothing wrong.
    for (const QString& text :
         {QStringLiteral("O'Brien, ' or 1=1 --"), QStringLiteral("%_"), QString(5000, u'x')}) {
        lookup.search(text);
        EXPECT_LE(lookup.searchText().size(), 100);
    }
    lookup.setSearchBy(ClientLookup::SearchBy::ClientName);
    lookup.search(QStringLiteral("O'Brien, ' or 1=1 --"));
    EXPECT_EQ(lookup.rows().front().lastFirst, QStringLiteral("Young, F000"));

    // One client by Person_ID; a person without a Client_ID is none.
    ASSERT_TRUE(lookup.client(5));
    EXPECT_EQ(ClientLookup::choiceText(*lookup.client(5)), QStringLiteral("Abbott, Zed  [201]"));
    EXPECT_FALSE(lookup.client(6));
    EXPECT_FALSE(lookup.client(7));
    EXPECT_FALSE(lookup.client(99));
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientLookupTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
