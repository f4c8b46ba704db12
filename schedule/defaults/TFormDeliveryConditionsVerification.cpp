#include "defaults/TFormDeliveryConditionsVerification.h"

#include "DeliveryItemLists.h"
#include "defaults/Weekdays.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"

#include <algorithm>

namespace kb {

namespace {

QString statusReason(const QString& status)
{
    if (status == QLatin1String("S")) return QStringLiteral("Status is Stopped");
    if (status == QLatin1String("N")) return QStringLiteral("Status is Not Yet Started");
    return QStringLiteral("Status is Inactive");
}

} // namespace

TFormDeliveryConditionsVerification::TFormDeliveryConditionsVerification(Database& db, ClientSchedule client,
                                                                         const QDate& today)
    : m_db(db), m_client(std::move(client))
{
    setDate(today);
}

void TFormDeliveryConditionsVerification::setDate(const QDate& date)
{
    m_date = date;
    check();
}

bool TFormDeliveryConditionsVerification::thumbUp() const
{
    return std::all_of(m_lines.begin(), m_lines.end(), [](const Line& l) { return l.ok; });
}

void TFormDeliveryConditionsVerification::check()
{
    m_lines.clear();
    const auto add = [this](const char* condition, bool ok, const QString& reason) {
        m_lines.append({QString::fromLatin1(condition), ok, ok ? QString() : reason});
    };
    const ClientSchedule& c = m_client;
    const QDate& d = m_date;

    // The dated deliveries of the date, by their kind.
    const ResultSet dated = m_db.execute(
        QStringLiteral("select RecordID, Schedule_Type, Svcs_Used from EpisodicDeliveries where Person_ID = "
                       ":Person_ID and Deliv_Date = :Deliv_Date order by RecordID"),
        {{QStringLiteral("Person_ID"), c.personId}, {QStringLiteral("Deliv_Date"), d}});
    qsizetype scheduledRow = -1;
    qsizetype episodicRow = -1;
    for (qsizetype r = 0; r < dated.rowCount(); ++r) {
        const QString type = dated.value(r, 1).toString().trimmed();
        if (type == QLatin1String("S") && scheduledRow < 0) scheduledRow = r;
        if (type == QLatin1String("E") && episodicRow < 0) episodicRow = r;
    }
    const bool scheduled = scheduledRow >= 0;

    add("The client's status must be 'Active'", c.status == QLatin1String("A"), statusReason(c.status));
    add("The client must be on a service", c.serviceId >= 1, QStringLiteral("No service has been assigned"));
    add("The client must be assigned to a route", !c.defaultRoute.isEmpty(),
        QStringLiteral("There is no default route"));
    if (c.episodic()) {
        add("There must be an episodic delivery for the date", episodicRow >= 0,
            QStringLiteral("There is no delivery scheduled."));
    } else {
        // A scheduled delivery of the date is served whatever the weekday
        // and the week, as the run serves it.
        add("Day of the week must be selected for the date", c.deliveryPossible(d) || scheduled,
            QStringLiteral("The day of the week isn't selected"));
    }
    if (!c.start.isValid())
        add("The start date must be prior to the delivery date", false,
            QStringLiteral("There is no Start Date"));
    else
        add("The start date must be prior to the delivery date", c.start <= d,
            QStringLiteral("Chosen date is before the Start date"));
    add("The stop date, if there is one, must be later than the delivery date",
        !c.stop.isValid() || d < c.stop, QStringLiteral("There is a stop date in effect"));

    const bool suspended =
        !m_db.execute(QStringLiteral("select * from suspends where stop_dt <= :Delivery_Date and resume_dt > "
                                     ":Delivery_Date and client_id = :Client_ID"),
                      {{QStringLiteral("Delivery_Date"), d}, {QStringLiteral("Client_ID"), c.clientId}})
             .isEmpty();
    if (!suspended)
        add("A suspension cannot be in effect during the delivery", true, {});
    else if (c.episodic())
        add("A suspension exists but does not apply", true, {});
    else if (scheduled && !ConfigRecord::read(m_db).flag(QStringLiteral("SUSPEND_SCHEDULED_DELIVERIES")))
        add("A suspension exists but a scheduled delivery overrides it", true, {});
    else
        add("A suspension is in effect for this date", false,
            QStringLiteral("There is a suspension in effect"));

    // The items: the dated delivery's own list first, as the run looks.
    const qsizetype datedRow = c.episodic() ? episodicRow : scheduledRow;
    readItems(datedRow >= 0 ? dated.value(datedRow, 0) : QVariant(),
              datedRow >= 0 ? dated.value(datedRow, 2).toLongLong() : c.serviceId);
}

void TFormDeliveryConditionsVerification::readItems(const QVariant& datedId, qint64 service)
{
    m_items.clear();
    m_itemSource.clear();
    if (m_client.personId <= 0 || !m_date.isValid()) return;
    const DeliveryItemLists::OneDelivery one =
        DeliveryItemLists::forDelivery(m_db, m_client.personId, service, datedId, weekdayOf(m_date).code);
    switch (one.level) {
    case ItemListLevel::Dated:
        m_itemSource = QStringLiteral("The delivery's own items");
        break;
    case ItemListLevel::Client:
        m_itemSource = QStringLiteral("The client's items for the weekday");
        break;
    case ItemListLevel::Default:
        m_itemSource = QStringLiteral("The service's default items");
        break;
    case ItemListLevel::None:
        m_itemSource = QStringLiteral("No items");
        break;
    }
    if (one.lines.empty()) return;
    QHash<qint64, QString> names;
    const ResultSet rows = m_db.execute(QStringLiteral("select Item_ID, Meal_Item from Items"));
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        names.insert(rows.value(r, 0).toLongLong(), rows.value(r, 1).toString().trimmed());
    for (const ItemListLine& line : one.lines)
        m_items.append({names.value(line.itemId), line.quantity.toInt()});
}

} // namespace kb
