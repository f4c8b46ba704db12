#include "deliveryreports/QuickListingPrint.h"

#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "delivery/FailureText.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "printouts/QuickListingReport.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"
#include "store/ResultSet.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPrinterInfo>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

ReportDestinationDialog::ReportDestinationDialog(QWidget* parent)
    : QDialog(parent), m_screen(new QRadioButton(QStringLiteral("&Screen"))),
      m_printer(new QRadioButton(QStringLiteral("&Printer")))
{
    setWindowTitle(QStringLiteral("Report Option"));
    setObjectName(QStringLiteral("TFormReportDestination"));
    auto* group = new QGroupBox(QStringLiteral("Select a Report Destination"), this);
    auto* choices = new QVBoxLayout(group);
    choices->addWidget(m_screen);
    choices->addWidget(m_printer);
    m_screen->setChecked(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

reports::ReportDestination ReportDestinationDialog::destination() const
{
    return m_printer->isChecked() ? reports::ReportDestination::Printer : reports::ReportDestination::Screen;
}

void printQuickListing(TDataModule1& data, UserInterface& ui, QWidget* parent, ResultSet rows,
                       const QString& heading)
{
    ReportDestinationDialog options(parent);
    if (options.exec() != QDialog::Accepted) return;
    const reports::ReportDestination destination = QPrinterInfo::availablePrinterNames().isEmpty()
                                                       ? reports::ReportDestination::Screen
                                                       : options.destination();
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
