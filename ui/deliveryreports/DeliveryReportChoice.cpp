#include "deliveryreports/DeliveryReportChoice.h"

#include "QtReportOutput.h"
#include "RunPrepareView.h"
#include "TFormRunPrepare.h"
#include "delivery/HiddenRunPreparation.h"
#include "delivery/TFormDeliveryReportMessages.h"
#include "delivery/TFormRepChoice.h"
#include "deliveryreports/DeliveryReportMessagesView.h"
#include "deliveryreports/QtReportQuestions.h"
#include "deliveryreports/QuickListingPrint.h"
#include "deliveryreports/RepChoiceView.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"

namespace kb::ui {

reports::DeliveryReportContext deliveryReportContext(TDataModule1& data, UserInterface& ui)
{
    const DataLocation& location = data.location();
    return {data.db(),
            data.clock(),
            ui,
            data.session().cUserName,
            &data.userSettings(),
            location.clientServer ? QString() : location.directory};
}

void openDeliveryReportChoice(TDataModule1& data, UserInterface& ui, QWidget* parent, const QDate& runDate)
{
    const reports::DeliveryReportContext context = deliveryReportContext(data, ui);
    QtReportOutput output(parent, ui, data.userSettings().path());
    QtReportQuestions questions(parent);
    // A date's run prepared for a report is shown on the run screen when the
    // user's preferences ask for it.
    reports::HiddenRunPreparation preparation(data.db(), data.session(), ui, [&](TFormRunPrepare& form) {
        form.setQuickListingPrinter([&](ResultSet rows, const QString& heading) {
            printQuickListing(data, ui, parent, std::move(rows), heading);
        });
        RunPrepareView view(form, ui, parent);
        view.exec();
    });
    reports::TFormRepChoice presenter(context, output, questions, &preparation);
    presenter.FormShow();
    if (runDate.isValid()) presenter.setDates(runDate, runDate);
    RepChoiceView view(
        presenter, &data.userSettings(), [&] { openDeliveryReportMessages(data, ui, &view); }, parent);
    questions.setParent(&view);
    view.exec();
}

void openDeliveryReportMessages(TDataModule1& data, UserInterface& ui, QWidget* parent)
{
    reports::TFormDeliveryReportMessages presenter(data.db(), ui);
    DeliveryReportMessagesView view(presenter, parent);
    view.exec();
}

} // namespace kb::ui
