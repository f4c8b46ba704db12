#include "ShowHouseholdMembersView.h"

#include "FormPlacement.h"
#include "screens/TFormShowHouseholdMembers.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString FormName = QStringLiteral("TFormShowHouseholdMembers");

QString dateText(const QDate& date)
{
    return date.isValid() ? date.toString(QStringLiteral("MM/dd/yyyy")) : QString();
}

} // namespace

ShowHouseholdMembersView::ShowHouseholdMembersView(TFormShowHouseholdMembers& presenter, SettingsFile& settings,
                                                   QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_grid(new QTableWidget(this)),
      m_migrate(new QPushButton(QStringLiteral("&Migrate"), this))
{
    setWindowTitle(TFormShowHouseholdMembers::caption());
    auto* intro = new QLabel(
        QStringLiteral("Compare the status, dates, delivery days, routes and stops of these members "
                       "with the client just saved. Migrate copies the client's delivery settings "
                       "to the selected member."),
        this);
    intro->setWordWrap(true);

    const QStringList titles = TFormShowHouseholdMembers::columnTitles();
    m_grid->setColumnCount(int(titles.size()));
    m_grid->setHorizontalHeaderLabels(titles);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setWordWrap(false);
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setStretchLastSection(true);

    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_migrate);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_grid, 1);
    layout->addLayout(buttons);

    connect(m_grid, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (!m_showing) m_presenter.setCurrent(row);
    });
    connect(m_migrate, &QPushButton::clicked, this, [this] { m_presenter.ActionMigrate(); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    m_presenter.setOnChanged([this] { showMembers(); });
    showMembers();
    keepPlacement(*this, settings, FormName, QSize(860, 320));
}

ShowHouseholdMembersView::~ShowHouseholdMembersView()
{
    m_presenter.setOnChanged({});
}

void ShowHouseholdMembersView::showMembers()
{
    m_showing = true;
    const auto& members = m_presenter.members();
    m_grid->setRowCount(int(members.size()));
    for (int r = 0; r < members.size(); ++r) {
        const auto& m = members[r];
        const QStringList cells = {
            m.clientId, m.name,    m.status, dateText(m.startDate), dateText(m.stopDate), m.frequency,
            m.route,    m.service, m.days};
        for (int c = 0; c < cells.size(); ++c)
            m_grid->setItem(r, c, new QTableWidgetItem(cells[c]));
    }
    m_grid->resizeColumnsToContents();
    if (m_presenter.current() >= 0) m_grid->setCurrentCell(m_presenter.current(), 0);
    m_migrate->setEnabled(m_presenter.canMigrate());
    m_showing = false;
}

} // namespace kb::ui
