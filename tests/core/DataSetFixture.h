#pragma once

// What the data set and record lock tests share: fresh data on the store
// under test, a few clients, and short retries for conflicts that are
// expected to fail.

#include "store/DbError.h"
#include "TempDataDir.h"
#include "dataset/RecordLocks.h"

#include <gtest/gtest.h>

#include <QVariant>

#include <memory>

namespace kb::test {

class DataSetFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
    }
    Database& db() { return data->db(); }

    // Clients 1..4: Ames (A), Bell (I), Cole (A), Drew (A), with race codes.
    void addClients()
    {
        db().execute(QStringLiteral(
            "Insert into Clients (Person_ID, Client_ID, Last_Name, First_Name, Status, Race) values "
            "(1, '101', 'Ames', 'Ann', 'A', 'W'), (2, '102', 'Bell', 'Bob', 'I', 'B'), "
            "(3, '103', 'Cole', 'Cy', 'A', 'W'), (4, '104', 'Drew', 'Di', 'A', null)"));
    }

    // A second workstation whose lock conflicts fail fast.
    std::unique_ptr<Database> otherSession()
    {
        auto other = data->openAnother();
        other->recordLocks().setRetries(2, 10);
        return other;
    }

    QString lastName(Database& session, int personId)
    {
        return session
            .execute(QStringLiteral("select Last_Name from Clients where Person_ID = :P"), {{QStringLiteral("P"), personId}})
            .value(0, 0)
            .toString();
    }

    std::unique_ptr<TempDataDir> data;
};

// One field of the current row changed and saved: edit, set, post.
template <typename Set> void editAndPost(Set& set, QStringView field, const QVariant& value)
{
    set.edit();
    set.setFieldValue(field, value);
    set.post();
}

// The engine code of the DbError that a call throws; 0 when it throws none.
template <typename Call> int engineCodeOf(Call&& call)
{
    try {
        call();
    } catch (const DbError& e) {
        return e.engineCode();
    }
    return 0;
}

} // namespace kb::test
