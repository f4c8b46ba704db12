#include "AddressOverrides.h"

#include "selection/RunStatements.h"

namespace kb {

namespace {

// Columns from RecordID on, as both statements give them.
AddressOverride readOverride(const ResultSet& rows, qsizetype r, int first)
{
    AddressOverride o;
    o.recordId = rows.value(r, first).toLongLong();
    o.overrideType = rows.value(r, first + 1).toString();
    o.route = rows.value(r, first + 2);
    o.stop = rows.value(r, first + 3).toDouble();
    o.address1 = rows.value(r, first + 4);
    o.city = rows.value(r, first + 5);
    o.state = rows.value(r, first + 6);
    o.zip = rows.value(r, first + 7);
    return o;
}

} // namespace

void AddressOverrides::load(Database& db, const QDate& date)
{
    m_byPerson.clear();
    const ResultSet rows = db.execute(RunStatements::overridesOfDate(),
                                      {{QStringLiteral("Deliv_Date"), date},
                                       {QStringLiteral("DOW"), RunStatements::dayCode(date)}});
    // Rows come by person, then kind, then RecordID: the first of a person wins.
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const qint64 person = rows.value(r, 0).toLongLong();
        if (!m_byPerson.contains(person))
            m_byPerson.insert(person, readOverride(rows, r, 1));
    }
}

std::optional<AddressOverride> AddressOverrides::find(qint64 personId) const
{
    const auto it = m_byPerson.constFind(personId);
    if (it == m_byPerson.constEnd())
        return std::nullopt;
    return *it;
}

std::optional<AddressOverride> AddressOverrides::lookUpOne(Query& statement, qint64 personId, const QString& dow,
                                                           const QDate& date)
{
    const ResultSet rows = statement.bind(QStringLiteral("Person_ID"), personId)
                               .bind(QStringLiteral("DOW"), dow)
                               .bind(QStringLiteral("Deliv_Date"), date)
                               .exec();
    if (rows.isEmpty())
        return std::nullopt;
    return readOverride(rows, 0, 0);
}

} // namespace kb
