#include "ItemsFixture.h"

namespace kb::test {

void ItemsFixture::addItem(int item, const QString& name, int meals, int labels, const QVariant& confirmation)
{
    insertRow(db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), item},
               {QStringLiteral("Meal_Item"), name},
               {QStringLiteral("Number_Meals"), meals},
               {QStringLiteral("Number_Labels"), labels},
               {QStringLiteral("Confirmation_Required"), confirmation}});
}

void ItemsFixture::addLine(int person, int service, const QString& day, int item, const QVariant& quantity,
                           int sortOrder, const QVariant& delivId)
{
    insertRow(db(), QStringLiteral("Defdels"),
              {{QStringLiteral("Person_ID"), person},
               {QStringLiteral("Service_ID"), service},
               {QStringLiteral("Del_Day"), day},
               {QStringLiteral("Item_ID"), item},
               {QStringLiteral("Quantity"), quantity},
               {QStringLiteral("Sort_Order"), sortOrder},
               {QStringLiteral("Deliv_ID"), delivId}});
}

qint64 ItemsFixture::datedId(int person, const QDate& date, const QString& scheduleType)
{
    return db()
        .execute(QStringLiteral("select RecordID from EpisodicDeliveries where Person_ID = :Person_ID and "
                                "Deliv_Date = :Deliv_Date and Schedule_Type = :Schedule_Type"),
                 {{QStringLiteral("Person_ID"), person},
                  {QStringLiteral("Deliv_Date"), date},
                  {QStringLiteral("Schedule_Type"), scheduleType}})
        .value(0, 0)
        .toLongLong();
}

void ItemsFixture::addFund(int fundId, const QString& code)
{
    insertRow(db(), QStringLiteral("Fundsrcs"),
              {{QStringLiteral("Fund_ID"), fundId}, {QStringLiteral("Fund_CD"), code}});
}

void ItemsFixture::setDefaultFunding(int service, int fundId)
{
    db().execute(
        QStringLiteral("Update Services set Default_Funding_Source = :Fund where Service_ID = :Service"),
        {{QStringLiteral("Fund"), fundId}, {QStringLiteral("Service"), service}});
}

void ItemsFixture::addFundUse(int person, int service, const QVariant& fundCode, const QStringList& weekdays)
{
    Params values = {{QStringLiteral("Person_ID"), person},
                     {QStringLiteral("Service_ID"), service},
                     {QStringLiteral("Fund_CD"), fundCode}};
    for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
        values.emplace_back(QString::fromLatin1(day), weekdays.contains(QString::fromLatin1(day)));
    insertRow(db(), QStringLiteral("FundUses"), values);
}

RunItems ItemsFixture::items(const QDate& date, const ConfirmedItems& confirmed, QChar letter)
{
    prepare(date, letter);
    return form().FindRunItems(confirmed);
}

const DeliveryItems& ItemsFixture::of(const RunItems& run, int person, QChar type)
{
    for (const DeliveryItems& items : run.deliveries())
        if (items.delivery.personId == person && items.delivery.deliveryType.startsWith(type)) return items;
    ADD_FAILURE() << "no delivery of person " << person;
    static const DeliveryItems none;
    return none;
}

QList<qint64> ItemsFixture::itemIds(const DeliveryItems& items)
{
    QList<qint64> ids;
    for (const ItemListLine& line : items.lines)
        ids.append(line.itemId);
    return ids;
}

} // namespace kb::test
