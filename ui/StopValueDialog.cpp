#include "StopValueDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kb::ui {

StopValueDialog::StopValueDialog(const StopValueChoice& choice, QWidget* parent)
    : QDialog(parent),
      m_choice(choice),
      m_value(new QSpinBox(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(choice.caption);
    setObjectName(choice.formName);
    m_value->setRange(choice.minimum, choice.maximum);
    m_value->setSingleStep(1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(choice.prompt, this));
    layout->addWidget(m_value);
    layout->addWidget(m_buttons);
    const auto enable = [this] { m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_choice.okEnabled(value())); };
    connect(m_value, &QSpinBox::valueChanged, this, enable);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    enable();
}

int StopValueDialog::value() const { return m_value->value(); }

} // namespace kb::ui
