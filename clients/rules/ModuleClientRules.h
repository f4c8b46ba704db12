#pragma once

#include <memory>

namespace kb {

class ClientDialogs;
class ClientRules;
class TDataModule1;

// The client rules on the data module's shared Clients set: the one place
// where they are put on it, for the desktop program and the headless
// commands alike, so every save of a client through the module's set runs
// them. Made before the module starts (the rules go on the set before it
// opens) and destroyed before the module.
class ModuleClientRules
{
public:
    explicit ModuleClientRules(TDataModule1& module);
    ~ModuleClientRules();
    ModuleClientRules(const ModuleClientRules&) = delete;
    ModuleClientRules& operator=(const ModuleClientRules&) = delete;

    // Null until the module has started.
    ClientRules* rules() const { return m_rules.get(); }
    // The screens a save opens; kept for the rules when they are made later.
    void setDialogs(ClientDialogs* dialogs);

private:
    std::unique_ptr<ClientRules> m_rules;
    ClientDialogs* m_dialogs = nullptr;
};

} // namespace kb
