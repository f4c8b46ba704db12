#include "outcomes/MissedDeliveryViews.h"

#include "missed/TFormExcuseMissedMeals.h"
#include "missed/TFormMissedDel.h"
#include "missed/TFormSummarizeMissedDeliveries.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

MissedDeliveryView::MissedDeliveryView(TFormMissedDel& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_calendar(new QCalendarWidget(this)),
      m_excused(new QCheckBox(QStringLiteral("Excused"), this)),
      m_recordedBy(new QLineEdit(presenter.recordedBy(), this))
{
    setWindowTitle(TFormMissedDel::caption());
    setObjectName(QStringLiteral("TFormMissedDel"));
    if (presenter.minDate().isValid()) m_calendar->setDateRange(presenter.minDate(), presenter.maxDate());
    m_calendar->setSelectedDate(presenter.date());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(presenter.client().name(), this));
    layout->addWidget(m_calendar);
    layout->addWidget(m_excused);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Recorded By:"), m_recordedBy);
    layout->addLayout(form);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &MissedDeliveryView::ok);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_calendar, &QCalendarWidget::activated, this, &MissedDeliveryView::ok);
}

void MissedDeliveryView::ok()
{
    m_presenter.setDate(m_calendar->selectedDate());
    m_presenter.setExcused(m_excused->isChecked());
    m_presenter.setRecordedBy(m_recordedBy->text());
    if (m_presenter.ActionOK()) accept();
}

MissedMealsView::MissedMealsView(TFormExcuseMissedMeals& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_list(new QListWidget(this)),
      m_action(new QPushButton(presenter.actionText(), this))
{
    setWindowTitle(presenter.caption());
    presenter.FormShow();
    for (const QString& line : presenter.lines()) {
        auto* item = new QListWidgetItem(line, m_list);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_action);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_action, &QPushButton::clicked, this, [this] {
        for (int i = 0; i < m_list->count(); ++i)
            m_presenter.setChecked(i, m_list->item(i)->checkState() == Qt::Checked);
        if (m_presenter.ActionApply()) accept();
    });
}

SummarizeMissedView::SummarizeMissedView(TFormSummarizeMissedDeliveries& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_since(new QDateEdit(presenter.since(), this))
{
    setWindowTitle(TFormSummarizeMissedDeliveries::caption());
    m_since->setCalendarPopup(true);
    auto* notice = new QLabel(TFormSummarizeMissedDeliveries::notice(), this);
    notice->setWordWrap(true);
    auto* summarize = new QPushButton(QStringLiteral("Summarize"), this);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    auto* form = new QFormLayout;
    form->addRow(TFormSummarizeMissedDeliveries::sincePrompt(), m_since);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(summarize);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(notice);
    layout->addLayout(form);
    layout->addLayout(buttons);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(summarize, &QPushButton::clicked, this, [this] {
        m_presenter.setSince(m_since->date());
        if (m_presenter.ActionSummarize()) accept();
    });
}

} // namespace kb::ui
