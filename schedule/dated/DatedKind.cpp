#include "dated/DatedKind.h"

#include <QLocale>

namespace kb {

QString scheduleTypeOf(DatedKind kind)
{
    return kind == DatedKind::Episodic ? QStringLiteral("E") : QStringLiteral("S");
}

DatedKind datedKindOfClient(const QString& clientDeliveryType)
{
    return clientDeliveryType.trimmed() == QLatin1String("E") ? DatedKind::Episodic : DatedKind::Scheduled;
}

QString datedWord(DatedKind kind)
{
    return kind == DatedKind::Episodic ? QStringLiteral("episodic") : QStringLiteral("scheduled");
}

QString datedTitleWord(DatedKind kind)
{
    return kind == DatedKind::Episodic ? QStringLiteral("Episodic") : QStringLiteral("Scheduled");
}

QString datedScreenTitle(DatedKind kind, const QString& clientName)
{
    return QStringLiteral("Maintain %1 Deliveries for ").arg(datedTitleWord(kind)) + clientName;
}

QString addBeforeStartText(DatedKind kind)
{
    return QStringLiteral(
               "You're attempting to add %1 %2 delivery earlier than this \r\nclient's start date! ")
        .arg(kind == DatedKind::Episodic ? QStringLiteral("an") : QStringLiteral("a"), datedWord(kind));
}

QString creditedEditText(DatedKind kind)
{
    return kind == DatedKind::Episodic
               ? QStringLiteral("An episodic delivery can't be edited once it has been credited.")
               : QStringLiteral("A scheduled delivery can't be edited once it has been credited.");
}

QString beforeStartDateText(DatedKind kind)
{
    // The episodic wording is the one users have always seen, odd word and all.
    return kind == DatedKind::Episodic
               ? QStringLiteral("An episodic delivery can't occur PriorData to a client's Start Date. This "
                                "Delivery Date will now be set to this client's Start Date.")
               : QStringLiteral("A scheduled delivery can't occur prior to a client's Start Date. This "
                                "Delivery Date will now be set to this client's Start Date.");
}

QString afterStopDateText(DatedKind kind)
{
    return QStringLiteral(
               "%1 delivery can't occur after a client's Stop Date. This Delivery Date will now be "
               "set to this client's Stop Date.")
        .arg(kind == DatedKind::Episodic ? QStringLiteral("An episodic") : QStringLiteral("A scheduled"));
}

QString deletedHistoryText(DatedKind kind, bool credited, const QDate& date)
{
    return (credited ? QStringLiteral("Credited ") : QStringLiteral("Uncredited ")) + datedWord(kind) +
           QStringLiteral(" delivery for ") + QLocale().toString(date, QLocale::ShortFormat) +
           QStringLiteral(" deleted");
}

QString datedItemsTitle(DatedKind kind, const QDate& date)
{
    const QLocale locale;
    if (kind == DatedKind::Episodic)
        return QStringLiteral("Episodic Items for ") + locale.toString(date, QLocale::LongFormat);
    return QStringLiteral("Scheduled Items for ") + locale.dayName(date.dayOfWeek()) + QStringLiteral(", ") +
           locale.toString(date, QLocale::ShortFormat);
}

QString creditedItemsText()
{
    return QStringLiteral(
        "This delivery has been saved and credited. Modifications to the \r\ndelivery items "
        "will only be applied if the deliveries for this date are reprocessed.");
}

QString datedDateFormat()
{
    const QString shortFormat = QLocale().dateFormat(QLocale::ShortFormat).trimmed();
    return shortFormat.startsWith(QLatin1Char('d')) ? QStringLiteral("ddd, d MMM yyyy")
                                                    : QStringLiteral("ddd, MMM d, yyyy");
}

} // namespace kb
