#pragma once

#include "ReportOutput.h"

#include <QDate>
#include <QDialog>

#include <optional>

class QCalendarWidget;

namespace kb {
class TDataModule1;
class UserInterface;
} // namespace kb

namespace kb::ui {

class ReportDestinationGroup;

// TFormDeliveryDirectionsOptions, "Delivery Directions": the date of the
// delivery on a month calendar (a double click on a day counts as OK) and
// "Select a Destination for the Report:", the screen or the printer.
class DeliveryDirectionsDialog : public QDialog
{
    Q_OBJECT

public:
    DeliveryDirectionsDialog(const QDate& start, QWidget* parent = nullptr);

    QDate date() const;
    reports::ReportDestination destination() const;
    QCalendarWidget* calendar() const { return m_calendar; }

private:
    QCalendarWidget* m_calendar;
    ReportDestinationGroup* m_destination;
};

// "Delivery Directions" of a client: asks for the date (tomorrow first) and
// the destination, then prints through the report engine. With overrideId
// the directions go to that alternate address (the address override
// screen's command). Without a printer on the machine the report goes to
// the screen. What goes wrong is shown; nothing is thrown.
void printDeliveryDirections(TDataModule1& data, UserInterface& ui, QWidget* parent, qint64 personId,
                             std::optional<qint64> overrideId = {});

} // namespace kb::ui
