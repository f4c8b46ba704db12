#include "clientwindow/StatusFilterDialog.h"

#include "window/TFilterForm.h"

#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

QListWidget* choiceList(const QStringList& choices, QWidget* parent)
{
    auto* list = new QListWidget(parent);
    list->addItems(choices);
    list->setMinimumWidth(list->sizeHintForColumn(0) + 40);
    list->setFixedHeight(list->sizeHintForRow(0) * int(choices.size()) + 2 * list->frameWidth() + 4);
    return list;
}

} // namespace

StatusFilterDialog::StatusFilterDialog(TFilterForm& form, QWidget* parent)
    : QDialog(parent), m_form(form), m_status(choiceList(TFilterForm::statusChoices(), this)),
      m_suspension(choiceList(TFilterForm::suspensionChoices(), this))
{
    setWindowTitle(TFilterForm::caption());
    auto* statusBox = new QGroupBox(QStringLiteral("Status"), this);
    (new QVBoxLayout(statusBox))->addWidget(m_status);
    auto* suspensionBox = new QGroupBox(QStringLiteral("Suspension Status"), this);
    (new QVBoxLayout(suspensionBox))->addWidget(m_suspension);
    auto* lists = new QHBoxLayout;
    lists->addWidget(statusBox);
    lists->addWidget(suspensionBox);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(lists);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(m_status, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0) return;
        m_form.setStatus(TFilterForm::Status(row));
        showChoices();
    });
    connect(m_suspension, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0) return;
        m_form.setSuspension(TFilterForm::Suspension(row));
        showChoices();
    });
    connect(m_status, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_suspension, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showChoices();
}

void StatusFilterDialog::showChoices()
{
    const QSignalBlocker a(m_status);
    const QSignalBlocker b(m_suspension);
    m_status->setCurrentRow(int(m_form.status()));
    m_suspension->setCurrentRow(int(m_form.suspension()));
    m_suspension->setEnabled(m_form.suspensionEnabled());
}

} // namespace kb::ui
