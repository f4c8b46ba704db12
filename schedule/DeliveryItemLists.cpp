#include "DeliveryItemLists.h"

namespace kb {

namespace {

// The columns of a line, from the Defdels row d and its item i. The item
// number is the item's own, so a line whose item is missing reads as null.
const QString lineColumns = QStringLiteral("d.RecordID, i.Item_ID, d.Quantity, d.Sort_Order, i.Number_Meals, "
                                           "i.Number_Labels, i.Confirmation_Required");
const QString lineOrder = QStringLiteral(" order by %1, d.Sort_Order, d.RecordID");

// The line whose columns start at `first`; false when the row has no line
// (no Defdels row, or one without an item).
bool readLine(const ResultSet& rows, qsizetype r, int first, ItemListLine& line)
{
    if (rows.value(r, first).isNull() || rows.value(r, first + 1).isNull()) return false;
    line.defdelsId = rows.value(r, first).toLongLong();
    line.itemId = rows.value(r, first + 1).toLongLong();
    line.quantity = rows.value(r, first + 2);
    line.sortOrder = rows.value(r, first + 3);
    line.numberMeals = rows.value(r, first + 4);
    line.numberLabels = rows.value(r, first + 5);
    line.confirmationRequired = rows.value(r, first + 6).toString();
    return true;
}

Params withDay(Params params, const QString& dow)
{
    params.emplace_back(QStringLiteral("Del_Day"), dow);
    return params;
}

} // namespace

void DeliveryItemLists::load(Database& db, const QString& deliveries, const Params& params,
                             const QString& dow, const LineFilter& filter)
{
    m_lines.clear();
    m_chosen.clear();
    m_defaults.clear();
    const auto keep = [&](const ItemListLine& line, ItemListLevel level) {
        return !filter || filter(line, level);
    };
    // Rows come grouped by their key (column 0); each group's lines that the
    // filter keeps become one range, handed to `take` (also when empty).
    const auto walk = [&](const ResultSet& rows, int first, ItemListLevel level, auto&& take) {
        for (qsizetype r = 0; r < rows.rowCount();) {
            const qint64 key = rows.value(r, 0).toLongLong();
            const qsizetype groupStart = r;
            Range range{level, m_lines.size(), 0};
            for (; r < rows.rowCount() && rows.value(r, 0).toLongLong() == key; ++r) {
                ItemListLine line;
                if (readLine(rows, r, first, line) && keep(line, level)) m_lines.push_back(std::move(line));
            }
            range.count = m_lines.size() - range.first;
            take(key, range, groupStart);
        }
    };

    const ResultSet defaults = db.execute(
        QStringLiteral("select d.Service_ID, ") + lineColumns +
            QStringLiteral(
                " from Defdels d join Items i on d.Item_ID = i.Item_ID where (d.Person_ID = 0) and "
                "(d.Del_Day = :Del_Day) and (d.Deliv_ID is Null)") +
            lineOrder.arg(QStringLiteral("d.Service_ID")),
        {{QStringLiteral("Del_Day"), dow}});
    walk(defaults, 1, ItemListLevel::Default, [&](qint64 service, const Range& range, qsizetype) {
        if (range.count > 0) m_defaults.insert(service, range);
    });

    const QString from = QStringLiteral(" from (") + deliveries + QStringLiteral(") r ");
    const ResultSet dated = db.execute(
        QStringLiteral("select r.Request_ID, ") + lineColumns + from +
            QStringLiteral(
                "join Defdels d on (d.Person_ID = r.Person_ID) and (d.Deliv_ID = r.Dated_ID) join Items i "
                "on d.Item_ID = i.Item_ID") +
            lineOrder.arg(QStringLiteral("r.Request_ID")),
        params);
    walk(dated, 1, ItemListLevel::Dated, [&](qint64 request, const Range& range, qsizetype) {
        if (range.count > 0) m_chosen.insert(request, range);
    });

    // Every delivery once at least, with its standing lines if it has any.
    const ResultSet standing = db.execute(
        QStringLiteral("select r.Request_ID, r.Service_ID, ") + lineColumns + from +
            QStringLiteral(
                "left join Defdels d on (d.Person_ID = r.Person_ID) and (d.Service_ID = r.Service_ID) and "
                "(d.Del_Day = :Del_Day) and (d.Deliv_ID is Null) left join Items i on d.Item_ID = "
                "i.Item_ID") +
            lineOrder.arg(QStringLiteral("r.Request_ID")),
        withDay(params, dow));
    walk(standing, 2, ItemListLevel::Client, [&](qint64 request, const Range& range, qsizetype row) {
        if (m_chosen.contains(request)) {
            m_lines.resize(range.first); // the dated list won
            return;
        }
        if (range.count > 0) {
            m_chosen.insert(request, range);
            return;
        }
        const auto fallback = m_defaults.constFind(standing.value(row, 1).toLongLong());
        m_chosen.insert(request, fallback == m_defaults.constEnd() ? Range{} : *fallback);
    });
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
    const auto it = m_defaults.constFind(serviceId);
    return it == m_defaults.constEnd() ? std::span<const ItemListLine>() : lines(*it);
}

} // namespace kb
