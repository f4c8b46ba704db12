#include "delivery/data/ReportPipes.h"

#include "delivery/data/ReportBuild.h"

#include "settings/ConfigRecord.h"
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

ResultSet rowsWithAnyDiet(const ResultSet& rows, qint64 mask)
{
    ResultSet kept(rows.columns());
    kept.setHasRows(true);
    const int diet = rows.columnIndex(u"Diet_Restr");
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        if ((rows.value(r, diet).toLongLong() & mask) != 0) kept.appendRow(rows.row(r));
    }
    return kept;
}

void addClientDetails(ReportBuild& build, ReportData& data, const QString& cuisineMaster)
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
    data.link(QStringLiteral("DBPipelineCuisine"), cuisineMaster,
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

void addAddressOverrides(ReportBuild& build, ReportData& data, const ConfigRecord& config)
{
    static const QString detailColumns = QStringLiteral(
        "Address_Overrides.RecordID, Address_Overrides.Override_Type, Address_Overrides.DOW, "
        "Address_Overrides.Effective_Date, Address_Overrides.Expire_Date, Address_Overrides.Deliv_Date, "
        "Address_Overrides.Addr_Desc, address_overrides.Address1, address_overrides.Address2, "
        "address_overrides.City, address_overrides.State, address_overrides.ZIP, address_overrides.Phone, "
        "address_overrides.Phone_Desc, address_overrides.Route, address_overrides.Stop, "
        "address_overrides.Directions");
    if (!config.flag(QStringLiteral("ENABLE_ALTERNATE_ADDRESSES"))) {
        data.addRows(QStringLiteral("DBPipeline1"),
                     emptyRows({QStringLiteral("Person_ID"), QStringLiteral("Deliv_Dt"),
                                QStringLiteral("RecordID"), QStringLiteral("Override_Type")}));
        data.addRows(QStringLiteral("DBPipelineAddressOverRides"), emptyRows(columnNames(detailColumns)));
        return;
    }
    // A single date before a weekday before a temporary address: the first
    // row of a delivery is the address that applies.
    const QString select = QStringLiteral(
        "Select Keys.Person_ID, Keys.Deliv_Dt, Address_Overrides.RecordID, Address_Overrides.Override_Type "
        "from Address_Overrides join Memory ReportDeliveryKeys Keys on Address_Overrides.Person_ID = "
        "Keys.Person_ID ");
    const QString inPeriod = QStringLiteral(" and Address_Overrides.Effective_Date <= Keys.Deliv_Dt and "
                                            "(Address_Overrides.Expire_Date >= Keys.Deliv_Dt "
                                            "or Address_Overrides.Expire_Date is null) ");
    const QString text =
        select +
        QStringLiteral(
            "where Address_Overrides.Override_Type = 'D' and Address_Overrides.Deliv_Date = Keys.Deliv_Dt ") +
        QStringLiteral(" Union ") + select + QStringLiteral("where Address_Overrides.Override_Type = 'T' ") +
        inPeriod + QStringLiteral(" Union ") + select +
        QStringLiteral("where Address_Overrides.Override_Type = 'O' ") + inPeriod +
        QStringLiteral(" and Upper(Address_Overrides.DOW) = Upper(Keys.DOW) ") +
        QStringLiteral(" order by Override_Type, RecordID");
    build.addQuery(data, QStringLiteral("DBPipeline1"), text);
    data.link(QStringLiteral("DBPipeline1"), data.mainPipe,
              {{QStringLiteral("Person_ID"), QStringLiteral("Person_ID")},
               {QStringLiteral("Deliv_Dt"), QStringLiteral("Deliv_Dt")}});
    build.addQuery(data, QStringLiteral("DBPipelineAddressOverRides"),
                   QStringLiteral("Select ") + detailColumns +
                       QStringLiteral(" from Address_Overrides where Address_Overrides.Person_ID in "
                                      "(Select Person_ID from Memory ReportDeliveryKeys)"));
    data.link(QStringLiteral("DBPipelineAddressOverRides"), QStringLiteral("DBPipeline1"),
              {{QStringLiteral("RecordID"), QStringLiteral("RecordID")}});
}

void addLabelItems(ReportBuild& build, ReportData& data)
{
    build.addQuery(
        data, QStringLiteral("DBPipelineQueryLabelitems"),
        QStringLiteral("select MealCrdt.Sort_Order,MealCrdt.Quantity, MealCrdt.Item_ID, Items.Meal_Item, "
                       "Items.Meal, MealCrdt.Deliv_ID from MealCrdt join Items on MealCrdt.Item_ID = "
                       "Items.Item_ID join Memory ReportDeliveryKeys Keys on (MealCrdt.Deliv_Dt = "
                       "Keys.Deliv_Dt and MealCrdt.Person_ID = Keys.Person_ID) Order by Sort_Order, "
                       "MealCrdt.RecordID"));
    data.link(QStringLiteral("DBPipelineQueryLabelitems"), data.mainPipe,
              {{QStringLiteral("Deliv_ID"), QStringLiteral("Deliv_ID")}});
}

} // namespace kb::reports
