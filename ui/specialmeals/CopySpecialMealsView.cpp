#include "specialmeals/CopySpecialMealsView.h"

#include "specialmeals/TFormCopySpecialMeals.h"

#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QTextCharFormat>
#include <QVBoxLayout>

namespace kb::ui {

CopySpecialMealsView::CopySpecialMealsView(TFormCopySpecialMeals& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_calendar(new QCalendarWidget(this)),
      m_list(new QListWidget(this))
{
    setWindowTitle(TFormCopySpecialMeals::caption());
    m_calendar->setGridVisible(true);
    auto* commands = new QVBoxLayout;
    const auto command = [&](const QString& caption, void (TFormCopySpecialMeals::*action)()) {
        auto* button = new QPushButton(caption, this);
        button->setObjectName(caption);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, action] { (m_presenter.*action)(); });
        commands->addWidget(button);
    };
    command(QStringLiteral("Add Selected Date"), &TFormCopySpecialMeals::ActionAddSelectedDate);
    command(QStringLiteral("Delete Checked"), &TFormCopySpecialMeals::ActionDeleteSelectedDate);
    command(QStringLiteral("Copy to Selected Dates"), &TFormCopySpecialMeals::ActionCopyToSelectedDates);
    commands->addStretch();

    auto* dates = new QVBoxLayout;
    dates->addWidget(new QLabel(QStringLiteral("Destination dates (check to delete):"), this));
    dates->addWidget(m_list, 1);
    auto* row = new QHBoxLayout;
    row->addWidget(m_calendar);
    row->addLayout(dates, 1);
    row->addLayout(commands);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(row, 1);
    layout->addWidget(buttons);
    resize(760, 340);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_calendar, &QCalendarWidget::selectionChanged, this, [this] {
        if (!m_showing) m_presenter.setCalendarDate(m_calendar->selectedDate());
    });
    connect(m_calendar, &QCalendarWidget::activated, this, [this](const QDate& date) {
        m_presenter.setCalendarDate(date);
        m_presenter.ActionAddSelectedDate();
    });
    connect(m_list, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!m_showing)
            m_presenter.setDeletionCandidate(m_list->row(item), item->checkState() == Qt::Checked);
    });
    connect(&m_presenter, &TFormCopySpecialMeals::changed, this, &CopySpecialMealsView::showState);
    showState();
}

QPushButton* CopySpecialMealsView::commandButton(const QString& caption) const
{
    return findChild<QPushButton*>(caption);
}

void CopySpecialMealsView::showState()
{
    m_showing = true;
    if (m_calendar->selectedDate() != m_presenter.calendarDate())
        m_calendar->setSelectedDate(m_presenter.calendarDate());
    for (const QDate& d : m_bold)
        m_calendar->setDateTextFormat(d, QTextCharFormat());
    m_bold = m_presenter.boldDates();
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    for (const QDate& d : m_bold)
        m_calendar->setDateTextFormat(d, bold);
    m_list->clear();
    for (const TFormCopySpecialMeals::Destination& d : m_presenter.destinations()) {
        auto* item = new QListWidgetItem(QLocale().toString(d.date, QLocale::LongFormat), m_list);
        item->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        item->setCheckState(d.deletionCandidate ? Qt::Checked : Qt::Unchecked);
    }
    m_showing = false;
}

} // namespace kb::ui
