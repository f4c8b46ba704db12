#include "bills/ClientBill.h"

namespace kb {

Money moneyValue(const QVariant& value)
{
    if (value.isNull()) return {};
    if (value.metaType() == QMetaType::fromType<Money>()) return value.value<Money>();
    // A store that hands back a number or a text: read its decimal text,
    // never through a binary fraction's arithmetic.
    if (const auto m = Money::parse(value.toString())) return *m;
    return {};
}

} // namespace kb
