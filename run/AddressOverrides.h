#pragma once

#include "AddressOverride.h"
#include "store/Database.h"

#include <QDate>
#include <QHash>

#include <optional>

namespace kb {

// The overrides that apply on one date. Loaded with one statement for all
// clients and picked per client as the single-client statement does: "D"
// wins over "O", which wins over "T"; within one kind the lowest RecordID.
class AddressOverrides
{
public:
    void load(Database& db, const QDate& date);
    void clear() { m_byPerson.clear(); }
    std::optional<AddressOverride> find(qint64 personId) const;

    // The single-client statement, for rows that are looked at one by one
    // (a reloaded run) and as the reference of the rule.
    static std::optional<AddressOverride> lookUpOne(Query& statement, qint64 personId, const QString& dow,
                                                    const QDate& date);

private:
    QHash<qint64, AddressOverride> m_byPerson;
};

} // namespace kb
