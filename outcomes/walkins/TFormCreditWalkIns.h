#pragma once

#include "RunAction.h"
#include "selection/RunLookups.h"
#include "store/Database.h"
#include "walkins/CreditSaver.h"
#include "worktable/DeliveriesGridOutput.h"
#include "worktable/MemTableDeliveries.h"
#include "worktable/MemTableDeliveriesModel.h"

#include <QDate>
#include <QHash>
#include <QObject>

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kb {

class OriginDataSet;
class TFormViewEpisodicClientInfo;
class UserInterface;
struct GridExportOptions;
struct SessionState;

// "Credit Walk-In Clients and Episodic/Scheduled Deliveries": the run screen
// of dated events. It keeps the run's delivery grid (its working table and
// grid model, orders and column titles), its look-ups, and its item, funding
// and numbering rules and writers for saving; what differs is the choice of
// rows and the save. "Apply Changes" lists every event not yet fulfilled up
// to the chosen date, whatever its weekday, status or suspension, each under
// its own date; "Save Data" credits them as delivered, adding to what is
// stored and removing nothing.
class TFormCreditWalkIns : public QObject
{
    Q_OBJECT

public:
    TFormCreditWalkIns(Database& db, const SessionState& session, UserInterface& ui,
                       QObject* parent = nullptr);
    ~TFormCreditWalkIns() override;

    static QString caption()
    {
        return QStringLiteral("Credit Walk-In Clients and Episodic/Scheduled Deliveries");
    }
    static QString datePrompt() { return QStringLiteral("Credit episodic events through:"); }

    void FormShow();
    void FormClose();

    // "Credit episodic events through:", today to begin with, the date itself
    // included. Changing it withdraws the list from saving.
    QDate through() const { return m_through; }
    void setThrough(const QDate& date);

    // "Apply Changes": lists the events. A row the list cannot take (no
    // route, no person, no valid service) is told and ends the listing: the
    // rows before it stay in view but are not offered for saving.
    void ActionApplyChanges();
    // "Save Data": what was credited, or nothing when it did not run or
    // failed (the user was told why; nothing was credited).
    std::optional<CreditResult> ActionSaveData();

    bool isEnabled(RunAction action) const;
    const QString& clientCountText() const { return m_clientCountText; }
    // The Delivery_Status a row will be credited with, by its event's RecordID.
    QString statusOf(qint64 eventId) const { return m_statuses.value(eventId); }

    MemTableDeliveries& table() { return m_table; }
    MemTableDeliveriesModel* model() { return m_model; }
    // A click on a column title orders the list by it, as on the run screen.
    void sortByTitle(const QString& title);

    // "Export Data": the grid's shown columns, in its order, to a file; only
    // the given grid rows when options.selectedOnly and some are given.
    // False when it failed (the user was told why).
    bool ActionExportData(const GridExportOptions& options, const std::vector<int>& selectedRows = {});

    // "Quick Clients Listing": the list's rows, all their columns, in the
    // grid's order, handed to the printer with the listing's heading.
    void setQuickListingPrinter(QuickListingPrinter printer) { m_quickListingPrinter = std::move(printer); }
    // "Episodic events through 3/6/24"
    QString listingHeading() const;
    bool ActionQuickClientsListing();

    // "Delete &episodic events of selected Client": enabled on a row of the
    // list when the user may change data.
    bool mayDeleteEpisodicEventsOf(int gridRow) const;
    // Opens "Episodic/Scheduled Client Information" for the client of a grid
    // row, with the events up to the chosen date; show runs the screen and
    // tells whether it closed by "&Delete", after which the list is prepared
    // again. True when it did.
    using ShowClientInfo = std::function<bool(TFormViewEpisodicClientInfo&)>;
    bool ActionDeleteEpisodicEvents(int gridRow, const ShowClientInfo& show);

signals:
    void stateChanged();

private:
    // One event into the list; false when it ends the listing.
    bool addRow(const OriginDataSet& event);
    void setEnabled(RunAction action, bool enabled) { m_enabled[int(action)] = enabled; }

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    MemTableDeliveries m_table;
    MemTableDeliveriesModel* m_model;
    RunLookups m_lookups;
    Query m_overrideQuery;
    QStringList m_aDietCodes;
    QDate m_through;
    QDate m_listedThrough;
    QHash<qint64, QString> m_statuses;
    std::array<bool, runActionCount> m_enabled{};
    QString m_clientCountText;
    QuickListingPrinter m_quickListingPrinter;
};

} // namespace kb
