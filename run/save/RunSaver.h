#pragma once

#include "confirmation/ConfirmedItems.h"
#include "records/UniqueId.h"
#include "save/SaveStep.h"
#include "specialmeals/SpecialMealsSetup.h"
#include "store/Database.h"

#include <QDate>
#include <QStringList>

#include <optional>

namespace kb {

class MemTableDeliveries;
class TableSpecialLabels;
class UserInterface;

// What a save is asked to store.
struct RunSaveRequest
{
    QDate runDate;
    // The delivery type the run was prepared for, as the list shows it; the
    // History row names it.
    QString deliveryTypeText;
    ConfirmedItems confirmed;
    // The special meals to flag, when Config has the feature on; a rule left
    // empty flags nothing.
    std::optional<SpecialMealsSetup> specialMeals;
    QStringList aDietCodes;
    QString userFullName;
};

// What a save stored.
struct SaveResult
{
    qint64 deliveries = 0;
    qint64 firstDelivId = 0;
    qint64 lastDelivId = 0; // firstDelivId - 1 for a run without rows
    qint64 mealCrdtRows = 0;
};

// The part of a run's save that changes stored data, in one transaction:
// the date's earlier rows go (their statuses kept), the working table's
// rows are written to Deliveri and MealCrdt with their items, counts,
// funding and a block of Deliv_IDs, dated deliveries are marked fulfilled,
// special meals flagged, the agency's on-save statement run and History
// told. A failure at any step rolls everything back; nothing of the save
// stays. Rows are written by set (a handful of batched statements), not one
// statement per row.
class RunSaver
{
public:
    RunSaver(Database& db, UserInterface& ui, MemTableDeliveries& table, TableSpecialLabels& specialLabels);

    // Throws MessageError (the user's words) or DbError; the transaction is
    // then rolled back. The caller has made sure no transaction is open.
    SaveResult save(const RunSaveRequest& request);

    // For tests: the save fails at the start of a step, as an engine error
    // there would.
    void setFailAt(std::optional<SaveStep> step) { m_failAt = step; }
    // How hard the save tries for the IDNOS row lock.
    void setCounterTries(const UniqueIdTries& tries) { m_counterTries = tries; }
    // How often it tries to begin its transaction while another workstation
    // writes (each try waits the session's lock timeout).
    void setTransactionTries(int tries) { m_transactionTries = tries; }

private:
    void reach(SaveStep step);
    void beginTransaction(std::optional<TransactionGuard>& transaction);
    void deleteEarlierRows(const QDate& date, class DeliveryStatuses& statuses);
    void runOnSaveQuery(const QDate& date);

    Database& m_db;
    UserInterface& m_ui;
    MemTableDeliveries& m_table;
    TableSpecialLabels& m_specialLabels;
    std::optional<SaveStep> m_failAt;
    UniqueIdTries m_counterTries;
    int m_transactionTries = 100;
};

// The History text of a save: "Saved ", the date in the system's short
// format, " ", the delivery type, ", ", the count and " name." or " names.".
QString savedHistoryText(const QDate& date, const QString& deliveryTypeText, qint64 count);

} // namespace kb
