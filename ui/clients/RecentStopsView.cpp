#include "clients/RecentStopsView.h"

#include "FormPlacement.h"
#include "suspensions/TFormRecentStops.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

QDateEdit* dateEdit(const QDate& date, QWidget* parent)
{
    auto* edit = new QDateEdit(date, parent);
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    return edit;
}

} // namespace

RecentStopsView::RecentStopsView(TFormRecentStops& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_stopDate(dateEdit(presenter.stopDate(), this)),
      m_recencyDate(dateEdit(presenter.recencyDate(), this)),
      m_screen(new QRadioButton(TFormRecentStops::screenText(), this)),
      m_printer(new QRadioButton(TFormRecentStops::printerText(), this))
{
    setWindowTitle(TFormRecentStops::caption());
    connect(m_stopDate, &QDateEdit::dateChanged, this,
            [this](const QDate& d) { m_presenter.setStopDate(d); });
    connect(m_recencyDate, &QDateEdit::dateChanged, this,
            [this](const QDate& d) { m_presenter.setRecencyDate(d); });
    (presenter.destination() == TFormRecentStops::Destination::Printer ? m_printer : m_screen)
        ->setChecked(true);
    connect(m_printer, &QRadioButton::toggled, this, [this](bool on) {
        m_presenter.setDestination(on ? TFormRecentStops::Destination::Printer
                                      : TFormRecentStops::Destination::ScreenAndFile);
    });

    auto* explanation =
        new QLabel(QStringLiteral("Lists the clients on the deliveries of a date who were stopped "
                                  "or suspended by changes entered since the day chosen below."),
                   this);
    explanation->setWordWrap(true);
    auto* dates = new QFormLayout;
    dates->addRow(TFormRecentStops::stopDateLabel(), m_stopDate);
    dates->addRow(TFormRecentStops::recencyDateLabel(), m_recencyDate);
    auto* destination = new QGroupBox(TFormRecentStops::destinationLabel(), this);
    auto* destinationLayout = new QVBoxLayout(destination);
    destinationLayout->addWidget(m_screen);
    destinationLayout->addWidget(m_printer);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* print = buttons->addButton(QStringLiteral("&Print"), QDialogButtonBox::AcceptRole);
    print->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &RecentStopsView::print);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addLayout(dates);
    layout->addWidget(destination);
    layout->addStretch(1);
    layout->addWidget(buttons);
    keepPlacement(*this, settings, QStringLiteral("TFormRecentStops"), QSize(440, 300));
}

void RecentStopsView::print()
{
    m_presenter.ActionPrint();
}

} // namespace kb::ui
