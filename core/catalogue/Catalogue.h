#pragma once

#include "catalogue/TableDef.h"

#include <QHash>
#include <QList>

namespace kb {

// The set of persistent tables of a data directory, declared once in code.
class Catalogue
{
public:
    // The full catalogue of the system.
    static const Catalogue& standard();

    void add(TableDef table);
    const TableDef* table(QStringView name) const;
    const QList<TableDef>& tables() const { return m_tables; }

private:
    QList<TableDef> m_tables;
    QHash<QString, qsizetype> m_byLowerName;
};

// Declarations of the standard tables, grouped by the area that owns them.
void declareClientTables(Catalogue& catalogue);
void declareDeliveryTables(Catalogue& catalogue);
void declareCaseTables(Catalogue& catalogue);
void declareReferenceTables(Catalogue& catalogue);
void declareConfigTables(Catalogue& catalogue);
void declareArchiveTables(Catalogue& catalogue);
void declareRoutingTables(Catalogue& catalogue);

} // namespace kb
