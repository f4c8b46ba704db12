#include "deliveryreports/ClientItemsSortOrderDialog.h"

#include "delivery/questions/TFormClientItemsSortOrder.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

ClientItemsSortOrderDialog::ClientItemsSortOrderDialog(reports::TFormClientItemsSortOrder& presenter,
                                                       QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(reports::TFormClientItemsSortOrder::caption());
    auto* group = new QGroupBox(reports::TFormClientItemsSortOrder::prompt(), this);
    auto* groupLayout = new QVBoxLayout(group);
    auto* choices = new QButtonGroup(this);
    const QStringList orders = reports::TFormClientItemsSortOrder::sortOrders();
    for (int i = 0; i < int(orders.size()); ++i) {
        auto* button = new QRadioButton(orders[i], group);
        button->setChecked(i == presenter.sortOrder());
        choices->addButton(button, i);
        groupLayout->addWidget(button);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(buttons);
    connect(choices, &QButtonGroup::idClicked, this, [&presenter](int id) { presenter.setSortOrder(id); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

} // namespace kb::ui
