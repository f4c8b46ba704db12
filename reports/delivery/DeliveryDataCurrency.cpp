#include "delivery/DeliveryDataCurrency.h"

#include "delivery/FailureText.h"
#include "delivery/RunPreparation.h"
#include "delivery/StaffReportPreferences.h"

#include "Clock.h"
#include "UserInterface.h"
#include "store/Database.h"

namespace kb::reports {

namespace {

struct Threshold
{
    const char* code;
    double days;
    const char* text;
    bool sinceMidnight;
};

// How long ago a save may be before the question comes, as parts of a day.
constexpr Threshold thresholds[] = {
    {"M", 0.0208333, "was prepared more than 30 minutes ago.", false},
    {"1", 0.0416667, "was prepared more than one hour ago.", false},
    {"4", 0.1666667, "was prepared more than four hours ago.", false},
    {"D", 1.0, "was prepared more than a day ago.", true},
};

double daysBetween(const QDateTime& earlier, const QDateTime& later)
{
    return double(earlier.msecsTo(later)) / 86400000.0;
}

} // namespace

DeliveryDataCurrency::DeliveryDataCurrency(Database& db, const Clock& clock, UserInterface& ui)
    : m_db(db), m_clock(clock), m_ui(ui)
{
}

QString DeliveryDataCurrency::dateText(const QDate& date)
{
    return date.toString(QStringLiteral("M/d/yyyy"));
}

std::optional<QDateTime> DeliveryDataCurrency::lastSave(const QDate& date)
{
    // The rows come in the order they were written; the last is the last save.
    const ResultSet saves = m_db.execute(
        QStringLiteral("Select Tran_Date from History where Event_Date = :Event_Date and Event like 'Saved%' "
                       "order by RecordID"),
        {{QStringLiteral("Event_Date"), date}});
    if (saves.isEmpty()) return std::nullopt;
    return saves.value(saves.rowCount() - 1, 0).toDateTime();
}

QString DeliveryDataCurrency::question(const QDate& date, const std::optional<QDateTime>& saved,
                                       const QString& prepareDataPrompt) const
{
    if (prepareDataPrompt.isEmpty()) return {};
    if (!saved)
        return QStringLiteral("The delivery date of ") + dateText(date) +
               QStringLiteral("\nhas not yet been prepared.\nWould you like to prepare it now?");
    const QDateTime now = m_clock.now();
    for (const Threshold& t : thresholds) {
        if (prepareDataPrompt != QLatin1String(t.code)) continue;
        const QDateTime from = t.sinceMidnight ? now.date().startOfDay() : now;
        if (daysBetween(*saved, from) > t.days)
            return QStringLiteral("The delivery date ") + dateText(date) + u'\n' +
                   QString::fromLatin1(t.text) + QStringLiteral("\nWould you like to prepare it again now?");
    }
    return {};
}

void DeliveryDataCurrency::check(const QDate& from, const QDate& to,
                                 const StaffReportPreferences& preferences, RunPreparation& preparation)
{
    if (preferences.prepareDataPrompt.isEmpty()) return;
    if (from != to) {
        m_ui.information(
            QStringLiteral("You have selected a range of more than one date\nfor this report. "
                           "Kettlebrook can't check to see if \nthe delivery data is current in this "
                           "situation."));
        return;
    }
    try {
        const std::optional<QDateTime> saved = lastSave(from);
        const QString text = question(from, saved, preferences.prepareDataPrompt);
        if (text.isEmpty() || m_ui.question(text, Buttons::YesNo) != Answer::Yes) return;
        const QString& display = preferences.displayPreparedData;
        const bool show =
            display == QLatin1String("A") || display == (saved ? QLatin1String("R") : QLatin1String("F"));
        preparation.prepareAndSave(from, show);
    } catch (const std::exception& e) {
        m_ui.error(failureText(e));
    }
}

} // namespace kb::reports
