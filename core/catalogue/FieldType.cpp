#include "catalogue/FieldType.h"

namespace kb {

QString fieldTypeName(FieldType type)
{
    switch (type) {
    case FieldType::String: return QStringLiteral("string");
    case FieldType::SmallInt: return QStringLiteral("smallint");
    case FieldType::Int: return QStringLiteral("int");
    case FieldType::Float: return QStringLiteral("float");
    case FieldType::Currency: return QStringLiteral("currency");
    case FieldType::Bool: return QStringLiteral("bool");
    case FieldType::Date: return QStringLiteral("date");
    case FieldType::DateTime: return QStringLiteral("datetime");
    case FieldType::Memo: return QStringLiteral("memo");
    case FieldType::Blob: return QStringLiteral("blob");
    case FieldType::AutoInc: return QStringLiteral("autoinc");
    case FieldType::Unknown: break;
    }
    return QStringLiteral("unknown");
}

bool isInteger(FieldType type)
{
    return type == FieldType::SmallInt || type == FieldType::Int || type == FieldType::AutoInc;
}

bool isNumeric(FieldType type)
{
    return isInteger(type) || type == FieldType::Float || type == FieldType::Currency;
}

bool isText(FieldType type)
{
    return type == FieldType::String || type == FieldType::Memo;
}

} // namespace kb
