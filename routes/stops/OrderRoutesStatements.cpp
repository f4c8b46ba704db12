#include "OrderRoutesStatements.h"

namespace kb {

namespace {

const char* const dayNames[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
const char* const prefixes[] = {"Def", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

QString activeClause(bool activeOnly) { return activeOnly ? QStringLiteral(" and status = 'A'") : QString(); }

// One part of the statement: the clients who come by a route column.
QString clientsBy(const QString& routeDay, const QString& routeColumn, const QString& stopColumn, bool activeOnly)
{
    return QStringLiteral("Select RecordID, person_id, '%1' as Route_Day, %2 as Route, %3 as Stop, "
                          "'Rte: ' +%2+' Stop: '+Cast(%3 as Char(10)) as RouteStop, client_id, Household_ID, status, "
                          "first_name, last_name, First_Name+' '+Substring(Last_Name from 1 for 1) as Name, address1, "
                          "cross_Street, city, state, zip, latitude, longitude, -1.0 as New_Stop from clients where "
                          "%2 = :cRoute")
               .arg(routeDay, routeColumn, stopColumn) +
           activeClause(activeOnly);
}

} // namespace

QStringList OrderRoutesStatements::dayTexts()
{
    QStringList texts{QStringLiteral("Default Route")};
    for (const char* day : dayNames)
        texts.append(QString::fromLatin1(day) + QStringLiteral(" then Default"));
    return texts;
}

QString OrderRoutesStatements::dayCode(int dayIndex)
{
    if (dayIndex < 1 || dayIndex >= dayCount)
        return {};
    return QString::fromLatin1(prefixes[dayIndex]).toUpper();
}

int OrderRoutesStatements::dayIndexOf(const QString& code)
{
    for (int i = 1; i < dayCount; ++i)
        if (code.trimmed().compare(QLatin1String(prefixes[i]), Qt::CaseInsensitive) == 0)
            return i;
    return 0;
}

QString OrderRoutesStatements::columnPrefix(int dayIndex)
{
    return QString::fromLatin1(prefixes[dayIndex >= 0 && dayIndex < dayCount ? dayIndex : 0]);
}

QString OrderRoutesStatements::routeCode(const QString& listEntry)
{
    return listEntry.section(QLatin1Char('-'), 0, 0).trimmed();
}

QString OrderRoutesStatements::retrieve(int dayIndex, bool activeOnly)
{
    QString text = clientsBy(QStringLiteral("   "), QStringLiteral("def_rte"), QStringLiteral("def_Stop"), activeOnly);
    if (dayIndex >= 1 && dayIndex < dayCount) {
        const QString prefix = columnPrefix(dayIndex);
        text += QStringLiteral(" and %1_Rte is Null union ").arg(prefix);
        text += clientsBy(dayCode(dayIndex), prefix + QStringLiteral("_rte"), prefix + QStringLiteral("_Stop"),
                          activeOnly);
    }
    return text + QStringLiteral(" order by Route, Stop");
}

QString OrderRoutesStatements::clientUpdate(int dayIndex)
{
    const QString prefix = columnPrefix(dayIndex);
    return QStringLiteral("Update Clients set %1_Rte = :Route, %1_Stop = :Stop, Edit_Dte = :Edit_Dte where "
                          "Person_ID = :Person_ID")
        .arg(prefix);
}

QString OrderRoutesStatements::episodicUpdate(int dayIndex)
{
    if (dayIndex >= 1 && dayIndex < dayCount)
        return QStringLiteral("Update EpisodicDeliveries set Route = :Route, Stop = :Stop, Last_Updated = :Last_Updated "
                              "where Person_ID = :Person_ID and Extract( DAYOFWEEK from Deliv_Date ) = :DOW and "
                              "Deliv_Date >= :Deliv_Date");
    return QStringLiteral("Update EpisodicDeliveries set Route = :Route, Stop = :Stop, Last_Updated = :Last_Updated where "
                          "Person_ID = :Person_ID and Deliv_Date >= :Deliv_Date");
}

} // namespace kb
