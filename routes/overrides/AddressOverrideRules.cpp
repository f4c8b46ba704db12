#include "AddressOverrideRules.h"

#include "store/Database.h"

namespace kb {

namespace {

bool blank(const QVariant& v) { return v.isNull() || v.toString().trimmed().isEmpty(); }

bool emptyDate(const QVariant& v)
{
    // A date control without a value reads as a date in 1899, which counts as cleared.
    return blank(v) || (v.toDate().isValid() && v.toDate().year() < 1900);
}

} // namespace

const QList<std::pair<QString, QString>>& AddressOverrideRules::types()
{
    static const QList<std::pair<QString, QString>> list = {
        {QStringLiteral("O"), QStringLiteral("Ongoing Day-of-the-Week")},
        {QStringLiteral("T"), QStringLiteral("Temporary Address")},
        {QStringLiteral("D"), QStringLiteral("Single Date (takes precedence over all others)")},
        {QStringLiteral("M"), QStringLiteral("Mailing Address Only")},
    };
    return list;
}

QStringList AddressOverrideRules::clearedColumns(const QString& type)
{
    if (type == QLatin1String("O"))
        return {QStringLiteral("Deliv_Date")};
    if (type == QLatin1String("T"))
        return {QStringLiteral("Deliv_Date"), QStringLiteral("DOW")};
    if (type == QLatin1String("D"))
        return {QStringLiteral("Effective_Date"), QStringLiteral("Expire_Date"), QStringLiteral("DOW")};
    if (type == QLatin1String("M"))
        return {QStringLiteral("DOW"), QStringLiteral("Deliv_Date"), QStringLiteral("Effective_Date"),
                QStringLiteral("Expire_Date")};
    return {};
}

bool AddressOverrideRules::shows(const QString& type, const QString& column)
{
    for (const QString& cleared : clearedColumns(type))
        if (cleared.compare(column, Qt::CaseInsensitive) == 0)
            return false;
    // A mailing address has no delivery: its address and phone only.
    if (type == QLatin1String("M"))
        for (const char* delivery : {"Directions", "Route", "Stop"})
            if (column.compare(QLatin1String(delivery), Qt::CaseInsensitive) == 0)
                return false;
    return true;
}

QString AddressOverrideRules::postRefusal(const QString& type, const QVariant& route, const QVariant& effective,
                                          const QVariant& expire, const QVariant& delivDate, const QVariant& dow)
{
    const bool mailing = type == QLatin1String("M");
    if (blank(route) && !mailing)
        return QStringLiteral("You must provide a Route for this address!");
    if (!mailing && !emptyDate(expire) && !(expire.toDate() > effective.toDate()))
        return QStringLiteral("If there is an Expiration Date it must be later than the Effective Date!");
    if (emptyDate(effective) && emptyDate(delivDate) && !mailing)
        return QStringLiteral("You must provide an Effective Date!");
    if (blank(dow) && type == QLatin1String("O"))
        return QStringLiteral("You must provide a Day of the Week for the selected Day-of-the-Week address!");
    return {};
}

QString AddressOverrideRules::dayCode(const QDate& date)
{
    static const char* const codes[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};
    return date.isValid() ? QString::fromLatin1(codes[date.dayOfWeek() - 1]) : QString();
}

std::optional<qint64> AddressOverrideRules::overrideOfDate(Database& db, qint64 personId, const QDate& date)
{
    const ResultSet rows = db.execute(
        QStringLiteral("select Override_Type, RecordID from address_overrides where Person_id = :Person_ID and "
                       "Override_Type = 'D' and deliv_date = :Deliv_Date union select Override_Type, RecordID from "
                       "address_overrides where Person_id = :Person_ID and Override_Type = 'T' and Effective_Date <= "
                       ":Deliv_Date and (Expire_Date >= :Deliv_Date or Expire_Date is Null) union select "
                       "Override_Type, RecordID from address_overrides where Person_id = :Person_ID and Override_Type "
                       "= 'O' and DOW = :DOW and Effective_Date <= :Deliv_Date and (Expire_Date >= :Deliv_Date or "
                       "Expire_Date is Null) order by Override_Type"),
        {{QStringLiteral("Person_ID"), personId},
         {QStringLiteral("Deliv_Date"), date},
         {QStringLiteral("DOW"), dayCode(date)}});
    if (rows.isEmpty())
        return std::nullopt;
    return rows.value(0, 1).toLongLong();
}

} // namespace kb
