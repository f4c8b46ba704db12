#include "OrderRoutesMapping.h"

#include "OrderRoutesStatements.h"
#include "OrderRoutesWorkingSet.h"
#include "PushpinLabels.h"
#include "StopNumbering.h"
#include "WaypointName.h"

#include "map/Country.h"
#include "map/MapServer.h"
#include "map/MapServerError.h"
#include "MessageError.h"
#include "store/Database.h"
#include "UserInterface.h"

#include <QFile>
#include <QLocale>
#include <QTextStream>

#include <cmath>
#include <map>

namespace kb {

namespace {

constexpr double startStop = -1.0;
constexpr double endStop = 10000.0;

const char* const mappingColumns[][2] = {
    {"Route_Day", "VarChar(3)"}, {"Route", "VarChar(5)"},      {"Stop", "Float"},
    {"RouteStop", "VarChar(40)"}, {"Client_ID", "VarChar(7)"}, {"Person_ID", "Integer"},
    {"First_Name", "VarChar(15)"}, {"Last_Name", "VarChar(25)"}, {"Name", "VarChar(50)"},
    {"Address1", "VarChar(35)"}, {"Address2", "VarChar(30)"}, {"City", "VarChar(20)"},
    {"State", "VarChar(2)"},      {"Zip", "VarChar(10)"},      {"Latitude", "Float"},
    {"Longitude", "Float"},
};

QString routeStopOf(const QString& route, double stop)
{
    return QStringLiteral("Rte: ") + route.trimmed() + QStringLiteral(" Stop: ") + QString::number(stop, 'g', 10);
}

// Deletes MemMappingData when the mapping ends, whichever way it ends.
struct MappingTableGuard
{
    Database& db;
    ~MappingTableGuard()
    {
        try {
            if (db.memoryTable(OrderRoutesMapping::tableName()))
                db.deleteTable(OrderRoutesMapping::tableName());
        } catch (...) {
        }
    }
};

struct MappingRow
{
    QString route;
    double stop = 0;
    QString routeStop;
    QString clientId;
    QVariant personId;
    QString firstName;
    QString lastName;
    QString name;
    QString address1;
    QString address2;
    QString city;
    QString state;
    QString zip;
    QVariant latitude;
    QVariant longitude;

    bool isClient() const { return stop >= 0 && stop < 999; }
    bool hasCoordinates() const
    {
        return !latitude.isNull() && !longitude.isNull() && latitude.toDouble() != 0.0 && longitude.toDouble() != 0.0;
    }
    QString label(int option) const
    {
        return isClient() ? PushpinLabels::label(option, firstName.trimmed(), lastName.trimmed(), clientId.trimmed())
                          : name;
    }
};

std::vector<MappingRow> mappingRows(Database& db)
{
    const ResultSet r = db.execute(QStringLiteral("Select * from Memory MemMappingData order by Stop"));
    std::vector<MappingRow> rows;
    const auto text = [&](qsizetype i, const char* c) { return r.value(i, QString::fromLatin1(c)).toString(); };
    for (qsizetype i = 0; i < r.rowCount(); ++i) {
        MappingRow m;
        m.route = text(i, "Route");
        m.stop = r.value(i, u"Stop").toDouble();
        m.routeStop = text(i, "RouteStop");
        m.clientId = text(i, "Client_ID");
        m.personId = r.value(i, u"Person_ID");
        m.firstName = text(i, "First_Name");
        m.lastName = text(i, "Last_Name");
        m.name = text(i, "Name");
        m.address1 = text(i, "Address1");
        m.address2 = text(i, "Address2");
        m.city = text(i, "City");
        m.state = text(i, "State");
        m.zip = text(i, "Zip");
        m.latitude = r.value(i, u"Latitude");
        m.longitude = r.value(i, u"Longitude");
        rows.push_back(std::move(m));
    }
    return rows;
}

QString number(const QVariant& v)
{
    return v.isNull() ? QString() : QLocale::c().toString(v.toDouble(), 'g', 15);
}

} // namespace

OrderRoutesMapping::OrderRoutesMapping(Database& db, UserInterface& ui) : m_db(db), m_ui(ui) {}

QString OrderRoutesMapping::streetToMap(const QString& address1, const QString& address2)
{
    if (address2.trimmed().isEmpty())
        return address1;
    const QString upper = address1.toUpper();
    const auto startsWithAny = [&](std::initializer_list<const char*> prefixes) {
        for (const char* p : prefixes)
            if (upper.startsWith(QLatin1String(p)))
                return true;
        return false;
    };
    const bool unitOnly = (startsWithAny({"FLAT ", "APT ", "APT. ", "UNIT "}) && address1.size() < 11) ||
                          (startsWithAny({"1ST FL", "1ST. FL", "2ND FL", "2ND. FL", "3RD FL", "3RD. FL"}) &&
                           address1.size() < 15) ||
                          startsWithAny({"APARTMENT "});
    return unitOnly ? address2 : address1;
}

void OrderRoutesMapping::run(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer* server)
{
    if (m_db.memoryTable(tableName()))
        m_db.deleteTable(tableName());
    if (m_db.memoryTable(tableName()))
        throw MessageError(QStringLiteral("MemMappingData exists, and it shouldn't!"));
    MappingTableGuard guard{m_db};
    fill(rows, request);
    if (request.options.action == MappingAction::Export) {
        exportFile(request);
        return;
    }
    if (!server)
        throw map::MapServerError(QStringLiteral("No map server is available."));
    drive(rows, request, *server);
}

void OrderRoutesMapping::fill(const OrderRoutesWorkingSet& rows, const Request& request)
{
    QStringList definitions;
    QStringList names;
    QStringList placeholders;
    for (const auto& c : mappingColumns) {
        definitions << QString::fromLatin1(c[0]) + QLatin1Char(' ') + QString::fromLatin1(c[1]);
        names << QString::fromLatin1(c[0]);
        placeholders << QLatin1Char(':') + QString::fromLatin1(c[0]);
    }
    m_db.execute(QStringLiteral("Create Table Memory MemMappingData (%1)").arg(definitions.join(QStringLiteral(", "))));
    m_db.execute(QStringLiteral("Create Index Stop on Memory MemMappingData (Stop)"));

    ResultSet source;
    if (request.selectedKeys.empty()) {
        source = m_db.execute(OrderRoutesStatements::retrieve(request.dayIndex, request.activeOnly),
                              {{QStringLiteral("cRoute"), request.route}});
    } else {
        // The default route's columns of the selected clients; one who came
        // by a weekday takes the route and stop of the grid.
        Query client = m_db.query(QStringLiteral(
            "Select RecordID, person_id, '   ' as Route_Day, def_rte as Route, def_Stop as Stop, client_id, "
            "first_name, last_name, First_Name+' '+Substring(Last_Name from 1 for 1) as Name, address1, city, state, "
            "zip, latitude, longitude from clients where Person_ID = :Person_ID"));
        for (int key : request.selectedKeys) {
            const ResultSet one = client.bind(QStringLiteral("Person_ID"), rows.row(key).personId).exec();
            if (source.columnCount() == 0)
                source = ResultSet(one.columns());
            for (qsizetype r = 0; r < one.rowCount(); ++r) {
                QVariantList values = one.row(r);
                if (!rows.row(key).routeDay.trimmed().isEmpty()) {
                    values[size_t(one.columnIndex(u"Route"))] = rows.row(key).route;
                    values[size_t(one.columnIndex(u"Stop"))] = rows.row(key).stop;
                }
                source.appendRow(values);
            }
        }
    }

    Query address2 = m_db.query(QStringLiteral("Select Address2 from Clients where Person_ID = :Person_ID"));
    std::vector<Params> inserts;
    for (qsizetype r = 0; r < source.rowCount(); ++r) {
        const auto v = [&](const char* c) {
            const int i = source.columnIndex(QString::fromLatin1(c));
            return i < 0 ? QVariant() : source.value(r, i);
        };
        const QVariant personId = v("Person_ID");
        const ResultSet second = address2.bind(QStringLiteral("Person_ID"), personId).exec();
        const QVariant stop = v("Stop");
        Params p = {{QStringLiteral("Route_Day"), v("Route_Day")},
                    {QStringLiteral("Route"), v("Route")},
                    {QStringLiteral("Stop"), stop},
                    {QStringLiteral("RouteStop"), routeStopOf(v("Route").toString(), stop.toDouble())},
                    {QStringLiteral("Client_ID"), v("Client_ID")},
                    {QStringLiteral("Person_ID"), personId},
                    {QStringLiteral("First_Name"), v("First_Name")},
                    {QStringLiteral("Last_Name"), v("Last_Name")},
                    {QStringLiteral("Name"), v("Name")},
                    {QStringLiteral("Address1"), v("Address1")},
                    {QStringLiteral("Address2"), second.isEmpty() ? QVariant() : second.value(0, 0)},
                    {QStringLiteral("City"), v("City")},
                    {QStringLiteral("State"), v("State")},
                    {QStringLiteral("Zip"), v("Zip")},
                    {QStringLiteral("Latitude"), v("Latitude")},
                    {QStringLiteral("Longitude"), v("Longitude")}};
        inserts.push_back(std::move(p));
    }
    const MappingLocation& at = request.options.location;
    const auto end = [&](double stop) {
        return Params{{QStringLiteral("Route"), QString()},  {QStringLiteral("Stop"), stop},
                      {QStringLiteral("Name"), at.name},     {QStringLiteral("Address1"), at.address},
                      {QStringLiteral("City"), at.city},     {QStringLiteral("State"), at.state},
                      {QStringLiteral("Zip"), at.zip}};
    };
    Query insert = m_db.query(QStringLiteral("Insert into Memory MemMappingData (%1) values (%2)")
                                  .arg(names.join(QStringLiteral(", ")), placeholders.join(QStringLiteral(", "))));
    if (!inserts.empty())
        insert.execBatch(inserts);
    m_db.execute(QStringLiteral("Update memory MemMappingData set Stop = 0 where (Stop = Null)"));
    std::vector<Params> ends;
    if (request.options.includeStarting)
        ends.push_back(end(startStop));
    if (request.options.includeEnding)
        ends.push_back(end(endStop));
    if (!ends.empty())
        m_db.query(QStringLiteral("Insert into Memory MemMappingData (Route, Stop, Name, Address1, City, State, Zip) "
                                  "values (:Route, :Stop, :Name, :Address1, :City, :State, :Zip)"))
            .execBatch(ends);
}

void OrderRoutesMapping::exportFile(const Request& request)
{
    QFile file(request.options.exportFile);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        throw MessageError(
            QStringLiteral("Unable to write the file %1: %2").arg(request.options.exportFile, file.errorString()));
    QTextStream out(&file);
    // Texts in double quotes, as they stand: mapping programs read them so.
    const auto q = [](const QString& s) { return QLatin1Char('"') + s.trimmed() + QLatin1Char('"'); };
    out << "Route,Stop,RouteStop,Name,Address1,City,State,Zip,Latitude,Longitude,Person_ID\n";
    for (const MappingRow& m : mappingRows(m_db)) {
        const QStringList fields = {q(m.route), QLocale::c().toString(m.stop, 'g', 10), q(m.routeStop),
                                    q(m.label(request.options.labelOption)), q(m.address1), q(m.city), q(m.state),
                                    q(m.zip), number(m.latitude), number(m.longitude),
                                    m.personId.isNull() ? QString() : QString::number(m.personId.toLongLong())};
        out << fields.join(QLatin1Char(',')) << '\n';
    }
    out.flush();
    if (out.status() != QTextStream::Ok)
        throw MessageError(QStringLiteral("Unable to write the file %1.").arg(request.options.exportFile));
    m_ui.information(QStringLiteral("Finished exporting the route."));
}

void OrderRoutesMapping::drive(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer& server)
{
    for (int key = 0; key < rows.count(); ++key)
        rows.setNewStop(key, -1.0);
    const MapPointOptions& o = request.options;
    server.connect(map::regionForPostalFormat(request.postalFormat));
    server.setVisible(true);
    server.setUserControl(true);
    server.setPaneState(map::PaneState::RoutePlanner);
    server.clearRoute();
    server.deletePushpins();

    const map::Country country = map::countryForPostalFormat(request.postalFormat);
    map::FixedEnds pinned;
    for (const MappingRow& m : mappingRows(m_db)) {
        const QString street = streetToMap(m.address1, m.address2);
        const QString name = m.label(o.labelOption);
        std::shared_ptr<map::Pushpin> pin;
        if (m.hasCoordinates()) {
            pin = server.addPushpin(server.locationFromCoordinates(m.latitude.toDouble(), m.longitude.toDouble()),
                                    name + QStringLiteral(" / ") + m.routeStop);
        } else {
            const map::AddressMatches found = server.findAddress({street, m.city, m.state, m.zip, country});
            if (!found.isGood())
                m_ui.error(QStringLiteral("MapPoint had trouble mapping this location:\r\nRoute: ") + m.route +
                           QStringLiteral(" Stop: ") + QString::number(m.stop, 'g', 10) + QStringLiteral("\r\n") +
                           m.firstName.trimmed() + QLatin1Char(' ') + m.lastName.trimmed() + QStringLiteral("\r\n") +
                           street + QStringLiteral("\r\n") + m.city.trimmed() + QStringLiteral(", ") + m.state.trimmed() +
                           QLatin1Char(' ') + m.zip.trimmed());
            // Nothing to pin when nothing at all was found.
            if (found.count() == 0)
                continue;
            pin = server.addPushpin(found.first(),
                                    m.isClient() ? name + QStringLiteral(" / ") + m.routeStop : m.name);
        }
        server.addWaypoint(*pin);
        // The start and end rows are the ones without a client.
        if (m.personId.isNull() && m.stop == startStop)
            pinned.start = true;
        else if (m.personId.isNull() && m.stop == endStop)
            pinned.end = true;
    }
    if (server.waypointCount() > 1) {
        server.calculateRoute();
        server.goToRoute();
    }
    if (o.optimizeAndRetrieve && request.selectedKeys.empty() && server.waypointCount() > 1) {
        // Only the ends that are really on the route stay in place; with a
        // start that was not found, the first client moves like any other.
        server.optimizeWaypoints(pinned);
        server.calculateRoute();
        const QString ready =
            QStringLiteral("Click OK when ready to retrieve the optimization from MapPoint.");
        if (m_pause)
            m_pause(ready);
        else
            m_ui.information(ready);
        readBack(rows, request, server, pinned);
    }
    server.setSaved(true);
}

void OrderRoutesMapping::readBack(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer& server,
                                  map::FixedEnds pinned)
{
    const MapPointOptions& o = request.options;
    const int count = server.waypointCount();
    for (int i = 1; i <= count; ++i) {
        if ((i == 1 && pinned.start) || (i == count && pinned.end)) continue;
        const WaypointName w = WaypointName::parse(server.waypointName(i));
        const QString client = PushpinLabels::clientNumber(o.labelOption, w.label);
        int found = -1;
        for (int key = 0; key < rows.count() && found < 0; ++key) {
            const OrderRoutesRow& r = rows.row(key);
            if (r.clientId.trimmed() == client && r.route.trimmed() == w.route &&
                WaypointName::parse(QStringLiteral("/ Rte: ") + r.route + QStringLiteral(" Stop: ") +
                                    QString::number(r.stop, 'g', 10))
                        .stop == w.stop)
                found = key;
        }
        if (found < 0) {
            m_ui.error(QStringLiteral("Route optimization was not retrieved for: ") + w.label);
            continue;
        }
        // Clients who share a whole stop number with one already placed go with it.
        int n = (pinned.start ? i - 1 : i);
        for (int pos = 0; pos < rows.count(); ++pos) {
            const OrderRoutesRow& r = rows.rowAt(pos);
            if (r.stop > 0 && StopNumbering::wholePart(r.stop) == StopNumbering::wholePart(w.stop) && r.newStop > 0) {
                n = int(StopNumbering::wholePart(r.newStop));
                break;
            }
        }
        rows.setNewStop(found, StopNumbering::atPosition(n, rows.row(found).stop));
    }
    std::vector<std::pair<int, double>> placed;
    for (int key = 0; key < rows.count(); ++key)
        if (rows.row(key).newStop > 0)
            placed.emplace_back(key, rows.row(key).newStop);
    rows.setStops(placed);
}

} // namespace kb
