#pragma once

#include "delivery/DeliveryReportContext.h"

#include <QDate>

class QWidget;

namespace kb {
class TDataModule1;
class UserInterface;
} // namespace kb

namespace kb::ui {

// Opens "Select the Delivery Report to Run" modally: from the main menu
// with tomorrow's date, or from the run screen's "Print Report" with both
// dates on the run's date. Returns when the user closes it.
void openDeliveryReportChoice(TDataModule1& data, UserInterface& ui, QWidget* parent,
                              const QDate& runDate = {});

// The context of the report screens of the signed-in session: its data,
// clock, user and settings, and the data directory's templates (none on a
// server).
reports::DeliveryReportContext deliveryReportContext(TDataModule1& data, UserInterface& ui);

// Opens "Delivery Report Messages" modally.
void openDeliveryReportMessages(TDataModule1& data, UserInterface& ui, QWidget* parent);

} // namespace kb::ui
