#include "clientwindow/ScreenCommands.h"

#include "ConfigView.h"
#include "PrintPicture.h"
#include "FormPlacement.h"
#include "GeocodingView.h"
#include "OrderRoutesView.h"
#include "ReferenceEditorsMenu.h"
#include "RunPrepareView.h"
#include "TFormGeocodeAddresses.h"
#include "TFormOrderRoutes.h"
#include "TFormRunPrepare.h"
#include "UserInterface.h"
#include "assign/TFormAltRoutes.h"
#include "applications/ServiceApplications.h"
#include "applications/TFormAppComments.h"
#include "clients/AppCommentsView.h"
#include "clients/FundingSourcesView.h"
#include "clients/PageRowDialog.h"
#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/CustomFilterDialog.h"
#include "dataset/QueryDataSet.h"
#include "defaults/ClientSchedule.h"
#include "defaults/TFormDeliveryConditionsVerification.h"
#include "defaults/TFormScheduleCalendar.h"
#include "funding/FundingUses.h"
#include "funding/TFormEditFundingSources.h"
#include "records/RecordServices.h"
#include "schedule/DeliveryConditionsView.h"
#include "schedule/ScheduleCalendarView.h"
#include "window/ClientPageData.h"
#include "clientwindow/MainWindow.h"
#include "clientwindow/StatusFilterDialog.h"
#include "dataset/TableDataSet.h"
#include "deliveryreports/ClientIdCardPrint.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "overrides/TFormAddressOverride.h"
#include "reference/EditorScreen.h"
#include "routes/AddressOverrideView.h"
#include "routes/AltRoutesView.h"
#include "session/TDataModule1.h"
#include "settings/TFormEditConfig.h"
#include "specialmeals/BrowseSpecialMealDatesView.h"
#include "specialmeals/QtRunDialogs.h"
#include "specialmeals/TFormBrowseSpecialMealDates.h"
#include "window/ClientCommands.h"
#include "window/TFormClients.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QTabWidget>

namespace kb::ui {

namespace {

namespace cmd = client_command;

const QUrl ProductPage(QStringLiteral("https://kettlebrook.org/"));

// File > Print > Screen: the window as it stands, fitted to the page.
void printWindow(MainWindow& window, UserInterface& ui)
{
    static bool printing = false;
    if (printing) {
        ui.information(TFormClients::printBusyText());
        return;
    }
    printing = true;
    const bool printed = printPicture(window);
    printing = false;
    if (!printed) ui.warning(TFormClients::printFailedText());
}

void openUrl(const QUrl& url, UserInterface& ui, const QString& none)
{
    if (url.isEmpty()) {
        ui.information(none);
        return;
    }
    if (!QDesktopServices::openUrl(url))
        ui.warning(QStringLiteral("The address could not be opened:\n") + url.toString());
}

// The standing schedule's screens, the application and funding forms of
// the client pages, and the funding sources' maintenance.
void registerScheduleAndFundingScreens(MainWindow& window)
{
    TFormClients& form = window.presenter();
    TDataModule1& module = form.module();
    UserInterface& ui = window.ui();
    MainWindow* w = &window;
    const auto on = [&form](const QString& id, std::function<void()> handler) { form.setHandler(id, handler); };
    on(cmd::ScheduleCalendar, [w, &module, &ui] {
        TFormScheduleCalendar presenter(ClientSchedule::fromRow(module.clients()), module.clock().today(), ui);
        ScheduleCalendarView view(presenter, module.userSettings(), w);
        view.exec();
    });
    on(cmd::VerifyConditions, [w, &module] {
        TFormDeliveryConditionsVerification presenter(module.db(), ClientSchedule::fromRow(module.clients()),
                                                      module.clock().today());
        DeliveryConditionsView view(presenter, module.userSettings(), w);
        view.exec();
    });
    on(cmd::FundingSources, [w, &module, &form] {
        TFormEditFundingSources presenter(module.services(), module.session().cUserName);
        if (!presenter.open()) return;
        FundingSourcesView view(presenter, module.userSettings(), w);
        view.exec();
        form.PopulateCombos(); // the funding list follows the sources
    });
    on(cmd::EditApplicationComment, [w, &module, &form] {
        TFormAppComments presenter(form.pageData().query(QStringLiteral("QueryServiceApps")), module.services());
        if (!presenter.hasApplication()) return;
        AppCommentsView view(presenter, module.userSettings(), w);
        view.exec();
    });

    // A new row of a page grid opens in its form at once.
    const auto rowForm = [w, &form](const QString& grid) {
        if (!form.pageData().isOpen(grid) || form.pageData().query(grid).isEmpty()) return;
        PageRowDialog dialog(form, grid, w);
        dialog.exec();
    };
    on(cmd::AddFunding, [&form, rowForm] {
        form.funding().ActionAddFunding();
        rowForm(QStringLiteral("QueryFundUses"));
    });
    on(cmd::AddItemRate, [&form, rowForm] {
        QueryDataSet& rates = form.pageData().query(QStringLiteral("QueryClientSpecificFundingRates"));
        form.funding().ActionAddItemRate();
        if (rates.state() == DataSet::State::Insert) rowForm(QStringLiteral("QueryClientSpecificFundingRates"));
    });
    on(cmd::AddPledgeItem, [&form, rowForm] {
        form.funding().ActionAddPledgeItem();
        rowForm(QStringLiteral("QueryItemPledgeRates"));
    });
    on(cmd::AddApplication, [&form, rowForm] {
        form.applications().ActionAddApplication();
        rowForm(QStringLiteral("QueryServiceApps"));
    });
    // The agency chooses which funding sheets show, and which first.
    if (auto* sheets = window.findChild<QTabWidget*>(QStringLiteral("Funding/Billing Sheets"));
        sheets && sheets->count() == 2) {
        const FundingSheets shown = form.funding().sheets();
        sheets->setTabVisible(0, shown.funding);
        sheets->setTabVisible(1, shown.pledges);
        sheets->setCurrentIndex(shown.pledgesFirst ? 1 : 0);
    }
    QObject::connect(window.fields(), &ClientFieldsView::gridRowActivated, w, [w, &form](const QString& grid, int row) {
        if (!PageRowDialog::hasForm(grid) || !form.pageData().isOpen(grid)) return;
        QueryDataSet& set = form.pageData().query(grid);
        if (!form.module().services().guarded([&] { set.setRecNo(row + 1); })) return;
        {
            PageRowDialog dialog(form, grid, w);
            dialog.exec();
        }
        form.SetControlsState(true);
        emit form.rowChanged();
    });
}

} // namespace

void registerScreenCommands(MainWindow& window)
{
    TFormClients& form = window.presenter();
    TDataModule1& module = form.module();
    UserInterface& ui = window.ui();
    MainWindow* w = &window;
    const auto on = [&form](const QString& id, std::function<void()> handler) {
        form.setHandler(id, std::move(handler));
    };

    // File
    on(cmd::PrintScreen, [w, &ui] { printWindow(*w, ui); });

    // Edit
    on(cmd::EditRoutesStops, [w, &module, &form] {
        // The screen edits the client's row; what it began, it ends: OK
        // saves through the client rules, Cancel leaves the row as it was.
        const bool wasEditing = form.isEditing();
        TFormAltRoutes presenter(module.clients());
        AltRoutesView view(presenter, module.userSettings(), w);
        const bool ok = view.exec() == QDialog::Accepted;
        if (wasEditing) return;
        if (ok)
            form.post();
        else
            form.cancel();
    });
    on(cmd::AlternateAddresses, [w, &module] {
        TableDataSet& clients = module.clients();
        TFormAddressOverride presenter(module.services(), module.session(),
                                       {clients.fieldValue(u"PERSON_ID").toLongLong(),
                                        clients.fieldValue(u"CLIENT_ID").toString(),
                                        clients.fieldValue(u"HOUSEHOLD_ID").toLongLong()});
        AddressOverrideView view(presenter, module.services(), module.userSettings(), w);
        view.exec();
    });
    on(cmd::ClearRoutes, [&module] { clearWeekdayRoutes(module.clients()); });
    on(cmd::ClearStops, [&module] { clearWeekdayStops(module.clients()); });
    on(cmd::Configuration, [w, &module, &form] {
        TFormEditConfig presenter(module);
        if (!presenter.open()) return;
        ConfigView view(presenter, w);
        view.exec();
        form.PopulateCombos(); // the lists follow the new settings
    });
    for (const EditorScreen& screen : referenceEditorScreens())
        if (!screen.menuText.isEmpty() && findClientCommand(screen.formName)) {
            const QString formName = screen.formName;
            on(formName, [w, &module, formName] {
                showReferenceEditor(formName, module.services(), w, &module.userSettings());
            });
        }

    // View
    on(cmd::StatusFilter, [w, &form] {
        StatusFilterDialog dialog(form.filterForm(), w);
        keepPlacement(dialog, form.module().userSettings(), QStringLiteral("TFilterForm"), QSize());
        form.statusFilterClosed(dialog.exec() == QDialog::Accepted);
    });
    on(cmd::CustomFilter, [w, &form] {
        CustomFilterDialog dialog(form.customFilter(), form.clients(), w);
        keepPlacement(dialog, form.module().userSettings(), QStringLiteral("TFormCustomFilter"),
                      QSize(620, 320));
        if (dialog.exec() == QDialog::Accepted) form.customFilterClosed();
    });

    on(cmd::SpecialMeals, [w, &module, &ui] {
        QtRunDialogs dialogs(w);
        TFormBrowseSpecialMealDates presenter(module.db(), ui, dialogs);
        BrowseSpecialMealDatesView view(presenter, &module.userSettings(), w);
        view.exec();
    });
    on(cmd::DeliveryReportMessages, [w, &module, &ui] { openDeliveryReportMessages(module, ui, w); });

    on(cmd::PrintClientIdCard, [w, &module, &ui] {
        TableDataSet& clients = module.clients();
        if (clients.isActive() && !clients.isEmpty())
            printClientIdCard(module, ui, w, clients.fieldValue(u"Person_ID").toInt());
    });

    // Reports
    on(cmd::DeliveryReports, [w, &module, &ui] { openDeliveryReportChoice(module, ui, w); });
    on(cmd::LabelStock, [w, &module] { openLabelStockSettings(module, w); });
    on(cmd::PrepareDeliveries, [w, &module, &ui] {
        TFormRunPrepare presenter(module.db(), module.session(), ui);
        // "Print Report" opens the report choice on the run's date.
        presenter.setReportScreen([w, &module, &ui](const QDate& from, const QDate&) {
            openDeliveryReportChoice(module, ui, w, from);
        });
        RunPrepareView view(presenter, ui, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormRunPrepare"), QSize(1000, 600));
        view.exec();
    });

    // Utilities
    on(cmd::OrderStopsByRoute, [w, &module, &ui] {
        TFormOrderRoutes presenter(module.db(), module.session(), ui);
        OrderRoutesView view(presenter, module.db(), module.session(), ui, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormOrderRoutes"), QSize(1280, 700));
        view.exec();
    });
    on(cmd::FindCoordinates, [w, &module, &ui] {
        TFormGeocodeAddresses presenter(module.db(), module.session(), ui);
        GeocodingView view(presenter, module.session(), ui, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormGeocodeAddresses"), QSize(1200, 600));
        view.exec();
    });

    // Help
    on(cmd::OnTheWeb, [&ui] { openUrl(ProductPage, ui, {}); });
    on(cmd::About, [w] {
        QMessageBox::about(
            w, QStringLiteral("About Kettlebrook"),
            QStringLiteral("<h3>Kettlebrook</h3><p>Version %1</p><p>Client records, meal schedules "
                           "and daily deliveries for agencies that bring meals to people at home.</p>")
                .arg(QApplication::applicationVersion()));
    });

    // On the pages and the header
    on(cmd::GetMap, [&form, &ui] {
        openUrl(form.mapUrl(), ui,
                QStringLiteral("No web mapping address is set up. Enter one in System Configuration, page "
                               "\"Application Defaults\"."));
    });
    on(cmd::SendMail,
       [&form, &ui] { openUrl(form.mailUrl(), ui, QStringLiteral("This client has no e-mail address.")); });

    registerScheduleAndFundingScreens(window);
}

} // namespace kb::ui
