#include "deliveryreports/RepChoiceView.h"

#include "FormPlacement.h"
#include "delivery/TFormRepChoice.h"
#include "labels/LabelStockSettings.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using reports::DatePage;
using reports::ReportDestination;
using reports::RouteListKind;
using reports::TFormRepChoice;

// A date that may be cleared: the earliest date stands for "no date" and
// shows as a blank.
QDateEdit* dateEdit(QWidget* parent, bool clearable)
{
    auto* edit = new QDateEdit(parent);
    edit->setCalendarPopup(true);
    edit->setDisplayFormat(TFormRepChoice::dateDisplayFormat());
    if (clearable) {
        edit->setMinimumDate(QDate(1899, 12, 30));
        edit->setSpecialValueText(QStringLiteral(" "));
    }
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("12/28/2024, Wednesday")) +
                          48);
    return edit;
}

QDate clearedOrDate(const QDate& date)
{
    return date.isValid() ? date : QDate(1899, 12, 30);
}

} // namespace

RepChoiceView::RepChoiceView(TFormRepChoice& presenter, SettingsFile* settings,
                             std::function<void()> editMessages, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_settings(settings), m_editMessages(std::move(editMessages)),
      m_reports(new QComboBox(this)), m_screen(new QRadioButton(QStringLiteral("Screen"), this)),
      m_printer(new QRadioButton(QStringLiteral("Printer and/or Export to a File"), this)),
      m_pages(new QTabWidget(this)), m_from(dateEdit(this, false)), m_to(dateEdit(this, false)),
      m_serviceGroup(new QGroupBox(QStringLiteral("Limit the report to specific services?"), this)),
      m_services(new QListWidget(this)), m_routeGroup(new QGroupBox(QStringLiteral("Route Selection"), this)),
      m_byRoutes(new QRadioButton(QStringLiteral("Routes"), this)),
      m_byCenters(new QRadioButton(QStringLiteral("Distribution Centers"), this)),
      m_routes(new QListWidget(this)),
      m_selectAll(new QPushButton(QStringLiteral("&Select All Routes"), this)),
      m_deselectAll(new QPushButton(QStringLiteral("&DeSelect All Routes"), this)),
      m_include(new QRadioButton(this)), m_exclude(new QRadioButton(this)),
      m_labelGroup(new QGroupBox(QStringLiteral("Labels"), this)), m_labelStock(new QComboBox(this)),
      m_labelStart(new QSpinBox(this)), m_ok(new QPushButton(QStringLiteral("OK"), this)),
      m_cancel(new QPushButton(QStringLiteral("Cancel"), this))
{
    setWindowTitle(TFormRepChoice::caption());
    setObjectName(QStringLiteral("FormRepChoice"));
    resize(820, 560);
    if (m_settings) restoreFormPosition(*this, *m_settings, objectName());

    // The report and the destination.
    auto* reportGroup = new QGroupBox(QStringLiteral("Daily Report Choice:"), this);
    auto* reportLayout = new QVBoxLayout(reportGroup);
    reportLayout->addWidget(new QLabel(QStringLiteral("Select a report to run:"), reportGroup));
    m_reports->addItems(m_presenter.reportEntries());
    m_reports->setMaxVisibleItems(26);
    m_reports->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    reportLayout->addWidget(m_reports);
    auto* destinationGroup = new QGroupBox(QStringLiteral("Select a Destination"), this);
    auto* destinationLayout = new QVBoxLayout(destinationGroup);
    destinationLayout->addWidget(m_screen);
    destinationLayout->addWidget(m_printer);
    // The label stock, and where a partly used sheet starts.
    m_labelStock->addItems(reports::LabelStockSettings::entries());
    m_labelStock->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_labelStock->setMinimumContentsLength(28);
    m_labelStart->setRange(1, 1000);
    auto* labelLayout = new QFormLayout(m_labelGroup);
    labelLayout->addRow(QStringLiteral("Label stock:"), m_labelStock);
    labelLayout->addRow(QStringLiteral("Start at label:"), m_labelStart);
    auto* right = new QVBoxLayout;
    right->addWidget(destinationGroup);
    right->addWidget(m_labelGroup);

    // The dates.
    auto* range = new QWidget(m_pages);
    auto* rangeLayout = new QFormLayout(range);
    rangeLayout->addRow(QStringLiteral("From"), m_from);
    rangeLayout->addRow(QStringLiteral("To (and including)"), m_to);
    auto* separate = new QWidget(m_pages);
    auto* separateLayout = new QFormLayout(separate);
    for (int n = 0; n < 4; ++n) {
        m_dates[size_t(n)] = dateEdit(separate, n > 0);
        separateLayout->addRow(QStringLiteral("%1:").arg(n + 1), m_dates[size_t(n)]);
    }
    m_pages->addTab(range, QStringLiteral("Date Range"));
    m_pages->addTab(separate, QStringLiteral("Non-Contiguous Dates"));

    // The limits.
    auto* serviceLayout = new QVBoxLayout(m_serviceGroup);
    serviceLayout->addWidget(m_services);
    auto* kinds = new QButtonGroup(this);
    kinds->addButton(m_byRoutes);
    kinds->addButton(m_byCenters);
    auto* includes = new QButtonGroup(this);
    includes->addButton(m_include);
    includes->addButton(m_exclude);
    auto* routeLayout = new QGridLayout(m_routeGroup);
    auto* kindLayout = new QHBoxLayout;
    kindLayout->addWidget(m_byRoutes);
    kindLayout->addWidget(m_byCenters);
    kindLayout->addStretch();
    routeLayout->addLayout(kindLayout, 0, 0, 1, 2);
    routeLayout->addWidget(m_routes, 1, 0, 4, 1);
    routeLayout->addWidget(m_selectAll, 1, 1);
    routeLayout->addWidget(m_deselectAll, 2, 1);
    routeLayout->addWidget(m_include, 3, 1);
    routeLayout->addWidget(m_exclude, 4, 1, Qt::AlignTop);

    auto* top = new QHBoxLayout;
    top->addWidget(reportGroup, 3);
    top->addLayout(right, 2);
    auto* middle = new QHBoxLayout;
    middle->addWidget(m_pages, 1);
    middle->addWidget(m_serviceGroup, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    m_ok->setDefault(true);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(middle);
    layout->addWidget(m_routeGroup, 1);
    layout->addLayout(buttons);

    connect(m_reports, &QComboBox::currentIndexChanged, &m_presenter, &TFormRepChoice::setReportIndex);
    connect(m_screen, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_showing) m_presenter.setDestination(ReportDestination::Screen);
    });
    connect(m_printer, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_showing) m_presenter.setDestination(ReportDestination::Printer);
    });
    connect(m_pages, &QTabWidget::currentChanged, this, [this](int page) {
        if (!m_showing) m_presenter.setDatePage(page == 1 ? DatePage::NonContiguous : DatePage::Range);
    });
    connect(m_from, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        if (!m_showing) m_presenter.setFrom(d);
    });
    connect(m_to, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        if (!m_showing) m_presenter.setTo(d);
    });
    for (int n = 0; n < 4; ++n) {
        QDateEdit* edit = m_dates[size_t(n)];
        connect(edit, &QDateEdit::dateChanged, this, [this, n, edit](const QDate& d) {
            if (!m_showing) m_presenter.setSeparateDate(n, d == edit->minimumDate() && n > 0 ? QDate() : d);
        });
        edit->installEventFilter(this);
    }
    connect(m_services, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!m_showing)
            m_presenter.setServiceChecked(m_services->row(item), item->checkState() == Qt::Checked);
    });
    connect(m_routes, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!m_showing) m_presenter.setRouteChecked(m_routes->row(item), item->checkState() == Qt::Checked);
    });
    connect(m_byRoutes, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_showing) m_presenter.setRouteKind(RouteListKind::Routes);
    });
    connect(m_byCenters, &QRadioButton::toggled, this, [this](bool on) {
        if (on && !m_showing) m_presenter.setRouteKind(RouteListKind::DistributionCenters);
    });
    connect(m_exclude, &QRadioButton::toggled, this, [this](bool on) {
        if (!m_showing) m_presenter.setExcludeRoutes(on);
    });
    connect(m_labelStock, &QComboBox::currentIndexChanged, this, [this](int i) {
        if (!m_showing) m_presenter.setLabelStockIndex(i);
    });
    connect(m_labelStart, &QSpinBox::valueChanged, this, [this](int n) {
        if (!m_showing) m_presenter.setLabelStart(n);
    });
    connect(m_selectAll, &QPushButton::clicked, &m_presenter, &TFormRepChoice::selectAllRoutes);
    connect(m_deselectAll, &QPushButton::clicked, &m_presenter, &TFormRepChoice::deselectAllRoutes);
    connect(m_ok, &QPushButton::clicked, &m_presenter, &TFormRepChoice::ok);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(&m_presenter, &TFormRepChoice::stateChanged, this, &RepChoiceView::showState);
    showState();
}

RepChoiceView::~RepChoiceView() = default;

void RepChoiceView::fillList(QListWidget* list, const QStringList& entries, const std::vector<bool>& checked)
{
    if (list->count() != entries.size()) {
        list->clear();
        for (const QString& entry : entries) {
            auto* item = new QListWidgetItem(entry, list);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        }
    }
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem* item = list->item(i);
        if (item->text() != entries[i]) item->setText(entries[i]);
        item->setCheckState(i < int(checked.size()) && checked[size_t(i)] ? Qt::Checked : Qt::Unchecked);
    }
}

void RepChoiceView::showState()
{
    m_showing = true;
    m_reports->setCurrentIndex(m_presenter.reportIndex());
    (m_presenter.destination() == ReportDestination::Printer ? m_printer : m_screen)->setChecked(true);
    m_pages->setCurrentIndex(m_presenter.datePage() == DatePage::NonContiguous ? 1 : 0);
    m_from->setDate(m_presenter.from());
    m_to->setDate(m_presenter.to());
    for (int n = 0; n < 4; ++n) {
        m_dates[size_t(n)]->setDate(clearedOrDate(m_presenter.separateDate(n)));
        m_dates[size_t(n)]->setEnabled(m_presenter.separateDateEnabled(n));
    }
    const bool dates = m_presenter.datesEnabled() || m_presenter.reportIndex() < 0;
    m_from->setEnabled(dates);
    m_to->setEnabled(dates);
    fillList(m_services, m_presenter.services().entries, m_presenter.services().checked);
    fillList(m_routes, m_presenter.routes().entries, m_presenter.routes().checked);
    (m_presenter.routeKind() == RouteListKind::Routes ? m_byRoutes : m_byCenters)->setChecked(true);
    m_include->setText(m_presenter.includeCaption());
    m_exclude->setText(m_presenter.excludeCaption());
    (m_presenter.excludeRoutes() ? m_exclude : m_include)->setChecked(true);
    const bool limits = m_presenter.limitsEnabled() || m_presenter.reportIndex() < 0;
    for (QWidget* w : std::initializer_list<QWidget*>{m_services, m_byRoutes, m_byCenters, m_routes,
                                                      m_include, m_exclude, m_selectAll, m_deselectAll})
        w->setEnabled(limits);
    m_labelGroup->setEnabled(m_presenter.labelOptionsEnabled());
    m_labelStock->setCurrentIndex(m_presenter.labelStockIndex());
    const int perSheet = m_presenter.labelsPerSheet();
    m_labelStart->setMaximum(perSheet > 0 ? perSheet : 1000);
    m_labelStart->setValue(m_presenter.labelStart());
    m_ok->setEnabled(m_presenter.buttonsEnabled());
    m_cancel->setEnabled(m_presenter.buttonsEnabled());
    m_showing = false;
}

bool RepChoiceView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn) {
        for (int n = 1; n < 4; ++n) {
            if (watched == m_dates[size_t(n)]) m_presenter.enterSeparateDate(n);
        }
    }
    return QDialog::eventFilter(watched, event);
}

void RepChoiceView::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    menu.addAction(QStringLiteral("Edit Report Driver Messages"), this, [this] {
        if (m_editMessages) m_editMessages();
    });
    menu.addAction(QStringLiteral("Close"), this, &QDialog::reject);
    menu.exec(event->globalPos());
}

void RepChoiceView::done(int result)
{
    if (m_settings) saveFormPosition(*this, *m_settings, objectName());
    m_presenter.FormClose();
    QDialog::done(result);
}

} // namespace kb::ui
