#include "TFormOrderRoutes.h"

#include "OrderRoutesGrid.h"
#include "OrderRoutesMapping.h"
#include "OrderRoutesStatements.h"
#include "OrderRoutesWriteBack.h"
#include "UserIni.h"

#include "geocode/AgencyGeocoder.h"
#include "map/LocalMapServer.h"
#include "map/MapServerError.h"
#include "MessageError.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "UserInterface.h"

#include <QSettings>

namespace kb {

namespace {

const QString iniSection = QStringLiteral("FormOrderRoutes");
const QString iniEpisodics = QStringLiteral("IncludeEpisodics");

} // namespace

TFormOrderRoutes::TFormOrderRoutes(Database& db, const SessionState& session, UserInterface& ui, QObject* parent)
    : QObject(parent), m_db(db), m_session(session), m_ui(ui)
{
    loadRoutes();
    QSettings ini(userIniPath(m_session), QSettings::IniFormat);
    m_includeEpisodics = ini.value(iniSection + QLatin1Char('/') + iniEpisodics, QStringLiteral("0")).toString() ==
                         QLatin1String("1");
    enableCommands();
}

TFormOrderRoutes::~TFormOrderRoutes() = default;

void TFormOrderRoutes::loadRoutes()
{
    const ResultSet routes = m_db.execute(QStringLiteral("Select Route_ID, Route_Desc from Routes order by Route_ID"));
    m_routeEntries.clear();
    for (qsizetype r = 0; r < routes.rowCount(); ++r)
        m_routeEntries << routes.value(r, 0).toString().trimmed() + QStringLiteral(" - ") +
                              routes.value(r, 1).toString().trimmed();
    if (!m_routeEntries.isEmpty())
        m_routeEntry = m_routeEntries.front();
}

void TFormOrderRoutes::setRouteEntry(const QString& entry)
{
    m_routeEntry = entry;
    emit changed();
}

bool TFormOrderRoutes::setRoute(const QString& routeCode)
{
    for (const QString& entry : m_routeEntries)
        if (OrderRoutesStatements::routeCode(entry).compare(routeCode.trimmed(), Qt::CaseInsensitive) == 0) {
            setRouteEntry(entry);
            return true;
        }
    return false;
}

void TFormOrderRoutes::setDayIndex(int index)
{
    if (index < 0 || index >= OrderRoutesStatements::dayCount)
        return;
    m_dayIndex = index;
    emit changed();
}

void TFormOrderRoutes::setActiveOnly(bool on)
{
    m_activeOnly = on;
    emit changed();
}

void TFormOrderRoutes::setIncludeEpisodics(bool on)
{
    m_includeEpisodics = on;
    emit changed();
}

// ---- the grid ----

OrderRoutesRow TFormOrderRoutes::displayedRow(int position) const
{
    OrderRoutesRow row = m_set.rowAt(position);
    if (m_pending && m_pending->key == m_set.keyAt(position)) {
        row.route = m_pending->route;
        row.stop = m_pending->stop;
    }
    return row;
}

int TFormOrderRoutes::currentPosition() const { return m_set.positionOf(m_currentKey); }

void TFormOrderRoutes::setCurrentPosition(int position)
{
    if (position < 0 || position >= m_set.count())
        return;
    const int key = m_set.keyAt(position);
    if (key == m_currentKey)
        return;
    // Leaving a row posts its edit, as a data-aware grid does.
    if (m_pending)
        post();
    m_currentKey = key;
    emit changed();
}

void TFormOrderRoutes::setSelection(const QList<int>& positions)
{
    m_selected.clear();
    for (int p : positions)
        if (p >= 0 && p < m_set.count())
            m_selected.insert(m_set.keyAt(p));
}

QList<int> TFormOrderRoutes::selectedPositions() const
{
    QList<int> positions;
    for (int key : m_selected)
        positions << m_set.positionOf(key);
    std::sort(positions.begin(), positions.end());
    return positions;
}

std::vector<int> TFormOrderRoutes::selectedKeys() const
{
    std::vector<int> keys;
    for (int p : selectedPositions())
        keys.push_back(m_set.keyAt(p));
    return keys;
}

void TFormOrderRoutes::sortByColumn(const QString& field)
{
    const std::optional<OrderRoutesIndex> index = OrderRoutesWorkingSet::indexForColumn(field);
    if (!index) {
        m_ui.warning(QStringLiteral("You can't sort on that column!"));
        return;
    }
    m_set.setIndex(*index);
    emit changed();
}

void TFormOrderRoutes::editField(int position, const QString& field, const QVariant& value)
{
    if (position < 0 || position >= m_set.count())
        return;
    setCurrentPosition(position);
    const int key = m_set.keyAt(position);
    if (!m_pending)
        m_pending = PendingEdit{key, m_set.row(key).route, m_set.row(key).stop};
    if (field.compare(QLatin1String("Route"), Qt::CaseInsensitive) == 0) {
        m_pending->route = OrderRoutesStatements::routeCode(value.toString());
    } else if (field.compare(QLatin1String("Stop"), Qt::CaseInsensitive) == 0) {
        // A negative stop becomes 0: the client has no place yet.
        m_pending->stop = std::max(0.0, value.toDouble());
    }
    emit changed();
}

void TFormOrderRoutes::post()
{
    if (!m_pending)
        return;
    const PendingEdit edit = *m_pending;
    m_pending.reset();
    m_set.setRoute(edit.key, edit.route);
    m_set.setStop(edit.key, edit.stop);
    afterChange();
}

void TFormOrderRoutes::cancel()
{
    if (!m_pending)
        return;
    m_pending.reset();
    emit changed();
}

void TFormOrderRoutes::askPendingEdit(const QString& question)
{
    if (!m_pending)
        return;
    if (m_ui.question(question, Buttons::YesNo) == Answer::Yes)
        post();
    else
        cancel();
}

void TFormOrderRoutes::afterChange()
{
    enableCommands();
    emit changed();
}

bool TFormOrderRoutes::isEnabled(OrderRoutesAction action) const { return m_enabled[size_t(action)]; }

void TFormOrderRoutes::enableCommands()
{
    const int count = m_set.isOpen() ? m_set.count() : 0;
    setEnabled(OrderRoutesAction::Retrieve, true);
    setEnabled(OrderRoutesAction::MoveUp, count > 1);
    setEnabled(OrderRoutesAction::MoveDown, count > 1);
    for (OrderRoutesAction a : {OrderRoutesAction::ResetStops, OrderRoutesAction::ResetRoutes,
                                OrderRoutesAction::IncrementStops, OrderRoutesAction::SendToMapping,
                                OrderRoutesAction::PrintListing, OrderRoutesAction::ExportData,
                                OrderRoutesAction::ViewClientAddressInfo})
        setEnabled(a, count > 0);
    setEnabled(OrderRoutesAction::Optimise, count > 1);
}

// ---- commands ----

bool TFormOrderRoutes::hasChanges() const
{
    return m_set.isOpen() && m_set.hasChanges();
}

bool TFormOrderRoutes::applyChanges()
{
    std::vector<StopChange> changes;
    for (int key : m_set.changedKeys()) {
        const OrderRoutesRow& now = m_set.row(key);
        changes.push_back({m_set.original(key).personId, now.route, now.stop});
    }
    try {
        OrderRoutesWriteBack::apply(m_db, m_retrievedDay, changes, m_includeEpisodics);
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
        return false;
    }
    m_set.acceptChanges();
    emit changed();
    return true;
}

void TFormOrderRoutes::ActionRetrieve()
{
    const QString route = OrderRoutesStatements::routeCode(m_routeEntry);
    askPendingEdit(QStringLiteral("Save your changes to the current record before retrieving the \r\nnew records?"));
    if (hasChanges()) {
        const Answer answer = m_ui.question(QStringLiteral("Make all of the changes to this Route permanent?"),
                                            Buttons::YesNoCancel);
        if (answer == Answer::Cancel)
            return;
        if (answer == Answer::Yes && !applyChanges())
            return;
    }
    BusyGuard busy(m_ui);
    const ResultSet rows = m_db.execute(OrderRoutesStatements::retrieve(m_dayIndex, m_activeOnly),
                                        {{QStringLiteral("cRoute"), route}});
    m_set.load(rows);
    m_retrievedDay = m_dayIndex;
    m_retrievedRoute = route;
    m_retrievedActiveOnly = m_activeOnly;
    m_selected.clear();
    m_currentKey = m_set.count() > 0 ? m_set.keyAt(0) : -1;
    afterChange();
}

void TFormOrderRoutes::ActionMoveUp()
{
    if (m_selected.size() > 1) {
        m_ui.warning(QStringLiteral("Only one line can be selected when using the Up and Down \r\nbuttons."));
        return;
    }
    askPendingEdit(QStringLiteral("Save your changes first before reordering?"));
    const int position = currentPosition();
    if (position <= 0 || m_set.row(m_currentKey).stop <= 0)
        return;
    const int key = m_currentKey;
    const int previous = m_set.keyAt(position - 1);
    const double stop = m_set.row(key).stop;
    const double previousStop = m_set.row(previous).stop;
    if (stop == previousStop) {
        m_ui.warning(QStringLiteral("The record being moved has the same Stop as the one \r\nabove it. You will need to "
                                    "change the Stop on one or the other \r\nmanually in order to move this record up."));
        return;
    }
    m_set.setStops({{previous, stop}, {key, previousStop}});
    afterChange();
}

void TFormOrderRoutes::ActionMoveDown()
{
    if (m_selected.size() > 1) {
        m_ui.warning(QStringLiteral("Only one line can be selected when using the Up and Down \r\nbuttons."));
        return;
    }
    askPendingEdit(QStringLiteral("Save your changes first before reordering?"));
    const double highest = m_set.highestStop();
    const int position = currentPosition();
    if (position < 0 || m_set.row(m_currentKey).stop <= 0)
        return;
    if (m_set.row(m_currentKey).stop >= highest) {
        m_ui.warning(QStringLiteral("The record being moved, based upon the Stop number, is \r\nalready at the bottom of "
                                    "the list."));
        return;
    }
    if (position + 1 >= m_set.count())
        return;
    const int key = m_currentKey;
    const int next = m_set.keyAt(position + 1);
    const double stop = m_set.row(key).stop;
    const double nextStop = m_set.row(next).stop;
    if (stop == nextStop) {
        m_ui.warning(QStringLiteral("The record being moved has the same Stop as the one \r\nbelow it. You will need to "
                                    "change the Stop on one or the other \r\nmanually in order to move this record "
                                    "down."));
        return;
    }
    m_set.setStops({{next, stop}, {key, nextStop}});
    afterChange();
}

void TFormOrderRoutes::ActionResetStops(double stop)
{
    askPendingEdit(QStringLiteral("Save the changes to the current record before resetting stops?"));
    std::vector<std::pair<int, double>> stops;
    for (int key : selectedKeys())
        stops.emplace_back(key, stop);
    m_set.setStops(stops);
    afterChange();
}

void TFormOrderRoutes::ActionIncrementStops(double by)
{
    askPendingEdit(QStringLiteral("Save the changes to the current record before incrementing stops?"));
    // All selected rows move at once here, so the order the original walked
    // them in (first to last, or last to first for a rise) cannot matter.
    std::vector<std::pair<int, double>> stops;
    for (int key : selectedKeys())
        stops.emplace_back(key, m_set.row(key).stop + by);
    m_set.setStops(stops);
    afterChange();
}

void TFormOrderRoutes::ActionResetRoutes(const QString& routeEntry)
{
    askPendingEdit(QStringLiteral("Save the changes to the current record before resetting routes?"));
    const QString route = OrderRoutesStatements::routeCode(routeEntry);
    for (int key : selectedKeys())
        m_set.setRoute(key, route);
    afterChange();
}

std::optional<RouteOptimisation> TFormOrderRoutes::ActionOptimise(const RouteOptimiserOptions& options)
{
    askPendingEdit(QStringLiteral("Save your changes first before reordering?"));
    if (!m_set.isOpen() || m_set.count() == 0)
        return std::nullopt;
    RouteOptimisation result;
    {
        BusyGuard busy(m_ui);
        result = RouteOptimiser::optimise(m_set, m_retrievedRoute, options);
    }
    const QString summary = result.summary(m_set);
    if (result.newStops.empty()) {
        m_ui.information(summary);
        return result;
    }
    if (m_ui.question(summary + QStringLiteral("\r\n\r\nPut the stops in this order?"), Buttons::YesNo) != Answer::Yes)
        return result;
    m_set.setStops(result.newStops);
    afterChange();
    return result;
}

std::shared_ptr<map::MapServer> TFormOrderRoutes::makeMapServer()
{
    if (m_mapServerFactory)
        return m_mapServerFactory();
    return std::make_unique<map::LocalMapServer>(agencyGeocoder(m_db));
}

void TFormOrderRoutes::ActionSendToMapping(const MapPointOptions& options)
{
    post();
    if (hasChanges() &&
        m_ui.question(QStringLiteral("You have made changes to the route. Make the changes permanent before mapping?"),
                      Buttons::YesNo) == Answer::Yes &&
        !applyChanges())
        return;

    OrderRoutesMapping::Request request;
    request.dayIndex = m_retrievedDay;
    request.route = m_retrievedRoute;
    request.activeOnly = m_activeOnly;
    request.options = options;
    const std::vector<int> selected = selectedKeys();
    if (!selected.empty() && selected.size() < 50) {
        if (options.optimizeAndRetrieve) {
            if (m_ui.question(QStringLiteral("Optimization is set to be retrieved, and there are records \r\nselected in "
                                             "the grid. If you wish to map only the selected records \r\nthen "
                                             "optimization retrieval will be turned off. Do you want to map \r\nonly "
                                             "the selected records?"),
                              Buttons::YesNo) == Answer::Yes) {
                request.selectedKeys = selected;
                request.options.optimizeAndRetrieve = false;
            }
        } else if (m_ui.question(QStringLiteral("There are records selected in the grid.\r\nDo you want to map only the "
                                                "selected records?"),
                                 Buttons::YesNo) == Answer::Yes) {
            request.selectedKeys = selected;
        }
    }
    const ResultSet config = m_db.execute(QStringLiteral("Select Postal_Format from Config"));
    request.postalFormat = config.isEmpty() ? QString() : config.value(0, 0).toString();

    try {
        std::shared_ptr<map::MapServer> server;
        if (request.options.action == MappingAction::Integrate)
            server = makeMapServer();
        OrderRoutesMapping mapping(m_db, m_ui);
        mapping.setPause(m_mapPause);
        mapping.run(m_set, request, server.get());
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
    afterChange();
}

std::vector<OrderRoutesRow> TFormOrderRoutes::listingRows() const
{
    std::vector<OrderRoutesRow> rows;
    for (int p = 0; p < m_set.count(); ++p)
        rows.push_back(displayedRow(p));
    return rows;
}

RouteListing TFormOrderRoutes::listing() const
{
    RouteListing listing;
    listing.route = m_retrievedRoute;
    const ResultSet route = m_db.execute(QStringLiteral("Select Route_Desc from Routes where Route_ID = :Route_ID"),
                                         {{QStringLiteral("Route_ID"), m_retrievedRoute}});
    if (!route.isEmpty()) listing.routeDescription = route.value(0, 0).toString().trimmed();
    listing.dayText = OrderRoutesStatements::dayTexts().value(m_retrievedDay);
    listing.activeOnly = m_retrievedActiveOnly;
    listing.printed = m_db.clock().today();
    listing.rows = routeListingRows(listingRows());
    return listing;
}

void TFormOrderRoutes::ActionPrintListing()
{
    if (!m_listingPrinter) {
        m_ui.error(QStringLiteral("The route listing cannot be printed from here."));
        return;
    }
    try {
        m_listingPrinter(listing());
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
}

void TFormOrderRoutes::ActionExportData(const GridExportOptions& options)
{
    std::vector<int> positions;
    if (options.selectedOnly && !m_selected.empty())
        for (int p : selectedPositions())
            positions.push_back(p);
    else
        for (int p = 0; p < m_set.count(); ++p)
            positions.push_back(p);
    std::vector<QVariantList> lines;
    for (int p : positions)
        lines.push_back(orderRoutesGridValues(displayedRow(p)));
    try {
        GridExport::write(options, orderRoutesGridTitles(), lines);
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
        return;
    }
    m_ui.information(QStringLiteral("Finished exporting the data."));
}

QString TFormOrderRoutes::clientAddressInfo(int position)
{
    if (position < 0 || position >= m_set.count())
        return {};
    const ResultSet r = m_db.execute(
        QStringLiteral("Select First_Name, Last_Name, Address1, Address2, City, State, Zip, Cross_Street, Directions, "
                       "Phone, Latitude, Longitude from Clients where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), m_set.rowAt(position).personId}});
    if (r.isEmpty())
        return {};
    const auto t = [&](const char* c) { return r.value(0, QString::fromLatin1(c)).toString().trimmed(); };
    QStringList lines;
    lines << t("First_Name") + QLatin1Char(' ') + t("Last_Name") << t("Address1");
    if (!t("Address2").isEmpty())
        lines << t("Address2");
    lines << QStringLiteral("%1, %2 %3").arg(t("City"), t("State"), t("Zip"));
    lines << QStringLiteral("Cross Street: ") + t("Cross_Street");
    lines << QStringLiteral("Directions: ") + t("Directions");
    lines << QStringLiteral("Phone: ") + t("Phone");
    lines << QStringLiteral("Latitude, Longitude: %1, %2").arg(t("Latitude"), t("Longitude"));
    return lines.join(QLatin1Char('\n'));
}

void TFormOrderRoutes::ActionViewClientAddressInfo()
{
    const QString info = clientAddressInfo(currentPosition());
    if (!info.isEmpty())
        m_ui.information(info);
}

void TFormOrderRoutes::FormClose()
{
    askPendingEdit(QStringLiteral("Save your changes before closing the window?"));
    if (hasChanges() && m_ui.question(QStringLiteral("Make all of the changes to this Route permanent?"),
                                      Buttons::YesNoCancel) == Answer::Yes)
        applyChanges();
    QSettings ini(userIniPath(m_session), QSettings::IniFormat);
    ini.setValue(iniSection + QLatin1Char('/') + iniEpisodics,
                 m_includeEpisodics ? QStringLiteral("1") : QStringLiteral("0"));
}

} // namespace kb
