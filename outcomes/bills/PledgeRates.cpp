#include "bills/PledgeRates.h"

#include "store/Database.h"

namespace kb {

PledgeRates PledgeRates::read(Database& db, qint64 personId)
{
    PledgeRates rates;
    // QueryPledgedAmounts for every unit of the client at once; the first
    // row of a unit wins, as a lookup by unit finds it first.
    const ResultSet rows = db.execute(
        QStringLiteral(
            "Select Unit, Amount from Pricing where (Person_ID = :Person_ID) and (Method = 'P') order "
            "by RecordID"),
        {{QStringLiteral("Person_ID"), personId}});
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const QString unit = rows.value(r, 0).toString().trimmed();
        if (unit.isEmpty() || rows.value(r, 1).isNull()) continue;
        rates.m_amounts.emplace(unit, rows.value(r, 1).value<Money>());
    }
    return rates;
}

std::optional<Money> PledgeRates::find(const QString& unit) const
{
    const auto it = m_amounts.find(unit);
    if (it == m_amounts.end()) return std::nullopt;
    return it->second;
}

} // namespace kb
