#include "missed/MissEventText.h"

#include <QLocale>

namespace kb::miss_text {

QString shortDate(const QDate& date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

QDate parseShortDate(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty() || trimmed.size() > 40) return {};
    QDate date = QLocale().toDate(trimmed, QLocale::ShortFormat);
    if (!date.isValid()) date = QDate::fromString(trimmed, Qt::ISODate);
    // The short format may write two-digit years, which Qt reads as 19xx.
    while (date.isValid() && date.year() < 1950)
        date = date.addYears(100);
    return date;
}

QString recorded(const QDate& date, bool excused)
{
    return shortDate(date) +
           (excused ? QStringLiteral(", Missed Delivery (Excused)") : QStringLiteral(", Missed Delivery"));
}

QString excused(const QString& event)
{
    return event + QStringLiteral(" (Excused)");
}

QString cleared(const QDate& date)
{
    return QStringLiteral("Missed delivery (") + shortDate(date) + QStringLiteral(") deleted.");
}

QString listLine(const QDate& date, bool showExcused)
{
    return QLocale().dayName(date.dayOfWeek(), QLocale::LongFormat) + QStringLiteral("; ") + shortDate(date) +
           (showExcused ? QStringLiteral(" (Excused)") : QString());
}

QDate dateOfLine(const QString& line)
{
    const qsizetype at = line.indexOf(QStringLiteral("; "));
    if (at < 0) return {};
    QString text = line.mid(at + 2);
    const qsizetype bracket = text.indexOf(QLatin1Char('('));
    if (bracket >= 0) text.truncate(bracket);
    return parseShortDate(text);
}

} // namespace kb::miss_text
