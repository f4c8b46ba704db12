#include "schedule/dated/RecurrenceView.h"

#include "FormPlacement.h"
#include "recurrence/TFormRecurrence.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

// A date picker that can be empty: it then holds 30 December 1899 and shows nothing.
const QDate emptyDate(1899, 12, 30);

QDateEdit* datePicker(QWidget* parent)
{
    auto* edit = new QDateEdit(parent);
    edit->setCalendarPopup(true);
    edit->setMinimumDate(emptyDate);
    edit->setSpecialValueText(QStringLiteral(" "));
    edit->setDisplayFormat(QStringLiteral("ddd, MMM d, yyyy"));
    edit->setDate(emptyDate);
    return edit;
}

QDate pickerDate(const QDateEdit* edit)
{
    return edit->date() == emptyDate ? QDate() : edit->date();
}

QSpinBox* spin(int max, QWidget* parent)
{
    auto* box = new QSpinBox(parent);
    box->setRange(1, max);
    return box;
}

QHBoxLayout* row(std::initializer_list<QWidget*> widgets)
{
    auto* layout = new QHBoxLayout;
    for (QWidget* w : widgets)
        layout->addWidget(w);
    layout->addStretch();
    return layout;
}

} // namespace

RecurrenceView::RecurrenceView(TFormRecurrence& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(m_presenter.caption());
    build();
    connectControls();
    refresh();
    new WindowPlacement(*this, settings, QStringLiteral("TFormRecurrence"), QSize(820, 560));
}

void RecurrenceView::build()
{
    m_pages = new QTabWidget(this);

    auto* daily = new QWidget;
    m_everyDays = new QRadioButton(QStringLiteral("Every"), daily);
    m_days = spin(RecurrencePattern::maxEveryDays, daily);
    m_everyWeekday = new QRadioButton(QStringLiteral("Every weekday"), daily);
    m_everyWeekendDay = new QRadioButton(QStringLiteral("Every weekend day"), daily);
    auto* dailyLayout = new QVBoxLayout(daily);
    dailyLayout->addLayout(row({m_everyDays, m_days, new QLabel(QStringLiteral("day(s)"), daily)}));
    dailyLayout->addWidget(m_everyWeekday);
    dailyLayout->addWidget(m_everyWeekendDay);
    dailyLayout->addStretch();
    auto* dailyGroup = new QButtonGroup(daily);
    for (QRadioButton* b : {m_everyDays, m_everyWeekday, m_everyWeekendDay})
        dailyGroup->addButton(b);
    m_pages->addTab(daily, QStringLiteral("Daily"));

    auto* weekly = new QWidget;
    m_weeks = spin(RecurrencePattern::maxEveryWeeks, weekly);
    auto* weeklyLayout = new QVBoxLayout(weekly);
    weeklyLayout->addLayout(row({new QLabel(QStringLiteral("Recur every"), weekly), m_weeks,
                                 new QLabel(QStringLiteral("week(s) on:"), weekly)}));
    auto* days = new QGridLayout;
    const QLocale locale;
    for (int d = 0; d < 7; ++d) {
        m_weekdays[size_t(d)] = new QCheckBox(locale.dayName(d + 1), weekly);
        days->addWidget(m_weekdays[size_t(d)], d / 4, d % 4);
    }
    weeklyLayout->addLayout(days);
    weeklyLayout->addStretch();
    m_pages->addTab(weekly, QStringLiteral("Weekly"));

    auto* monthly = new QWidget;
    m_byDay = new QRadioButton(QStringLiteral("Day"), monthly);
    m_dayOfMonth = spin(RecurrencePattern::maxDayOfMonth, monthly);
    m_monthsByDay = spin(RecurrencePattern::maxEveryMonths, monthly);
    m_byInstance = new QRadioButton(QStringLiteral("The"), monthly);
    m_instance = new QComboBox(monthly);
    m_instance->addItems(TFormRecurrence::instanceEntries());
    m_kind = new QComboBox(monthly);
    m_kind->addItems(TFormRecurrence::instanceKindEntries());
    m_monthsByInstance = spin(RecurrencePattern::maxEveryMonths, monthly);
    auto* monthlyLayout = new QVBoxLayout(monthly);
    monthlyLayout->addLayout(row({m_byDay, m_dayOfMonth, new QLabel(QStringLiteral("of every"), monthly),
                                  m_monthsByDay, new QLabel(QStringLiteral("month(s)"), monthly)}));
    monthlyLayout->addLayout(
        row({m_byInstance, m_instance, m_kind, new QLabel(QStringLiteral("of every"), monthly),
             m_monthsByInstance, new QLabel(QStringLiteral("month(s)"), monthly)}));
    monthlyLayout->addStretch();
    auto* monthlyGroup = new QButtonGroup(monthly);
    monthlyGroup->addButton(m_byDay);
    monthlyGroup->addButton(m_byInstance);
    m_pages->addTab(monthly, QStringLiteral("Monthly"));

    auto* range = new QGroupBox(QStringLiteral("Range of recurrence"), this);
    m_start = datePicker(range);
    m_endAfter = new QRadioButton(QStringLiteral("End after:"), range);
    m_occurrences = spin(RecurrencePattern::maxOccurrences, range);
    m_endBy = new QRadioButton(QStringLiteral("End by:"), range);
    m_endDate = datePicker(range);
    auto* rangeLayout = new QGridLayout(range);
    rangeLayout->addWidget(new QLabel(QStringLiteral("Start:"), range), 0, 0);
    rangeLayout->addWidget(m_start, 0, 1);
    rangeLayout->addWidget(m_endAfter, 1, 0);
    rangeLayout->addLayout(row({m_occurrences, new QLabel(QStringLiteral("occurrences"), range)}), 1, 1);
    rangeLayout->addWidget(m_endBy, 2, 0);
    rangeLayout->addWidget(m_endDate, 2, 1);

    auto* choices = new QFormLayout;
    m_limit = new QComboBox(this);
    m_limit->addItems(TFormRecurrence::limitEntries());
    m_service = new QComboBox(this);
    m_service->addItems(m_presenter.serviceEntries());
    m_route = new QComboBox(this);
    m_route->addItems(m_presenter.routeEntries());
    choices->addRow(QStringLiteral("Limit to the following Delivery Days"), m_limit);
    choices->addRow(QStringLiteral("Service:"), m_service);
    choices->addRow(QStringLiteral("Route:"), m_route);

    auto* previewBox = new QGroupBox(QStringLiteral("Deliveries to be created"), this);
    m_preview = new QListWidget(previewBox);
    m_preview->setMinimumWidth(320);
    m_previewCount = new QLabel(previewBox);
    auto* previewLayout = new QVBoxLayout(previewBox);
    previewLayout->addWidget(m_preview);
    previewLayout->addWidget(m_previewCount);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    connect(m_ok, &QPushButton::clicked, this, &RecurrenceView::ok);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* left = new QVBoxLayout;
    left->addWidget(m_pages);
    left->addWidget(range);
    left->addLayout(choices);
    auto* body = new QHBoxLayout;
    m_pages->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    left->addStretch();
    body->addLayout(left, 1);
    body->addWidget(previewBox, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addWidget(buttons);
}

void RecurrenceView::connectControls()
{
    using P = TFormRecurrence;
    using Pattern = RecurrencePattern;
    const auto on = [this](auto* sender, auto signal, auto apply) {
        connect(sender, signal, this, [this, apply](auto... args) {
            if (m_refreshing) return;
            apply(args...);
            refresh();
        });
    };
    on(m_pages, &QTabWidget::currentChanged, [this](int i) { m_presenter.setPage(P::Page(i)); });
    on(m_everyDays, &QRadioButton::clicked,
       [this](bool) { m_presenter.setDailyKind(Pattern::DailyKind::EveryNDays); });
    on(m_everyWeekday, &QRadioButton::clicked,
       [this](bool) { m_presenter.setDailyKind(Pattern::DailyKind::Weekday); });
    on(m_everyWeekendDay, &QRadioButton::clicked,
       [this](bool) { m_presenter.setDailyKind(Pattern::DailyKind::WeekendDay); });
    on(m_days, &QSpinBox::valueChanged, [this](int n) { m_presenter.setEveryDays(n); });
    on(m_weeks, &QSpinBox::valueChanged, [this](int n) { m_presenter.setEveryWeeks(n); });
    for (int d = 0; d < 7; ++d)
        on(m_weekdays[size_t(d)], &QCheckBox::toggled,
           [this, d](bool checked) { m_presenter.setWeekday(d, checked); });
    on(m_byDay, &QRadioButton::clicked,
       [this](bool) { m_presenter.setMonthlyKind(Pattern::MonthlyKind::DayOfMonth); });
    on(m_byInstance, &QRadioButton::clicked,
       [this](bool) { m_presenter.setMonthlyKind(Pattern::MonthlyKind::Instance); });
    on(m_dayOfMonth, &QSpinBox::valueChanged, [this](int n) { m_presenter.setDayOfMonth(n); });
    on(m_monthsByDay, &QSpinBox::valueChanged, [this](int n) { m_presenter.setEveryMonthsByDay(n); });
    on(m_instance, &QComboBox::currentIndexChanged,
       [this](int i) { m_presenter.setInstance(i == 4 ? Pattern::lastInstance : i + 1); });
    on(m_kind, &QComboBox::currentIndexChanged,
       [this](int i) { m_presenter.setInstanceKind(Pattern::InstanceKind(i)); });
    on(m_monthsByInstance, &QSpinBox::valueChanged,
       [this](int n) { m_presenter.setEveryMonthsByInstance(n); });
    on(m_start, &QDateEdit::dateChanged, [this](const QDate&) { m_presenter.setStart(pickerDate(m_start)); });
    on(m_endAfter, &QRadioButton::clicked,
       [this](bool) { m_presenter.setEndKind(Pattern::End::AfterOccurrences); });
    on(m_endBy, &QRadioButton::clicked, [this](bool) { m_presenter.setEndKind(Pattern::End::ByDate); });
    on(m_occurrences, &QSpinBox::valueChanged, [this](int n) { m_presenter.setOccurrences(n); });
    on(m_endDate, &QDateEdit::dateChanged,
       [this](const QDate&) { m_presenter.setEndDate(pickerDate(m_endDate)); });
    on(m_limit, &QComboBox::currentIndexChanged, [this](int i) { m_presenter.setLimitIndex(i); });
    on(m_service, &QComboBox::currentIndexChanged, [this](int i) { m_presenter.setServiceIndex(i); });
    on(m_route, &QComboBox::currentIndexChanged, [this](int i) { m_presenter.setRouteIndex(i); });
}

void RecurrenceView::refresh()
{
    m_refreshing = true;
    const RecurrencePattern& p = m_presenter.pattern();
    m_pages->setCurrentIndex(int(m_presenter.page()));
    m_everyDays->setChecked(p.dailyKind == RecurrencePattern::DailyKind::EveryNDays);
    m_everyWeekday->setChecked(p.dailyKind == RecurrencePattern::DailyKind::Weekday);
    m_everyWeekendDay->setChecked(p.dailyKind == RecurrencePattern::DailyKind::WeekendDay);
    m_days->setValue(p.everyDays);
    m_weeks->setValue(p.everyWeeks);
    for (int d = 0; d < 7; ++d)
        m_weekdays[size_t(d)]->setChecked(p.weekdays[size_t(d)]);
    m_byDay->setChecked(p.monthlyKind == RecurrencePattern::MonthlyKind::DayOfMonth);
    m_byInstance->setChecked(p.monthlyKind == RecurrencePattern::MonthlyKind::Instance);
    m_dayOfMonth->setValue(p.dayOfMonth);
    m_monthsByDay->setValue(p.everyMonthsByDay);
    m_instance->setCurrentIndex(p.instance == RecurrencePattern::lastInstance ? 4 : p.instance - 1);
    m_kind->setCurrentIndex(int(p.instanceKind));
    m_monthsByInstance->setValue(p.everyMonthsByInstance);
    m_start->setDate(p.start.isValid() ? p.start : emptyDate);
    m_endAfter->setChecked(p.end == RecurrencePattern::End::AfterOccurrences);
    m_endBy->setChecked(p.end == RecurrencePattern::End::ByDate);
    m_occurrences->setValue(p.occurrences);
    m_endDate->setDate(p.endDate.isValid() ? p.endDate : emptyDate);
    m_limit->setCurrentIndex(m_presenter.limitIndex());
    m_service->setCurrentIndex(m_presenter.serviceIndex());
    m_route->setCurrentIndex(m_presenter.routeIndex());

    m_preview->clear();
    const QLocale locale;
    const std::vector<GeneratedDelivery> rows = m_presenter.preview();
    for (const GeneratedDelivery& r : rows)
        m_preview->addItem(locale.toString(r.date, QStringLiteral("ddd, MMM d, yyyy")) +
                           QStringLiteral("   Route ") + r.route.trimmed() + QStringLiteral(", stop ") +
                           locale.toString(r.stop.toDouble()));
    const QString why = m_presenter.refusal();
    m_previewCount->setText(!why.isEmpty()     ? why
                            : rows.size() == 1 ? QStringLiteral("1 delivery")
                                               : QStringLiteral("%1 deliveries").arg(rows.size()));
    m_ok->setEnabled(m_presenter.okEnabled());
    m_refreshing = false;
}

void RecurrenceView::ok()
{
    m_ok->setEnabled(false);
    const TFormRecurrence::Outcome outcome = m_presenter.ActionOk();
    m_ok->setEnabled(m_presenter.okEnabled());
    if (outcome == TFormRecurrence::Outcome::Created)
        accept();
    else if (outcome == TFormRecurrence::Outcome::Closed)
        reject();
}

} // namespace kb::ui
