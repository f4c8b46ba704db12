#include "clients/SuspensionScreens.h"

#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "clients/AddSuspensionView.h"
#include "clients/StoppedClientsUtilityView.h"
#include "clientwindow/MainWindow.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "printouts/StoppedClientsReport.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"
#include "suspensions/SuspensionEditor.h"
#include "suspensions/SuspensionRules.h"
#include "suspensions/TFormAddSuspension.h"
#include "suspensions/TFrmInactivateClients.h"
#include "suspensions/TFrmStopClients.h"
#include "window/ClientCommands.h"
#include "window/ClientPageData.h"
#include "window/TFormClients.h"

#include <memory>

namespace kb::ui {

namespace {

namespace cmd = client_command;

// The rules and the editor of the Suspensions page, for as long as the
// window has its handlers.
struct SuspensionPage
{
    SuspensionPage(TFormClients& form, UserInterface& ui, MainWindow* window)
        : suspends(form.pageData().query(QStringLiteral("QuerySuspends"))),
          rules(form.module().services(), form.module().session(), form.module().clock(), form.clients()),
          editor(form.module().services(), ui, form.module().session(), form.module().clock(), form.clients(),
                 suspends)
    {
        rules.attach(suspends);
        editor.setUserSettings(&form.module().userSettings());
        editor.setTransactionMark([&form](bool on) { form.ShowTransactionStatus(on); });
        editor.setShowForm([&form, window](TFormAddSuspension& presenter) {
            AddSuspensionView view(presenter, form.module().userSettings(), window);
            return view.exec() == QDialog::Accepted;
        });
    }

    QueryDataSet& suspends;
    SuspensionRules rules;
    SuspensionEditor editor;
};

template <typename Utility> void openUtility(TFormClients& form, UserInterface& ui, MainWindow* window)
{
    TDataModule1& module = form.module();
    Utility utility(module.services(), ui, module.clients(), module.clock());
    utility.setTransactionMark([&form](bool on) { form.ShowTransactionStatus(on); });
    QWidget* screen = window; // the utility's screen, once it stands
    utility.setReportPrinter(
        [&module, &ui, &screen](const ResultSet& rows, const QString& title, bool toPrinter) {
            const reports::DeliveryReportContext context = deliveryReportContext(module, ui);
            QtReportOutput output(screen, ui, module.userSettings().path());
            reports::ReportHolder holder(output, module.clock());
            holder.setDocumentName(title);
            reports::StoppedClientsReport(context).print(holder, rows, title,
                                                         toPrinter ? reports::ReportDestination::Printer
                                                                   : reports::ReportDestination::Screen);
        });
    StoppedClientsUtilityView view(utility, ui, module.userSettings(), window);
    screen = &view;
    view.exec();
    emit form.rowsChanged();
}

} // namespace

void registerSuspensionScreens(MainWindow& window)
{
    TFormClients& form = window.presenter();
    UserInterface& ui = window.ui();
    MainWindow* w = &window;
    const auto page = std::make_shared<SuspensionPage>(form, ui, w);
    form.setHandler(cmd::AddSuspension, [page] { page->editor.EditHolds(SuspensionEditor::Mode::Add); });
    form.setHandler(cmd::EditSuspension, [page] { page->editor.EditHolds(SuspensionEditor::Mode::Edit); });
    form.setHandler(cmd::DeleteSuspension, [page] { page->editor.DeleteSuspension1Click(); });
    form.setHandler(QStringLiteral("ActionUpdateStoppedStatus"),
                    [&form, &ui, w] { openUtility<TFrmStopClients>(form, ui, w); });
    form.setHandler(QStringLiteral("ActionInactivateStopped"),
                    [&form, &ui, w] { openUtility<TFrmInactivateClients>(form, ui, w); });
}

} // namespace kb::ui
