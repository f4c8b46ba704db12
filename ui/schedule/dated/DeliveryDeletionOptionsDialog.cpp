#include "schedule/dated/DeliveryDeletionOptionsDialog.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace kb::ui {

DeliveryDeletionOptionsDialog::DeliveryDeletionOptionsDialog(const QDate& today, QWidget* parent)
    : QDialog(parent), m_options(DeliveryDeletionOptions::defaults(today)),
      m_single(new QRadioButton(QStringLiteral("Delete currently selected delivery"), this)),
      m_range(new QRadioButton(QStringLiteral("Delete a range of deliveries:"), this)),
      m_beginning(new QDateEdit(this)), m_ending(new QDateEdit(this)),
      m_fulfilled(new QCheckBox(QStringLiteral("Delete deliveries even if they have been fulfilled"), this))
{
    setWindowTitle(QStringLiteral("Delivery Deletion Options"));
    for (QDateEdit* edit : {m_beginning, m_ending}) {
        edit->setCalendarPopup(true);
        edit->setDisplayFormat(QStringLiteral("ddd, MMM d, yyyy"));
    }
    auto* dates = new QFormLayout;
    dates->addRow(QStringLiteral("Beginning:"), m_beginning);
    dates->addRow(QStringLiteral("Ending:"), m_ending);
    dates->setContentsMargins(24, 0, 0, 0);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_single);
    layout->addWidget(m_range);
    layout->addLayout(dates);
    layout->addWidget(m_fulfilled);
    layout->addWidget(buttons);
    m_single->setChecked(true);
    show(m_options);

    connect(m_range, &QRadioButton::toggled, this, [this](bool on) {
        m_options.range = on;
        show(m_options);
    });
    connect(m_beginning, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        m_options.setBeginning(d);
        show(m_options);
    });
    connect(m_ending, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        m_options.setEnding(d);
        show(m_options);
    });
    connect(m_fulfilled, &QCheckBox::toggled, this, [this](bool on) { m_options.includeFulfilled = on; });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void DeliveryDeletionOptionsDialog::show(const DeliveryDeletionOptions& options)
{
    const QSignalBlocker b1(m_beginning), b2(m_ending);
    m_beginning->setDate(options.beginning);
    m_ending->setDate(options.ending);
    m_beginning->setEnabled(options.range);
    m_ending->setEnabled(options.range);
}

} // namespace kb::ui
