#include "ConfirmDeliveryItemsView.h"

#include "confirmation/TFormConfirmDeliveryItems.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

ConfirmDeliveryItemsView::ConfirmDeliveryItemsView(TFormConfirmDeliveryItems& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_list(new QListWidget(this)), m_filter(new QLineEdit(this))
{
    setWindowTitle(TFormConfirmDeliveryItems::caption());
    auto* heading = new QLabel(TFormConfirmDeliveryItems::heading(), this);
    heading->setWordWrap(true);

    for (qsizetype i = 0; i < presenter.lineCount(); ++i) {
        auto* item = new QListWidgetItem(presenter.lineText(i), m_list);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
    }
    m_list->setUniformItemSizes(true);

    auto* filterRow = new QHBoxLayout;
    filterRow->addWidget(new QLabel(QStringLiteral("Filter:"), this));
    filterRow->addWidget(m_filter, 1);
    auto* commands = new QHBoxLayout;
    const auto command = [this](QBoxLayout* row, const QString& caption,
                                void (TFormConfirmDeliveryItems::*action)()) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(caption);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, action] { (m_presenter.*action)(); });
        row->addWidget(button);
    };
    command(filterRow, QStringLiteral("Filter"), &TFormConfirmDeliveryItems::ActionFilter);
    command(filterRow, QStringLiteral("Clear Filter"), &TFormConfirmDeliveryItems::ActionClearFilter);
    command(filterRow, QStringLiteral("Check Filtered"), &TFormConfirmDeliveryItems::ActionCheckFiltered);
    command(commands, QStringLiteral("Check All"), &TFormConfirmDeliveryItems::ActionCheckAll);
    command(commands, QStringLiteral("Uncheck All"), &TFormConfirmDeliveryItems::ActionUncheckAll);
    commands->addStretch();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    commands->addWidget(buttons);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addWidget(m_list, 1);
    layout->addLayout(filterRow);
    layout->addLayout(commands);
    resize(520, 380);

    connect(m_list, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!m_showing) m_presenter.setChecked(m_list->row(item), item->checkState() == Qt::Checked);
    });
    connect(m_filter, &QLineEdit::textChanged, &m_presenter, &TFormConfirmDeliveryItems::setFilterText);
    // Enter in the filter box filters instead of pressing OK.
    connect(m_filter, &QLineEdit::returnPressed, &m_presenter, &TFormConfirmDeliveryItems::ActionFilter);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(&m_presenter, &TFormConfirmDeliveryItems::changed, this, &ConfirmDeliveryItemsView::showState);
    showState();
}

QPushButton* ConfirmDeliveryItemsView::commandButton(const QString& caption) const
{
    return findChild<QPushButton*>(caption);
}

void ConfirmDeliveryItemsView::showState()
{
    m_showing = true;
    for (int i = 0; i < m_list->count(); ++i) {
        QListWidgetItem* item = m_list->item(i);
        item->setCheckState(m_presenter.isChecked(i) ? Qt::Checked : Qt::Unchecked);
        const Qt::ItemFlags enabled = m_presenter.isLineEnabled(i) ? Qt::ItemIsEnabled : Qt::NoItemFlags;
        item->setFlags(Qt::ItemIsUserCheckable | enabled);
    }
    if (m_filter->text() != m_presenter.filterText()) m_filter->setText(m_presenter.filterText());
    m_ok->setEnabled(m_presenter.okEnabled());
    m_showing = false;
}

} // namespace kb::ui
