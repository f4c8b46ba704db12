#include "VisibleFieldsView.h"

#include "FormPlacement.h"

#include "UserInterface.h"
#include "settings/TVisibleFieldsDlg.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace kb::ui {

VisibleFieldsView::VisibleFieldsView(TVisibleFieldsDlg& presenter, UserInterface& ui, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_ui(ui), m_available(new QListWidget(this)),
      m_visible(new QListWidget(this))
{
    setWindowTitle(TVisibleFieldsDlg::caption());
    setObjectName(QStringLiteral("TVisibleFieldsDlg"));
    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel(QStringLiteral("Available Fields"), this), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Visible Fields"), this), 0, 2);
    grid->addWidget(m_available, 1, 0);
    grid->addWidget(m_visible, 1, 2);
    auto* moves = new QVBoxLayout;
    const auto button = [&](const QString& text, QBoxLayout* box, auto slot) {
        auto* b = new QPushButton(text, this);
        box->addWidget(b);
        connect(b, &QPushButton::clicked, this, slot);
        return b;
    };
    moves->addStretch();
    button(QStringLiteral(">"), moves, [this] {
        m_presenter.showField(m_available->currentRow());
        showLists(int(m_presenter.visible().size()) - 1);
    });
    button(QStringLiteral(">>"), moves, [this] {
        m_presenter.showAll();
        showLists();
    });
    button(QStringLiteral("<"), moves, [this] {
        m_presenter.hideField(m_visible->currentRow());
        showLists();
    });
    button(QStringLiteral("<<"), moves, [this] {
        m_presenter.hideAll();
        showLists();
    });
    moves->addStretch();
    grid->addLayout(moves, 1, 1);
    auto* order = new QVBoxLayout;
    button(QStringLiteral("Move &Up"), order, [this] {
        const int row = m_visible->currentRow();
        m_presenter.moveUp(row);
        showLists(row - 1);
    });
    button(QStringLiteral("Move &Down"), order, [this] {
        const int row = m_visible->currentRow();
        m_presenter.moveDown(row);
        showLists(row + 1);
    });
    button(QStringLiteral("Sort List Alphabetically"), order, [this] {
        m_presenter.sortAlphabetically();
        showLists();
    });
    button(QStringLiteral("Show Information On Selected"), order, [this] {
        const QString text = m_presenter.information(m_visible->currentRow());
        if (!text.isEmpty()) m_ui.information(text);
    });
    button(QStringLiteral("Modify Onscreen Label"), order, [this] { modifyLabel(); });
    order->addStretch();
    grid->addLayout(order, 1, 3);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(fittingSize(*this, QSize(760, 480)));
    showLists();
    m_opened = m_presenter.memoText();
}

void VisibleFieldsView::showLists(int visibleRow)
{
    m_available->clear();
    for (const VisibleField& f : m_presenter.available())
        m_available->addItem(f.label);
    m_visible->clear();
    for (const VisibleField& f : m_presenter.visible())
        m_visible->addItem(f.label);
    if (visibleRow >= 0 && visibleRow < m_visible->count()) m_visible->setCurrentRow(visibleRow);
}

void VisibleFieldsView::modifyLabel()
{
    const int row = m_visible->currentRow();
    if (row < 0) return;
    QDialog ask(this);
    ask.setWindowTitle(QStringLiteral("Modify Onscreen Label"));
    auto* form = new QFormLayout(&ask);
    auto* label = new QLineEdit(m_presenter.visible()[row].label, &ask);
    auto* tag = new QSpinBox(&ask);
    tag->setRange(0, 9999);
    tag->setValue(m_presenter.visible()[row].tag);
    form->addRow(QStringLiteral("Label:"), label);
    form->addRow(QStringLiteral("Tag:"), tag);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &ask);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &ask, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &ask, &QDialog::reject);
    if (ask.exec() != QDialog::Accepted) return;
    m_presenter.modifyLabel(row, label->text(), tag->value());
    showLists(row);
}

void VisibleFieldsView::accept()
{
    if (m_presenter.accept()) QDialog::accept();
}

void VisibleFieldsView::reject()
{
    if (m_presenter.memoText() != m_opened && m_ui.question(discardQuestion(), Buttons::YesNo) != Answer::Yes)
        return;
    QDialog::reject();
}

} // namespace kb::ui
