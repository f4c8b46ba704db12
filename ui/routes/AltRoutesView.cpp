#include "routes/AltRoutesView.h"

#include "FormPlacement.h"
#include "assign/TFormAltRoutes.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const char* const DayNames[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};

} // namespace

AltRoutesView::AltRoutesView(TFormAltRoutes& presenter, SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(TFormAltRoutes::caption());
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("<b>Day</b>"), this), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("<b>Route</b>"), this), 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("<b>Stop</b>"), this), 0, 2);
    const QStringList routes = presenter.routeChoices();
    for (int d = 0; d < 7; ++d) {
        grid->addWidget(new QLabel(QString::fromLatin1(DayNames[d]), this), d + 1, 0);
        m_routes[d] = new QComboBox(this);
        m_routes[d]->addItem(QString());
        m_routes[d]->addItems(routes);
        m_routes[d]->setMinimumContentsLength(24);
        m_routes[d]->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        grid->addWidget(m_routes[d], d + 1, 1);
        m_stops[d] = new QDoubleSpinBox(this);
        m_stops[d]->setRange(0, 99999);
        m_stops[d]->setDecimals(2);
        m_stops[d]->setSpecialValueText(QStringLiteral(" "));
        grid->addWidget(m_stops[d], d + 1, 2);
        if (presenter.hasAddressOverride(d)) {
            auto* marker = new QLabel(QStringLiteral("Address Override"), this);
            marker->setStyleSheet(QStringLiteral("color: #8a5a00;"));
            grid->addWidget(marker, d + 1, 3);
        }
        connect(m_routes[d], &QComboBox::activated, this, [this, d](int index) {
            if (m_showing) return;
            m_presenter.setRoute(d, index <= 0 ? QString() : m_routes[d]->itemText(index));
            showDays();
        });
        connect(m_stops[d], &QDoubleSpinBox::valueChanged, this, [this, d](double value) {
            if (!m_showing) m_presenter.setStop(d, value <= 0 ? QVariant() : QVariant(value));
        });
    }
    auto* intro = new QLabel(
        QStringLiteral("A day without a route of its own uses the client's default route and stop."), this);
    intro->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addLayout(grid);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showDays();
    keepPlacement(*this, settings, QStringLiteral("TFormAltRoutes"), QSize());
}

void AltRoutesView::showDays()
{
    m_showing = true;
    for (int d = 0; d < 7; ++d) {
        const QString route = m_presenter.route(d).trimmed();
        int index = 0;
        for (int i = 1; i < m_routes[d]->count(); ++i)
            if (m_routes[d]->itemText(i).section(QLatin1Char('-'), 0, 0).trimmed() == route) index = i;
        m_routes[d]->setCurrentIndex(index);
        m_routes[d]->setEnabled(m_presenter.routeEnabled(d));
        m_stops[d]->setValue(m_presenter.stop(d).toDouble());
        m_stops[d]->setEnabled(m_presenter.stopEnabled(d));
    }
    m_showing = false;
}

void AltRoutesView::done(int result)
{
    m_presenter.close(result == Accepted);
    QDialog::done(result);
}

} // namespace kb::ui
