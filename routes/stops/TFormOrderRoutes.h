#pragma once

#include "GridExport.h"
#include "MapPointOptions.h"
#include "OrderRoutesAction.h"
#include "OrderRoutesMapping.h"
#include "OrderRoutesWorkingSet.h"
#include "RouteListing.h"
#include "RouteOptimisation.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <set>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

namespace map {
class MapServer;
}

// "Order Stops within Routes": the clients of one route, by the default
// route or by a weekday's route then the default, in a working set that
// records changes. The user renumbers them by hand, by the map server or by
// the optimiser; nothing reaches the database until the user agrees to make
// the changes permanent (on Retrieve, before mapping, and on closing).
//
// The grid edits Route and Stop in place: an edit stays pending on its row
// until the row is left or a command posts it, as a data-aware grid does.
class TFormOrderRoutes : public QObject
{
    Q_OBJECT

public:
    // The map may outlive a run (the desktop keeps its window open), hence shared.
    using MapServerFactory = std::function<std::shared_ptr<map::MapServer>()>;

    TFormOrderRoutes(Database& db, const SessionState& session, UserInterface& ui, QObject* parent = nullptr);
    ~TFormOrderRoutes() override;

    static QString caption() { return QStringLiteral("Order Stops within Routes"); }

    // ---- screen state ----
    // One entry per route: the code, " - " and the description.
    const QStringList& routeEntries() const { return m_routeEntries; }
    QString routeEntry() const { return m_routeEntry; }
    void setRouteEntry(const QString& entry);
    // Selects the entry of a route code; false when there is none.
    bool setRoute(const QString& routeCode);
    int dayIndex() const { return m_dayIndex; }
    void setDayIndex(int index);
    bool activeOnly() const { return m_activeOnly; }
    void setActiveOnly(bool on);
    // "Apply route changes to future Episodic/Scheduled Deliveries", kept in
    // the user's ini file.
    bool includeEpisodics() const { return m_includeEpisodics; }
    void setIncludeEpisodics(bool on);

    // The day and route the set was retrieved for (they decide the write-back).
    int retrievedDayIndex() const { return m_retrievedDay; }
    const QString& retrievedRoute() const { return m_retrievedRoute; }

    // ---- the grid ----
    OrderRoutesWorkingSet& rows() { return m_set; }
    const OrderRoutesWorkingSet& rows() const { return m_set; }
    // The row shown at a position, the pending edit included.
    OrderRoutesRow displayedRow(int position) const;
    // The current row; moving it posts a pending edit. -1 when there is none.
    int currentPosition() const;
    void setCurrentPosition(int position);
    // The rows selected in the grid, by position.
    void setSelection(const QList<int>& positions);
    QList<int> selectedPositions() const;
    // A click on a column title: the index of that field, or "You can't sort on that column!".
    void sortByColumn(const QString& field);

    // Typing a route or stop into the grid: the row goes into edit.
    void editField(int position, const QString& field, const QVariant& value);
    bool hasPendingEdit() const { return m_pending.has_value(); }
    void post();
    void cancel();

    bool isEnabled(OrderRoutesAction action) const;

    // ---- commands ----
    void ActionRetrieve();
    void ActionMoveUp();
    void ActionMoveDown();
    // The value comes from TFormResetStops, TFormIncrementStops or TFormResetRoutes.
    void ActionResetStops(double stop);
    void ActionIncrementStops(double by);
    void ActionResetRoutes(const QString& routeEntry);
    // Runs the optimiser on the retrieved route, shows what it found and,
    // on the user's word, puts the new stops into the working set.
    std::optional<RouteOptimisation> ActionOptimise(const RouteOptimiserOptions& options = {});
    void ActionSendToMapping(const MapPointOptions& options);
    // The rows "Print Listing" prints under "Client Listing for Route", in the grid's order.
    std::vector<OrderRoutesRow> listingRows() const;
    // The listing of the retrieved route with its heading values.
    RouteListing listing() const;
    // Hands the listing to the printer; what goes wrong is shown.
    void ActionPrintListing();
    void ActionExportData(const GridExportOptions& options);
    QString clientAddressInfo(int position);
    void ActionViewClientAddressInfo();

    // Whether recorded changes wait to be made permanent.
    bool hasChanges() const;
    // Makes the recorded changes permanent, in one transaction; false (the
    // user told) when that failed and the changes are still recorded.
    bool applyChanges();
    // Closing: a pending edit and recorded changes are asked about, and the
    // pop-up entry's state goes to the ini file.
    void FormClose();

    // What prints the listing: the desktop's report engine. Without one
    // "Print Listing" tells the user it cannot print here.
    void setListingPrinter(RouteListPrinter printer) { m_listingPrinter = std::move(printer); }

    // The map server that "Send to Mapping" drives; our own by default.
    void setMapServerFactory(MapServerFactory factory) { m_mapServerFactory = std::move(factory); }
    // How the question before the map's order is read back is shown: the
    // desktop leaves the map window usable while it waits, so the user can
    // change the order there first.
    void setMapPause(OrderRoutesMapping::Pause pause) { m_mapPause = std::move(pause); }

signals:
    // Rows, the current row, the selection or the commands' state changed.
    void changed();

private:
    void loadRoutes();
    void setEnabled(OrderRoutesAction action, bool on) { m_enabled[size_t(action)] = on; }
    void enableCommands();
    // Asks about a pending edit; Yes posts, No cancels.
    void askPendingEdit(const QString& question);
    // Puts the set in the new order and keeps the current row where it was.
    void afterChange();
    std::vector<int> selectedKeys() const;
    std::shared_ptr<map::MapServer> makeMapServer();

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    OrderRoutesWorkingSet m_set;
    QStringList m_routeEntries;
    QString m_routeEntry;
    int m_dayIndex = 0;
    bool m_activeOnly = true;
    bool m_includeEpisodics = false;
    int m_retrievedDay = 0;
    QString m_retrievedRoute;
    bool m_retrievedActiveOnly = true;
    int m_currentKey = -1;
    std::set<int> m_selected; // keys
    struct PendingEdit
    {
        int key = -1;
        QString route;
        double stop = 0;
    };
    std::optional<PendingEdit> m_pending;
    std::array<bool, orderRoutesActionCount> m_enabled{};
    MapServerFactory m_mapServerFactory;
    OrderRoutesMapping::Pause m_mapPause;
    RouteListPrinter m_listingPrinter;
};

} // namespace kb
