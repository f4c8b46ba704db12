#pragma once

#include <QString>
#include <QVariant>

namespace kb {

// Which of the three item lists a delivery takes its items from.
enum class ItemListLevel {
    None,    // no list has a line: the delivery goes out without items
    Dated,   // the lines of the dated delivery itself
    Client,  // the client's standing lines for the weekday and service
    Default, // the service's default lines for the weekday
};

// One line of an item list (a Defdels row) joined with its item.
struct ItemListLine
{
    qint64 defdelsId = 0; // Defdels.RecordID; orders lines of one Sort_Order
    qint64 itemId = 0;
    QVariant quantity;    // Defdels.Quantity; null when the line has none
    QVariant sortOrder;   // Defdels.Sort_Order
    QVariant numberMeals; // Items.Number_Meals
    QVariant numberLabels;
    QString confirmationRequired; // Items.Confirmation_Required; empty when null
};

} // namespace kb
