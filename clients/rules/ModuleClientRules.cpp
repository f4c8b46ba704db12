#include "rules/ModuleClientRules.h"

#include "dataset/TableDataSet.h"
#include "rules/ClientRules.h"
#include "session/TDataModule1.h"

namespace kb {

ModuleClientRules::ModuleClientRules(TDataModule1& module)
{
    module.addDataSetHooks([this](TDataModule1& m) {
        m_rules = std::make_unique<ClientRules>(m.services(), m.ui(), m.clock(), m.session());
        m_rules->setDialogs(m_dialogs);
        // The set is still closed here: table() would open it.
        for (DataSet* set : m.dataSets())
            if (auto* table = dynamic_cast<TableDataSet*>(set);
                table && table->tableName().compare(QLatin1String("Clients"), Qt::CaseInsensitive) == 0)
                m_rules->attach(*table);
    });
}

ModuleClientRules::~ModuleClientRules() = default;

void ModuleClientRules::setDialogs(ClientDialogs* dialogs)
{
    m_dialogs = dialogs;
    if (m_rules) m_rules->setDialogs(dialogs);
}

} // namespace kb
