#include "routes/ReassignRoutesView.h"

#include "FormPlacement.h"
#include "UserInterface.h"
#include "assign/TFormReassignScheduledAndEpisodicRoutes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace kb::ui {

namespace {

const char* const DayNames[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

// A route code with its description when the list knows it.
QString routeText(const QStringList& entries, const QString& code)
{
    if (code.isEmpty()) return QStringLiteral("(none)");
    for (const QString& entry : entries)
        if (entry.section(QLatin1Char('-'), 0, 0).trimmed() == code) return entry;
    return code;
}

} // namespace

ReassignRoutesView::ReassignRoutesView(TFormReassignScheduledAndEpisodicRoutes& presenter, UserInterface& ui,
                                       SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_ui(ui), m_route(new QComboBox(this)), m_menu(new QMenu(this))
{
    setWindowTitle(TFormReassignScheduledAndEpisodicRoutes::caption());
    const QStringList& routes = presenter.routeEntries();

    auto* current = new QFormLayout;
    current->addRow(presenter.defaultRouteCaption() + QLatin1Char(':'),
                    new QLabel(routeText(routes, presenter.defaultRoute()), this));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(current);
    if (presenter.showsDayRoutes()) {
        auto* dayRoutes = new QGroupBox(QStringLiteral("Day-Specific Routes"), this);
        auto* grid = new QFormLayout(dayRoutes);
        for (int d = 0; d < 7; ++d)
            grid->addRow(QString::fromLatin1(DayNames[d]) + QLatin1Char(':'),
                         new QLabel(presenter.dayRoute(d).isEmpty()
                                        ? QStringLiteral("(default route)")
                                        : routeText(routes, presenter.dayRoute(d)),
                                    this));
        layout->addWidget(dayRoutes);
    }

    using DayCommand = void (TFormReassignScheduledAndEpisodicRoutes::*)();
    const std::pair<const char*, DayCommand> dayCommands[] = {
        {"Uncheck All Days", &TFormReassignScheduledAndEpisodicRoutes::uncheckAllDays},
        {"Check All Days", &TFormReassignScheduledAndEpisodicRoutes::checkAllDays},
        {"Check All Weekdays", &TFormReassignScheduledAndEpisodicRoutes::checkAllWeekdays},
        {"Check Weekend Days", &TFormReassignScheduledAndEpisodicRoutes::checkWeekendDays},
        {"Reverse Checkmarks", &TFormReassignScheduledAndEpisodicRoutes::reverseCheckmarks}};
    for (const auto& [text, command] : dayCommands)
        m_menu->addAction(QString::fromLatin1(text), this, [this, command = command] {
            (m_presenter.*command)();
            showDays();
        });
    auto* days = new QGroupBox(QStringLiteral("Delivery Days to be Reassigned"), this);
    days->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(days, &QWidget::customContextMenuRequested, this,
            [this, days](const QPoint& at) { m_menu->popup(days->mapToGlobal(at)); });
    auto* dayGrid = new QGridLayout(days);
    for (int d = 0; d < 7; ++d) {
        m_days[d] = new QCheckBox(QString::fromLatin1(DayNames[d]), days);
        dayGrid->addWidget(m_days[d], d % 4, d / 4);
        connect(m_days[d], &QCheckBox::toggled, this, [this, d](bool on) {
            if (m_showing) return;
            m_presenter.setDayChecked(d, on);
            showDays();
        });
    }
    // The same pop-up from a button, for those who do not look for it on a right click.
    auto* choose = new QToolButton(days);
    choose->setText(QStringLiteral("Days"));
    choose->setMenu(m_menu);
    choose->setPopupMode(QToolButton::InstantPopup);
    dayGrid->addWidget(choose, 3, 1, Qt::AlignRight);
    layout->addWidget(days);

    m_route->addItems(routes);
    m_route->setCurrentIndex(int(routes.indexOf(presenter.routeEntry())));
    connect(m_route, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        if (m_showing) return;
        m_presenter.setRouteEntry(text);
        showDays();
    });
    auto* target = new QFormLayout;
    target->addRow(QStringLiteral("Reassign to route:"), m_route);
    layout->addLayout(target);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    showDays();
    setMinimumWidth(360);
    keepPlacement(*this, settings, QStringLiteral("TFormReassignScheduledAndEpisodicRoutes"), QSize());
}

void ReassignRoutesView::showDays()
{
    m_showing = true;
    for (int d = 0; d < 7; ++d)
        m_days[d]->setChecked(m_presenter.dayChecked(d));
    m_ok->setEnabled(m_presenter.okEnabled());
    m_showing = false;
}

void ReassignRoutesView::accept()
{
    if (!m_presenter.okEnabled()) return;
    try {
        m_moved = m_presenter.apply();
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
        return;
    }
    QDialog::accept();
}

} // namespace kb::ui
