#include "clients/RelatedClientsView.h"

#include "FormPlacement.h"
#include "individuals/TFormRelatedClients.h"
#include "settings/SettingsFile.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

RelatedClientsView::RelatedClientsView(TFormRelatedClients& presenter, SettingsFile& settings,
                                       QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_table(new QTableWidget(this))
{
    setWindowTitle(presenter.caption());
    const QStringList titles = TFormRelatedClients::columnTitles();
    m_table->setColumnCount(int(titles.size()));
    m_table->setHorizontalHeaderLabels(titles);
    m_table->setRowCount(presenter.rowCount());
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setAlternatingRowColors(true);
    for (int r = 0; r < presenter.rowCount(); ++r) {
        const QStringList texts = presenter.rowTexts(r);
        for (int c = 0; c < texts.size(); ++c)
            m_table->setItem(r, c, new QTableWidgetItem(texts[c]));
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);
    if (presenter.rowCount() > 0) m_table->selectRow(0);
    connect(m_table, &QTableWidget::cellDoubleClicked, this, [this](int row) {
        m_presenter.ActivateRow(row);
        accept();
    });

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    auto* hint = new QLabel(QStringLiteral("Double-click a client to show that client."), this);
    layout->addWidget(hint);
    layout->addWidget(m_table, 1);
    layout->addWidget(buttons);
    keepPlacement(*this, settings, QStringLiteral("TFormRelatedClients"), QSize(560, 320));
}

} // namespace kb::ui
