#include "items/RunItemRows.h"

#include "items/RunItems.h"

namespace kb {

namespace {

QString levelWord(ItemListLevel level)
{
    switch (level) {
    case ItemListLevel::Dated:
        return QStringLiteral("dated");
    case ItemListLevel::Client:
        return QStringLiteral("client");
    case ItemListLevel::Default:
        return QStringLiteral("default");
    case ItemListLevel::None:
        break;
    }
    return QStringLiteral("none");
}

} // namespace

ResultSet runItemRows(const RunItems& run)
{
    const auto column = [](const char* name, FieldType type, int width = 0) {
        return sql::OutputColumn{QString::fromLatin1(name), type, width};
    };
    ResultSet rows({column("Route_ID", FieldType::String, 5), column("Stop", FieldType::Float),
                    column("Client_ID", FieldType::String, 7), column("Person_ID", FieldType::Int),
                    column("Delivery_Type", FieldType::String, 2), column("Svcs_Used", FieldType::SmallInt),
                    column("Items_From", FieldType::String, 7), column("Custom_Items", FieldType::Bool),
                    column("Number_Meals", FieldType::Int), column("Number_Labels", FieldType::Int),
                    column("Funding_Desc", FieldType::String, 3), column("Item_ID", FieldType::Int),
                    column("Quantity", FieldType::Int), column("Sort_Order", FieldType::SmallInt)});
    for (const DeliveryItems& items : run.deliveries()) {
        const RunDelivery& d = items.delivery;
        const QVariantList delivery = {d.routeId,
                                       d.stop,
                                       d.clientId,
                                       d.personId,
                                       d.deliveryType,
                                       d.svcsUsed,
                                       levelWord(items.level),
                                       items.customItems,
                                       items.numberMeals,
                                       items.numberLabels,
                                       items.fundingDesc};
        if (items.lines.empty()) {
            rows.appendRow(delivery + QVariantList{QVariant(), QVariant(), QVariant()});
            continue;
        }
        for (const ItemListLine& line : items.lines)
            rows.appendRow(delivery + QVariantList{line.itemId, line.quantity, line.sortOrder});
    }
    rows.setHasRows(true);
    return rows;
}

} // namespace kb
