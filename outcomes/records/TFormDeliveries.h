#pragma once

#include "records/DeliveryRecords.h"
#include "records/TFormDeliveredItems.h"
#include "store/ResultSet.h"

#include <QDate>
#include <QStringList>

#include <functional>
#include <map>

namespace kb {

class Database;
class TFormCompDel;
class UserInterface;
struct SessionState;

// "Recent Deliveries": one client's saved deliveries of the past days,
// newest first. Staff comp a delivery or reverse a comp, delete one, look
// at its items, and change its funding source; funding edits wait in the
// list and reach the data when it is refreshed or closed.
class TFormDeliveries
{
public:
    // Column indexes of rows(), in the order of the list's statement.
    enum Column {
        DelivDt,
        SvcsUsed,
        DeliveryType,
        Dow,
        AddressOverridden,
        RouteId,
        Stop,
        NumberMeals,
        CustomItems,
        DietDescr,
        DeliveryStatus,
        DelivId,
        FundingDesc
    };

    // The comp dialog: fills it in and returns its ActionOK(), or false
    // when cancelled. Without one the dialog is accepted as it opens.
    using CompDialog = std::function<bool(TFormCompDel&)>;

    TFormDeliveries(Database& db, const SessionState& session, UserInterface& ui);

    static QString caption() { return QStringLiteral("Recent Deliveries"); }
    static QString daysCaption()
    {
        return QStringLiteral("Select deliveries within this past number of days:");
    }
    static constexpr int DefaultDays = 45;
    static constexpr int MinDays = 1;
    static constexpr int MaxDays = 1095;
    // The list's columns that are shown, with their titles ("~" breaks a
    // title onto a second line).
    static const std::vector<std::pair<Column, QString>>& shownColumns();

    void setCompDialog(CompDialog dialog) { m_compDialog = std::move(dialog); }

    // Opens the list of the client; stores pending funding edits of the
    // client shown before.
    void FormShow(qint64 personId);
    qint64 personId() const { return m_personId; }
    int days() const { return m_days; }
    // Clamped to 1..1095; reopens the list.
    void setDays(int days);
    QDate lastDelivery() const { return m_lastDelivery; }

    const ResultSet& rows() const { return m_rows; }
    // A value of the list, with a funding edit that waits shown in place.
    QVariant value(int row, Column column) const;
    int currentRow() const { return m_current; }
    // Deliv_ID of the current row; 0 when the list is empty.
    qint64 currentDelivId() const;
    void setCurrentRow(int row);
    // Moves to the delivery; false when the list does not show it.
    bool locate(qint64 delivId);

    // The funding codes a row may take.
    QStringList fundingCodes();
    // A funding edit of a row; kept until refresh or close.
    void setFunding(int row, const QString& code);
    bool hasPendingFunding() const { return !m_fundingChanges.empty(); }

    bool canDelete() const { return m_rows.rowCount() > 0; }
    bool canComp() const;
    bool canReverse() const;

    // True when the delivery was comped, reversed or deleted.
    bool ActionCompedDelivery();
    bool ActionReverseCompedDelivery();
    bool ActionDeleteDelivery();
    // The items of the current delivery; empty when the list is.
    ResultSet ActionShowDeliveryItems();
    // The items window that follows the list's current delivery.
    TFormDeliveredItems& deliveredItems() { return m_deliveredItems; }
    // Stores funding edits and reads the list again.
    void ActionRefresh();
    // Stores funding edits.
    void FormClose();

private:
    std::optional<delivery_records::Delivery> current() const;
    QString currentStatus() const;
    void open();
    void storeFunding();

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    CompDialog m_compDialog;
    qint64 m_personId = 0;
    int m_days = DefaultDays;
    QDate m_lastDelivery;
    ResultSet m_rows;
    int m_current = -1;
    std::map<qint64, QString> m_fundingChanges; // Deliv_ID -> Funding_Desc
    TFormDeliveredItems m_deliveredItems;
};

} // namespace kb
