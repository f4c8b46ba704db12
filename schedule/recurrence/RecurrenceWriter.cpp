#include "recurrence/RecurrenceWriter.h"

#include "UserInterface.h"
#include "store/Database.h"
#include "store/DbError.h"

namespace kb {

namespace {

const char* const dayColumns[] = {"DMON", "DTUE", "DWED", "DTHU", "DFRI", "DSAT", "DSUN"};

std::optional<WeekdayFlags> dayColumnsOf(Database& db, const QString& select, const Params& params)
{
    const ResultSet rows = db.execute(select, params);
    if (rows.isEmpty()) return std::nullopt;
    WeekdayFlags days{};
    for (int d = 0; d < 7; ++d)
        days[size_t(d)] = rows.value(0, d).toBool();
    return days;
}

QString dayColumnList()
{
    QStringList names;
    for (const char* c : dayColumns)
        names << QString::fromLatin1(c);
    return names.join(QStringLiteral(", "));
}

} // namespace

QString serviceNotFoundText()
{
    return QStringLiteral("The Client's Service could not be located!");
}

std::optional<WeekdayFlags> recurrenceActiveDays(Database& db, RecurrenceLimit limit, qint64 service)
{
    if (limit == RecurrenceLimit::None) return WeekdayFlags{true, true, true, true, true, true, true};
    const std::optional<WeekdayFlags> agency =
        dayColumnsOf(db, QStringLiteral("Select ") + dayColumnList() + QStringLiteral(" from Config"), {});
    const WeekdayFlags agencyDays = agency.value_or(WeekdayFlags{});
    if (limit == RecurrenceLimit::AgencyDays) return agencyDays;
    const std::optional<WeekdayFlags> serviceDays =
        dayColumnsOf(db,
                     QStringLiteral("Select ") + dayColumnList() +
                         QStringLiteral(" from Services where Service_ID = :Service_ID"),
                     {{QStringLiteral("Service_ID"), service}});
    if (!serviceDays) return std::nullopt;
    WeekdayFlags both{};
    for (size_t d = 0; d < 7; ++d)
        both[d] = (*serviceDays)[d] && agencyDays[d];
    return both;
}

RecurrenceWriter::RecurrenceWriter(Database& db, UserInterface& ui, QString userName)
    : m_db(db), m_ui(ui), m_userName(std::move(userName))
{
}

std::vector<GeneratedDelivery>
RecurrenceWriter::rows(const DatedClient& client, const std::vector<QDate>& dates, const QString& routeCode)
{
    std::vector<GeneratedDelivery> out;
    out.reserve(dates.size());
    for (const QDate& date : dates) {
        GeneratedDelivery row{date, routeCode, 0.0};
        if (routeCode.trimmed() == clientsRegularRoute) {
            const size_t day = size_t(date.dayOfWeek() - 1);
            if (!client.dayRoutes[day].trimmed().isEmpty()) {
                row.route = client.dayRoutes[day];
                row.stop = client.dayStops[day];
            } else {
                row.route = client.defaultRoute.isNull() ? QStringLiteral("     ") : client.defaultRoute;
                row.stop = client.defaultStop;
            }
            if (row.stop.isNull()) row.stop = 0.0;
        }
        out.push_back(row);
    }
    return out;
}

qint64 RecurrenceWriter::write(const DatedClient& client, const std::vector<QDate>& dates, qint64 service,
                               const QString& routeCode, bool keepGoing)
{
    const std::vector<GeneratedDelivery> generated = rows(client, dates, routeCode);
    if (generated.empty()) return 0;
    const QDateTime now = m_db.clock().now();
    Query insert = m_db.query(QStringLiteral(
        "Insert into EpisodicDeliveries (Person_ID, Client_ID, List_ID, Deliv_Date, Svcs_Used, "
        "Delivery_Type, "
        "Schedule_Type, Route, Stop, Fulfilled, Create_Date, Last_Updated, Created_By) values (:Person_ID, "
        ":Client_ID, -1, :Deliv_Date, :Svcs_Used, 'D', :Schedule_Type, :Route, :Stop, '', :Create_Date, "
        ":Last_Updated, :Created_By)"));
    insert.bind({{QStringLiteral("Person_ID"), client.personId},
                 {QStringLiteral("Client_ID"), client.clientId},
                 {QStringLiteral("Svcs_Used"), service},
                 {QStringLiteral("Schedule_Type"), scheduleTypeOf(client.kind())},
                 {QStringLiteral("Create_Date"), now.date()},
                 {QStringLiteral("Last_Updated"), now},
                 {QStringLiteral("Created_By"), (m_userName + QStringLiteral(" (AutoSched)")).left(25)}});
    std::vector<Params> values;
    values.reserve(generated.size());
    for (const GeneratedDelivery& row : generated)
        values.push_back({{QStringLiteral("Deliv_Date"), row.date},
                          {QStringLiteral("Route"), row.route},
                          {QStringLiteral("Stop"), row.stop}});

    TransactionGuard transaction(m_db);
    qint64 written = 0;
    try {
        written = insert.execBatch(values);
    } catch (const DbError&) {
        if (!keepGoing) throw;
        // One row the store refuses must not cost the others: each is tried
        // on its own, and each refusal told.
        for (const Params& row : values) {
            try {
                written += insert.execBatch({row});
            } catch (const DbError& e) {
                m_ui.error(e.message());
            }
        }
    }
    transaction.commit();
    return written;
}

QString RecurrenceWriter::finishedText(qint64 made)
{
    if (made == 1) return QStringLiteral("Finished creating one Scheduled Delivery.");
    if (made < 1) return QStringLiteral("Completed the process but no deliveries were scheduled.");
    return QStringLiteral("Finished creating %1 Scheduled Deliveries.").arg(made);
}

} // namespace kb
