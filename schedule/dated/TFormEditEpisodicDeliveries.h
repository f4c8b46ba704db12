#pragma once

#include "dated/DatedDeliveries.h"
#include "dated/DatedRowItems.h"

#include <QDate>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>

namespace kb {

class QueryDataSet;
class RecordServices;
class TFormSetEpisodicItems;

// What "Delivery Deletion Options" hands back.
struct DeliveryDeletionOptions
{
    bool range = false;            // "Delete a range of deliveries:"
    QDate beginning;               // "Beginning:"
    QDate ending;                  // "Ending:"
    bool includeFulfilled = false; // "Delete deliveries even if they have been fulfilled"

    // The dialog's start: the current delivery, today and tomorrow.
    static DeliveryDeletionOptions defaults(const QDate& today);
    // The pickers push each other so that Beginning never exceeds Ending.
    void setBeginning(const QDate& date);
    void setEnding(const QDate& date);
};

// "Maintain Episodic Deliveries for <name>": the episodic deliveries of one
// client in a grid beside a calendar. Rows are added for a calendar date (or
// today), edited through the row rules, deleted one by one or by a range of
// dates, and generated in bulk by Auto Schedule. TFormEditScheduledDeliveries
// is the same screen over the scheduled deliveries of an ongoing client.
class TFormEditEpisodicDeliveries
{
public:
    TFormEditEpisodicDeliveries(Database& db, UserInterface& ui, QString userName, qint64 personId);
    virtual ~TFormEditEpisodicDeliveries();

    DatedKind kind() const { return m_kind; }
    QString caption() const;
    const DatedClient& client() const { return m_client; }
    QueryDataSet& dataSet() { return *m_set; }
    DatedDeliveries& rules() { return m_rules; }

    // The calendar's limits and the date it opens on (today, or the
    // nearest limit).
    QDate lowestDate() const;
    QDate highestDate() const;
    QDate initialDate() const;
    // The dates that have a row, for the bold calendar.
    QSet<QDate> deliveryDates() const;
    // Moves the grid to the row of the date; false when there is none.
    bool locateDate(const QDate& date);

    bool setItemsEnabled() const; // "Set Delivery Items", "Address Overrides"
    bool deleteEnabled() const;   // "Delete "
    // "Reassign Routes": the client's future rows can be moved to another
    // route whenever the session may change data.
    bool reassignRoutesEnabled() const;

    // The grid's Items column: what the row at `row` (0-based, in the
    // set's order) brings, its own lines or the standing items of its
    // weekday. Read for all rows at once and again after any change.
    const DatedRowItems& itemsAt(int row);

    // "Add Delivery": a row on the calendar date, or without one on today
    // (the start date, with the user told, when today is before it). The
    // grid then stands on the new row.
    void ActionAddDelivery(const std::optional<QDate>& calendarDate);
    // "Delete " after the options: the current row, or the first row of
    // each day of the range. Gives how many rows went.
    int ActionDelete(const DeliveryDeletionOptions& options);
    // "Set Delivery Items": the items screen of the current row, titled
    // after the row's date; null without a row. On a credited row the user
    // is first told that changes apply only when the date is saved again.
    std::unique_ptr<TFormSetEpisodicItems> ActionSetItems(RecordServices& services);

    // Changes a column of the current row and posts it through the rules;
    // false when a rule refused (the user has been told; the edit stays).
    bool setRowValue(const QString& column, const QVariant& value);
    // Reads the rows again (after Auto Schedule made some), keeping the row.
    void reload();
    // The form's name, for its section of the ini file.
    QString formName() const;

    // Closing: a pending edit of the row is asked about ("Save your changes
    // to the delivery that you are editing?"); Yes posts, No cancels.
    void close();

protected:
    TFormEditEpisodicDeliveries(Database& db, UserInterface& ui, QString userName, qint64 personId,
                                DatedKind kind);

private:
    void reopen(qint64 recordId);

    Database& m_db;
    UserInterface& m_ui;
    DatedKind m_kind;
    DatedClient m_client;
    DatedDeliveries m_rules;
    std::unique_ptr<QueryDataSet> m_set;
    std::optional<QHash<qint64, DatedRowItems>> m_items; // by RecordID, read when first wanted
};

// "Maintain Scheduled Deliveries for <name>".
class TFormEditScheduledDeliveries : public TFormEditEpisodicDeliveries
{
public:
    TFormEditScheduledDeliveries(Database& db, UserInterface& ui, QString userName, qint64 personId)
        : TFormEditEpisodicDeliveries(db, ui, std::move(userName), personId, DatedKind::Scheduled)
    {
    }
};

} // namespace kb
