#pragma once

// The client window's presenter over a started data module with the client
// rules on its Clients set, signed in as one of the users of every level,
// over a few clients of every kind.

#include "ModuleFixture.h"

#include "dataset/TableDataSet.h"
#include "rules/ModuleClientRules.h"
#include "window/ClientCommands.h"
#include "window/TFormClients.h"

namespace kb::test {

class ClientWindowFixture : public ModuleFixture
{
protected:
    void SetUp() override
    {
        ModuleFixture::SetUp();
        if (!data) return;
        addClient(1, {{QStringLiteral("Client_ID"), QStringLiteral("101.0")},
                      {QStringLiteral("Last_Name"), QStringLiteral("Ames")},
                      {QStringLiteral("First_Name"), QStringLiteral("Ann")},
                      {QStringLiteral("Status"), QStringLiteral("A")},
                      {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
                      {QStringLiteral("Address1"), QStringLiteral("12 Elm St")},
                      {QStringLiteral("City"), QStringLiteral("Cedar Falls")},
                      {QStringLiteral("State"), QStringLiteral("OH")},
                      {QStringLiteral("Zip"), QStringLiteral("45115")},
                      {QStringLiteral("Email"), QStringLiteral("ann@example.org")},
                      {QStringLiteral("DOB"), QDate(1950, 3, 7)},
                      {QStringLiteral("Def_Rte"), QStringLiteral("R1")}});
        addClient(2, {{QStringLiteral("Client_ID"), QStringLiteral("102.0")},
                      {QStringLiteral("Last_Name"), QStringLiteral("Bay Center")},
                      {QStringLiteral("Org_Client"), QStringLiteral("Y")},
                      {QStringLiteral("Status"), QStringLiteral("A")},
                      {QStringLiteral("Household_ID"), 7}});
        addClient(3, {{QStringLiteral("Client_ID"), QStringLiteral("103.0")},
                      {QStringLiteral("Last_Name"), QStringLiteral("Cole")},
                      {QStringLiteral("First_Name"), QStringLiteral("Cy")},
                      {QStringLiteral("Status"), QStringLiteral("I")}});
        addClient(4, {{QStringLiteral("Last_Name"), QStringLiteral("Dunn")},
                      {QStringLiteral("First_Name"), QStringLiteral("Dee")},
                      {QStringLiteral("Status"), QStringLiteral("W")}});
        addClient(5, {{QStringLiteral("Client_ID"), QStringLiteral("105.0")},
                      {QStringLiteral("Last_Name"), QStringLiteral("Eddy")},
                      {QStringLiteral("Status"), QStringLiteral("A")},
                      {QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
        addClient(6, {{QStringLiteral("Client_ID"), QStringLiteral("106.0")},
                      {QStringLiteral("Last_Name"), QStringLiteral("Ford")},
                      {QStringLiteral("Status"), QStringLiteral("S")}});
        insertRow(db(), QStringLiteral("Suspends"),
                  {{QStringLiteral("Person_ID"), 5},
                   {QStringLiteral("Client_ID"), QStringLiteral("105.0")},
                   {QStringLiteral("Stop_Dt"), QDate(2024, 3, 1)},
                   {QStringLiteral("Resume_Dt"), QDate(2024, 3, 20)}});
    }

    void TearDown() override
    {
        form.reset();
        if (module) module->shutdown();
        rules.reset();
        module.reset();
    }

    void beforeStart(TDataModule1& m) override { rules = std::make_unique<ModuleClientRules>(m); }

    void addClient(int person, Params values)
    {
        values.emplace_back(QStringLiteral("Person_ID"), person);
        insertRow(db(), QStringLiteral("Clients"), values);
    }

    // Signs in and opens the window's logic as the desktop does; every
    // command gets a handler, so that only the rules of the window decide
    // what is enabled.
    TFormClients& open(const QString& user)
    {
        signIn(user);
        form = std::make_unique<TFormClients>(*module, ui, rules->rules());
        for (const ClientCommandInfo& c : clientCommands())
            if (!form->hasHandler(c.id)) form->setHandler(c.id, [this, id = c.id] { ran.append(id); });
        form->create();
        form->firstShow();
        return *form;
    }

    void moveToPerson(int person)
    {
        TableDataSet& clients = module->clients();
        ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), person)) << person;
        form->SetControlsState(false);
    }

    std::unique_ptr<ModuleClientRules> rules;
    std::unique_ptr<TFormClients> form;
    QStringList ran;
};

} // namespace kb::test
