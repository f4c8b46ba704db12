#include "deliveryreports/DeliveryDietCriteriaDialog.h"

#include "delivery/questions/TFormDeliveryDietCriteria.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

DeliveryDietCriteriaDialog::DeliveryDietCriteriaDialog(reports::TFormDeliveryDietCriteria& presenter,
                                                       QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_diets(new QListWidget(this)),
      m_match(new QButtonGroup(this)), m_sort(new QComboBox(this)), m_title(new QLineEdit(this))
{
    setWindowTitle(reports::TFormDeliveryDietCriteria::caption());
    for (int i = 0; i < int(m_presenter.diets().entries.size()); ++i) {
        auto* item = new QListWidgetItem(m_presenter.diets().entries[i], m_diets);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(m_presenter.diets().isChecked(i) ? Qt::Checked : Qt::Unchecked);
    }
    auto* any = new QRadioButton(QStringLiteral("Match A&ny Selection"), this);
    auto* all = new QRadioButton(QStringLiteral("Match A&ll Selections"), this);
    m_match->addButton(any, 0);
    m_match->addButton(all, 1);
    (m_presenter.matchAll() ? all : any)->setChecked(true);
    m_sort->addItems(reports::TFormDeliveryDietCriteria::sortOrders());
    m_sort->setCurrentIndex(m_presenter.sortOrder());
    m_title->setText(m_presenter.title());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("Select the diet codes to include in the report:"), this));
    layout->addWidget(m_diets, 1);
    layout->addWidget(any);
    layout->addWidget(all);
    layout->addWidget(new QLabel(QStringLiteral("Select a sort order for the report:"), this));
    layout->addWidget(m_sort);
    layout->addWidget(new QLabel(QStringLiteral("Enter a title for the report, if desired:"), this));
    layout->addWidget(m_title);
    layout->addWidget(buttons);

    connect(m_diets, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        m_presenter.diets().setChecked(m_diets->row(item), item->checkState() == Qt::Checked);
        showOk();
    });
    connect(m_match, &QButtonGroup::idClicked, this, [this](int id) { m_presenter.setMatchAll(id == 1); });
    connect(m_sort, &QComboBox::currentIndexChanged, this, [this](int i) { m_presenter.setSortOrder(i); });
    connect(m_title, &QLineEdit::textChanged, this, [this](const QString& t) { m_presenter.setTitle(t); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showOk();
}

void DeliveryDietCriteriaDialog::showOk()
{
    m_ok->setEnabled(m_presenter.okEnabled());
}

} // namespace kb::ui
