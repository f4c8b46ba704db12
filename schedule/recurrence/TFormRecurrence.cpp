#include "recurrence/TFormRecurrence.h"

#include "UserInterface.h"
#include "store/Database.h"

namespace kb {

namespace {

QString entry(const QString& text, const QString& code)
{
    return text + QString(19, QLatin1Char(' ')) + QLatin1Char('[') + code + QLatin1Char(']');
}

} // namespace

TFormRecurrence::TFormRecurrence(Database& db, UserInterface& ui, QString userName, DatedClient client)
    : m_db(db), m_ui(ui), m_userName(std::move(userName)), m_client(std::move(client))
{
    const ResultSet services = m_db.execute(QStringLiteral(
        "Select Service_ID, Service_Desc from Services where Service_Type = 'D' order by Service_Desc"));
    for (qsizetype r = 0; r < services.rowCount(); ++r) {
        m_services << entry(services.value(r, 1).toString().trimmed(), services.value(r, 0).toString());
        if (services.value(r, 0).toLongLong() == m_client.service) m_serviceIndex = int(r);
    }
    m_routes << entry(QStringLiteral("Client's regular day-assigned route"), clientsRegularRoute);
    const ResultSet routes =
        m_db.execute(QStringLiteral("Select Route_ID, Route_Desc from Routes order by Route_ID"));
    for (qsizetype r = 0; r < routes.rowCount(); ++r)
        m_routes << entry(routes.value(r, 1).toString().trimmed(), routes.value(r, 0).toString().trimmed());
}

void TFormRecurrence::SetDeliveryType(const QString& text)
{
    m_deliveryType = text.isEmpty() ? QStringLiteral("Unknown") : text;
}

QString TFormRecurrence::caption() const
{
    const QString word = m_deliveryType.contains(QLatin1String("Episodic")) ? QStringLiteral("Episodic")
                                                                            : QStringLiteral("Scheduled");
    return QStringLiteral("Auto-Create ") + word + QStringLiteral(" Deliveries");
}

QStringList TFormRecurrence::limitEntries()
{
    return {QStringLiteral("Delivery Days for the Service selected below"),
            QStringLiteral("Any Agency Delivery Days"), QStringLiteral("No Limitation")};
}

QStringList TFormRecurrence::instanceEntries()
{
    return {QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third"),
            QStringLiteral("fourth"), QStringLiteral("last")};
}

QStringList TFormRecurrence::instanceKindEntries()
{
    QStringList words;
    for (int k = int(RecurrencePattern::InstanceKind::Day); k <= int(RecurrencePattern::InstanceKind::Sunday);
         ++k)
        words << instanceKindWord(RecurrencePattern::InstanceKind(k));
    return words;
}

QString TFormRecurrence::entryCode(const QString& entry)
{
    const qsizetype open = entry.lastIndexOf(QLatin1Char('['));
    const qsizetype close = entry.lastIndexOf(QLatin1Char(']'));
    if (open < 0 || close < open) return {};
    return entry.mid(open + 1, close - open - 1).trimmed();
}

void TFormRecurrence::setEveryDays(int n)
{
    m_pattern.everyDays = n;
    m_pattern.dailyKind = RecurrencePattern::DailyKind::EveryNDays;
}

void TFormRecurrence::setDayOfMonth(int d)
{
    m_pattern.dayOfMonth = d;
    m_pattern.monthlyKind = RecurrencePattern::MonthlyKind::DayOfMonth;
}

void TFormRecurrence::setEveryMonthsByDay(int m)
{
    m_pattern.everyMonthsByDay = m;
    m_pattern.monthlyKind = RecurrencePattern::MonthlyKind::DayOfMonth;
}

void TFormRecurrence::setInstance(int instance)
{
    m_pattern.instance = instance;
    m_pattern.monthlyKind = RecurrencePattern::MonthlyKind::Instance;
}

void TFormRecurrence::setInstanceKind(RecurrencePattern::InstanceKind kind)
{
    m_pattern.instanceKind = kind;
    m_pattern.monthlyKind = RecurrencePattern::MonthlyKind::Instance;
}

void TFormRecurrence::setEveryMonthsByInstance(int m)
{
    m_pattern.everyMonthsByInstance = m;
    m_pattern.monthlyKind = RecurrencePattern::MonthlyKind::Instance;
}

void TFormRecurrence::setStart(const QDate& date)
{
    m_pattern.start = date;
    if (date.isValid() && m_pattern.endDate.isValid() && date > m_pattern.endDate) m_pattern.endDate = date;
}

void TFormRecurrence::setOccurrences(int n)
{
    m_pattern.occurrences = n;
    m_pattern.end = RecurrencePattern::End::AfterOccurrences;
    if (!m_pattern.start.isValid()) m_pattern.start = m_db.clock().today();
}

void TFormRecurrence::setEndDate(const QDate& date)
{
    m_pattern.endDate = date;
    m_pattern.end = RecurrencePattern::End::ByDate;
    if (date.isValid() && (!m_pattern.start.isValid() || m_pattern.start > date)) m_pattern.start = date;
}

bool TFormRecurrence::okEnabled() const
{
    if (m_page == Page::Weekly &&
        std::none_of(m_pattern.weekdays.begin(), m_pattern.weekdays.end(), [](bool on) { return on; }))
        return false;
    if (m_pattern.end == RecurrencePattern::End::AfterOccurrences)
        return m_pattern.start.isValid() && m_pattern.occurrences > 0;
    return m_pattern.start.isValid() && m_pattern.endDate.isValid();
}

RecurrencePattern TFormRecurrence::effectivePattern() const
{
    RecurrencePattern p = m_pattern;
    p.style = m_page == Page::Daily    ? RecurrencePattern::Style::Daily
              : m_page == Page::Weekly ? RecurrencePattern::Style::Weekly
                                       : RecurrencePattern::Style::Monthly;
    return p;
}

qint64 TFormRecurrence::selectedService() const
{
    return entryCode(m_services.value(m_serviceIndex)).toLongLong();
}

QString TFormRecurrence::selectedRoute() const
{
    const QString code = entryCode(m_routes.value(m_routeIndex));
    return code.isEmpty() ? clientsRegularRoute : code;
}

std::vector<GeneratedDelivery> TFormRecurrence::preview() const
{
    const RecurrencePattern p = effectivePattern();
    if (!p.refusal().isEmpty()) return {};
    RecurrenceDayTest test;
    test.activeDays = recurrenceActiveDays(m_db, m_limit, selectedService()).value_or(WeekdayFlags{});
    test.stopDate = m_client.stopDate;
    return RecurrenceWriter::rows(m_client, generateRecurrence(p, test).dates, selectedRoute());
}

TFormRecurrence::Outcome TFormRecurrence::ActionOk()
{
    const RecurrencePattern p = effectivePattern();
    if (const QString why = p.refusal(); !why.isEmpty()) {
        m_ui.warning(why);
        return Outcome::Stayed;
    }
    if (m_ui.question(QStringLiteral("Create the specified deliveries?"), Buttons::YesNo) != Answer::Yes)
        return Outcome::Closed;
    BusyGuard busy(m_ui);
    const qint64 service = selectedService();
    RecurrenceDayTest test;
    test.stopDate = m_client.stopDate;
    if (const std::optional<WeekdayFlags> days = recurrenceActiveDays(m_db, m_limit, service))
        test.activeDays = *days;
    else {
        m_ui.warning(serviceNotFoundText());
        test.activeDays = {};
    }
    const RecurrenceDates dates = generateRecurrence(p, test);
    RecurrenceWriter(m_db, m_ui, m_userName).write(m_client, dates.dates, service, selectedRoute(), true);
    // A date the store refused still counts as made: the user has been told.
    m_ui.information(RecurrenceWriter::finishedText(qint64(dates.dates.size())));
    return Outcome::Created;
}

} // namespace kb
