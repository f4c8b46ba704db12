#include "DeliveryItemLists.h"

namespace kb {

namespace {

// The columns of a line, from the Defdels row d and its item i.
const QString lineColumns = QStringLiteral("d.RecordID, i.Item_ID, d.Quantity, d.Sort_Order, i.Number_Meals, "
                                           "i.Number_Labels, i.Confirmation_Required");
// Lines joined with their items: a line without an item is no line.
const QString linesFrom = QStringLiteral(" from Defdels d join Items i on d.Item_ID = i.Item_ID where ");

ItemListLine readLine(const ResultSet& rows, qsizetype r, int first)
{
    ItemListLine line;
    line.defdelsId = rows.value(r, first).toLongLong();
    line.itemId = rows.value(r, first + 1).toLongLong();
    line.quantity = rows.value(r, first + 2);
    line.sortOrder = rows.value(r, first + 3);
    line.numberMeals = rows.value(r, first + 4);
    line.numberLabels = rows.value(r, first + 5);
    line.confirmationRequired = rows.value(r, first + 6).toString();
    return line;
}

Params withDay(Params params, const QString& dow)
{
    params.emplace_back(QStringLiteral("Del_Day"), dow);
    return params;
}

} // namespace

void DeliveryItemLists::readLists(const ResultSet& rows, int keyColumns, ItemListLevel level,
                                  const LineFilter& filter, QHash<ListKey, Range>& lists)
{
    const auto keyOf = [&](qsizetype r) {
        return keyColumns == 1 ? ListKey{0, rows.value(r, 0).toLongLong()}
                               : ListKey{rows.value(r, 0).toLongLong(), rows.value(r, 1).toLongLong()};
    };
    for (qsizetype r = 0; r < rows.rowCount();) {
        const ListKey key = keyOf(r);
        Range range{level, m_lines.size(), 0};
        for (; r < rows.rowCount() && keyOf(r) == key; ++r) {
            ItemListLine line = readLine(rows, r, keyColumns);
            if (!filter || filter(line, level)) m_lines.push_back(std::move(line));
        }
        range.count = m_lines.size() - range.first;
        if (range.count > 0) lists.insert(key, range);
    }
}

void DeliveryItemLists::load(Database& db, const QString& deliveries, const Params& params,
                             const QString& dow, const LineFilter& filter)
{
    m_lines.clear();
    m_chosen.clear();
    m_defaults.clear();
    const QString order = QStringLiteral(" order by 1, 2, d.Sort_Order, d.RecordID");
    const QString ofDeliveries = QStringLiteral(" from (") + deliveries + QStringLiteral(") r");

    readLists(
        db.execute(QStringLiteral("select d.Service_ID, ") + lineColumns + linesFrom +
                       QStringLiteral("(d.Person_ID = 0) and (d.Del_Day = :Del_Day) and (d.Deliv_ID is Null) "
                                      "order by 1, d.Sort_Order, d.RecordID"),
                   {{QStringLiteral("Del_Day"), dow}}),
        1, ItemListLevel::Default, filter, m_defaults);

    // The lists are read by the clients' keys, from Defdels outward, so each
    // store looks the lines up by its own plan rather than once per delivery.
    QHash<ListKey, Range> dated;
    readLists(db.execute(QStringLiteral("select d.Person_ID, d.Deliv_ID, ") + lineColumns + linesFrom +
                             QStringLiteral("d.Deliv_ID in (select r.Dated_ID") + ofDeliveries +
                             QStringLiteral(" where r.Dated_ID is not Null)") + order,
                         params),
              2, ItemListLevel::Dated, filter, dated);
    QHash<ListKey, Range> standing;
    readLists(
        db.execute(QStringLiteral("select d.Person_ID, d.Service_ID, ") + lineColumns + linesFrom +
                       QStringLiteral("(d.Del_Day = :Del_Day) and (d.Deliv_ID is Null) and d.Person_ID in "
                                      "(select r.Person_ID") +
                       ofDeliveries + QStringLiteral(")") + order,
                   withDay(params, dow)),
        2, ItemListLevel::Client, filter, standing);

    const ResultSet requests = db.execute(
        QStringLiteral("select r.Request_ID, r.Person_ID, r.Service_ID, r.Dated_ID") + ofDeliveries, params);
    m_chosen.reserve(requests.rowCount());
    for (qsizetype r = 0; r < requests.rowCount(); ++r) {
        const qint64 person = requests.value(r, 1).toLongLong();
        const qint64 service = requests.value(r, 2).toLongLong();
        const QVariant& datedId = requests.value(r, 3);
        Range chosen;
        if (!datedId.isNull()) chosen = dated.value({person, datedId.toLongLong()});
        if (chosen.count == 0) chosen = standing.value({person, service});
        if (chosen.count == 0) chosen = m_defaults.value({0, service});
        m_chosen.insert(requests.value(r, 0).toLongLong(), chosen);
    }
}

std::span<const ItemListLine> DeliveryItemLists::lines(const Range& range) const
{
    return std::span<const ItemListLine>(m_lines).subspan(range.first, range.count);
}

DeliveryItemLists::Choice DeliveryItemLists::find(qint64 requestId) const
{
    const auto it = m_chosen.constFind(requestId);
    if (it == m_chosen.constEnd()) return {};
    return {it->level, lines(*it)};
}

std::span<const ItemListLine> DeliveryItemLists::defaultLines(qint64 serviceId) const
{
    const auto it = m_defaults.constFind({0, serviceId});
    return it == m_defaults.constEnd() ? std::span<const ItemListLine>() : lines(*it);
}

DeliveryItemLists::OneDelivery DeliveryItemLists::forDelivery(Database& db, qint64 personId, qint64 serviceId,
                                                              const QVariant& datedId, const QString& dow,
                                                              const LineFilter& filter)
{
    // One row standing for the delivery; Clients gives it a row to stand on.
    const QString one = QStringLiteral(
        "select Person_ID as Request_ID, Person_ID, Cast(:One_Service as Integer) as Service_ID, "
        "Cast(:One_Dated as Integer) as Dated_ID from Clients where Person_ID = :One_Person");
    DeliveryItemLists lists;
    lists.load(db, one,
               {{QStringLiteral("One_Service"), serviceId},
                {QStringLiteral("One_Dated"), datedId.isNull() ? QVariant(QMetaType::fromType<qint64>()) : datedId},
                {QStringLiteral("One_Person"), personId}},
               dow, filter);
    const Choice choice = lists.find(personId);
    return {choice.level, std::vector<ItemListLine>(choice.lines.begin(), choice.lines.end())};
}

} // namespace kb
