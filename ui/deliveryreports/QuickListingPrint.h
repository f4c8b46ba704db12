#pragma once

#include "ReportOutput.h"

#include <QDialog>


namespace kb {
class ResultSet;
class TDataModule1;
class UserInterface;
} // namespace kb

namespace kb::ui {

class ReportDestinationGroup;

// TFormReportDestination, "Report Option": "Select a Report Destination",
// the screen or the printer.
class ReportDestinationDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ReportDestinationDialog(QWidget* parent = nullptr);
    reports::ReportDestination destination() const;

private:
    ReportDestinationGroup* m_destination;
};

// "Quick Clients Listing" of a delivery grid: asks for the destination,
// then prints the rows through the report engine. Without a printer on the
// machine the listing goes to the screen. What goes wrong is shown; nothing
// is thrown.
void printQuickListing(TDataModule1& data, UserInterface& ui, QWidget* parent, ResultSet rows,
                       const QString& heading);

} // namespace kb::ui
