#include "clients/StoppedClientsView.h"

#include "FormPlacement.h"
#include "suspensions/TFormStoppedClients.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

StoppedClientsView::StoppedClientsView(TFormStoppedClients& presenter, SettingsFile& settings,
                                       QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_table(new QTableWidget(this)), m_ok(nullptr)
{
    setWindowTitle(presenter.caption());
    const auto& rows = presenter.rows();
    m_table->setColumnCount(int(TFormStoppedClients::columnTitles().size()));
    m_table->setHorizontalHeaderLabels(TFormStoppedClients::columnTitles());
    m_table->setRowCount(int(rows.size()));
    m_table->verticalHeader()->hide();
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    for (int r = 0; r < int(rows.size()); ++r) {
        const auto& row = rows[size_t(r)];
        const QStringList texts = {row.clientId,
                                   row.firstName,
                                   row.lastName,
                                   QString(),
                                   row.stopDate.toString(QStringLiteral("MM/dd/yyyy")),
                                   row.stopReason,
                                   row.note};
        for (int c = 0; c < texts.size(); ++c) {
            if (c == 3) continue;
            auto* item = new QTableWidgetItem(texts[c]);
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            m_table->setItem(r, c, item);
        }
        auto* status = new QComboBox(m_table);
        for (const TFormStoppedClients::Choice& choice : presenter.choices())
            status->addItem(choice.word, choice.code);
        status->setCurrentIndex(status->findData(row.status));
        connect(status, &QComboBox::currentIndexChanged, this,
                [this, r, status] { m_presenter.setStatus(r, status->currentData().toString()); });
        m_table->setCellWidget(r, 3, status);
    }
    m_table->resizeColumnsToContents();
    m_table->horizontalHeader()->setStretchLastSection(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_ok = buttons->button(QDialogButtonBox::Ok);
    QPushButton* print = buttons->addButton(QStringLiteral("Print Report"), QDialogButtonBox::ActionRole);
    print->setEnabled(presenter.printEnabled());
    connect(print, &QPushButton::clicked, this, [this] {
        bool chosen = false;
        const QString destination = QInputDialog::getItem(
            this, QStringLiteral("Print Report"), QStringLiteral("Select a Destination"),
            {QStringLiteral("Screen"), QStringLiteral("Printer")}, 0, false, &chosen);
        if (chosen) m_presenter.ActionPrintReport(destination == QLatin1String("Printer"));
    });
    m_ok->setEnabled(presenter.okEnabled());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        m_presenter.ActionOk();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    keepPlacement(*this, settings, QStringLiteral("TFormStoppedClients"), QSize(820, 480));
}

} // namespace kb::ui
