#include "dated/TFormClientEpisodicItems.h"

#include "UserInterface.h"
#include "dated/DatedDeliveries.h"
#include "dated/DatedKind.h"
#include "defaults/Weekdays.h"
#include "store/Database.h"

namespace kb {

namespace {

const char* const mealCodes[] = {"B", "L", "D", "MF"};
const char* const mealCaptions[] = {"Breakfast", "Lunch", "Dinner", "Medical Food"};

} // namespace

TFormClientEpisodicItems::TFormClientEpisodicItems(Database& db, UserInterface& ui, QString userName,
                                                   qint64 personId, const QDate& today)
    : m_db(db), m_ui(ui), m_userName(std::move(userName)), m_personId(personId), m_begin(today),
      m_end(today.addDays(30))
{
    const ResultSet client =
        m_db.execute(QStringLiteral("Select Client_ID from Clients where Person_ID = :Person_ID"),
                     {{QStringLiteral("Person_ID"), personId}});
    if (client.rowCount() > 0) m_clientId = client.value(0, 0).toString();
}

QString TFormClientEpisodicItems::mealCode(int meal)
{
    return QString::fromLatin1(mealCodes[meal]);
}

QString TFormClientEpisodicItems::mealCaption(int meal)
{
    return QString::fromLatin1(mealCaptions[meal]);
}

const std::vector<TFormClientEpisodicItems::ItemChoice>& TFormClientEpisodicItems::items(int meal)
{
    if (!m_itemsRead[size_t(meal)]) {
        const ResultSet r = m_db.execute(
            QStringLiteral(
                "Select Item_ID, Meal_Item from Items where Meal = :Meal order by Item_Sort, Meal_Item"),
            {{QStringLiteral("Meal"), mealCode(meal)}});
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            m_items[size_t(meal)].push_back({r.value(i, 0).toLongLong(), r.value(i, 1).toString().trimmed()});
        m_itemsRead[size_t(meal)] = true;
    }
    return m_items[size_t(meal)];
}

void TFormClientEpisodicItems::ActionRetrieve()
{
    m_rows.clear();
    // A row that no run has saved has an empty or null Fulfilled; both count
    // as not fulfilled, so the null is let through explicitly.
    const ResultSet r = m_db.execute(
        QStringLiteral("select RecordID, Deliv_Date, Svcs_Used, Schedule_Type from EpisodicDeliveries "
                       "where Deliv_Date >= :dBegin and Deliv_Date <= :dEnd and Person_ID = :Person_ID "
                       "and (Fulfilled is null or not Fulfilled='Y') order by Deliv_Date, RecordID"),
        {{QStringLiteral("dBegin"), m_begin},
         {QStringLiteral("dEnd"), m_end},
         {QStringLiteral("Person_ID"), m_personId}});
    for (qsizetype i = 0; i < r.rowCount(); ++i) {
        Row row;
        row.recordId = r.value(i, 0).toLongLong();
        row.date = r.value(i, 1).toDate();
        row.service = r.value(i, 2).toLongLong();
        row.scheduleType = r.value(i, 3).toString().trimmed();
        m_rows.push_back(row);
    }
    if (m_rows.empty()) return;
    // The lines of all retrieved deliveries in one statement, rather than
    // one per date.
    const ResultSet lines = m_db.execute(
        QStringLiteral(
            "Select d.Deliv_ID, i.Meal, d.Quantity, d.Item_ID from DefDels d, Items i, "
            "EpisodicDeliveries e where d.Item_ID = i.Item_ID and d.Deliv_ID = e.RecordID "
            "and d.Person_ID = :Person_ID and e.Person_ID = :Person_ID and e.Deliv_Date >= :dBegin "
            "and e.Deliv_Date <= :dEnd order by d.Deliv_ID, d.Sort_Order, d.RecordID"),
        {{QStringLiteral("Person_ID"), m_personId},
         {QStringLiteral("dBegin"), m_begin},
         {QStringLiteral("dEnd"), m_end}});
    for (qsizetype i = 0; i < lines.rowCount(); ++i) {
        const qint64 delivery = lines.value(i, 0).toLongLong();
        const QString meal = lines.value(i, 1).toString().trimmed().toUpper();
        for (Row& row : m_rows) {
            if (row.recordId != delivery) continue;
            for (int m = 0; m < MealCount; ++m) {
                Meal& slot = row.meals[size_t(m)];
                if (meal == mealCode(m) && slot.itemId == 0)
                    slot = {lines.value(i, 2).toInt(), lines.value(i, 3).toLongLong()};
            }
        }
    }
}

bool TFormClientEpisodicItems::modified() const
{
    for (const Row& row : m_rows)
        if (row.changed) return true;
    return false;
}

void TFormClientEpisodicItems::setMeal(int row, int meal, int quantity, qint64 itemId)
{
    Row& r = m_rows.at(size_t(row));
    r.meals.at(size_t(meal)) = {quantity, itemId};
    r.mealChanged.at(size_t(meal)) = true;
    r.changed = true;
}

void TFormClientEpisodicItems::setDeliver(int row, bool deliver)
{
    Row& r = m_rows.at(size_t(row));
    r.deliver = deliver;
    r.changed = true;
}

bool TFormClientEpisodicItems::ActionSave()
{
    int dropped = 0;
    for (const Row& row : m_rows)
        if (row.changed && !row.deliver) ++dropped;
    if (dropped > 0 &&
        m_ui.question(QString::number(dropped) +
                          QStringLiteral(" deliveries without Deliver checked will be deleted.\r\nProceed?"),
                      Buttons::YesNo) != Answer::Yes)
        return false;
    // Deletions go as everywhere else, one delivery per transaction with
    // its lines and its History row; the items then change together.
    DatedDeliveries rules(m_db, m_ui, m_userName);
    for (const Row& row : m_rows) {
        if (!row.changed || row.deliver) continue;
        const DatedRow dated{row.recordId, m_personId, m_clientId, row.date, row.service, QString()};
        rules.remove(dated,
                     row.scheduleType == QLatin1String("S") ? DatedKind::Scheduled : DatedKind::Episodic,
                     false);
    }
    {
        TransactionGuard transaction(m_db);
        for (const Row& row : m_rows) {
            if (!row.changed || !row.deliver) continue;
            for (int m = 0; m < MealCount; ++m) {
                if (!row.mealChanged[size_t(m)]) continue;
                m_db.execute(
                    QStringLiteral("Delete from DefDels where Person_ID = :Person_ID and Deliv_ID = "
                                   ":Deliv_ID and Item_ID in (Select Item_ID from Items where Meal = "
                                   ":Meal)"),
                    {{QStringLiteral("Person_ID"), m_personId},
                     {QStringLiteral("Deliv_ID"), row.recordId},
                     {QStringLiteral("Meal"), mealCode(m)}});
                const Meal& meal = row.meals[size_t(m)];
                if (meal.itemId == 0 || meal.quantity <= 0) continue;
                m_db.execute(QStringLiteral(
                                 "Insert into DefDels (Person_ID, Client_ID, Deliv_ID, Service_ID, Del_Day, "
                                 "Quantity, Item_ID, Sort_Order, Deliv_Date) values (:Person_ID, :Client_ID, "
                                 ":Deliv_ID, :Service_ID, :Del_Day, :Quantity, :Item_ID, :Sort_Order, "
                                 ":Deliv_Date)"),
                             {{QStringLiteral("Person_ID"), m_personId},
                              {QStringLiteral("Client_ID"), m_clientId},
                              {QStringLiteral("Deliv_ID"), row.recordId},
                              {QStringLiteral("Service_ID"), row.service},
                              {QStringLiteral("Del_Day"), weekdayOf(row.date).code},
                              {QStringLiteral("Quantity"), meal.quantity},
                              {QStringLiteral("Item_ID"), meal.itemId},
                              {QStringLiteral("Sort_Order"), m + 1},
                              {QStringLiteral("Deliv_Date"), row.date}});
            }
        }
        transaction.commit();
    }
    ActionRetrieve();
    return true;
}

bool TFormClientEpisodicItems::close()
{
    if (!modified()) return true;
    switch (m_ui.question(QStringLiteral("Save your changes to the delivery items?"), Buttons::YesNoCancel)) {
    case Answer::Yes:
        return ActionSave();
    case Answer::No:
        m_rows.clear();
        return true;
    default:
        return false;
    }
}

} // namespace kb
