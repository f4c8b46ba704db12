#include "DemoContext.h"

#include "store/Database.h"

#include <stdexcept>

namespace kb::demo {

DemoContext::DemoContext(Database& database, quint32 seed, int clientCount)
    : db(database), rnd(seed), today(database.clock().today()), clientCount(clientCount)
{
}

const DemoService& DemoContext::service(int id) const
{
    for (const DemoService& s : services)
        if (s.id == id) return s;
    throw std::logic_error("demo agency: unknown service");
}

const DemoItem& DemoContext::item(int id) const
{
    // Items are numbered from 1 in the order they are kept.
    if (id < 1 || id > int(items.size())) throw std::logic_error("demo agency: unknown item");
    return items[size_t(id - 1)];
}

const DemoRoute* DemoContext::route(const QString& id) const
{
    for (const DemoRoute& r : routes)
        if (r.id == id) return &r;
    return nullptr;
}

const ItemList& DemoContext::standingItems(const DemoClient& client, int weekday) const
{
    if (!client.ownItems[size_t(weekday)].empty()) return client.ownItems[size_t(weekday)];
    static const ItemList none;
    const auto it = defaultItems.find({client.service, weekday});
    return it == defaultItems.end() ? none : it->second;
}

QString DemoContext::dietText(int mask, const QString& separator) const
{
    QStringList codes;
    for (int bit = 0; bit < dietCodes.size(); ++bit)
        if (mask & (1 << bit)) codes << dietCodes[bit];
    return codes.join(separator);
}

QString shortDate(const QDate& date)
{
    return date.toString(QStringLiteral("M/d/yyyy"));
}

bool isDeliveryWeek(const QString& frequency, const QDate& date)
{
    const QString f = frequency.trimmed();
    if (f.isEmpty() || f == QLatin1String("A")) return true;
    if (f == QLatin1String("O") || f == QLatin1String("E")) {
        const qint64 days = QDate(1899, 12, 30).daysTo(date);
        const qint64 week = (days - 2) / 7;
        return (week % 2 == 1) == (f == QLatin1String("O"));
    }
    bool ok = false;
    const int n = f.toInt(&ok);
    return ok && (date.day() - 1) / 7 + 1 == n;
}

} // namespace kb::demo
