#include "deliveryreports/QuickListingPrint.h"

#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "delivery/FailureText.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "deliveryreports/ReportDestinationGroup.h"
#include "printouts/QuickListingReport.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"
#include "store/ResultSet.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace kb::ui {

ReportDestinationDialog::ReportDestinationDialog(QWidget* parent)
    : QDialog(parent),
      m_destination(new ReportDestinationGroup(QStringLiteral("Select a Report Destination"), this))
{
    setWindowTitle(QStringLiteral("Report Option"));
    setObjectName(QStringLiteral("TFormReportDestination"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_destination);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

reports::ReportDestination ReportDestinationDialog::destination() const
{
    return m_destination->destination();
}

void printQuickListing(TDataModule1& data, UserInterface& ui, QWidget* parent, ResultSet rows,
                       const QString& heading)
{
    ReportDestinationDialog options(parent);
    if (options.exec() != QDialog::Accepted) return;
    const reports::ReportDestination destination = options.destination();
    const reports::DeliveryReportContext context = deliveryReportContext(data, ui);
    QtReportOutput output(parent, ui, data.userSettings().path());
    reports::ReportHolder holder(output, data.clock());
    holder.setDocumentName(QStringLiteral("Quick Clients Listing"));
    try {
        reports::QuickListingReport(context).print(holder, std::move(rows), heading, destination);
    } catch (const std::exception& failure) {
        holder.clearPipes();
        ui.error(reports::failureText(failure));
    }
}

} // namespace kb::ui
