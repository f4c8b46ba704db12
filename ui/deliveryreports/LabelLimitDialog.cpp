#include "deliveryreports/LabelLimitDialog.h"

#include "labels/TFormLabelLimit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kb::ui {

using reports::TFormLabelLimit;

LabelLimitDialog::LabelLimitDialog(TFormLabelLimit& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_limit(new QComboBox(this)), m_dietGroup(new QGroupBox(this)),
      m_diets(new QListWidget(this)), m_any(new QRadioButton(TFormLabelLimit::matchAnyCaption(), this)),
      m_all(new QRadioButton(TFormLabelLimit::matchAllCaption(), this)), m_sort(new QComboBox(this))
{
    setWindowTitle(TFormLabelLimit::caption());

    auto* limitGroup = new QGroupBox(TFormLabelLimit::limitGroup(), this);
    auto* limitLayout = new QVBoxLayout(limitGroup);
    limitLayout->addWidget(new QLabel(TFormLabelLimit::limitPrompt(), limitGroup));
    m_limit->addItems(reports::LabelRules::limitEntries());
    m_limit->setCurrentIndex(m_presenter.limitIndex());
    limitLayout->addWidget(m_limit);

    // The two buttons are not exclusive, so that neither can be shown
    // checked while another entry than the selected diets is chosen.
    m_any->setAutoExclusive(false);
    m_all->setAutoExclusive(false);
    for (int i = 0; i < int(m_presenter.diets().entries.size()); ++i) {
        auto* item = new QListWidgetItem(m_presenter.diets().entries[i], m_diets);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(m_presenter.diets().isChecked(i) ? Qt::Checked : Qt::Unchecked);
    }
    auto* dietLayout = new QVBoxLayout(m_dietGroup);
    dietLayout->addWidget(m_diets, 1);
    dietLayout->addWidget(m_any);
    dietLayout->addWidget(m_all);
    limitLayout->addWidget(m_dietGroup, 1);

    auto* sortGroup = new QGroupBox(TFormLabelLimit::sortGroup(), this);
    auto* sortLayout = new QVBoxLayout(sortGroup);
    m_sort->addItems(reports::LabelRules::sortOrders());
    m_sort->setCurrentIndex(m_presenter.sortOrder());
    sortLayout->addWidget(m_sort);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(limitGroup, 1);
    layout->addWidget(sortGroup);
    layout->addWidget(buttons);

    connect(m_limit, &QComboBox::currentIndexChanged, this, [this](int i) {
        m_presenter.setLimitIndex(i);
        showDiets();
    });
    connect(m_diets, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        m_presenter.diets().setChecked(m_diets->row(item), item->checkState() == Qt::Checked);
    });
    connect(m_any, &QRadioButton::clicked, this, [this] {
        m_presenter.setMatch(TFormLabelLimit::Match::Any);
        showDiets();
    });
    connect(m_all, &QRadioButton::clicked, this, [this] {
        m_presenter.setMatch(TFormLabelLimit::Match::All);
        showDiets();
    });
    connect(m_sort, &QComboBox::currentIndexChanged, this, [this](int i) { m_presenter.setSortOrder(i); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showDiets();
    resize(sizeHint().width() + 40, 460);
}

void LabelLimitDialog::showDiets()
{
    m_dietGroup->setEnabled(m_presenter.dietsEnabled());
    m_any->setChecked(m_presenter.match() == TFormLabelLimit::Match::Any);
    m_all->setChecked(m_presenter.match() == TFormLabelLimit::Match::All);
}

} // namespace kb::ui
