#include "delivery/data/ReportPipes.h"

#include "delivery/data/ReportBuild.h"

#include "store/Database.h"

namespace kb::reports {

ResultSet emptyRows(const QStringList& columns)
{
    std::vector<sql::OutputColumn> out;
    for (const QString& name : columns)
        out.push_back(sql::OutputColumn{name, FieldType::String, 0});
    ResultSet rows(out);
    rows.setHasRows(true);
    return rows;
}

QStringList columnNames(const QString& columns)
{
    QStringList names;
    for (QString part : columns.split(u',')) {
        part = part.trimmed();
        const qsizetype as = part.lastIndexOf(QStringLiteral(" as "), -1, Qt::CaseInsensitive);
        if (as >= 0) part = part.mid(as + 4).trimmed();
        const qsizetype dot = part.lastIndexOf(u'.');
        names << (dot >= 0 ? part.mid(dot + 1) : part);
    }
    return names;
}

void addClientDetails(ReportBuild& build, ReportData& data)
{
    build.addQuery(
        data, QStringLiteral("DBPipelineClients"),
        QStringLiteral("Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name, Org_Client, Address1, "
                       "Address2, City, State, ZIP, Phone, Phone_Desc, OPhone, ODesc, Sex, Language, "
                       "Handicapped, Def_Rte, Directions, Cross_Street, Cuisine_ID, Cold_Bag_ID, "
                       "Household_ID, Svcs_Used, Preferences from Clients where Person_ID in "
                       "(Select Person_ID from Memory ReportDeliveryKeys)"));
    data.link(QStringLiteral("DBPipelineClients"), data.mainPipe,
              {{QStringLiteral("Person_ID"), QStringLiteral("Person_ID")}});
    build.addQuery(data, QStringLiteral("DBPipelineClientServiceNameFromID"),
                   QStringLiteral("Select Service_ID as Svcs_Used, Service_Desc from Services"));
    data.link(QStringLiteral("DBPipelineClientServiceNameFromID"), QStringLiteral("DBPipelineClients"),
              {{QStringLiteral("Svcs_Used"), QStringLiteral("Svcs_Used")}});
    build.addQuery(data, QStringLiteral("DBPipelineCuisine"),
                   QStringLiteral("select Cuisine_ID, Cuisine from Cuisines"));
    data.link(QStringLiteral("DBPipelineCuisine"), QStringLiteral("DBPipelineClients"),
              {{QStringLiteral("Cuisine_ID"), QStringLiteral("Cuisine_ID")}});
}

void addSpecialDiets(ReportBuild& build, ReportData& data,
                     const std::vector<std::pair<QString, QString>>& link)
{
    build.addQuery(
        data, QStringLiteral("DBPipelineSpecialDiets"),
        QStringLiteral(
            "Select Special_Diets.* from Special_Diets join Memory ReportDeliveryKeys Keys on "
            "(Special_Diets.Deliv_Dt = Keys.Deliv_Dt and Special_Diets.Person_ID = Keys.Person_ID)"));
    data.link(QStringLiteral("DBPipelineSpecialDiets"), data.mainPipe, link);
}

} // namespace kb::reports
