#include "dated/DatedRowItems.h"

#include "DeliveryItemLists.h"
#include "defaults/Weekdays.h"
#include "store/Database.h"

#include <QList>
#include <QLocale>

#include <array>

namespace kb {

namespace {

QString quantityText(const QVariant& quantity)
{
    return QLocale::c().toString(quantity.toDouble(), 'g', 12);
}

QString lineText(const DatedItemLine& line, const QString& times)
{
    return line.quantity.isNull() ? line.item : quantityText(line.quantity) + times + line.item;
}

} // namespace

QString DatedRowItems::summary() const
{
    QStringList parts;
    for (const DatedItemLine& line : lines)
        parts << lineText(line, QStringLiteral(" \u00d7 "));
    return parts.join(QStringLiteral(", "));
}

QString DatedRowItems::details(const QDate& date) const
{
    const QString day = weekdayOf(date).column;
    QString head;
    switch (level) {
    case ItemListLevel::Dated:
        head = QStringLiteral("Items of this delivery:");
        break;
    case ItemListLevel::Client:
        head = QStringLiteral("No items of its own: the client's items for ") + day + ':';
        break;
    case ItemListLevel::Default:
        head = QStringLiteral("No items of its own: the service's default items for ") + day + ':';
        break;
    case ItemListLevel::None:
        return QStringLiteral("No items for this delivery");
    }
    QStringList text{head};
    for (const DatedItemLine& line : lines)
        text << QStringLiteral("  ") + lineText(line, QStringLiteral(" \u00d7 "));
    return text.join(QLatin1Char('\n'));
}

QHash<qint64, DatedRowItems> DatedRowItems::read(Database& db, qint64 personId, DatedKind kind)
{
    const Params params{{QStringLiteral("Person_ID"), personId},
                        {QStringLiteral("Schedule_Type"), scheduleTypeOf(kind)}};
    const QString ofPerson = QStringLiteral(
        " from EpisodicDeliveries where Person_ID = :Person_ID and Schedule_Type = :Schedule_Type");
    // The rows by weekday: only the weekdays the rows fall on are looked up.
    const ResultSet rows = db.execute(QStringLiteral("select RecordID, EXTRACT(DAYOFWEEK FROM Deliv_Date)") +
                                          ofPerson + QStringLiteral(" and not Deliv_Date is null"),
                                      params);
    QHash<qint64, DatedRowItems> items;
    std::array<QList<qint64>, 7> byDay;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const int day = rows.value(r, 1).toInt(); // Monday 1 ... Sunday 7
        if (day >= 1 && day <= 7) byDay[size_t(day - 1)].append(rows.value(r, 0).toLongLong());
    }
    if (rows.isEmpty()) return items;

    QHash<qint64, QString> names;
    const ResultSet itemRows = db.execute(QStringLiteral("select Item_ID, Meal_Item from Items"));
    for (qsizetype r = 0; r < itemRows.rowCount(); ++r)
        names.insert(itemRows.value(r, 0).toLongLong(), itemRows.value(r, 1).toString().trimmed());

    const QString deliveries =
        QStringLiteral(
            "select RecordID as Request_ID, Person_ID, Svcs_Used as Service_ID, RecordID as Dated_ID") +
        ofPerson + QStringLiteral(" and EXTRACT(DAYOFWEEK FROM Deliv_Date) = :Day_Of_Week");
    for (int day = 0; day < 7; ++day) {
        if (byDay[size_t(day)].isEmpty()) continue;
        Params dayParams = params;
        dayParams.emplace_back(QStringLiteral("Day_Of_Week"), day + 1);
        DeliveryItemLists lists;
        lists.load(db, deliveries, dayParams, weekdays()[size_t(day)].code);
        for (const qint64 id : byDay[size_t(day)]) {
            const DeliveryItemLists::Choice choice = lists.find(id);
            DatedRowItems row;
            row.level = choice.level;
            for (const ItemListLine& line : choice.lines)
                row.lines.push_back({line.itemId, names.value(line.itemId), line.quantity});
            items.insert(id, std::move(row));
        }
    }
    return items;
}

} // namespace kb
