#include "deliveryreports/ReportDestinationGroup.h"

#include <QPrinterInfo>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

ReportDestinationGroup::ReportDestinationGroup(const QString& title, QWidget* parent)
    : QGroupBox(title, parent), m_screen(new QRadioButton(QStringLiteral("&Screen"))),
      m_printer(new QRadioButton(QStringLiteral("&Printer")))
{
    auto* choices = new QVBoxLayout(this);
    choices->addWidget(m_screen);
    choices->addWidget(m_printer);
    m_screen->setChecked(true);
}

reports::ReportDestination ReportDestinationGroup::destination() const
{
    if (!m_printer->isChecked() || QPrinterInfo::availablePrinterNames().isEmpty())
        return reports::ReportDestination::Screen;
    return reports::ReportDestination::Printer;
}

} // namespace kb::ui
