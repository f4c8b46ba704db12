#include "ClientSearch.h"

#include "store/Database.h"

namespace kb {

QString clientSearchText(ClientSearchBy by)
{
    switch (by) {
    case ClientSearchBy::PersonId:
        return QStringLiteral("Person ID");
    case ClientSearchBy::ClientId:
        return QStringLiteral("Client ID");
    case ClientSearchBy::Phone:
        return QStringLiteral("Phone");
    case ClientSearchBy::SocialSecurityNumber:
        return QStringLiteral("Social Security Number");
    case ClientSearchBy::ClientName:
        return QStringLiteral("Client Name");
    }
    return {};
}

namespace {

// The first client whose column begins with the text, in the column's order.
std::optional<qint64> firstBeginning(Database& db, const QString& column, const QString& text,
                                     const QString& thenBy = QStringLiteral("Person_ID"))
{
    const ResultSet row =
        db.execute(QStringLiteral("Select Top 1 Person_ID, %1 from Clients where %1 >= :Text order by %1, %2")
                       .arg(column, thenBy),
                   {{QStringLiteral("Text"), text}});
    if (row.isEmpty() || !row.value(0, 1).toString().startsWith(text, Qt::CaseInsensitive))
        return std::nullopt;
    return row.value(0, 0).toLongLong();
}

} // namespace

std::optional<qint64> findClient(Database& db, ClientSearchBy by, const QString& typed)
{
    const QString text = typed.trimmed();
    if (text.isEmpty() || text.size() > 100) return std::nullopt;
    switch (by) {
    case ClientSearchBy::PersonId: {
        bool number = false;
        const qint64 id = text.toLongLong(&number);
        if (!number) return std::nullopt;
        const ResultSet row =
            db.execute(QStringLiteral("Select Person_ID from Clients where Person_ID = :Id"),
                       {{QStringLiteral("Id"), id}});
        if (row.isEmpty()) return std::nullopt;
        return id;
    }
    case ClientSearchBy::ClientId:
        return firstBeginning(db, QStringLiteral("Client_ID"), text);
    case ClientSearchBy::Phone:
        return firstBeginning(db, QStringLiteral("Phone"), text);
    case ClientSearchBy::SocialSecurityNumber:
        return firstBeginning(db, QStringLiteral("Social_Security_Number"), text);
    case ClientSearchBy::ClientName: {
        const qsizetype comma = text.indexOf(QLatin1Char(','));
        const QString last = (comma < 0 ? text : text.left(comma)).trimmed();
        const QString first = comma < 0 ? QString() : text.mid(comma + 1).trimmed();
        const ResultSet rows =
            db.execute(QStringLiteral("Select Top 50 Person_ID, Last_Name, First_Name from Clients "
                                      "where Lower(Last_Name) >= Lower(:Last) order by Last_Name NoCase, "
                                      "First_Name NoCase, Person_ID"),
                       {{QStringLiteral("Last"), last}});
        for (qsizetype r = 0; r < rows.rowCount(); ++r) {
            if (!rows.value(r, 1).toString().startsWith(last, Qt::CaseInsensitive)) break;
            if (rows.value(r, 2).toString().startsWith(first, Qt::CaseInsensitive))
                return rows.value(r, 0).toLongLong();
        }
        return std::nullopt;
    }
    }
    return std::nullopt;
}

} // namespace kb
