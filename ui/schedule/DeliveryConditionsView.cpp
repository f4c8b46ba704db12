#include "schedule/DeliveryConditionsView.h"

#include "FormPlacement.h"
#include "defaults/TFormDeliveryConditionsVerification.h"

#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

DeliveryConditionsView::DeliveryConditionsView(TFormDeliveryConditionsVerification& presenter,
                                               SettingsFile& settings, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_date(new QDateEdit(presenter.date(), this)),
      m_lines(new QTableWidget(0, 2, this)), m_verdict(new QLabel(this)), m_items(new QLabel(this))
{
    setObjectName(TFormDeliveryConditionsVerification::formName());
    setWindowTitle(TFormDeliveryConditionsVerification::caption() + QStringLiteral(" - ") +
                   presenter.client().name);
    m_date->setCalendarPopup(true);
    m_date->setDisplayFormat(QStringLiteral("dddd, MM/dd/yyyy"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("Delivery date:"), m_date);
    layout->addLayout(form);
    m_lines->setHorizontalHeaderLabels({QStringLiteral("Condition"), QStringLiteral("Result")});
    m_lines->verticalHeader()->hide();
    m_lines->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_lines->setSelectionMode(QAbstractItemView::NoSelection);
    m_lines->horizontalHeader()->setStretchLastSection(true);
    layout->addWidget(m_lines, 1);
    QFont big = m_verdict->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    m_verdict->setFont(big);
    m_verdict->setObjectName(QStringLiteral("Verdict"));
    layout->addWidget(m_verdict);
    m_items->setWordWrap(true);
    layout->addWidget(m_items);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    connect(m_date, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        m_presenter.setDate(d);
        showResult();
    });
    showResult();
    keepPlacement(*this, settings, TFormDeliveryConditionsVerification::formName(), QSize(640, 420));
}

void DeliveryConditionsView::showResult()
{
    const auto& lines = m_presenter.lines();
    m_lines->setRowCount(int(lines.size()));
    for (int r = 0; r < lines.size(); ++r) {
        m_lines->setItem(r, 0, new QTableWidgetItem(lines[r].condition));
        auto* result = new QTableWidgetItem(lines[r].ok ? TFormDeliveryConditionsVerification::okText()
                                                        : lines[r].reason);
        result->setForeground(lines[r].ok ? QColor(0, 110, 0) : QColor(Qt::red));
        m_lines->setItem(r, 1, result);
    }
    m_lines->resizeColumnToContents(0);
    const bool up = m_presenter.thumbUp();
    m_verdict->setText(up ? QStringLiteral("\u2714  A delivery can be made on this date")
                          : QStringLiteral("\u2716  No delivery on this date"));
    m_verdict->setStyleSheet(up ? QStringLiteral("color: #006e00") : QStringLiteral("color: red"));
    QStringList items;
    for (const auto& item : m_presenter.items())
        items.append(QStringLiteral("%1 x %2").arg(item.quantity).arg(item.name));
    m_items->setText(m_presenter.itemSource() +
                     (items.isEmpty() ? QString() : QStringLiteral(": ") + items.join(QStringLiteral(", "))));
}

} // namespace kb::ui
