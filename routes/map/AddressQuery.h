#pragma once

#include "Country.h"

#include <QString>

namespace kb::map {

struct AddressQuery
{
    QString street;
    QString city;
    QString state;
    QString postalCode;
    Country country = Country::Unspecified;
};

} // namespace kb::map
