#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace kb {

class Database;

// The rules of an alternate address (Address_Overrides): which columns its
// type uses and clears, what refuses a post, and which address applies on a
// date: a single date ("D") wins over an ongoing weekday ("O"), which wins
// over a temporary address ("T"); a mailing address ("M") never applies.
class AddressOverrideRules
{
public:
    // The type list: code and caption, in the order of the list.
    static const QList<std::pair<QString, QString>>& types();
    // The columns a type does not use, emptied when the type is chosen.
    static QStringList clearedColumns(const QString& type);
    // Whether a field of the screen is shown for a type.
    static bool shows(const QString& type, const QString& column);

    // The first rule the row breaks, as the message the user is told; empty
    // when it may be posted.
    static QString postRefusal(const QString& type, const QVariant& route, const QVariant& effective,
                               const QVariant& expire, const QVariant& delivDate, const QVariant& dow);

    // The RecordID of the address that applies to the person on the date.
    static std::optional<qint64> overrideOfDate(Database& db, qint64 personId, const QDate& date);
    // "SUN" ... "SAT" and "Sunday" ... "Saturday".
    static QString dayCode(const QDate& date);
};

} // namespace kb
