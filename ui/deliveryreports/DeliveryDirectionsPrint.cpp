#include "deliveryreports/DeliveryDirectionsPrint.h"

#include "Clock.h"
#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "delivery/FailureText.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "deliveryreports/ReportDestinationGroup.h"
#include "printouts/DeliveryDirections.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"

#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QVBoxLayout>

namespace kb::ui {

DeliveryDirectionsDialog::DeliveryDirectionsDialog(const QDate& start, QWidget* parent)
    : QDialog(parent), m_calendar(new QCalendarWidget(this)),
      m_destination(new ReportDestinationGroup(QStringLiteral("Select a Destination for the Report:"), this))
{
    setWindowTitle(reports::DeliveryDirections::caption());
    m_calendar->setSelectedDate(start);
    m_calendar->setGridVisible(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_calendar);
    layout->addWidget(m_destination);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_calendar, &QCalendarWidget::activated, this, &QDialog::accept);
}

QDate DeliveryDirectionsDialog::date() const
{
    return m_calendar->selectedDate();
}

reports::ReportDestination DeliveryDirectionsDialog::destination() const
{
    return m_destination->destination();
}

void printDeliveryDirections(TDataModule1& data, UserInterface& ui, QWidget* parent, qint64 personId,
                             std::optional<qint64> overrideId)
{
    DeliveryDirectionsDialog options(data.clock().today().addDays(1), parent);
    if (options.exec() != QDialog::Accepted) return;
    const reports::ReportDestination destination = options.destination();
    const reports::DeliveryReportContext context = deliveryReportContext(data, ui);
    QtReportOutput output(parent, ui, data.userSettings().path());
    reports::ReportHolder holder(output, data.clock());
    holder.setDocumentName(reports::DeliveryDirections::caption());
    using Kind = reports::DeliveryDirections::Kind;
    try {
        reports::DeliveryDirections(context).print(holder, overrideId ? Kind::AddressOverride : Kind::Client,
                                                   personId, options.date(), destination, overrideId);
    } catch (const std::exception& failure) {
        holder.clearPipes();
        ui.error(reports::failureText(failure));
    }
}

} // namespace kb::ui
