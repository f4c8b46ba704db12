#pragma once

#include "items/DeliveryItems.h"
#include "items/RunDefaults.h"
#include "itemstatements/ItemStatements.h"

#include <QDate>

#include <optional>

#include <vector>

namespace kb {

class Database;
class MemTableDeliveries;
struct ConfirmedItems;

// The items, meal and label counts and funding of every delivery of a
// prepared run, as a save writes them: the working table's rows in the run's
// order (RouteStopClient), each with its MealCrdt lines and its Deliveri
// counts and funding.
//
// A delivery takes the first item list that keeps a line (its dated
// delivery's lines, the client's for the weekday and service, the service's
// default), leaving out the items that need confirmation and were not
// confirmed. From the dated or the client's list it has custom items and
// counts of its own; otherwise it has the default counts of its service. A
// label count of 0 becomes 1; meals keep 0. Funding is the client's FundUses
// row of the weekday, else the service's default funding.
//
// The whole run takes a handful of statements, whatever its size.
class RunItems
{
public:
    // Throws MessageError with "The Service ID for Person ID ... is not
    // valid." for the first row, in the run's order, whose service is empty
    // or outside the delivery services.
    static RunItems find(Database& db, MemTableDeliveries& table, const QDate& runDate,
                         const ConfirmedItems& confirmed);

    const std::vector<DeliveryItems>& deliveries() const { return m_deliveries; }
    const RunDefaults& defaults() const { return m_defaults; }
    // The item statements as built for the confirmed items.
    const ItemStatements& statements() const { return m_statements; }

private:
    std::vector<DeliveryItems> m_deliveries;
    RunDefaults m_defaults;
    ItemStatements m_statements;
};

// Total_Meals and Total_Labels of a delivery's own list.
struct ListCounts
{
    qint64 meals = 0;
    qint64 labels = 0;
};

// Custom_Items, the counts and the funding of a delivery once its list is
// chosen: a dated or client's list counts itself (listCounts), any other
// delivery takes its service's defaults; clientFunding is the code of the
// FundUses row that covers the delivery, if one does.
void settleDelivery(DeliveryItems& items, const RunDefaults& defaults, const ListCounts& listCounts,
                    const std::optional<QString>& clientFunding);

} // namespace kb
