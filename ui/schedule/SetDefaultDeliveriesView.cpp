#include "schedule/SetDefaultDeliveriesView.h"

#include "FormPlacement.h"
#include "dataset/QueryDataSet.h"
#include "defaults/TFormSetDefaultDeliveries.h"
#include "defaults/Weekdays.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

enum Column { DayColumn, QuantityColumn, ItemColumn, OrderColumn };

} // namespace

SetDefaultDeliveriesView::SetDefaultDeliveriesView(TFormSetDefaultDeliveries& presenter,
                                                   SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_settings(settings), m_services(new QComboBox(this)),
      m_days(new QButtonGroup(this)), m_grid(new QTableWidget(0, 4, this)), m_body(new QVBoxLayout(this)),
      m_commands(new QHBoxLayout)
{
    setObjectName(m_presenter.screenName());
    setWindowTitle(m_presenter.title());
    m_presenter.FormShow();

    QVBoxLayout* layout = m_body;
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(QStringLiteral("Service:"), this));
    m_services->addItems(m_presenter.serviceEntries());
    m_services->setCurrentIndex(m_presenter.serviceIndex());
    top->addWidget(m_services, 1);
    layout->addLayout(top);

    auto* days = new QHBoxLayout;
    for (int d = 0; d < 7; ++d) {
        auto* button = new QPushButton(weekdays()[size_t(d)].caption, this);
        button->setObjectName(weekdays()[size_t(d)].caption);
        button->setCheckable(true);
        button->setEnabled(m_presenter.isDayEnabled(d));
        button->setChecked(d == m_presenter.day());
        m_days->addButton(button, d);
        days->addWidget(button);
    }
    m_days->setExclusive(true);
    days->addStretch();
    layout->addLayout(days);

    m_grid->setHorizontalHeaderLabels(
        {QStringLiteral("Day"), QStringLiteral("Quantity"), QStringLiteral("Item"), QStringLiteral("Order")});
    m_grid->verticalHeader()->hide();
    if (m_presenter.readOnly()) m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->horizontalHeader()->setSectionResizeMode(ItemColumn, QHeaderView::Stretch);
    layout->addWidget(m_grid, 1);

    m_commands->addStretch();
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    m_commands->addWidget(close);
    m_buttons.append(close);
    TFormSetDefaultDeliveries& p = m_presenter;
    addCommand(QStringLiteral("Add Item"), [&p] { p.ActionAddItem(); });
    addCommand(
        QStringLiteral("Delete Item"), [&p] { p.ActionDeleteItem(); }, true);
    addCommand(
        QStringLiteral("Move Up"), [&p] { p.ActionMoveUp(); }, true);
    addCommand(
        QStringLiteral("Move Down"), [&p] { p.ActionMoveDown(); }, true);
    addCommand(QStringLiteral("Dupe Monday"), [&p] { p.ActionDupeMonday(); });
    layout->addLayout(m_commands);

    connect(m_services, &QComboBox::currentIndexChanged, this, [this](int index) {
        if (m_showing) return;
        m_presenter.setServiceIndex(index);
        showList();
    });
    connect(m_days, &QButtonGroup::idClicked, this, [this](int day) {
        m_presenter.setDay(day);
        showList();
    });
    connect(m_grid, &QTableWidget::cellChanged, this, &SetDefaultDeliveriesView::cellEdited);
    connect(m_grid, &QTableWidget::currentCellChanged, this, [this](int row, int, int previous, int) {
        if (m_showing || row < 0 || row == previous) return;
        m_presenter.post();
        m_presenter.list().setRecNo(row + 1);
    });
    showList();
    keepPlacement(*this, settings, m_presenter.screenName(), QSize(620, 420));
}

QPushButton* SetDefaultDeliveriesView::button(const QString& name) const
{
    for (QPushButton* b : m_buttons)
        if (b->objectName() == name) return b;
    return nullptr;
}

QPushButton* SetDefaultDeliveriesView::addCommand(const QString& text, std::function<void()> action,
                                                  bool needsLine)
{
    auto* button = new QPushButton(text, this);
    button->setObjectName(text);
    connect(button, &QPushButton::clicked, this, [this, action = std::move(action)] {
        action();
        showList();
    });
    // Before the stretch that keeps "Close" at the right.
    m_commands->insertWidget(m_commands->count() - 2, button);
    m_buttons.append(button);
    if (needsLine) m_lineButtons.append(button);
    if (m_presenter.readOnly()) button->hide();
    return button;
}

void SetDefaultDeliveriesView::showList()
{
    m_showing = true;
    if (m_days->button(m_presenter.day())) m_days->button(m_presenter.day())->setChecked(true);
    m_services->setCurrentIndex(m_presenter.serviceIndex());
    QueryDataSet& list = m_presenter.list();
    const int rows = list.isActive() ? list.recordCount() : 0;
    m_grid->clearContents();
    m_grid->setRowCount(rows);
    const int day = list.fieldIndex(u"Del_Day");
    const int quantity = list.fieldIndex(u"Quantity");
    const int item = list.fieldIndex(u"Item_ID");
    const int order = list.fieldIndex(u"Sort_Order");
    for (int r = 0; r < rows; ++r) {
        auto* dayCell = new QTableWidgetItem(list.fieldValueAt(r, day).toString());
        dayCell->setFlags(dayCell->flags() & ~Qt::ItemIsEditable);
        m_grid->setItem(r, DayColumn, dayCell);
        m_grid->setItem(r, QuantityColumn, new QTableWidgetItem(list.fieldValueAt(r, quantity).toString()));
        m_grid->setItem(r, OrderColumn, new QTableWidgetItem(list.fieldValueAt(r, order).toString()));
        auto* items = new QComboBox(m_grid);
        items->addItem(QString(), QVariant());
        for (const auto& choice : m_presenter.itemChoices())
            items->addItem(choice.name, choice.itemId);
        items->setCurrentIndex(std::max(0, items->findData(list.fieldValueAt(r, item))));
        connect(items, &QComboBox::currentIndexChanged, this, [this, items, r] {
            if (m_showing) return;
            m_presenter.list().setRecNo(r + 1);
            m_presenter.setValue(QStringLiteral("Item_ID"), items->currentData());
            m_presenter.post();
        });
        items->setEnabled(!m_presenter.readOnly());
        m_grid->setCellWidget(r, ItemColumn, items);
    }
    if (rows > 0) m_grid->setCurrentCell(list.recNo() - 1, QuantityColumn);
    m_grid->resizeColumnToContents(DayColumn);
    m_grid->resizeColumnToContents(QuantityColumn);
    m_grid->resizeColumnToContents(OrderColumn);
    for (QPushButton* b : m_lineButtons)
        b->setEnabled(rows > 0);
    m_showing = false;
}

void SetDefaultDeliveriesView::cellEdited(int row, int column)
{
    if (m_showing) return;
    m_presenter.list().setRecNo(row + 1);
    const QString field =
        column == QuantityColumn ? QStringLiteral("Quantity") : QStringLiteral("Sort_Order");
    const QString text = m_grid->item(row, column)->text().trimmed();
    if (m_presenter.setValue(field, text.isEmpty() ? QVariant() : QVariant(text)) && m_presenter.post()) {
        // A new order shows at once.
        if (column == OrderColumn) {
            m_presenter.list().refresh();
            showList();
        }
        return;
    }
    showList();
}

void SetDefaultDeliveriesView::done(int result)
{
    if (!m_presenter.FormClose()) return;
    QDialog::done(result);
}

} // namespace kb::ui
