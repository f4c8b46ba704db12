#pragma once

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

// Opens "Delivery Report Messages" modally.
void openDeliveryReportMessages(TDataModule1& data, UserInterface& ui, QWidget* parent);

} // namespace kb::ui
