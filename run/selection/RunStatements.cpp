#include "selection/RunStatements.h"

namespace kb::RunStatements {

namespace {

struct Weekday
{
    const char* code;  // Deliveri.DOW, Address_Overrides.DOW
    const char* flag;  // Clients column: delivery on that weekday
};

const Weekday weekdays[7] = {{"MON", "Monday"},   {"TUE", "Tuesday"},  {"WED", "Wednesday"}, {"THU", "Thursday"},
                             {"FRI", "Friday"},   {"SAT", "Saturday"}, {"SUN", "Sunday"}};

QString capitalised(const char* code)
{
    const QString c = QString::fromLatin1(code);
    return c.left(1) + c.mid(1).toLower();
}

const QString suspensionClause = QStringLiteral(
    " and not (Client_ID in (Select Client_ID from Suspends where Stop_Dt <= :Deliv_Date and Resume_Dt > "
    ":Deliv_Date)) ");

const QString overrideColumns =
    QStringLiteral("RecordID, Override_Type, Route, IfNull (Stop then 0 else Stop) as Stop, Address1, City, State, ZIP");

} // namespace

QString dayCode(const QDate& date) { return QString::fromLatin1(weekdays[date.dayOfWeek() - 1].code); }

QString ongoingSelection(int dayOfWeek)
{
    const Weekday& day = weekdays[dayOfWeek - 1];
    const QString d = capitalised(day.code);
    return QStringLiteral("Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name, Svcs_Used, Household_ID, "
                          "Cuisine_ID, Diet_Restr, Org_Client, Cold_Bag_ID, ") +
           QStringLiteral(" Ongoing_Frequency, Address1, Address2, City, State, ZIP, Latitude, Longitude, "
                          "Cross_Street, ") +
           QStringLiteral(" IfNull(%1_Rte then Def_Rte else %1_Rte) as Route_ID, ").arg(d) +
           QStringLiteral(" IfNull(%1_Rte then Def_Stop else %1_Stop) as Stop  ").arg(d) +
           QStringLiteral("from Clients where (status='A') and (Delivery_Type='O') and (Client_ID is not Null) and "
                          "Start_Dte <= :Deliv_Date and (Stop_Dte > :Deliv_Date or Stop_Dte is null)") +
           QStringLiteral("and (Svcs_Used > 0) and (%1 = True) and not (Client_ID in (Select Client_ID from "
                          "Suspends where Stop_Dt <= :Deliv_Date and Resume_Dt > :Deliv_Date))")
               .arg(QLatin1String(day.flag));
}

QString weekdayColumn(int dayOfWeek) { return QString::fromLatin1(weekdays[dayOfWeek - 1].flag); }

QString fundingStatement(int dayOfWeek)
{
    return QStringLiteral(" select Fund_CD from FundUses where (Person_ID = :Person_id) and ((Service_ID = :Service_ID) or "
                          "(Service_ID = 0)) and ") +
           QStringLiteral(" (%1 = True) ").arg(weekdayColumn(dayOfWeek));
}

QString datedSelection(bool excludeSuspended)
{
    QString text = QStringLiteral(
        "select ed.RecordID, ed.Route as Route_ID, ed.Stop as Stop, Clients.Client_ID, ed.Person_ID, ed.Svcs_Used, "
        "ed.Delivery_Type, ed.Fulfilled, clients.First_Name, clients.Mid_Name, clients.Last_Name, "
        "clients.Cuisine_ID, Clients.Cold_Bag_ID, clients.Diet_Restr, clients. org_Client, clients.address1, "
        "clients.city, clients.state, clients.zip, clients.Household_ID, Clients.Latitude, Clients.Longitude, "
        "Clients.Cross_Street from EpisodicDeliveries ed join Clients on ed.Person_ID = clients.Person_ID where "
        "(ed.Deliv_Date = :Deliv_Date) and (ed.Schedule_Type = :Schedule_Type) and (clients.status='A') and "
        "(clients.client_ID is not null) and (clients.Delivery_Type= :Client_Schedule_Type) and "
        "(clients.Start_Dte <= :Deliv_Date) and (Clients.Stop_Dte > :Deliv_Date or Clients.Stop_Dte is null)");
    if (excludeSuspended)
        text += suspensionClause;
    return text;
}

const QString& overrideStatement()
{
    static const QString text =
        QStringLiteral("select ") + overrideColumns +
        QStringLiteral(" from address_overrides where Person_id = :Person_ID and Override_Type = 'D' and "
                       "deliv_date = :Deliv_Date union select ") +
        overrideColumns +
        QStringLiteral(" from address_overrides where Person_id = :Person_ID and Override_Type = 'T' and "
                       "Effective_Date <= :Deliv_Date and (Expire_Date >=  :Deliv_Date or Expire_Date is Null) "
                       "union select ") +
        overrideColumns +
        QStringLiteral(" from address_overrides where Person_id = :Person_ID and Override_Type = 'O' and DOW = :DOW "
                       "and Effective_Date <= :Deliv_Date and (Expire_Date >=  :Deliv_Date or Expire_Date is Null) "
                       "order by Override_Type Top 1");
    return text;
}

const QString& overridesOfDate()
{
    static const QString text =
        QStringLiteral("select Person_ID, ") + overrideColumns +
        QStringLiteral(" from address_overrides where (Override_Type = 'D' and deliv_date = :Deliv_Date) or "
                       "(Override_Type = 'T' and Effective_Date <= :Deliv_Date and (Expire_Date >= :Deliv_Date or "
                       "Expire_Date is Null)) or (Override_Type = 'O' and DOW = :DOW and Effective_Date <= "
                       ":Deliv_Date and (Expire_Date >= :Deliv_Date or Expire_Date is Null)) order by Person_ID, "
                       "Override_Type, RecordID");
    return text;
}

const QString& clientDetails()
{
    static const QString text = QStringLiteral(
        "Select First_Name+' '+Mid_Name+' '+Last_Name as Full_Name, Address1, Address2, City, State, Zip, Phone, "
        "OPhone, Directions, Cross_Street, Def_Rte, Mon_Rte, Tue_Rte, Wed_Rte, Thu_Rte, Fri_Rte, Sat_Rte, Sun_Rte, "
        "Def_Stop, Mon_Stop, Tue_Stop, Wed_Stop, Thu_Stop, Fri_Stop, Sat_Stop, Sun_Stop from Clients where "
        "Person_ID = :Person_ID");
    return text;
}

const QString& populateCandidates()
{
    static const QString text = QStringLiteral(
        "Select Deliveri.Person_ID, Deliveri.Client_ID, Deliveri.Deliv_ID, Deliveri.Route_ID, Deliveri.Stop, "
        "Deliveri.Delivery_Type, Deliveri.Svcs_Used, Deliveri.Diet_Restr, Deliveri.Diet_Descr, Deliveri.Cold_Bag_ID, "
        "Deliveri.Address_Overridden, Clients.First_Name, Clients.Mid_Name, Clients.Last_Name, Clients.Cuisine_ID, "
        "Clients.Org_Client, Clients.Address1, Clients.Address2, Clients.City, Clients.State, Clients.Zip, "
        "Clients.Latitude, Clients.Longitude, Clients.Household_ID, Clients.Cross_Street from Deliveri join Clients "
        "on Deliveri.Person_ID = Clients.Person_ID where Deliv_Dt = :Deliv_Dt");
    return text;
}

} // namespace kb::RunStatements
