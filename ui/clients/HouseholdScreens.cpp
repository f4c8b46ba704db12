#include "clients/HouseholdScreens.h"

#include "clients/HouseholdMembersView.h"
#include "clients/HouseholdWizardView.h"
#include "clients/HouseholdsView.h"
#include "clientwindow/MainWindow.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "households/ClientLocator.h"
#include "households/HeadOfHousehold.h"
#include "households/PendingClientEdit.h"
#include "households/TFormHouseholdMembers.h"
#include "households/TFormHouseholdWizard.h"
#include "households/TFormHouseholds.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "window/ClientCommands.h"
#include "window/TFormClients.h"

#include <memory>

namespace kb::ui {

namespace {

namespace cmd = client_command;

const QString JumpToHeadOfHousehold = QStringLiteral("ActionJumpToHeadOfHousehold");

// What the household screens of one window share: the way they move the
// window to a person, with the window's own filter switch.
struct HouseholdScreens
{
    HouseholdScreens(TFormClients& window, UserInterface& userInterface)
        : form(window), module(window.module()), ui(userInterface), locator(module.clients(), userInterface)
    {
        locator.setFilterOff([this] { form.statusFilterClosed(false); });
    }

    // After a screen: the households' names are read again (the client page
    // shows the client's one), and the window stays on the client the
    // screen left it on.
    void screenClosed()
    {
        module.query(QStringLiteral("QueryHouseholdName")).refresh();
        form.BookmarkClients();
    }

    qint64 currentPerson()
    {
        TableDataSet& clients = module.clients();
        return clients.isActive() && !clients.isEmpty() ? clients.fieldValue(u"PERSON_ID").toLongLong() : 0;
    }

    void openMembers(qint64 householdId, qint64 personId, QWidget* parent)
    {
        TFormHouseholdMembers presenter(module.services(), ui, module.session(), module.clock(),
                                        module.clients(), householdId, personId);
        presenter.setSettings(&module.userSettings());
        presenter.setLocator(&locator);
        if (!presenter.FormShow()) return;
        HouseholdMembersView view(presenter, module.services(), ui, module.userSettings(), parent);
        view.exec();
    }

    TFormClients& form;
    TDataModule1& module;
    UserInterface& ui;
    ClientLocator locator;
};

} // namespace

void registerHouseholdScreens(MainWindow& window)
{
    TFormClients& form = window.presenter();
    MainWindow* w = &window;
    const auto screens = std::make_shared<HouseholdScreens>(form, window.ui());

    // Each screen may move the window to a member; the window then stays
    // there rather than going back to where the command began.
    form.setHandler(cmd::HouseholdMembers, [screens, w] {
        TableDataSet& clients = screens->module.clients();
        if (!PendingClientEdit::settleBeforeScreen(clients, screens->ui,
                                                   PendingClientEdit::beforeMembersQuestion()))
            return;
        const qint64 household = clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
        if (household <= 0) {
            screens->ui.information(HeadOfHousehold::notInHouseholdText());
            return;
        }
        screens->openMembers(household, screens->currentPerson(), w);
        screens->screenClosed();
    });
    form.setHandler(cmd::Households, [screens, w] {
        TDataModule1& module = screens->module;
        if (!PendingClientEdit::settleBeforeScreen(module.clients(), screens->ui,
                                                   PendingClientEdit::beforeHouseholdsQuestion()))
            return;
        TFormHouseholds presenter(module.services(), screens->ui, module.session(), module.clock(),
                                  module.clients());
        QWidget* parent = w;
        presenter.setMembersScreen([screens, &parent](qint64 household, qint64 person) {
            screens->openMembers(household, person, parent);
        });
        HouseholdsView view(presenter, module.services(), screens->ui, module.userSettings(), w);
        parent = &view;
        view.exec();
        screens->screenClosed();
    });
    form.setHandler(cmd::HouseholdWizard, [screens, w] {
        TDataModule1& module = screens->module;
        if (!PendingClientEdit::settleBeforeScreen(module.clients(), screens->ui,
                                                   PendingClientEdit::beforeWizardQuestion()))
            return;
        TFormHouseholdWizard presenter(module.services(), screens->ui, module.session(), module.clock(),
                                       module.clients());
        presenter.setSettings(&module.userSettings());
        HouseholdWizardView view(presenter, module.services(), screens->ui, module.userSettings(), w);
        view.exec();
        screens->screenClosed();
    });
    form.setHandler(JumpToHeadOfHousehold, [screens] {
        if (HeadOfHousehold::jump(screens->module.db(), screens->module.clients(), screens->ui,
                                  screens->locator))
            screens->form.BookmarkClients();
    });
}

} // namespace kb::ui
