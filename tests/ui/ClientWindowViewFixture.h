#pragma once

// The real client window over a started data module with the client rules
// on its Clients set, shown offscreen at 1366x768 for a signed-in user.

#include "ModuleFixture.h"
#include "QtClientDialogs.h"
#include "WidgetApplication.h"

#include "clientwindow/MainWindow.h"
#include "rules/ModuleClientRules.h"
#include "window/TFormClients.h"

namespace kb::test {

class ClientWindowViewFixture : public ModuleFixture
{
protected:
    static void SetUpTestSuite() { ensureWidgetApplication(); }

    void beforeStart(TDataModule1& m) override { rules = std::make_unique<ModuleClientRules>(m); }
    void TearDown() override
    {
        window.reset();
        form.reset();
        if (module) module->shutdown();
        dialogs.reset();
        rules.reset();
        module.reset();
    }

    ui::MainWindow& openWindow(const QString& user = QStringLiteral("keeperin"))
    {
        signIn(user);
        dialogs = std::make_unique<ui::QtClientDialogs>(nullptr, module->userSettings());
        rules->setDialogs(dialogs.get());
        form = std::make_unique<TFormClients>(*module, ui, rules->rules());
        form->create();
        window = std::make_unique<ui::MainWindow>(*form, ui);
        window->resize(1366, 768);
        window->show();
        form->firstShow();
        window->showUser();
        return *window;
    }

    int count(const QString& sql) { return db().execute(sql).value(0, 0).toInt(); }

    std::unique_ptr<ModuleClientRules> rules;
    std::unique_ptr<ui::QtClientDialogs> dialogs;
    std::unique_ptr<TFormClients> form;
    std::unique_ptr<ui::MainWindow> window;
};

} // namespace kb::test
