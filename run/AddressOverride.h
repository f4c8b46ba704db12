#pragma once

#include <QString>
#include <QVariant>

namespace kb {

// The alternate address that replaces a client's route, stop and address on
// one date.
struct AddressOverride
{
    qint64 recordId = 0;
    QString overrideType; // "D" one date, "O" a weekday within a period, "T" a period
    QVariant route;
    double stop = 0; // a null stop is 0
    QVariant address1;
    QVariant city;
    QVariant state;
    QVariant zip;

    bool operator==(const AddressOverride&) const = default;
};

} // namespace kb
