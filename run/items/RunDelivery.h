#pragma once

#include "store/ResultSet.h"

#include <QDate>
#include <QStringList>
#include <QVariant>

namespace kb {

// A row of the run's working table with what a save writes of it into
// Deliveri and MealCrdt. Values that pass through unchanged stay as the table
// holds them.
struct RunDelivery
{
    qint64 recordId = 0; // the working table's RecordID
    QDate deliveryDate;
    QVariant clientId;
    qint64 personId = 0;
    QVariant routeId;
    QVariant stop;
    QVariant svcsUsed; // null only when nothing filled it
    QVariant cuisineId;
    qint64 dietRestr = 0;
    QVariant dietRestrictionsNamed;
    QVariant coldBagId;
    bool addressOverridden = false;
    QVariant zip;
    bool congregate = false;
    QString deliveryType;
    qint64 delivId = 0;

    // The working table's columns that read() takes, in its order.
    static const QStringList& columns();
    static RunDelivery read(const ResultSet& rows, qsizetype row);

    // A dated delivery: the first letter of Delivery_Type is a capital "E" or
    // "S". A lower-case letter marks a row that continues a client's delivery.
    bool isDated() const;
};

} // namespace kb
