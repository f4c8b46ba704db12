#include "walkins/CreditSaver.h"

#include "DeliveryItemLists.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "WriteTransaction.h"
#include "confirmation/ConfirmedItems.h"
#include "items/DeliveryItems.h"
#include "items/ItemCounts.h"
#include "items/RunDefaults.h"
#include "items/RunFunding.h"
#include "itemstatements/ItemStatements.h"
#include "missed/MissEventText.h"
#include "records/History.h"
#include "save/BatchedStatement.h"
#include "save/DelivIdCounter.h"
#include "save/DelivIdPlan.h"
#include "save/DeliveriWriter.h"
#include "save/MealCrdtWriter.h"
#include "selection/RunStatements.h"
#include "worktable/MemTableDeliveries.h"

#include <map>
#include <memory>

namespace kb {

namespace {

// The rows of one date of the list, for the item look-up of that date's weekday.
const QString rowsOfDate = QStringLiteral(
    "Select RecordID as Request_ID, Person_ID, Svcs_Used as Service_ID, Deliv_ID as Dated_ID from Memory "
    "MemTableDeliveries where Delivery_Date = :Delivery_Date");

// The run's writers hold one weekday each; a credit spans many dates.
struct DayWriters
{
    DayWriters(Database& db, const QString& dow) : deliveri(db, dow), mealCrdt(db, dow) {}
    DeliveriWriter deliveri;
    MealCrdtWriter mealCrdt;
};

// Items, meals, labels and funding of every row, by the rules of a credit.
std::vector<DeliveryItems> creditItems(Database& db, MemTableDeliveries& table, const QDate& through)
{
    const ResultSet rows = table.select(DeliveriesIndex::RouteStopClient, RunDelivery::columns());
    std::vector<DeliveryItems> items(size_t(rows.rowCount()));
    ItemStatements statements;
    statements.build({});
    RunDefaults defaults;
    defaults.load(db, statements, RunStatements::dayCode(through));
    std::map<QDate, std::vector<size_t>> byDate;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        RunDelivery& d = items[size_t(r)].delivery;
        d = RunDelivery::read(rows, r);
        if (!defaults.isValidService(d.svcsUsed))
            throw MessageError(RunDefaults::invalidServiceMessage(d.personId));
        byDate[d.deliveryDate].push_back(size_t(r));
    }
    QHash<int, QHash<qint64, QString>> fundingByWeekday;
    for (const auto& [date, indexes] : byDate) {
        DeliveryItemLists lists;
        lists.load(db, rowsOfDate, {{QStringLiteral("Delivery_Date"), date}}, RunStatements::dayCode(date));
        const int weekday = date.dayOfWeek();
        if (!fundingByWeekday.contains(weekday)) fundingByWeekday.insert(weekday, fundingOfRun(db, weekday));
        const QHash<qint64, QString>& funding = fundingByWeekday[weekday];
        for (size_t i : indexes) {
            DeliveryItems& row = items[i];
            const DeliveryItemLists::Choice choice = lists.find(row.delivery.recordId);
            row.level = choice.level;
            row.lines.assign(choice.lines.begin(), choice.lines.end());
            row.customItems = choice.level == ItemListLevel::Dated || choice.level == ItemListLevel::Client;
            row.numberMeals = totalMeals(row.lines);
            row.numberLabels = 1;
            const qint64 service = row.delivery.svcsUsed.toLongLong();
            const auto fund = funding.constFind(row.delivery.recordId);
            row.fundingDesc = fund != funding.constEnd() ? *fund : defaults.fundingDesc(service);
        }
    }
    return items;
}

} // namespace

QString creditedHistoryText(const QDate& through, qint64 count)
{
    return QStringLiteral("Episodics through ") + miss_text::shortDate(through) + QStringLiteral(" saved, ") +
           QString::number(count) +
           (count == 1 ? QStringLiteral(" delivery.") : QStringLiteral(" deliveries."));
}

CreditResult CreditSaver::save(const QDate& through, const QHash<qint64, QString>& statuses,
                               const QString& userFullName)
{
    m_ui.progressStart(QStringLiteral("Saving new data. Please do not interrupt!"));
    const std::vector<DeliveryItems> rows = creditItems(m_db, m_table, through);
    // The counter's lock is taken before the transaction and given back
    // after it, as a run's save does, so the two never draw the same numbers.
    DelivIdCounter counter(m_db, m_counterTries);
    CreditResult result;
    inWriteTransaction(m_db, [&] {
        const DelivIdPlan plan = DelivIdPlan::make(rows, counter.firstDelivId(), false);
        std::map<QString, std::unique_ptr<DayWriters>> writers;
        BatchedStatement fulfilled(m_db,
                                   QStringLiteral("Update EpisodicDeliveries set Fulfilled= 'Y' where "
                                                  "Person_ID = :Person_ID and Deliv_Date = :Deliv_Date"));
        qint64 mealCrdtRows = 0;
        for (size_t r = 0; r < rows.size(); ++r) {
            const RunDelivery& d = rows[r].delivery;
            const QString dow = RunStatements::dayCode(d.deliveryDate);
            std::unique_ptr<DayWriters>& day = writers[dow];
            if (!day) day = std::make_unique<DayWriters>(m_db, dow);
            day->mealCrdt.MoveToMealCrdts(rows[r], plan.delivId(r));
            day->deliveri.add(rows[r], plan.delivId(r), d.deliveryType, statuses.value(d.delivId));
            if (d.isDated())
                fulfilled.add({{QStringLiteral("Person_ID"), d.personId},
                               {QStringLiteral("Deliv_Date"), d.deliveryDate}});
            if ((r + 1) % 500 == 0) m_ui.progressStep(int((r + 1) * 100 / rows.size()));
        }
        for (auto& [dow, day] : writers) {
            day->mealCrdt.flush();
            day->deliveri.flush();
            mealCrdtRows += day->mealCrdt.rowsWritten();
        }
        fulfilled.flush();
        counter.SaveIDNumber(plan.afterLastRow());
        QueryInsertHistory(
            m_db, userFullName,
            {QVariant(), QVariant(), creditedHistoryText(through, qint64(rows.size())), through});
        result = {qint64(rows.size()), plan.first(), plan.last(), mealCrdtRows};
    });
    m_ui.progressStep(100);
    return result;
}

} // namespace kb
