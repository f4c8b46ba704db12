#pragma once

#include "confirmation/ConfirmedItems.h"
#include "items/RunItems.h"
#include "worktable/MemTableDeliveries.h"
#include "worktable/MemTableDeliveriesModel.h"
#include "RunAction.h"
#include "selection/RunLookups.h"

#include <QDate>
#include <QObject>
#include <QStringList>

#include <array>

namespace kb {

class Database;
class ItemConfirmation;
class OriginDataSet;
class UserInterface;
struct SessionState;

// "Daily Run Preparation": the user picks a date and a delivery type, and
// ActionPrepare selects the deliveries of that date into the working table
// MemTableDeliveries, by route and stop. Preparing only reads the database.
class TFormRunPrepare : public QObject
{
    Q_OBJECT

public:
    TFormRunPrepare(Database& db, const SessionState& session, UserInterface& ui, QObject* parent = nullptr);
    ~TFormRunPrepare() override;

    // Shown: creates or empties the working table, disables the commands
    // that need rows and shows the user in the status line.
    void FormShow();
    // Closed: the working table goes.
    void FormClose();

    // The date picker; changing it disables saving until the next Prepare.
    QDate prepareDate() const { return m_pickerDate; }
    void SetPrepareDate(const QDate& date);
    // "dddd MMMM d, yyyy" when the short date format starts with the month,
    // else "dddd d MMMM, yyyy".
    static QString datePickerFormat();
    static QString datePrompt() { return QStringLiteral("Prepare Deliveries for:"); }

    // The delivery type list.
    static QStringList deliveryTypeTexts();
    int deliveryTypeIndex() const { return m_deliveryTypeIndex; }
    void setDeliveryTypeIndex(int index);
    // Selects the entry of a letter: A, O, E, S or B.
    void SetDeliveryType(QChar letter);

    void ActionPrepare();
    // Adds one row to the working table from the current row of a selection
    // (lFromScratch true) or of a saved run being reloaded (false; the run's
    // date is then the reloaded date).
    void MoveToMemData(const OriginDataSet& OriginDataSet, bool lFromScratch);
    void EnableActions(qint64 count);

    // Who answers "Confirm Delivery Items" when a save asks: the dialog of
    // the screen, or a given answer. Without one nothing is confirmed.
    void setItemConfirmation(ItemConfirmation* answer) { m_itemConfirmation = answer; }
    // The start of a save: the items of the run's date that need
    // confirmation, asked through the answer.
    ConfirmedItems ConfirmDeliveryItems();
    // The items, meal and label counts and funding of every row of the
    // working table, in the run's order, for the confirmed items. Throws
    // MessageError for a row whose service is not valid. Empty before the
    // first Prepare.
    RunItems FindRunItems(const ConfirmedItems& confirmed);

    bool isEnabled(RunAction action) const { return m_enabled[int(action)]; }
    bool saved() const { return m_saved; }
    bool gridVisible() const { return m_gridVisible; }
    const QString& caption() const { return m_caption; }
    const QString& clientCountText() const { return m_clientCountText; }
    const QString& userText() const { return m_userText; }
    const QString& transactionText() const { return m_transactionText; }
    const QDate& runDate() const { return m_runDate; }
    const QString& DOW() const { return m_dow; }
    const QStringList& aDietCodes() const { return m_aDietCodes; }

    MemTableDeliveries& table() { return m_table; }
    MemTableDeliveriesModel* model() { return m_model; }
    // Pressing a column title: switches the index when the title has one.
    void sortByTitle(const QString& title);
    // Route_ID and ROUTE_DESC of every route, for the route editor.
    QList<std::pair<QString, QString>> routeChoices();
    // The double click on a row: the client's name, address, phones,
    // directions, cross street and every weekday's route and stop.
    QString clientDetails(int row);
    void showClientDetails(int row);

signals:
    // Caption, status, enabled commands or the grid's visibility changed.
    void stateChanged();

private:
    void setEnabled(RunAction action, bool enabled);
    void prepareRows();
    void runOngoing();
    void runDated(bool scheduled);
    void finishPrepare();

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    MemTableDeliveries m_table;
    MemTableDeliveriesModel* m_model;
    RunLookups m_lookups;
    Query m_overrideQuery;
    ItemConfirmation* m_itemConfirmation = nullptr;

    QDate m_pickerDate;
    int m_deliveryTypeIndex = 0;
    QDate m_runDate;
    QString m_dow;
    QString m_cDeliveryType;
    QStringList m_aDietCodes;
    bool m_saved = true;
    bool m_gridVisible = false;
    std::array<bool, runActionCount> m_enabled{};
    QString m_caption = QStringLiteral("Daily Run Preparation");
    QString m_clientCountText;
    QString m_userText;
    QString m_transactionText = QStringLiteral("OK: No Active Transaction");
};

} // namespace kb
