#include "clients/AddSuspensionView.h"

#include "FormPlacement.h"
#include "suspensions/TFormAddSuspension.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QStackedWidget>
#include <QTextCharFormat>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using View = TFormAddSuspension::View;

QDateEdit* dateEdit(QWidget* parent)
{
    auto* edit = new QDateEdit(parent);
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    return edit;
}

} // namespace

AddSuspensionView::AddSuspensionView(TFormAddSuspension& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_pages(new QStackedWidget(this)), m_heading(new QLabel(this)),
      m_calendar(new QCalendarWidget(this)), m_stop(dateEdit(this)), m_resume(dateEdit(this)),
      m_reason(new QLineEdit(presenter.reason(), this)), m_user(new QLineEdit(presenter.user(), this))
{
    setWindowTitle(TFormAddSuspension::caption());
    m_calendar->setGridVisible(true);
    m_pages->addWidget(m_calendar);
    auto* dates = new QWidget(this);
    auto* datesForm = new QFormLayout(dates);
    datesForm->addRow(TFormAddSuspension::stopLabel(), m_stop);
    datesForm->addRow(TFormAddSuspension::resumeLabel(), m_resume);
    m_pages->addWidget(dates);
    m_reason->setMaxLength(40);
    m_user->setMaxLength(25);

    auto* shared = new QFormLayout;
    shared->addRow(TFormAddSuspension::reasonLabel(), m_reason);
    shared->addRow(TFormAddSuspension::userLabel(), m_user);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_heading);
    layout->addWidget(m_pages);
    layout->addLayout(shared);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_calendar, &QCalendarWidget::clicked, this, &AddSuspensionView::calendarClicked);
    connect(m_calendar, &QCalendarWidget::activated, this, [this](const QDate&) { accept(); });
    connect(m_stop, &QDateEdit::dateChanged, this, [this](const QDate& date) {
        if (m_showing) return;
        m_presenter.setStopDate(date);
        showValues();
    });
    connect(m_resume, &QDateEdit::dateChanged, this, [this](const QDate& date) {
        if (m_showing) return;
        m_presenter.setResumeDate(date);
        showValues();
    });
    connect(m_reason, &QLineEdit::textEdited, this,
            [this](const QString& text) { m_presenter.setReason(text); });
    connect(m_user, &QLineEdit::textEdited, this, [this](const QString& text) { m_presenter.setUser(text); });

    showView(int(presenter.view()));
    showValues();
    keepPlacement(*this, settings, QStringLiteral("TFormAddSuspension"), QSize());
}

void AddSuspensionView::showView(int view)
{
    m_presenter.setView(View(view));
    m_pages->setCurrentIndex(view == int(View::Calendar) ? 0 : 1);
    m_heading->setText(view == int(View::Calendar) ? TFormAddSuspension::calendarHeading()
                                                   : TFormAddSuspension::datesHeading());
}

void AddSuspensionView::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    QAction* calendar = menu.addAction(TFormAddSuspension::calendarMenuText());
    QAction* dates = menu.addAction(TFormAddSuspension::datesMenuText());
    QAction* chosen = menu.exec(event->globalPos());
    if (chosen == calendar) showView(int(View::Calendar));
    if (chosen == dates) showView(int(View::Dates));
}

void AddSuspensionView::calendarClicked(const QDate& date)
{
    // A click starts a new range of one day; a shift-click ends it there.
    if (QApplication::keyboardModifiers() & Qt::ShiftModifier)
        m_presenter.setSelection(m_presenter.selectionStart(), date);
    else
        m_presenter.setSelection(date, date);
    showValues();
}

void AddSuspensionView::showValues()
{
    m_showing = true;
    m_stop->setDate(m_presenter.stopDate());
    m_resume->setDate(m_presenter.resumeDate());
    if (m_presenter.selectionStart().isValid()) m_calendar->setSelectedDate(m_presenter.selectionStart());
    m_showing = false;
    paintSelection();
}

void AddSuspensionView::paintSelection()
{
    // The days without delivery stand out on the calendar.
    if (m_painted[0].isValid())
        for (QDate d = m_painted[0]; d <= m_painted[1]; d = d.addDays(1))
            m_calendar->setDateTextFormat(d, QTextCharFormat());
    m_painted[0] = m_presenter.selectionStart();
    m_painted[1] = m_presenter.selectionEnd();
    if (!m_painted[0].isValid() || !m_painted[1].isValid() || m_painted[1] < m_painted[0]) {
        m_painted[0] = QDate();
        return;
    }
    QTextCharFormat marked;
    marked.setBackground(palette().highlight());
    marked.setForeground(palette().highlightedText());
    for (QDate d = m_painted[0]; d <= m_painted[1]; d = d.addDays(1))
        m_calendar->setDateTextFormat(d, marked);
}

} // namespace kb::ui
