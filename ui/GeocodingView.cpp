#include "GeocodingView.h"

#include "TFormGeocodeAddresses.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

GeocodingView::GeocodingView(TFormGeocodeAddresses& presenter, const SessionState& session, UserInterface& ui,
                             QWidget* parent)
    : QDialog(parent),
      m_presenter(presenter),
      m_session(session),
      m_ui(ui),
      m_web(new QLineEdit(presenter.webAddress(), this)),
      m_client(new QLineEdit(this)),
      m_activeOnly(new QCheckBox(QStringLiteral("Active Clients Only"), this)),
      m_grid(new QTableWidget(this))
{
    setWindowTitle(TFormGeocodeAddresses::caption());
    setObjectName(QStringLiteral("FormGeocodeAddresses"));
    resize(1200, 600);
    m_activeOnly->setChecked(true);
    m_web->setPlaceholderText(QStringLiteral("none: only the agency's own addresses are used"));
    m_client->setMaximumWidth(120);

    auto* saveWeb = new QPushButton(QStringLiteral("Save"), this);
    auto* webRow = new QHBoxLayout;
    webRow->addWidget(new QLabel(QStringLiteral("Web geocoding service:"), this));
    webRow->addWidget(m_web, 1);
    webRow->addWidget(saveWeb);

    auto* missing = new QPushButton(QStringLiteral("Look Up Clients Without Coordinates"), this);
    auto* one = new QPushButton(QStringLiteral("Look Up Client"), this);
    auto* accept = new QPushButton(QStringLiteral("Store Coordinates of Selected Rows"), this);
    auto* commands = new QHBoxLayout;
    commands->addWidget(missing);
    commands->addWidget(m_activeOnly);
    commands->addSpacing(20);
    commands->addWidget(new QLabel(QStringLiteral("Client ID:"), this));
    commands->addWidget(m_client);
    commands->addWidget(one);
    commands->addStretch();
    commands->addWidget(accept);

    m_grid->setColumnCount(int(TFormGeocodeAddresses::columnTitles().size()));
    m_grid->setHorizontalHeaderLabels(TFormGeocodeAddresses::columnTitles());
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setWordWrap(false);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(webRow);
    layout->addLayout(commands);
    layout->addWidget(new QLabel(QStringLiteral("Answers found and not yet stored. \"Exact\" is the address itself; "
                                                "\"Approximate\" is only its street, postal code or town."),
                                 this));
    layout->addWidget(m_grid, 1);

    connect(saveWeb, &QPushButton::clicked, this, [this] { m_presenter.saveWebAddress(m_web->text()); });
    connect(missing, &QPushButton::clicked, this, [this] { m_presenter.ActionLookUpMissing(m_activeOnly->isChecked()); });
    connect(one, &QPushButton::clicked, this, [this] { m_presenter.ActionLookUpClient(m_client->text()); });
    connect(accept, &QPushButton::clicked, this, [this] {
        QList<int> rows;
        for (const QModelIndex& index : m_grid->selectionModel()->selectedRows())
            rows << index.row();
        m_presenter.ActionAccept(rows);
    });
    connect(&m_presenter, &TFormGeocodeAddresses::changed, this, &GeocodingView::showMatches);
    showMatches();
}

void GeocodingView::showMatches()
{
    const auto& matches = m_presenter.matches();
    m_grid->setRowCount(int(matches.size()));
    for (int r = 0; r < int(matches.size()); ++r) {
        const QStringList values = TFormGeocodeAddresses::columnValues(matches[size_t(r)]);
        for (int c = 0; c < values.size(); ++c)
            m_grid->setItem(r, c, new QTableWidgetItem(values[c]));
    }
    m_grid->resizeColumnsToContents();
    if (m_web->text() != m_presenter.webAddress())
        m_web->setText(m_presenter.webAddress());
}

void GeocodingView::done(int result)
{
    QDialog::done(result);
}

} // namespace kb::ui
