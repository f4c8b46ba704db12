#include "save/DeliveriWriter.h"

#include "items/DeliveryItems.h"

#include <cmath>

namespace kb {

namespace {

// Stops are kept to four decimal places.
QVariant stopOf(const QVariant& stop)
{
    if (stop.isNull()) return stop;
    return std::round(stop.toDouble() * 10000.0) / 10000.0;
}

} // namespace

DeliveriWriter::DeliveriWriter(Database& db, const QString& dow)
    : m_dow(dow),
      m_insert(
          db,
          QStringLiteral(
              "Insert into Deliveri (Deliv_ID, Deliv_Dt, DOW, Route_ID, Client_ID, Person_ID, Stop, "
              "Delivery_Type, Svcs_Used, Cuisine_ID, Diet_Restr, Diet_Descr, Cold_Bag_ID, Custom_Items, "
              "Number_Meals, Number_Labels, Address_OverRidden, Funding_Desc, ZIP, Delivery_Status) values "
              "(:Deliv_ID, :Deliv_Dt, :DOW, :Route_ID, :Client_ID, :Person_ID, :Stop, :Delivery_Type, "
              ":Svcs_Used, :Cuisine_ID, :Diet_Restr, :Diet_Descr, :Cold_Bag_ID, :Custom_Items, "
              ":Number_Meals, :Number_Labels, :Address_OverRidden, :Funding_Desc, :ZIP, :Delivery_Status);"))
{
}

void DeliveriWriter::add(const DeliveryItems& delivery, qint64 delivId, const QString& deliveryType,
                         const QString& status)
{
    const RunDelivery& row = delivery.delivery;
    m_insert.add({{QStringLiteral("Deliv_ID"), delivId},
                  {QStringLiteral("Deliv_Dt"), row.deliveryDate},
                  {QStringLiteral("DOW"), m_dow},
                  {QStringLiteral("Route_ID"), row.routeId},
                  {QStringLiteral("Client_ID"), row.clientId},
                  {QStringLiteral("Person_ID"), row.personId},
                  {QStringLiteral("Stop"), stopOf(row.stop)},
                  {QStringLiteral("Delivery_Type"), deliveryType},
                  {QStringLiteral("Svcs_Used"), row.svcsUsed},
                  {QStringLiteral("Cuisine_ID"), row.cuisineId},
                  {QStringLiteral("Diet_Restr"), row.dietRestr},
                  {QStringLiteral("Diet_Descr"), row.dietRestrictionsNamed},
                  {QStringLiteral("Cold_Bag_ID"), row.coldBagId},
                  {QStringLiteral("Custom_Items"), delivery.customItems},
                  {QStringLiteral("Number_Meals"), delivery.numberMeals},
                  {QStringLiteral("Number_Labels"), delivery.numberLabels},
                  {QStringLiteral("Address_OverRidden"), row.addressOverridden},
                  {QStringLiteral("Funding_Desc"), delivery.fundingDesc},
                  {QStringLiteral("ZIP"), row.zip},
                  // An empty status is stored as none, as an empty text always is.
                  {QStringLiteral("Delivery_Status"), status.isEmpty() ? QVariant() : QVariant(status)}});
}

} // namespace kb
