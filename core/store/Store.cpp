#include "store/Store.h"

#include "store/DbError.h"

namespace kb {

qint64 StoreStatement::executeMany(const std::vector<std::vector<QVariant>>& rows, const std::vector<FieldType>& types)
{
    qint64 changed = 0;
    for (const auto& row : rows) {
        for (size_t i = 0; i < row.size(); ++i)
            bind(int(i), row[i], types[i]);
        execute();
        changed += rowsAffected();
        reset();
    }
    return changed;
}

qint64 Store::lastInsertRowId()
{
    throw DbError(DbErrorCode::Other, QStringLiteral("This store cannot tell the identity of an inserted row"));
}

} // namespace kb
