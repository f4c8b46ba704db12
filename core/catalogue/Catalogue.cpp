#include "catalogue/Catalogue.h"

namespace kb {

const Catalogue& Catalogue::standard()
{
    static const Catalogue catalogue = [] {
        Catalogue c;
        declareClientTables(c);
        declareDeliveryTables(c);
        declareCaseTables(c);
        declareReferenceTables(c);
        declareConfigTables(c);
        declareArchiveTables(c);
        declareRoutingTables(c);
        return c;
    }();
    return catalogue;
}

void Catalogue::add(TableDef table)
{
    m_byLowerName.insert(table.name().toLower(), m_tables.size());
    m_tables.append(std::move(table));
}

const TableDef* Catalogue::table(QStringView name) const
{
    const auto it = m_byLowerName.constFind(name.toString().toLower());
    return it == m_byLowerName.constEnd() ? nullptr : &m_tables[*it];
}

} // namespace kb
