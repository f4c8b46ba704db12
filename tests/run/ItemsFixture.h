#pragma once

#include "RunFixture.h"
#include "confirmation/ConfirmedItems.h"

namespace kb::test {

// The run fixture on either store, with items, item lists and funding added
// by each test. Services 1 and 2 deliver; clients are on service 1 and their
// dated deliveries on service 2 unless a test says otherwise.
class ItemsFixture : public RunFixture, public ::testing::WithParamInterface<StoreKind>
{
protected:
    ItemsFixture() : RunFixture(GetParam()) {}
    void SetUp() override { KB_REQUIRE_STORE(GetParam()); }

    void addItem(int item, const QString& name, int meals, int labels, const QVariant& confirmation = {});
    // A Defdels line: a default one for person 0, a client's standing one,
    // or with delivId a dated delivery's.
    void addLine(int person, int service, const QString& day, int item, const QVariant& quantity,
                 int sortOrder, const QVariant& delivId = {});
    // The RecordID of a person's dated delivery of a type on a date.
    qint64 datedId(int person, const QDate& date, const QString& scheduleType);
    void addFund(int fundId, const QString& code);
    void setDefaultFunding(int service, int fundId);
    void addFundUse(int person, int service, const QVariant& fundCode, const QStringList& weekdays);

    // Prepares the date and finds the run's items.
    RunItems items(const QDate& date, const ConfirmedItems& confirmed = {}, QChar letter = u'A');
    // The delivery of a person whose Delivery_Type starts with the letter.
    static const DeliveryItems& of(const RunItems& run, int person, QChar type = u'O');
    static QList<qint64> itemIds(const DeliveryItems& items);
};

inline const QDate tuesday = monday.addDays(1);

} // namespace kb::test
