#include "deliveryreports/ItemLimitationDialog.h"

#include "delivery/questions/TFormItemLimitation.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

ItemLimitationDialog::ItemLimitationDialog(reports::TFormItemLimitation& presenter, QWidget* parent)
    : QDialog(parent), m_items(new QListWidget(this))
{
    setWindowTitle(reports::TFormItemLimitation::caption());
    auto* group = new QGroupBox(reports::TFormItemLimitation::prompt(), this);
    auto* groupLayout = new QVBoxLayout(group);
    m_items->addItems(presenter.entries());
    groupLayout->addWidget(m_items);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    m_ok->setEnabled(presenter.okEnabled());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(buttons);
    connect(m_items, &QListWidget::currentRowChanged, this, [this, &presenter](int row) {
        presenter.choose(row);
        m_ok->setEnabled(presenter.okEnabled());
    });
    connect(m_items, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

} // namespace kb::ui
