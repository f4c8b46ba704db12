#include "schedule/dated/ClientEpisodicItemsView.h"

#include "FormPlacement.h"
#include "dated/TFormClientEpisodicItems.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

using Items = TFormClientEpisodicItems;

int quantityColumn(int meal)
{
    return 2 + meal * 2;
}

} // namespace

ClientEpisodicItemsView::ClientEpisodicItemsView(TFormClientEpisodicItems& presenter, SettingsFile& settings,
                                                 QWidget* parent)
    : QDialog(parent), m_presenter(presenter)
{
    setWindowTitle(Items::caption());
    m_begin = new QDateEdit(presenter.begin());
    m_end = new QDateEdit(presenter.end());
    for (QDateEdit* edit : {m_begin, m_end})
        edit->setCalendarPopup(true);
    m_retrieve = new QPushButton(QStringLiteral("Retrieve"));
    auto* range = new QFormLayout;
    range->addRow(QStringLiteral("Starting Date of Deliveries:"), m_begin);
    range->addRow(QStringLiteral("Ending Date of Deliveries:"), m_end);
    auto* top = new QHBoxLayout;
    top->addLayout(range);
    top->addWidget(m_retrieve, 0, Qt::AlignBottom);
    top->addStretch();

    QStringList headers{QStringLiteral("Delivery Date"), QStringLiteral("Deliver")};
    for (int m = 0; m < Items::MealCount; ++m)
        headers << Items::mealCaption(m) + QStringLiteral(" Qty") << Items::mealCaption(m);
    m_grid = new QTableWidget(0, int(headers.size()));
    m_grid->setHorizontalHeaderLabels(headers);
    m_grid->verticalHeader()->hide();
    m_grid->setSelectionMode(QAbstractItemView::NoSelection);

    m_save = new QPushButton(QStringLiteral("Save"));
    auto* close = new QPushButton(QStringLiteral("Close"));
    auto* commands = new QHBoxLayout;
    commands->addStretch();
    commands->addWidget(m_save);
    commands->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_grid, 1);
    layout->addLayout(commands);

    connect(m_retrieve, &QPushButton::clicked, this, [this] {
        m_presenter.setBegin(m_begin->date());
        m_presenter.setEnd(m_end->date());
        m_presenter.ActionRetrieve();
        fill();
    });
    connect(m_save, &QPushButton::clicked, this, [this] {
        if (m_presenter.ActionSave()) fill();
    });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    m_save->setEnabled(false);
    keepPlacement(*this, settings, QStringLiteral("TFormClientEpisodicItems"), QSize(1100, 520));
}

void ClientEpisodicItemsView::fill()
{
    const auto& rows = m_presenter.rows();
    m_grid->setRowCount(0);
    m_grid->setRowCount(int(rows.size()));
    const QLocale locale;
    for (int r = 0; r < int(rows.size()); ++r) {
        const Items::Row& row = rows[size_t(r)];
        auto* date = new QTableWidgetItem(locale.toString(row.date, QStringLiteral("ddd, MMM d, yyyy")));
        date->setFlags(Qt::ItemIsEnabled);
        m_grid->setItem(r, 0, date);
        auto* deliver = new QCheckBox;
        deliver->setChecked(row.deliver);
        m_grid->setCellWidget(r, 1, deliver);
        connect(deliver, &QCheckBox::toggled, this, [this, r](bool on) {
            m_presenter.setDeliver(r, on);
            m_save->setEnabled(true);
        });
        for (int m = 0; m < Items::MealCount; ++m) {
            auto* quantity = new QSpinBox;
            quantity->setRange(0, 99);
            quantity->setValue(row.meals[size_t(m)].quantity);
            auto* item = new QComboBox;
            item->setMinimumContentsLength(14);
            item->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
            item->addItem(QString(), 0);
            for (const auto& choice : m_presenter.items(m))
                item->addItem(choice.text, choice.itemId);
            item->setCurrentIndex(std::max(0, item->findData(row.meals[size_t(m)].itemId)));
            m_grid->setCellWidget(r, quantityColumn(m), quantity);
            m_grid->setCellWidget(r, quantityColumn(m) + 1, item);
            const auto changed = [this, r, m, quantity, item] {
                m_presenter.setMeal(r, m, quantity->value(), item->currentData().toLongLong());
                m_save->setEnabled(true);
            };
            connect(quantity, &QSpinBox::valueChanged, this, changed);
            connect(item, &QComboBox::currentIndexChanged, this, changed);
        }
    }
    m_grid->resizeColumnsToContents();
    m_save->setEnabled(false);
}

void ClientEpisodicItemsView::done(int result)
{
    if (!m_presenter.close()) return;
    QDialog::done(result);
}

} // namespace kb::ui
