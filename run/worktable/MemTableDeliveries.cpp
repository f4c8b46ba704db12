#include "worktable/MemTableDeliveries.h"

#include <iterator>

namespace kb {

namespace {

struct ColumnShape
{
    const char* name;
    const char* type;
};

// The columns, their types and widths, in the table's order.
const ColumnShape columnShapes[] = {
    {"RecordID", "AutoInc"},
    {"Delivery_Date", "Date"},
    {"Client_ID", "VarChar(7)"},
    {"Person_ID", "Integer"},
    {"Route_ID", "VarChar(5)"},
    {"Stop", "Float"},
    {"Full_Name", "VarChar(30)"},
    {"First_Name", "VarChar(15)"},
    {"Last_Name", "VarChar(20)"},
    {"Address1", "VarChar(35)"},
    {"City", "VarChar(20)"},
    {"State", "VarChar(2)"},
    {"ZIP", "VarChar(20)"},
    {"Phone", "VarChar(18)"},
    {"Phone_Desc", "VarChar(20)"},
    {"Address_Override", "VarChar(1)"},
    {"AddressOverrideID", "Integer"},
    {"Address_Overridden", "Boolean"},
    {"Svcs_Used", "SmallInt"},
    {"Services_Used_Named", "VarChar(20)"},
    {"Cuisine_ID", "Integer"},
    {"Diet_Restr", "Integer"},
    {"Diet_Restrictions_Named", "VarChar(50)"},
    {"Congregate", "Boolean"},
    {"Delivery_Type", "VarChar(2)"},
    {"Deliv_ID", "Integer"},
    {"Household_Name", "VarChar(25)"},
    {"Cold_Bag_ID", "Integer"},
    {"Latitude", "Float"},
    {"Longitude", "Float"},
    {"New_Stop", "Float"},
    {"Pushpin_Name", "VarChar(50)"},
    {"Household_ID", "Integer"},
    {"Cross_Street", "VarChar(25)"},
};

struct IndexShape
{
    DeliveriesIndex index;
    const char* name;
    const char* columns;
};

const IndexShape indexShapes[] = {
    {DeliveriesIndex::RouteStopClient, "RouteStopClient", "Route_ID, Stop, Client_ID"},
    {DeliveriesIndex::Last_Name, "Last_Name", "Last_Name, First_Name"},
    {DeliveriesIndex::Diet_Restrictions_Named, "Diet_Restrictions_Named", "Diet_Restrictions_Named"},
    {DeliveriesIndex::Services_Used, "Services_Used", "Services_Used_Named"},
    {DeliveriesIndex::City, "City", "City"},
    {DeliveriesIndex::Client_ID, "Client_ID", "Client_ID"},
    {DeliveriesIndex::Delivery_Type, "Delivery_Type", "Delivery_Type"},
    {DeliveriesIndex::Household_Name, "Household_Name", "Household_Name"},
};

const IndexShape& indexShapeOf(DeliveriesIndex index)
{
    for (const IndexShape& s : indexShapes)
        if (s.index == index) return s;
    return indexShapes[0];
}

// The columns MoveToMemData fills; the others stay empty.
const char* const filledColumns[] = {
    "Delivery_Date",
    "Client_ID",
    "Person_ID",
    "Route_ID",
    "Stop",
    "Full_Name",
    "First_Name",
    "Last_Name",
    "Address1",
    "City",
    "State",
    "ZIP",
    "AddressOverrideID",
    "Address_Overridden",
    "Svcs_Used",
    "Services_Used_Named",
    "Cuisine_ID",
    "Diet_Restr",
    "Diet_Restrictions_Named",
    "Congregate",
    "Delivery_Type",
    "Deliv_ID",
    "Household_Name",
    "Cold_Bag_ID",
    "Latitude",
    "Longitude",
    "Pushpin_Name",
    "Household_ID",
    "Cross_Street",
};

QString insertText()
{
    QStringList names;
    QStringList params;
    for (const char* c : filledColumns) {
        names.append(QString::fromLatin1(c));
        params.append(QLatin1Char(':') + QString::fromLatin1(c));
    }
    return QStringLiteral("Insert into Memory MemTableDeliveries (%1) values (%2)")
        .arg(names.join(QStringLiteral(", ")), params.join(QStringLiteral(", ")));
}

} // namespace

const QString& MemTableDeliveries::tableName()
{
    static const QString name = QStringLiteral("MemTableDeliveries");
    return name;
}

const QStringList& MemTableDeliveries::columnNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (const ColumnShape& c : columnShapes)
            list.append(QString::fromLatin1(c.name));
        return list;
    }();
    return names;
}

QString MemTableDeliveries::indexName(DeliveriesIndex index)
{
    return QString::fromLatin1(indexShapeOf(index).name);
}

QStringList MemTableDeliveries::indexColumns(DeliveriesIndex index)
{
    return QString::fromLatin1(indexShapeOf(index).columns).split(QStringLiteral(", "));
}

std::optional<DeliveriesIndex> MemTableDeliveries::indexByName(const QString& name)
{
    for (const IndexShape& s : indexShapes)
        if (name.compare(QLatin1String(s.name), Qt::CaseInsensitive) == 0) return s.index;
    return std::nullopt;
}

MemTableDeliveries::MemTableDeliveries(Database& db) : m_db(db), m_insert(db, insertText())
{
    for (const char* c : filledColumns)
        m_insertValues.emplace_back(QString::fromLatin1(c), QVariant());
}

bool MemTableDeliveries::exists() const
{
    return m_db.memoryTable(tableName()) != nullptr;
}

void MemTableDeliveries::createOrEmpty()
{
    if (exists()) {
        empty();
        return;
    }
    QStringList columns;
    for (const ColumnShape& c : columnShapes)
        columns.append(QString::fromLatin1(c.name) + QLatin1Char(' ') + QString::fromLatin1(c.type));
    m_db.execute(QStringLiteral("Create Table if not exists Memory MemTableDeliveries (%1)")
                     .arg(columns.join(QStringLiteral(", "))));
    for (const IndexShape& s : indexShapes)
        m_db.execute(QStringLiteral("Create Index if not exists %1 on Memory MemTableDeliveries (%2)")
                         .arg(QLatin1String(s.name), QLatin1String(s.columns)));
}

void MemTableDeliveries::empty()
{
    m_insert.discard();
    m_db.execute(QStringLiteral("Delete from Memory MemTableDeliveries"));
}

void MemTableDeliveries::drop()
{
    m_insert.discard();
    m_db.execute(QStringLiteral("Drop table if exists Memory MemTableDeliveries"));
}

void MemTableDeliveries::insert(const DeliveryRow& row)
{
    // Values in the order of filledColumns: the names are set once and only
    // the values change from row to row.
    const QVariant values[] = {row.deliveryDate,
                               row.clientId,
                               row.personId,
                               row.routeId,
                               row.stop,
                               row.fullName,
                               row.firstName,
                               row.lastName,
                               row.address1,
                               row.city,
                               row.state,
                               row.zip,
                               row.addressOverrideId,
                               row.addressOverridden,
                               row.svcsUsed,
                               row.servicesUsedNamed,
                               row.cuisineId,
                               row.dietRestr,
                               row.dietRestrictionsNamed,
                               row.congregate,
                               row.deliveryType,
                               row.delivId,
                               row.householdName,
                               row.coldBagId,
                               row.latitude,
                               row.longitude,
                               row.pushpinName,
                               row.householdId,
                               row.crossStreet};
    static_assert(std::size(values) == std::size(filledColumns));
    for (size_t i = 0; i < std::size(values); ++i)
        m_insertValues[i].second = values[i];
    m_insert.add(m_insertValues);
}

void MemTableDeliveries::flush()
{
    m_insert.flush();
}

qint64 MemTableDeliveries::rowCount()
{
    flush();
    return m_db.execute(QStringLiteral("Select Count(*) from Memory MemTableDeliveries"))
        .value(0, 0)
        .toLongLong();
}

ResultSet MemTableDeliveries::select(DeliveriesIndex index, const QStringList& columns)
{
    flush();
    return m_db.execute(QStringLiteral("Select %1 from Memory MemTableDeliveries order by %2, RecordID")
                            .arg(columns.isEmpty() ? QStringLiteral("*") : columns.join(QStringLiteral(", ")),
                                 QLatin1String(indexShapeOf(index).columns)));
}

} // namespace kb
