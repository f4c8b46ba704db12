#include "save/RunSaver.h"

#include "DebugLog.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "items/RunItems.h"
#include "records/History.h"
#include "records/RecordServices.h"
#include "save/DelivIdCounter.h"
#include "save/DelivIdPlan.h"
#include "save/DeliveriWriter.h"
#include "save/DeliveryStatuses.h"
#include "save/MealCrdtWriter.h"
#include "selection/RunStatements.h"
#include "specialmeals/SpecialMealFlags.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRandomGenerator>
#include <QThread>

namespace kb {

namespace {

// Rows between two progress steps: each step sends what was queued, so the
// bar moves as the rows reach the store.
constexpr size_t progressChunk = 500;

// Runs one delete or update of the save, putting the step's words before
// the engine's message when it fails.
void runStep(Database& db, const QString& words, const QString& text, const Params& values)
{
    try {
        db.execute(text, values);
    } catch (const DbError& e) {
        throw MessageError(words + e.message());
    }
}

} // namespace

QString savedHistoryText(const QDate& date, const QString& deliveryTypeText, qint64 count)
{
    return QStringLiteral("Saved ") + QLocale().toString(date, QLocale::ShortFormat) + QLatin1Char(' ') +
           deliveryTypeText + QStringLiteral(", ") + QString::number(count) +
           (count == 1 ? QStringLiteral(" name.") : QStringLiteral(" names."));
}

RunSaver::RunSaver(Database& db, UserInterface& ui, MemTableDeliveries& table,
                   TableSpecialLabels& specialLabels)
    : m_db(db), m_ui(ui), m_table(table), m_specialLabels(specialLabels)
{
}

void RunSaver::reach(SaveStep step)
{
    if (m_failAt == step)
        throw MessageError(QStringLiteral("The save was made to fail at step %1.").arg(saveStepName(step)));
}

void RunSaver::beginTransaction(std::optional<TransactionGuard>& transaction)
{
    // Another workstation may be writing (on a data directory the whole
    // data is then locked for a moment); the save waits its turn.
    for (int attempt = 1;; ++attempt) {
        try {
            transaction.emplace(m_db);
            return;
        } catch (const DbError& e) {
            const bool locked = e.code() == DbErrorCode::TableLocked || e.code() == DbErrorCode::RecordLocked;
            if (!locked || attempt >= m_transactionTries) throw;
        }
        if (QCoreApplication::instance()) QCoreApplication::processEvents();
        QThread::msleep(QRandomGenerator::global()->bounded(20, 120));
    }
}

SaveResult RunSaver::save(const RunSaveRequest& request)
{
    const QDate date = request.runDate;
    const QString dow = RunStatements::dayCode(date);
    const ResultSet config =
        m_db.execute(QStringLiteral("Select Consolidate_Deliveries, Line_Item_Retention from Config"));
    const bool lConsolidate_Deliveries = !config.isEmpty() && config.value(0, 0).toBool();
    const qint64 retention = config.isEmpty() ? 0 : config.value(0, 1).toLongLong();

    // The counter's lock outlives the transaction: it is given back after
    // the commit or the rollback.
    DelivIdCounter counter(m_db, m_counterTries);
    std::optional<TransactionGuard> transaction;
    beginTransaction(transaction);

    // Everything the date held goes; only the statuses are kept.
    m_ui.progressStart(QStringLiteral("Deleting prior credits"));
    reach(SaveStep::RetentionDelete);
    if (retention > 0)
        runStep(m_db, QStringLiteral("Unexpected error occurred while deleting old Meal Credits: "),
                QStringLiteral("Delete from MealCrdt where Deliv_Dt < :Retention_Date"),
                {{QStringLiteral("Retention_Date"), m_db.clock().today().addDays(-retention)}});
    reach(SaveStep::KeepStatuses);
    DeliveryStatuses statuses;
    statuses.keep(m_db, date);
    reach(SaveStep::DeleteDeliveries);
    runStep(m_db, QStringLiteral("Unexpected error occurred while deleting Deliveries: "),
            QStringLiteral("Delete from Deliveri where Deliv_dt = :dChosenDate"),
            {{QStringLiteral("dChosenDate"), date}});
    reach(SaveStep::ClearFulfilled);
    runStep(
        m_db,
        QStringLiteral(
            "An unexpected error has occurred while clearing the delivered flag on Episodic Deliveries: "),
        QStringLiteral("Update EpisodicDeliveries set Fulfilled= '' where  Deliv_Date = :Deliv_Date"),
        {{QStringLiteral("Deliv_Date"), date}});
    reach(SaveStep::DeleteMealCrdt);
    runStep(m_db, QStringLiteral("Unexpected error occurred while deleting Meal Credits: "),
            QStringLiteral("Delete from MealCrdt where Deliv_Dt = :dChosenDate"),
            {{QStringLiteral("dChosenDate"), date}});
    reach(SaveStep::DeleteSpecialDiets);
    m_db.execute(QStringLiteral("Delete from Special_Diets where Deliv_Dt < :Deliv_Dt"),
                 {{QStringLiteral("Deliv_Dt"), date.addDays(-7)}});
    m_db.execute(QStringLiteral("Delete from Special_Diets where Deliv_Dt = :Deliv_Dt"),
                 {{QStringLiteral("Deliv_Dt"), date}});

    m_ui.progressStart(QStringLiteral("Identifying various defaults..."));
    reach(SaveStep::FindItems);
    const RunItems run = RunItems::find(m_db, m_table, date, request.confirmed);
    const std::vector<DeliveryItems>& rows = run.deliveries();

    reach(SaveStep::FirstDelivId);
    const DelivIdPlan plan = DelivIdPlan::make(rows, counter.firstDelivId(), lConsolidate_Deliveries);

    m_ui.progressStart(QStringLiteral("Saving new data. Please do not interrupt!\r\nClient Count: ") +
                       QString::number(rows.size()));
    DeliveriWriter deliveri(m_db, dow);
    MealCrdtWriter mealCrdt(m_db, dow);
    for (size_t r = 0; r < rows.size(); ++r) {
        const DeliveryItems& row = rows[r];
        const RunDelivery& d = row.delivery;
        const qint64 delivId = plan.delivId(r);
        const QString deliveryType = plan.deliveryType(r, d.deliveryType);
        mealCrdt.MoveToMealCrdts(row, delivId);
        deliveri.add(row, delivId, deliveryType,
                     statuses.statusOf(d.personId, d.svcsUsed.toLongLong(), deliveryType));
        if ((r + 1) % progressChunk == 0 || r + 1 == rows.size()) {
            mealCrdt.flush();
            deliveri.flush();
            m_ui.progressStep(int((r + 1) * 100 / rows.size()));
            if (r + 1 <= progressChunk) reach(SaveStep::WriteDeliveries);
        }
    }
    // Every dated row of a client with a dated delivery in the run counts
    // as delivered: one statement for the run rather than one per client.
    reach(SaveStep::MarkFulfilled);
    m_db.execute(
        QStringLiteral("Update EpisodicDeliveries set Fulfilled= 'Y' where Deliv_Date = :Deliv_Date and "
                       "Person_ID in (Select Person_ID from Memory MemTableDeliveries where "
                       "Substring(Delivery_Type from 1 for 1) in ('E', 'S'))"),
        {{QStringLiteral("Deliv_Date"), date}});

    reach(SaveStep::SaveIDNumber);
    counter.SaveIDNumber(plan.afterLastRow());

    if (request.specialMeals) {
        reach(SaveStep::FlagSpecialMeals);
        SpecialMealFlags flags(m_db, m_ui, m_specialLabels, date, request.aDietCodes);
        for (int n = 1; n <= SpecialMealsSetup::mealCount; ++n)
            flags.FlagSpecialMeals(n, request.specialMeals->meal(n));
    }

    reach(SaveStep::OnSaveQuery);
    runOnSaveQuery(date);

    reach(SaveStep::History);
    QueryInsertHistory(m_db, request.userFullName,
                       {QVariant(), QVariant(),
                        savedHistoryText(date, request.deliveryTypeText, qint64(rows.size())), date});

    reach(SaveStep::DropStatuses);
    DeliveryStatuses::drop(m_db);

    reach(SaveStep::Commit);
    transaction->commit();

    SaveResult result;
    result.deliveries = qint64(rows.size());
    result.firstDelivId = plan.first();
    result.lastDelivId = plan.last();
    result.mealCrdtRows = mealCrdt.rowsWritten();
    return result;
}

void RunSaver::runOnSaveQuery(const QDate& date)
{
    QString text;
    try {
        text = GetSQLStatement(m_db, QStringLiteral("EXECUTE_ON_SAVE_DELIVERIES"));
    } catch (const DbError&) {
        return; // no Queries table: no statement
    }
    if (text.trimmed().isEmpty()) return;
    m_ui.progressStart(QStringLiteral("Executing On-Save-Deliveries query"));
    text.replace(QStringLiteral(":Delivery_Date"),
                 QLatin1Char('\'') + date.toString(Qt::ISODate) + QLatin1Char('\''));
    try {
        m_db.execute(text);
    } catch (const std::exception& e) {
        // The agency's own statement; the save does not depend on it.
        DebugLog::log(QStringLiteral("EXECUTE_ON_SAVE_DELIVERIES failed: ") + QString::fromUtf8(e.what()));
    }
}

} // namespace kb
