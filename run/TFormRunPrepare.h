#pragma once

#include "RunAction.h"
#include "confirmation/ConfirmedItems.h"
#include "items/RunItems.h"
#include "save/RunSaver.h"
#include "selection/RunLookups.h"
#include "specialmeals/SpecialMealsSetup.h"
#include "specialmeals/TableSpecialLabels.h"
#include "worktable/DeliveriesGridOutput.h"
#include "worktable/MemTableDeliveries.h"
#include "worktable/MemTableDeliveriesModel.h"

#include <QDate>
#include <QObject>
#include <QStringList>

#include <array>
#include <functional>
#include <optional>

namespace kb {

class Database;
class ItemConfirmation;
class OriginDataSet;
class RunDialogs;
class UserInterface;
struct SessionState;

// "Daily Run Preparation": the user picks a date and a delivery type, and
// ActionPrepare selects the deliveries of that date into the working table
// MemTableDeliveries, by route and stop. Preparing only reads the database.
// ActionSaveData stores the run as the date's deliveries, replacing what the
// date held; ActionPopulateGridWithPreviouslySavedDeliveries loads a saved
// date back.
//
// Driving a save from a program takes a few lines:
//     TFormRunPrepare form(db, session, ui);
//     GivenItemConfirmation all = GivenItemConfirmation::all();
//     form.setItemConfirmation(&all);
//     form.FormShow();
//     form.SetPrepareDate(date);
//     form.ActionPrepare();
//     std::optional<SaveResult> saved = form.ActionSaveData(); // empty: failed, ui told why
//     form.FormClose();
class TFormRunPrepare : public QObject
{
    Q_OBJECT

public:
    TFormRunPrepare(Database& db, const SessionState& session, UserInterface& ui, QObject* parent = nullptr);
    ~TFormRunPrepare() override;

    // Shown: creates or empties the working table and TableSpecialLabels,
    // disables the commands that need rows and shows the user in the status
    // line.
    void FormShow();
    // Closed: FormCleanUp. Closing does not ask about unsaved changes.
    void FormClose();
    // Drops the screen's temporary tables: the working table,
    // TableSpecialLabels and the mapping data.
    void FormCleanUp();

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
    // Who answers the screen's other dialogs: the special meals of a save and
    // the date of a reload. Without them a save flags the special meals of
    // the date's stored setup, if it has one, and nothing is
    // reloaded.
    void setDialogs(RunDialogs* dialogs) { m_dialogs = dialogs; }
    // The start of a save: the items of the run's date that need
    // confirmation, asked through the answer.
    ConfirmedItems ConfirmDeliveryItems();
    // The items, meal and label counts and funding of every row of the
    // working table, in the run's order, for the confirmed items. Throws
    // MessageError for a row whose service is not valid. Empty before the
    // first Prepare.
    RunItems FindRunItems(const ConfirmedItems& confirmed);

    // "Save Data": the special meals and the items to confirm are asked,
    // then the run replaces everything stored for its date in one
    // transaction, and the count of stored rows is checked. What was stored,
    // or nothing when the save did not run or failed (the user was told why;
    // nothing of it stays). Refused for users who may not change data.
    std::optional<SaveResult> ActionSaveData();
    // The rules, masks and choices of the special meals of the last save
    // (cLabelLimit, nLabelDiet, lFilterAll for each meal).
    const SpecialMealsSetup& specialMeals() const { return m_specialMeals; }
    // The save's own steps, for tests that make one fail.
    RunSaver& saver() { return m_saver; }

    // "Populate Grid With Previously Saved Deliveries": a saved date, asked
    // in "Repopulate the Grid", replaces the working table and becomes the
    // run's date.
    void ActionPopulateGridWithPreviouslySavedDeliveries();

    // "Print Report": offers to save first when the grid has changes not
    // saved, then opens the report screen with both its dates set to the
    // picker's date. Enabled once a report screen is given.
    using ReportScreen = std::function<void(const QDate& from, const QDate& to)>;
    void setReportScreen(ReportScreen open);
    void ActionPrintReport();
    bool isEnabled(RunAction action) const;
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
    // "Export Data": the grid's shown columns, in its order, to a file; only
    // the given grid rows when options.selectedOnly and some are given.
    bool ActionExportData(const GridExportOptions& options, const std::vector<int>& selectedRows = {});
    // "Quick Clients Listing": the grid's rows, in its order, to the printer
    // under the screen's caption.
    void setQuickListingPrinter(QuickListingPrinter printer) { m_quickListingPrinter = std::move(printer); }
    bool ActionQuickClientsListing();
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
    // Fills the working table: one write of the session's private table.
    void fillTable(const std::function<void()>& work);
    // "Daily Run Preparation: ", the run's day name and its long date.
    void setRunCaption();
    // The special meals dialog of a save: the rules it ends with, stored for
    // the date on OK; empty rules on Cancel.
    SpecialMealsSetup askSpecialMeals();
    std::optional<SaveResult> saveInTransaction(const ConfirmedItems& confirmed,
                                                const std::optional<SpecialMealsSetup>& flags);
    void setTransactionText(const QString& text);

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    MemTableDeliveries m_table;
    MemTableDeliveriesModel* m_model;
    RunLookups m_lookups;
    Query m_overrideQuery;
    ItemConfirmation* m_itemConfirmation = nullptr;
    RunDialogs* m_dialogs = nullptr;
    TableSpecialLabels m_specialLabels;
    RunSaver m_saver;
    SpecialMealsSetup m_specialMeals;
    ReportScreen m_reportScreen;
    QuickListingPrinter m_quickListingPrinter;

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
