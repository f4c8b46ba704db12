#include "clientwindow/CustomFilterDialog.h"

#include "catalogue/ColumnLabels.h"
#include "dataset/DataSet.h"
#include "window/ClientCustomFilter.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

CustomFilterDialog::CustomFilterDialog(ClientCustomFilter& filter, const DataSet& clients, QWidget* parent)
    : QDialog(parent), m_filter(filter), m_table(new QTableWidget(0, 3, this))
{
    setWindowTitle(ClientCustomFilter::caption());
    for (int i = 0; i < clients.fieldCount(); ++i)
        if (clients.field(i).kind == DataSet::FieldKind::Data) m_columns.append(clients.field(i).name);
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Field"), QStringLiteral("Condition"), QStringLiteral("Value")});
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);

    auto* intro = new QLabel(QStringLiteral("Show only the clients that meet every condition below."), this);
    auto* add = new QPushButton(QStringLiteral("&Add Condition"), this);
    auto* remove = new QPushButton(QStringLiteral("&Remove Condition"), this);
    auto* clear = new QPushButton(QStringLiteral("C&lear All"), this);
    auto* edits = new QHBoxLayout;
    edits->addWidget(add);
    edits->addWidget(remove);
    edits->addWidget(clear);
    edits->addStretch();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_table, 1);
    layout->addLayout(edits);
    layout->addWidget(buttons);

    connect(add, &QPushButton::clicked, this, [this] { addCondition(); });
    connect(remove, &QPushButton::clicked, this, [this] {
        if (m_table->currentRow() >= 0) m_table->removeRow(m_table->currentRow());
    });
    connect(clear, &QPushButton::clicked, this, [this] { m_table->setRowCount(0); });
    connect(buttons, &QDialogButtonBox::accepted, this, &CustomFilterDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    for (const ClientCustomFilter::Condition& c : m_filter.conditions())
        addCondition(c.column, int(c.op), c.value);
    if (m_table->rowCount() == 0) addCondition();
    m_table->resizeColumnsToContents();
    resize(620, 320);
}

void CustomFilterDialog::addCondition(const QString& column, int op, const QString& value)
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    auto* fields = new QComboBox(m_table);
    for (const QString& name : m_columns)
        fields->addItem(plainColumnLabel(name), name);
    fields->setCurrentIndex(
        std::max(0, fields->findData(column.toUpper(), Qt::UserRole, Qt::MatchFixedString)));
    auto* ops = new QComboBox(m_table);
    ops->addItems(ClientCustomFilter::operatorTexts());
    ops->setCurrentIndex(op);
    auto* text = new QLineEdit(value, m_table);
    m_table->setCellWidget(row, 0, fields);
    m_table->setCellWidget(row, 1, ops);
    m_table->setCellWidget(row, 2, text);
    connect(ops, &QComboBox::currentIndexChanged, text, [text](int index) {
        text->setEnabled(ClientCustomFilter::takesValue(ClientCustomFilter::Operator(index)));
    });
    text->setEnabled(ClientCustomFilter::takesValue(ClientCustomFilter::Operator(op)));
    m_table->setCurrentCell(row, 0);
}

void CustomFilterDialog::accept()
{
    QList<ClientCustomFilter::Condition> conditions;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const auto* fields = qobject_cast<QComboBox*>(m_table->cellWidget(row, 0));
        const auto* ops = qobject_cast<QComboBox*>(m_table->cellWidget(row, 1));
        const auto* text = qobject_cast<QLineEdit*>(m_table->cellWidget(row, 2));
        if (!fields || !ops || !text) continue;
        const auto op = ClientCustomFilter::Operator(ops->currentIndex());
        if (ClientCustomFilter::takesValue(op) && text->text().trimmed().isEmpty()) continue;
        conditions.append({fields->currentData().toString(), op, text->text()});
    }
    m_filter.setConditions(conditions);
    QDialog::accept();
}

} // namespace kb::ui
