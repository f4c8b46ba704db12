#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include "AddressOverride.h"

namespace kb {

// One row of the run's working table as MoveToMemData fills it. A null
// QVariant leaves the column empty.
struct DeliveryRow
{
    QDate deliveryDate;
    QVariant clientId;
    QVariant personId;
    QVariant routeId;
    double stop = 0;
    QString fullName;
    QString firstName;
    QString lastName;
    QVariant address1;
    QVariant city;
    QVariant state;
    QVariant zip;
    qint64 addressOverrideId = 0;
    bool addressOverridden = false;
    qint64 svcsUsed = 0;
    QString servicesUsedNamed;
    QVariant cuisineId;
    qint64 dietRestr = 0;
    QString dietRestrictionsNamed;
    bool congregate = false;
    QString deliveryType;
    qint64 delivId = 0;
    QVariant householdName;
    QVariant coldBagId;
    QVariant latitude;
    QVariant longitude;
    QString pushpinName;
    QVariant householdId;
    QVariant crossStreet;

    // The alternate address of the day in place of the client's own; the
    // route and stop are the caller's to choose.
    void takeAddress(const AddressOverride& over)
    {
        address1 = over.address1;
        city = over.city;
        state = over.state;
        zip = over.zip;
        addressOverrideId = over.recordId;
        addressOverridden = true;
    }
};

} // namespace kb
