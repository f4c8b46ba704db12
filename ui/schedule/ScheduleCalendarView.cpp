#include "schedule/ScheduleCalendarView.h"

#include "FormPlacement.h"
#include "PrintPicture.h"
#include "defaults/TFormScheduleCalendar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QColor MarkColor(170, 220, 170);
constexpr int MonthsShown = 3;

} // namespace

MarkedCalendar::MarkedCalendar(const TFormScheduleCalendar& presenter, QWidget* parent)
    : QCalendarWidget(parent), m_presenter(presenter)
{
    setGridVisible(true);
    setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    setFirstDayOfWeek(Qt::Monday);
    setToolTip(TFormScheduleCalendar::hint() + QStringLiteral(": the dates marked green"));
}

void MarkedCalendar::paintCell(QPainter* painter, const QRect& rect, QDate date) const
{
    const bool inMonth = date.month() == monthShown() && date.year() == yearShown();
    if (inMonth && m_presenter.isMarked(date)) {
        painter->save();
        painter->fillRect(rect.adjusted(1, 1, -1, -1), MarkColor);
        QFont bold = painter->font();
        bold.setBold(true);
        painter->setFont(bold);
        painter->drawText(rect, Qt::AlignCenter, QString::number(date.day()));
        painter->restore();
        return;
    }
    QCalendarWidget::paintCell(painter, rect, date);
}

ScheduleCalendarView::ScheduleCalendarView(TFormScheduleCalendar& presenter, SettingsFile& settings,
                                           QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setObjectName(TFormScheduleCalendar::formName());
    setWindowTitle(TFormScheduleCalendar::caption());
    m_presenter.setMonthsShown(MonthsShown);
    auto* layout = new QVBoxLayout(this);
    auto* name = new QLabel(presenter.clientName(), this);
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 1.3);
    big.setBold(true);
    name->setFont(big);
    name->setAlignment(Qt::AlignCenter);
    layout->addWidget(name);
    auto* title = new QLabel(presenter.title(), this);
    title->setObjectName(QStringLiteral("Title"));
    title->setAlignment(Qt::AlignCenter);
    layout->addWidget(title);

    auto* months = new QHBoxLayout;
    for (int m = 0; m < MonthsShown; ++m) {
        auto* calendar = new MarkedCalendar(presenter, this);
        m_calendars.append(calendar);
        months->addWidget(calendar);
        // Paging any month moves all three; the first shown month leads.
        connect(calendar, &QCalendarWidget::currentPageChanged, this, [this, m](int year, int month) {
            if (m_moving) return;
            const QDate first = QDate(year, month, 1).addMonths(-m);
            showFrom(first.year(), first.month());
        });
    }
    layout->addLayout(months, 1);

    auto* bottom = new QHBoxLayout;
    auto* legend = new QLabel(QStringLiteral("Green: ") + TFormScheduleCalendar::hint(), this);
    bottom->addWidget(legend);
    bottom->addStretch();
    auto* printButton = new QPushButton(QStringLiteral("Print"), this);
    connect(printButton, &QPushButton::clicked, this, &ScheduleCalendarView::print);
    bottom->addWidget(printButton);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    bottom->addWidget(close);
    layout->addLayout(bottom);

    const QDate first = presenter.firstShown();
    m_moving = true;
    for (int m = 0; m < MonthsShown; ++m) {
        const QDate month = QDate(first.year(), first.month(), 1).addMonths(m);
        m_calendars[m]->setCurrentPage(month.year(), month.month());
        m_calendars[m]->setSelectedDate(m == 0 ? first : month);
    }
    m_moving = false;
    keepPlacement(*this, settings, TFormScheduleCalendar::formName(), QSize(900, 340));
}

void ScheduleCalendarView::showFrom(int year, int month)
{
    m_presenter.showMonth(year, month);
    m_moving = true;
    for (int m = 0; m < m_calendars.size(); ++m) {
        const QDate next = QDate(year, month, 1).addMonths(m);
        m_calendars[m]->setCurrentPage(next.year(), next.month());
    }
    m_moving = false;
    for (MarkedCalendar* c : m_calendars)
        c->update();
}

void ScheduleCalendarView::print()
{
    if (!m_presenter.startPrint()) return;
    printPicture(*this, true);
    m_presenter.endPrint();
}

} // namespace kb::ui
