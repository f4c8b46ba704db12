// The reports about the clients behind the deliveries: birthdays, the
// demographic meal counts, diets, each client's items and the bar-code
// listing.

#include "delivery/DeliveryReportList.h"
#include "delivery/data/DeliveryKeys.h"
#include "delivery/data/ReportBuild.h"
#include "delivery/data/ReportPipes.h"
#include "delivery/questions/ReportQuestions.h"
#include "delivery/questions/TFormClientItemsSortOrder.h"
#include "delivery/questions/TFormDeliveryDietCriteria.h"

#include "UserInterface.h"
#include "data/CallbackPipe.h"
#include "records/RecordServices.h"
#include "store/Database.h"

#include <QLocale>
#include <QRegularExpression>

namespace kb::reports {

namespace {

ReportData reportData(DeliveryReport report, const QString& mainPipe)
{
    return ReportData::forReport(int(report), mainPipe);
}

} // namespace

std::optional<ReportData> buildBirthdays(ReportBuild& build)
{
    const QDate from = build.choices.from;
    const QDate to = build.choices.to;
    const bool oneMonth = from.month() == to.month() && from.year() == to.year();
    if (!oneMonth)
        build.ui.information(
            QStringLiteral("This report can only cover one month. You chose a date range \n"
                           "that spans more than one month. The report will only cover the \n"
                           "month of ") +
            QLocale(QLocale::English).monthName(to.month()));
    ReportData data = reportData(DeliveryReport::Birthdays, QStringLiteral("DBPipelineBirthdays"));
    ReportStatement s;
    s << QStringLiteral(
        "SELECT First_Name, Last_Name, DOB, Client_ID, Def_Rte, Mon_Rte, Tue_Rte, Wed_Rte, Thu_Rte, "
        "Fri_Rte, Sat_Rte, Sun_Rte, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday, "
        "Delivery_Type, Services.Service_Desc, Extract(Day from DOB) as DD, Extract(Year from DOB) as "
        "Birth_Year From Clients left outer join Services on Clients.Svcs_Used = Services.Service_ID "
        "WHERE (EXTRACT(Month from DOB) = :nMonth ) and (Extract(Day from DOB)  >= :nLowDay ) and "
        "(Extract(Day from DOB) <= :nHighDay ) and (Status = \"A\" ) ");
    build.limits.AddServiceLimitation(s, QStringLiteral("Clients.Svcs_Used"));
    s << QStringLiteral("Order by DD, Last_Name, First_Name ");
    // Across months the report covers the month of "To" up to its day.
    s.bind(QStringLiteral("nMonth"), to.month());
    s.bind(QStringLiteral("nLowDay"), oneMonth ? from.day() : 1);
    s.bind(QStringLiteral("nHighDay"), to.day());
    build.addQuery(data, data.mainPipe, s);
    return data;
}

std::optional<ReportData> buildDemographicMealCount(ReportBuild& build)
{
    ReportData data =
        reportData(DeliveryReport::SummarizedDemographicMealCount, QStringLiteral("DBPipelineDemogMlCt"));
    ReportStatement s;
    s << QStringLiteral(
        "select c.client_ID, c.first_Name, c.last_name, c.zip, c.sex, c.dob, c.race, c.rural, ");
    s << QStringLiteral(
        "if(c.HIV_Status='9' or c.HIV_Status= ' ' or c.HIV_Status = NULL then '' else if "
        "(c.HIV_Status='4' then 'HIV-' else 'HIV+')) as HIV_Status, d.svcs_used, d.number_Meals, "
        "d.deliv_dt");
    s << QStringLiteral(" from clients c, deliveri d where");
    s << QStringLiteral(" (c.ORG_CLIENT <> 'Y') and  (c.client_id = d.client_id) and ");
    addDateClause(s, build.choices, QStringLiteral("d.Deliv_Dt"));
    build.limits.AddServiceLimitation(s, QStringLiteral("D.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("d.route_id"));
    // The report repeats the choices in clauses of its own, whatever the
    // limits above gave.
    if (!build.choices.servicesText().isEmpty()) {
        QStringList terms;
        for (int id : build.limits.checkedServices())
            terms << QStringLiteral(" (D.Svcs_Used = %1)").arg(s.addValue(QStringLiteral("Service"), id));
        s << QStringLiteral(" and ( ") << terms.join(QStringLiteral(" or ")) << QStringLiteral(" ) ");
    }
    if (!build.choices.routesText().isEmpty()) {
        QStringList values;
        for (const QString& route : build.limits.checkedRoutes())
            values << s.addValue(QStringLiteral("Route"), route);
        if (values.isEmpty()) values << s.addValue(QStringLiteral("Route"), QStringLiteral("^%$#@"));
        s << (build.choices.excludeRoutes ? QStringLiteral(" and ( d.route_id not in ( ")
                                          : QStringLiteral(" and ( d.route_id in ( "))
          << values.join(QStringLiteral(", ")) << QStringLiteral(" ))");
    }
    s << QStringLiteral(" order by c.Client_ID, d.svcs_used");
    build.addQuery(data, data.mainPipe, s);
    return data;
}

std::optional<ReportData> buildChildDemographicMealCount(ReportBuild& build)
{
    ReportData data = reportData(DeliveryReport::ChildDemographicMealCount,
                                 QStringLiteral("DBPipelineChildDemographicMealCount"));
    QString text = GetSQLStatement(build.db, QStringLiteral("CHILD_DEMOGRAPHIC_MEAL_COUNTS"));
    if (text.trimmed().isEmpty())
        text = QStringLiteral(" select c.client_ID, c.first_name, c.last_name, c.first_name+\" \"+ "
                              "c.Last_Name as Full_Name, c.sex, "
                              "c.race, \n"
                              " Cast(((Current_Date - DOB)/365.25) as Integer) as Age, c.zip, d.Deliv_Dt, "
                              "sum( d.Number_Meals ) as "
                              "Meals \n"
                              " from deliveri d join clients c on d.Person_ID = c.Person_ID where\n"
                              " d.deliv_dt >= :dStart and \n"
                              " d.deliv_dt <= :dEnd and \n"
                              " ((:dEnd - c.DOB)/365.25) <= 18 \n"
                              " Group by c.Client_ID order by c.Client_ID ");
    // The age is the age at the end of the period: the first CURRENT_DATE of
    // each line becomes the "To" date.
    static const QRegularExpression currentDate(QStringLiteral("CURRENT_DATE(\\s*\\(\\s*\\))?"),
                                                QRegularExpression::CaseInsensitiveOption);
    QStringList lines = text.split(u'\n');
    for (QString& line : lines) {
        const QRegularExpressionMatch m = currentDate.match(line);
        if (m.hasMatch())
            line.replace(m.capturedStart(), m.capturedLength(), QStringLiteral("Cast(:dAgeDate as Date)"));
    }
    ReportStatement s;
    s << lines.join(u'\n');
    s.bind(QStringLiteral("dStart"), build.choices.from);
    s.bind(QStringLiteral("dEnd"), build.choices.to);
    s.bind(QStringLiteral("dAgeDate"), build.choices.to);
    build.addQuery(data, data.mainPipe, s);
    return data;
}

std::optional<ReportData> buildDietRestrictions(ReportBuild& build)
{
    TFormDeliveryDietCriteria criteria(build.db, build.settings);
    if (!build.questions.askDietCriteria(criteria) || !criteria.okEnabled()) return std::nullopt;
    ReportData data =
        reportData(DeliveryReport::SelectedDietRestrictions, QStringLiteral("DBPipelineQueryDietsInUse"));
    ReportStatement s;
    s << QStringLiteral(
        "Select Clients.Client_ID, Clients.First_Name, Clients.Mid_Name, Clients.Last_Name, "
        "Deliveri.Diet_Restr, Clients.Preferences, Clients.Household_ID, Services.Service_Desc, "
        "Deliveri.Deliv_Dt, Deliveri.Route_ID, Deliveri.Stop, Deliveri.Diet_Descr, Cuisines.Cuisine "
        "from Clients join Deliveri on Clients.Person_ID = Deliveri.Person_ID join Services on "
        "Deliveri.Svcs_Used = Services.Service_ID left outer join Cuisines on Deliveri.Cuisine_ID = "
        "Cuisines.Cuisine_ID ");
    s << QStringLiteral(" where ");
    addDateClause(s, build.choices, QStringLiteral("Deliveri.Deliv_Dt"));
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("Deliveri.Route_ID"));
    const qint64 mask = criteria.dietMask();
    if (criteria.matchAll()) {
        s << QStringLiteral("and Deliveri.Diet_Restr = :Diet_Restr ");
        s.bind(QStringLiteral("Diet_Restr"), mask);
    }
    static const char* orders[] = {
        " Order by Deliveri.Route_ID, Deliveri.Stop, Clients.Household_ID",
        " Order by Deliveri.Deliv_Dt, Clients.Last_Name, Clients.First_Name nocase",
        " Order by Deliveri.Deliv_Dt, Clients.Client_ID ",
        " Order by Deliveri.Deliv_Dt, Deliveri.Diet_Descr nocase",
    };
    s << QString::fromLatin1(orders[criteria.sortOrder()]);
    ResultSet rows = build.db.execute(s.text, s.params);
    if (!criteria.matchAll()) rows = rowsWithAnyDiet(rows, mask);
    data.addRows(data.mainPipe, std::move(rows));

    const QString title = criteria.reportTitle();
    const QString label = criteria.title();
    data.pipes.push_back(std::make_unique<CallbackPipe>(
        QStringLiteral("JITPipeline1"),
        QStringList{QStringLiteral("ReportTitle"), QStringLiteral("ReportLabel")},
        [title, label](qsizetype, const QString& field) {
            return QVariant(
                (field.compare(QLatin1String("ReportTitle"), Qt::CaseInsensitive) == 0 ? title : label)
                    .left(250));
        }));
    return data;
}

std::optional<ReportData> buildItemsByClient(ReportBuild& build)
{
    TFormClientItemsSortOrder sortOrder(build.settings);
    if (!build.questions.askClientItemsSortOrder(sortOrder)) return std::nullopt;
    ReportData data =
        reportData(DeliveryReport::ItemsAndDeliveryDetailsByClient, QStringLiteral("DBPipelineDeliveries"));
    ReportStatement s;
    s << QStringLiteral(
        "Select Deliv_Dt, Deliv_ID, DOW, Client_ID, Person_ID, ZIP, Address_Overridden, Route_ID, Stop, "
        "Child_Recv, ");
    s << QStringLiteral(
        " Svcs_Used, Diet_Restr, Diet_Descr, Custom_Items, Number_Meals, Label_Created, Label2_Created,");
    s << QStringLiteral(
        " Clients.Last_Name, Clients.First_Name, Services.Service_Desc as Services_Used_Named from "
        "Deliveri, Services, Clients ");
    s << QStringLiteral(
        "Where Deliveri.Svcs_Used = Services.Service_ID and Deliveri.Person_ID = Clients.Person_ID ");
    s << QStringLiteral("and ");
    addDateClause(s, build.choices, QStringLiteral("Deliveri.Deliv_Dt"));
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("Deliveri.Route_ID"));
    s << (sortOrder.sortOrder() == 0
              ? QStringLiteral("order by Clients.Last_Name, Clients.First_Name, Deliv_Dt")
              : QStringLiteral("order by Svcs_Used, Clients.Last_Name"));
    RowsPipe& deliveries = build.addQuery(data, data.mainPipe, s);
    DeliveryKeys::fill(build.db, deliveries.allRows());
    addClientDetails(build, data);

    addLabelItems(build, data);
    addSpecialDiets(build, data, {{QStringLiteral("Deliv_ID"), QStringLiteral("Deliv_ID")}});
    return data;
}

std::optional<ReportData> buildBarCodeListing(ReportBuild& build)
{
    ReportData data = reportData(DeliveryReport::BarCodeListing, QStringLiteral("DBPipelineDeliveries"));
    ReportStatement s;
    s << QStringLiteral(
        " Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name, Address1, City, ZIP, "
        "Clients.Svcs_Used, Def_Rte, Mon_Rte, Tue_Rte, Wed_Rte, Thu_Rte, Fri_Rte, Sat_Rte, Sun_Rte, "
        "Services.Service_Desc, ");
    s << QStringLiteral(" \" \" as Route_ID ");
    s << QStringLiteral(" from Clients left outer join Services on Clients.Svcs_Used = Services.Service_ID ");
    s << QStringLiteral(" where Clients.Status = \"A\" ");
    build.limits.AddServiceLimitation(s, QStringLiteral("Clients.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("Clients.Def_Rte"));
    s << QStringLiteral(" order by Last_Name, First_Name nocase ");
    build.addQuery(data, data.mainPipe, s);
    return data;
}

} // namespace kb::reports
