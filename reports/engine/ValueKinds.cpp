#include "engine/ValueKinds.h"

#include "Money.h"

namespace kb::reports {

bool isIntegerValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

bool isNumberValue(const QVariant& value)
{
    return isIntegerValue(value) || value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float ||
           value.typeId() == qMetaTypeId<Money>();
}

} // namespace kb::reports
