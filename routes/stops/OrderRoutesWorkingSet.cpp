#include "OrderRoutesWorkingSet.h"

#include "store/ResultSet.h"

#include <algorithm>
#include <numeric>

namespace kb {

namespace {

int compareText(const QString& a, const QString& b) { return QString::compare(a, b, Qt::CaseInsensitive); }

int compareNumber(double a, double b) { return a < b ? -1 : (b < a ? 1 : 0); }

QString text(const ResultSet& rows, qsizetype r, int column) { return column < 0 ? QString() : rows.value(r, column).toString(); }

} // namespace

std::optional<OrderRoutesIndex> OrderRoutesWorkingSet::indexForColumn(const QString& field)
{
    static const std::pair<const char*, OrderRoutesIndex> byColumn[] = {
        {"CLIENT_ID", OrderRoutesIndex::Client_ID},       {"LAST_NAME", OrderRoutesIndex::Last_First},
        {"FIRST_NAME", OrderRoutesIndex::First_Last},     {"HOUSEHOLD_ID", OrderRoutesIndex::Household_ID},
        {"ROUTE", OrderRoutesIndex::RouteStop},           {"STOP", OrderRoutesIndex::RouteStop},
        {"STATUS", OrderRoutesIndex::Status},             {"CROSS_STREET", OrderRoutesIndex::Cross_Street},
        {"ADDRESS1", OrderRoutesIndex::Address1},         {"CITY", OrderRoutesIndex::City},
    };
    for (const auto& [column, index] : byColumn)
        if (field.compare(QLatin1String(column), Qt::CaseInsensitive) == 0)
            return index;
    return std::nullopt;
}

void OrderRoutesWorkingSet::load(const ResultSet& rows)
{
    m_rows.clear();
    const auto column = [&](const char* name) { return rows.columnIndex(QString::fromLatin1(name)); };
    const int recordId = column("RecordID"), personId = column("Person_ID"), routeDay = column("Route_Day"),
              route = column("Route"), stop = column("Stop"), clientId = column("Client_ID"),
              household = column("Household_ID"), status = column("Status"), first = column("First_Name"),
              last = column("Last_Name"), name = column("Name"), address1 = column("Address1"),
              cross = column("Cross_Street"), city = column("City"), state = column("State"), zip = column("Zip"),
              latitude = column("Latitude"), longitude = column("Longitude");
    m_rows.reserve(size_t(rows.rowCount()));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        OrderRoutesRow row;
        row.recordId = rows.value(r, recordId).toLongLong();
        row.personId = rows.value(r, personId).toLongLong();
        row.routeDay = text(rows, r, routeDay);
        row.route = text(rows, r, route);
        row.stop = rows.value(r, stop).toDouble();
        row.clientId = text(rows, r, clientId);
        row.householdId = household < 0 ? QVariant() : rows.value(r, household);
        row.status = text(rows, r, status);
        row.firstName = text(rows, r, first);
        row.lastName = text(rows, r, last);
        row.name = text(rows, r, name);
        row.address1 = text(rows, r, address1);
        row.crossStreet = text(rows, r, cross);
        row.city = text(rows, r, city);
        row.state = text(rows, r, state);
        row.zip = text(rows, r, zip);
        row.latitude = latitude < 0 ? QVariant() : rows.value(r, latitude);
        row.longitude = longitude < 0 ? QVariant() : rows.value(r, longitude);
        m_rows.push_back(std::move(row));
    }
    m_originals = m_rows;
    m_index = OrderRoutesIndex::RouteStop;
    m_open = true;
    sort();
}

void OrderRoutesWorkingSet::close()
{
    m_open = false;
    m_rows.clear();
    m_originals.clear();
    m_order.clear();
    m_positions.clear();
}

void OrderRoutesWorkingSet::setIndex(OrderRoutesIndex index)
{
    m_index = index;
    sort();
}

int OrderRoutesWorkingSet::positionOf(int key) const
{
    return key >= 0 && key < int(m_positions.size()) ? m_positions[size_t(key)] : -1;
}

bool OrderRoutesWorkingSet::less(int a, int b) const
{
    const OrderRoutesRow& x = m_rows[size_t(a)];
    const OrderRoutesRow& y = m_rows[size_t(b)];
    int c = 0;
    switch (m_index) {
    case OrderRoutesIndex::RouteStop:
        c = compareText(x.route, y.route);
        if (c == 0)
            c = compareNumber(x.stop, y.stop);
        break;
    case OrderRoutesIndex::Person_ID: c = compareNumber(double(x.personId), double(y.personId)); break;
    case OrderRoutesIndex::Client_ID: break;
    case OrderRoutesIndex::Status: c = compareText(x.status, y.status); break;
    case OrderRoutesIndex::First_Last:
        c = compareText(x.firstName, y.firstName);
        if (c == 0)
            c = compareText(x.lastName, y.lastName);
        break;
    case OrderRoutesIndex::Last_First:
        c = compareText(x.lastName, y.lastName);
        if (c == 0)
            c = compareText(x.firstName, y.firstName);
        break;
    case OrderRoutesIndex::Cross_Street: c = compareText(x.crossStreet, y.crossStreet); break;
    case OrderRoutesIndex::City: c = compareText(x.city, y.city); break;
    case OrderRoutesIndex::Household_ID:
        c = compareNumber(x.householdId.isNull() ? -1.0 : x.householdId.toDouble(),
                          y.householdId.isNull() ? -1.0 : y.householdId.toDouble());
        break;
    case OrderRoutesIndex::Address1: c = compareText(x.address1, y.address1); break;
    }
    if (c == 0)
        c = compareText(x.clientId, y.clientId);
    if (c == 0)
        c = compareNumber(double(x.recordId), double(y.recordId));
    return c < 0;
}

void OrderRoutesWorkingSet::sort()
{
    m_order.resize(m_rows.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    std::stable_sort(m_order.begin(), m_order.end(), [this](int a, int b) { return less(a, b); });
    m_positions.assign(m_rows.size(), -1);
    for (size_t p = 0; p < m_order.size(); ++p)
        m_positions[size_t(m_order[p])] = int(p);
}

void OrderRoutesWorkingSet::setRoute(int key, const QString& route)
{
    m_rows[size_t(key)].route = route;
    sort();
}

void OrderRoutesWorkingSet::setStop(int key, double stop)
{
    m_rows[size_t(key)].stop = stop;
    sort();
}

void OrderRoutesWorkingSet::setNewStop(int key, double newStop) { m_rows[size_t(key)].newStop = newStop; }

void OrderRoutesWorkingSet::setStops(const std::vector<std::pair<int, double>>& stops)
{
    for (const auto& [key, stop] : stops)
        m_rows[size_t(key)].stop = stop;
    sort();
}

bool OrderRoutesWorkingSet::isChanged(int key) const
{
    const OrderRoutesRow& now = m_rows[size_t(key)];
    const OrderRoutesRow& then = m_originals[size_t(key)];
    return now.route != then.route || now.stop != then.stop;
}

bool OrderRoutesWorkingSet::hasChanges() const
{
    for (int key = 0; key < count(); ++key)
        if (isChanged(key))
            return true;
    return false;
}

std::vector<int> OrderRoutesWorkingSet::changedKeys() const
{
    std::vector<int> keys;
    for (int key = 0; key < count(); ++key)
        if (isChanged(key))
            keys.push_back(key);
    return keys;
}

void OrderRoutesWorkingSet::acceptChanges() { m_originals = m_rows; }

double OrderRoutesWorkingSet::highestStop() const
{
    if (m_rows.empty())
        return 0;
    // The last row in route and stop order, whatever order is shown.
    const auto last = std::max_element(m_rows.begin(), m_rows.end(), [](const OrderRoutesRow& x, const OrderRoutesRow& y) {
        const int c = compareText(x.route, y.route);
        return c < 0 || (c == 0 && x.stop < y.stop);
    });
    return last->stop;
}

} // namespace kb
