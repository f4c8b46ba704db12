#include "clientwindow/ScreenCommands.h"

#include "ConfigView.h"
#include "EditBaseView.h"
#include "FormPlacement.h"
#include "GeocodingView.h"
#include "OrderRoutesView.h"
#include "PrintPicture.h"
#include "ReferenceEditorsMenu.h"
#include "RunPrepareView.h"
#include "TFormGeocodeAddresses.h"
#include "TFormOrderRoutes.h"
#include "TFormRunPrepare.h"
#include "UserInterface.h"
#include "applications/ServiceApplications.h"
#include "applications/TFormAppComments.h"
#include "assign/TFormAltRoutes.h"
#include "assign/TFormEditRoutes.h"
#include "bills/TFormClientBills.h"
#include "clients/AppCommentsView.h"
#include "clients/FundingSourcesView.h"
#include "clients/HouseholdScreens.h"
#include "clients/SuspensionScreens.h"
#include "clients/RelationshipScreens.h"
#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/CustomFilterDialog.h"
#include "clientwindow/MainWindow.h"
#include "clientwindow/StatusFilterDialog.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "dated/DatedDeliveries.h"
#include "dated/TFormEditEpisodicDeliveries.h"
#include "defaults/ClientSchedule.h"
#include "defaults/TFormDeliveryConditionsVerification.h"
#include "defaults/TFormScheduleCalendar.h"
#include "deliveryreports/ClientIdCardPrint.h"
#include "deliveryreports/DeliveryDirectionsPrint.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "funding/FundingUses.h"
#include "funding/TFormEditFundingSources.h"
#include "funding/TFormReassignFunding.h"
#include "missed/TFormBatchAddMissedDeliveries.h"
#include "missed/TFormExcuseMissedMeals.h"
#include "missed/TFormMissedDel.h"
#include "missed/TFormSummarizeMissedDeliveries.h"
#include "outcomes/BatchMissedDeliveriesView.h"
#include "outcomes/BatchWalkInsView.h"
#include "outcomes/ClientBillsView.h"
#include "outcomes/DeleteDeliveryCreditsView.h"
#include "outcomes/MissedDeliveryViews.h"
#include "outcomes/CreditWalkInsView.h"
#include "deliveryreports/QuickListingPrint.h"
#include "outcomes/ReassignFundingView.h"
#include "outcomes/RecentDeliveriesView.h"
#include "overrides/TFormAddressOverride.h"
#include "records/RecordServices.h"
#include "records/TFormDelDeliv.h"
#include "records/TFormDeliveries.h"
#include "reference/EditorScreen.h"
#include "routes/AddressOverrideView.h"
#include "routes/AltRoutesView.h"
#include "routes/RouteListPrint.h"
#include "routes/MapWindow.h"
#include "map/ClientOnMap.h"
#include "map/MapServer.h"
#include "schedule/DeliveryConditionsView.h"
#include "schedule/ScheduleCalendarView.h"
#include "schedule/dated/DatedDeliveriesView.h"
#include "schedule/dated/AssignDeliveriesToNewDateView.h"
#include "dated/TFormAssignDeliveriesToNewDate.h"
#include "session/TDataModule1.h"
#include "settings/TFormEditConfig.h"
#include "specialmeals/BrowseSpecialMealDatesView.h"
#include "specialmeals/QtRunDialogs.h"
#include "specialmeals/TFormBrowseSpecialMealDates.h"
#include "walkins/TFormBatchAddWalkIns.h"
#include "walkins/TFormCreditWalkIns.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/PageGridEditing.h"
#include "window/TFormClients.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QTabWidget>
#include <QTimer>

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

// The episodic or scheduled deliveries of the current client; the client
// window's page and buttons then show what changed.
void openDatedDeliveries(MainWindow* w, TFormClients& form, TDataModule1& module, UserInterface& ui,
                         DatedKind kind, qint64 recordId = 0)
{
    TableDataSet& clients = module.clients();
    if (!clients.isActive() || clients.isEmpty()) return;
    const qint64 personId = clients.fieldValue(u"Person_ID").toLongLong();
    std::unique_ptr<TFormEditEpisodicDeliveries> presenter =
        kind == DatedKind::Episodic
            ? std::make_unique<TFormEditEpisodicDeliveries>(module.db(), ui, module.session().userFullName,
                                                            personId)
            : std::make_unique<TFormEditScheduledDeliveries>(module.db(), ui, module.session().userFullName,
                                                             personId);
    if (recordId > 0) presenter->dataSet().locate(QStringLiteral("RecordID"), recordId);
    DatedDeliveriesView view(*presenter, module.db(), ui, module.userSettings(),
                             module.session().userFullName, w);
    view.setAddressOverrides([w, &module, &clients] {
        TFormAddressOverride overrides(module.services(), module.session(),
                                       {clients.fieldValue(u"PERSON_ID").toLongLong(),
                                        clients.fieldValue(u"CLIENT_ID").toString(),
                                        clients.fieldValue(u"HOUSEHOLD_ID").toLongLong()});
        AddressOverrideView overridesView(overrides, module.services(), module.userSettings(), w);
        overridesView.exec();
    });
    view.exec();
    if (form.pageData().isOpen(QStringLiteral("QueryEpisodicDeliveries")))
        form.pageData().query(QStringLiteral("QueryEpisodicDeliveries")).refresh();
    form.SetControlsState(true);
}

// The standing schedule's screens, the application and funding forms of
// the client pages, and the funding sources' maintenance.
void registerScheduleAndFundingScreens(MainWindow& window)
{
    TFormClients& form = window.presenter();
    TDataModule1& module = form.module();
    UserInterface& ui = window.ui();
    MainWindow* w = &window;
    const auto on = [&form](const QString& id, std::function<void()> handler) {
        form.setHandler(id, handler);
    };
    on(cmd::ScheduleCalendar, [w, &module, &ui] {
        TFormScheduleCalendar presenter(ClientSchedule::fromRow(module.clients()), module.clock().today(),
                                        ui);
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
        TFormAppComments presenter(form.pageData().query(QStringLiteral("QueryServiceApps")),
                                   module.services());
        if (!presenter.hasApplication()) return;
        AppCommentsView view(presenter, module.userSettings(), w);
        view.exec();
    });

    // A new row of a page grid opens its first cell, once the window has
    // drawn what the command changed.
    const auto openNewRow = [w, &form](const QString& grid) {
        if (form.pageGrids().rowCount(grid) == 0) return;
        QTimer::singleShot(0, w, [w, grid] { w->fields()->editCurrentRow(grid); });
    };
    on(cmd::AddFunding, [&form, openNewRow] {
        form.funding().ActionAddFunding();
        openNewRow(QStringLiteral("QueryFundUses"));
    });
    on(cmd::AddItemRate, [&form, openNewRow] {
        QueryDataSet& rates = form.pageData().query(QStringLiteral("QueryClientSpecificFundingRates"));
        form.funding().ActionAddItemRate();
        if (rates.state() == DataSet::State::Insert)
            openNewRow(QStringLiteral("QueryClientSpecificFundingRates"));
    });
    on(cmd::AddPledgeItem, [&form, openNewRow] {
        form.funding().ActionAddPledgeItem();
        openNewRow(QStringLiteral("QueryItemPledgeRates"));
    });
    on(cmd::AddApplication, [&form, openNewRow] {
        form.applications().ActionAddApplication();
        openNewRow(QStringLiteral("QueryServiceApps"));
    });
    // The agency chooses which funding sheets show, and which first.
    if (auto* sheets = window.findChild<QTabWidget*>(QStringLiteral("Funding/Billing Sheets"));
        sheets && sheets->count() == 2) {
        const FundingSheets shown = form.funding().sheets();
        sheets->setTabVisible(0, shown.funding);
        sheets->setTabVisible(1, shown.pledges);
        sheets->setCurrentIndex(shown.pledgesFirst ? 1 : 0);
    }
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
    on(cmd::AlternateAddresses, [w, &module, &ui] {
        TableDataSet& clients = module.clients();
        TFormAddressOverride presenter(module.services(), module.session(),
                                       {clients.fieldValue(u"PERSON_ID").toLongLong(),
                                        clients.fieldValue(u"CLIENT_ID").toString(),
                                        clients.fieldValue(u"HOUSEHOLD_ID").toLongLong()});
        QWidget* screen = w; // the screen itself once it stands
        presenter.setDirectionsPrinter([&module, &ui, &screen](qint64 personId, qint64 recordId) {
            printDeliveryDirections(module, ui, screen, personId, recordId);
        });
        AddressOverrideView view(presenter, module.services(), module.userSettings(), w);
        screen = &view;
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

    // The routes' screen carries the route rules on top of the generic editor's.
    on(TFormEditRoutes::formName(), [w, &module] {
        TFormEditRoutes presenter(module.services());
        if (!presenter.open()) return;
        EditBaseView view(presenter, w, &module.userSettings());
        view.exec();
    });

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

    on(cmd::PrintDeliveryDirections, [w, &module, &ui] {
        TableDataSet& clients = module.clients();
        if (clients.isActive() && !clients.isEmpty())
            printDeliveryDirections(module, ui, w, clients.fieldValue(u"Person_ID").toLongLong());
    });
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
        presenter.setQuickListingPrinter([w, &module, &ui](ResultSet rows, const QString& heading) {
            printQuickListing(module, ui, w, std::move(rows), heading);
        });
        RunPrepareView view(presenter, ui, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormRunPrepare"), QSize(1000, 600));
        view.exec();
    });

    // Utilities
    on(cmd::OrderStopsByRoute, [w, &module, &ui] {
        TFormOrderRoutes presenter(module.db(), module.session(), ui);
        OrderRoutesView view(presenter, module.db(), module.session(), ui, w);
        connectRouteListPrinter(presenter, module, ui, &view);
        presenter.setMapServerFactory(
            [&module, &view] { return MapWindow::desktopServer(module.db(), module.userSettings(), &view); });
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
    on(cmd::MapPointMap, [w, &form, &module, &ui] {
        TableDataSet& clients = module.clients();
        if (!clients.isActive() || clients.isEmpty()) return;
        const auto text = [&](const char16_t* field) { return clients.fieldValue(field).toString(); };
        const map::ClientOnMap::Client client{text(u"FIRST_NAME"),
                                              text(u"LAST_NAME"),
                                              text(u"ADDRESS1"),
                                              text(u"CITY"),
                                              text(u"STATE"),
                                              text(u"ZIP"),
                                              clients.fieldValue(u"LATITUDE"),
                                              clients.fieldValue(u"LONGITUDE")};
        try {
            const std::shared_ptr<map::MapServer> server =
                MapWindow::desktopServer(module.db(), module.userSettings(), w);
            map::ClientOnMap::show(*server, ui, client, form.lists().postalFormat);
        } catch (const std::exception& e) {
            ui.error(QString::fromUtf8(e.what()));
        }
    });
    // Dated deliveries
    on(cmd::AddEditDeliveries,
       [w, &form, &module, &ui] { openDatedDeliveries(w, form, module, ui, DatedKind::Episodic); });
    on(cmd::ScheduledDeliveries,
       [w, &form, &module, &ui] { openDatedDeliveries(w, form, module, ui, DatedKind::Scheduled); });
    on(cmd::DeleteSelectedDelivery, [&form, &module, &ui] {
        if (!form.pageData().isOpen(QStringLiteral("QueryEpisodicDeliveries"))) return;
        QueryDataSet& episodic = form.pageData().query(QStringLiteral("QueryEpisodicDeliveries"));
        if (episodic.isEmpty()) return;
        DatedDeliveries rules(module.db(), ui, module.session().userFullName);
        if (rules.removeAsked(DatedRow::fromDataSet(episodic))) episodic.refresh();
    });
    // A double click on the episodic grid opens the screen on that row.
    QObject::connect(window.fields(), &ClientFieldsView::gridRowActivated, w,
                     [w, &form, &module, &ui](const QString& grid, int row) {
                         const QString episodic = QStringLiteral("QueryEpisodicDeliveries");
                         if (grid != episodic || !form.pageData().isOpen(episodic)) return;
                         QueryDataSet& set = form.pageData().query(episodic);
                         if (!module.services().guarded([&] { set.setRecNo(row + 1); })) return;
                         openDatedDeliveries(w, form, module, ui, DatedKind::Episodic,
                                             set.fieldValue(u"RecordID").toLongLong());
                     });
    on(cmd::ShiftDeliveries, [w, &module, &ui] {
        TFormAssignDeliveriesToNewDate presenter(module.db(), ui, module.session().userFullName,
                                                 module.clock().today());
        AssignDeliveriesToNewDateView view(presenter, module.userSettings(), w);
        view.exec();
    });
    on(cmd::SendMail,
       [&form, &ui] { openUrl(form.mailUrl(), ui, QStringLiteral("This client has no e-mail address.")); });

    // Suspensions, and the stop and inactivation utilities
    registerSuspensionScreens(window);
    // Households: the wizard, the members, the households list, the head's jump
    registerHouseholdScreens(window);

    // Missed deliveries of the current client, and what happened after a run
    const auto currentMissedClient = [&module]() -> std::optional<MissedClient> {
        TableDataSet& clients = module.clients();
        if (!clients.isActive() || clients.isEmpty()) return std::nullopt;
        return MissedClient::read(module.db(), clients.fieldValue(u"PERSON_ID").toLongLong());
    };
    on(cmd::RecordMissed, [w, &module, &ui, currentMissedClient] {
        const std::optional<MissedClient> client = currentMissedClient();
        if (!client) return;
        TFormMissedDel presenter(module.db(), module.session(), ui, *client);
        MissedDeliveryView view(presenter, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormMissedDel"), QSize());
        if (view.exec() == QDialog::Accepted) module.clients().refreshRecord();
    });
    const auto missedList = [w, &module, &ui, currentMissedClient](bool clear) {
        const std::optional<MissedClient> client = currentMissedClient();
        if (!client) return;
        std::unique_ptr<TFormExcuseMissedMeals> presenter =
            clear ? std::make_unique<TFormDeleteMissedMeals>(module.db(), module.session(), ui, *client)
                  : std::make_unique<TFormExcuseMissedMeals>(module.db(), module.session(), ui, *client);
        MissedMealsView view(*presenter, w);
        keepPlacement(view, module.userSettings(),
                      clear ? QStringLiteral("TFormDeleteMissedMeals")
                            : QStringLiteral("TFormExcuseMissedMeals"),
                      QSize(360, 300));
        if (view.exec() == QDialog::Accepted) module.clients().refreshRecord();
    };
    on(cmd::ExcuseMissed, [missedList] { missedList(false); });
    on(cmd::DeleteMissed, [missedList] { missedList(true); });
    on(cmd::SummarizeMissed, [w, &module, &ui, &form] {
        TFormSummarizeMissedDeliveries presenter(module.db(), module.session(), ui);
        presenter.setRefresh([&form] {
            form.BookmarkClients();
            form.clients().refresh();
            form.returnToBookmark();
        });
        SummarizeMissedView view(presenter, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormSummarizeMissedDeliveries"), QSize());
        view.exec();
    });
    on(cmd::CreditWalkIns, [w, &module, &ui] {
        TFormCreditWalkIns presenter(module.db(), module.session(), ui);
        presenter.setQuickListingPrinter([w, &module, &ui](ResultSet rows, const QString& heading) {
            printQuickListing(module, ui, w, std::move(rows), heading);
        });
        CreditWalkInsView view(presenter, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormCreditWalkIns"), QSize(1000, 600));
        view.exec();
    });
    on(cmd::BatchMissed, [w, &module, &ui] {
        TFormBatchAddMissedDeliveries presenter(module.db(), module.session(), ui);
        BatchMissedDeliveriesView view(presenter, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormBatchAddMissedDeliveries"),
                      QSize(900, 500));
        view.exec();
    });
    on(cmd::BatchWalkIns, [w, &module, &ui] {
        TFormBatchAddWalkIns presenter(module.db(), module.session(), ui);
        BatchWalkInsView view(presenter, w);
        keepPlacement(view, module.userSettings(), QStringLiteral("TFormBatchAddWalkIns"), QSize(1000, 550));
        view.exec();
    });
    // Delivery outcomes and bills
    on(cmd::RecentDeliveries, [w, &module, &ui] {
        TableDataSet& clients = module.clients();
        if (!clients.isActive() || clients.isEmpty()) return;
        TFormDeliveries presenter(module.db(), module.session(), ui);
        presenter.FormShow(clients.fieldValue(u"Person_ID").toLongLong());
        RecentDeliveriesView view(presenter, module.userSettings(), w);
        view.exec();
    });
    on(cmd::DeleteDeliveryCredits, [w, &module, &ui] {
        TFormDelDeliv presenter(module.db(), module.session(), ui);
        DeleteDeliveryCreditsView view(presenter, module.userSettings(), w);
        view.exec();
    });
    on(cmd::ReassignFunding, [w, &module, &ui] {
        TFormReassignFunding presenter(module.db(), module.session(), ui);
        ReassignFundingView view(presenter, module.userSettings(), w);
        view.exec();
    });
    on(cmd::ClientInvoices, [w, &module, &ui] {
        TFormClientBills presenter(module.db(), module.session(), ui, module.userSettings());
        // The merge document opens in whatever the desktop opens it with.
        presenter.setDocumentOpener(
            [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); });
        presenter.FormShow();
        ClientBillsView view(presenter, module.userSettings(), w);
        view.exec();
    });
    registerScheduleAndFundingScreens(window);
    // Individuals, relationships, list memberships, and the recent stops report
    registerRelationshipScreens(window);
}

} // namespace kb::ui
