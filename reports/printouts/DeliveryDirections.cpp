#include "printouts/DeliveryDirections.h"

#include "MessageError.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "data/RowsPipe.h"
#include "selection/RunStatements.h"
#include "store/Database.h"
#include "template/TemplateSource.h"

namespace kb::reports {

namespace {

const QString ItemColumns = QStringLiteral(
    " Select DefDels.Quantity, Items.Meal_Item, DefDels.Del_Day, Defdels.Sort_Order, DefDels.Service_ID, "
    "Services.Service_Desc  from DefDels join Items on Defdels.Item_ID = Items.Item_ID join Services on "
    "DefDels.Service_ID = Services.Service_ID ");
const QString DatedItems =
    QStringLiteral("  or    (Person_ID = :Person_ID and Deliv_ID = :Deliv_ID)  Order by sort_order ");

} // namespace

QStringList DeliveryDirections::templateFiles(Kind kind)
{
    if (kind == Kind::AddressOverride)
        return {QStringLiteral("OneClientOverrideDirections040415.rtm"),
                QStringLiteral("OneClientOverrideDirections040406.rtm")};
    return {QStringLiteral("OneClientDeliveryDirections040415.rtm"),
            QStringLiteral("OneClientDeliveryDirections040406.rtm")};
}

ResultSet DeliveryDirections::itemsForDeliveryReport(qint64 personId, const QString& scheduleType,
                                                     const QVariant& svcsUsed, const QString& dayCode,
                                                     const QDate& date)
{
    Database& db = m_context.db;
    m_delivId = -1;
    const ResultSet own = db.execute(
        QStringLiteral(
            " Select RecordID from EpisodicDeliveries where Person_ID = :Person_ID and Schedule_Type = "
            ":Schedule_Type and Svcs_Used = :Svcs_Used and Deliv_Date = :Deliv_Date "),
        {{QStringLiteral("Person_ID"), personId},
         {QStringLiteral("Schedule_Type"), scheduleType},
         {QStringLiteral("Svcs_Used"), svcsUsed},
         {QStringLiteral("Deliv_Date"), date}});
    if (!own.isEmpty()) {
        m_delivId = own.value(0, 0).toLongLong();
    } else {
        const ResultSet other = db.execute(
            QStringLiteral(
                " Select RecordID from EpisodicDeliveries where Person_ID = :Person_ID and Deliv_Date = "
                ":Deliv_Date and Schedule_Type = :Schedule_Type"),
            {{QStringLiteral("Person_ID"), personId},
             {QStringLiteral("Deliv_Date"), date},
             {QStringLiteral("Schedule_Type"), scheduleType}});
        if (!other.isEmpty()) {
            m_context.ui.information(
                QStringLiteral("This client is receiving a Scheduled Delivery for the date you chose on a \n"
                               "Service other than their normally assigned Service."));
            m_delivId = other.value(0, 0).toLongLong();
        }
    }
    const Params params = {{QStringLiteral("Person_ID"), personId},
                           {QStringLiteral("Svcs_Used"), svcsUsed},
                           {QStringLiteral("Del_Day"), dayCode},
                           {QStringLiteral("Deliv_ID"), m_delivId}};
    const bool clientItems =
        !db.execute(QStringLiteral(
                        "Select DefDels.Quantity, Items.Meal_Item, DefDels.Del_Day from DefDels join Items "
                        "on Defdels.Item_ID = Items.Item_ID where Person_ID = :Person_ID and "
                        "DefDels.Service_ID = :Svcs_Used and Del_Day = :Del_Day and Deliv_ID is Null "),
                    params)
             .isEmpty();
    const QString where =
        clientItems
            ? QStringLiteral(" where (Person_ID = :Person_ID and DefDels.Service_ID = :Svcs_Used and Del_Day "
                             "= :Del_Day and Deliv_ID is Null) ")
            : QStringLiteral(" where (Person_ID = 0          and DefDels.Service_ID = :Svcs_Used and Del_Day "
                             "= :Del_Day) ");
    return db.execute(ItemColumns + where + DatedItems, params);
}

bool DeliveryDirections::prepare(ReportHolder& holder, Kind kind, qint64 personId, const QDate& date,
                                 std::optional<qint64> overrideId)
{
    Database& db = m_context.db;
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&db);
    holder.setLabelStock(nullptr);
    const QStringList files = templateFiles(kind);
    bool loaded = false;
    for (const QString& file : files)
        if (!loadFixedTemplate(holder, m_context.templateFolder, file).isEmpty()) {
            loaded = true;
            break;
        }
    if (!loaded) {
        m_context.ui.error(QStringLiteral("The report template ") + files.front() +
                           QStringLiteral(" could not be found."));
        return false;
    }

    const Params person = {{QStringLiteral("Person_ID"), personId}};
    ResultSet client = db.execute(
        QStringLiteral(
            "Select * from Clients left join Race on Clients.Race=Race.Race_CD left join Services on "
            "Clients.Svcs_Used = Services.Service_ID where Person_ID = :Person_ID"),
        person);
    if (client.isEmpty())
        throw MessageError(QStringLiteral("There is no client with the person number %1.").arg(personId));
    const auto field = [&](const QString& column) { return client.value(0, column); };

    // An ongoing client's dated deliveries are his scheduled ones; anyone
    // else's are episodic.
    const QString scheduleType = field(QStringLiteral("Delivery_Type")).toString() == QLatin1String("O")
                                     ? QStringLiteral("S")
                                     : QStringLiteral("E");
    const QString day = RunStatements::dayCode(date);
    ResultSet items =
        itemsForDeliveryReport(personId, scheduleType, field(QStringLiteral("Svcs_Used")), day, date);

    // The place of the delivery on that date: a dated delivery's own, else
    // the weekday's route (its stop with it) or the default; an alternate
    // address in force replaces both.
    QVariant route;
    QVariant stop;
    if (m_delivId >= 0) {
        const ResultSet dated = db.execute(
            QStringLiteral("Select Route, Stop from EpisodicDeliveries where RecordID = :RecordID"),
            {{QStringLiteral("RecordID"), m_delivId}});
        if (!dated.isEmpty()) {
            route = dated.value(0, 0);
            stop = dated.value(0, 1);
        }
    } else {
        const QString prefix = day.left(1) + day.mid(1).toLower();
        route = field(prefix + QStringLiteral("_Rte"));
        if (!route.isNull()) {
            stop = field(prefix + QStringLiteral("_Stop"));
        } else {
            route = field(QStringLiteral("Def_Rte"));
            stop = field(QStringLiteral("Def_Stop"));
        }
    }
    const ResultSet config = db.execute(QStringLiteral("Select Enable_Alternate_Addresses from Config"));
    const bool alternateAddresses = !config.isEmpty() && config.value(0, 0).toBool();
    if (!overrideId && alternateAddresses) {
        const ResultSet inForce =
            db.execute(RunStatements::overrideStatement(), {{QStringLiteral("Person_ID"), personId},
                                                            {QStringLiteral("DOW"), day},
                                                            {QStringLiteral("Deliv_Date"), date}});
        if (!inForce.isEmpty()) overrideId = inForce.value(0, u"RecordID").toLongLong();
    }
    ResultSet address =
        db.execute(QStringLiteral("Select * from Address_Overrides where RecordID = :RecordID"),
                   {{QStringLiteral("RecordID"), overrideId ? *overrideId : qint64(-1)}});
    if (!address.isEmpty()) {
        route = address.value(0, u"Route");
        stop = address.value(0, u"Stop");
    }

    const QDate today = m_context.clock.today();
    holder.addPipe(std::make_unique<RowsPipe>(
        QStringLiteral("DBPipelineDefaultRouteName"),
        db.execute(QStringLiteral("Select Route_Desc from Routes where "
                                  "Route_ID = :Def_Rte"),
                   {{QStringLiteral("Def_Rte"), field(QStringLiteral("Def_Rte"))}})));
    holder.addPipe(std::make_unique<RowsPipe>(
        QStringLiteral("DBPipelineOverridden_Addresses"),
        db.execute(
            QStringLiteral("Select * from Address_Overrides where Person_ID = :Person_ID and "
                           "((Override_Type = 'D' and Deliv_Date >= :Today) or (Override_Type <> 'D' and "
                           "Effective_Date <= :Today and (Expire_Date >= :Today or Expire_Date is Null))) "
                           "order by Override_Type"),
            {{QStringLiteral("Person_ID"), personId}, {QStringLiteral("Today"), today}})));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineClientInfo"), std::move(client)));
    holder.addPipe(std::make_unique<RowsPipe>(itemsPipe(), std::move(items)));
    holder.addPipe(
        std::make_unique<RowsPipe>(QStringLiteral("DBPipelineAddressOverride"), std::move(address)));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineConfig"),
                                              db.execute(QStringLiteral("Select * from Config"))));
    holder.setParameter(QStringLiteral("Deliv_Date"), date);
    holder.setParameter(QStringLiteral("Del_Day"), day);
    holder.setParameter(QStringLiteral("Route_ID"), route.toString().trimmed());
    holder.setParameter(QStringLiteral("Stop"), stop.isNull() ? QVariant(0.0) : QVariant(stop.toDouble()));
    holder.setParameter(QStringLiteral("Schedule_Type"), scheduleType);
    holder.setParameter(QStringLiteral("Deliv_ID"), m_delivId);
    return true;
}

bool DeliveryDirections::print(ReportHolder& holder, Kind kind, qint64 personId, const QDate& date,
                               ReportDestination destination, std::optional<qint64> overrideId)
{
    if (!prepare(holder, kind, personId, date, overrideId)) return false;
    holder.setDestination(destination);
    holder.setShowPrintDialog(true);
    const bool printed = holder.print();
    holder.clearPipes();
    return printed;
}

} // namespace kb::reports
