#include "deliveryreports/DeliveryReportMessagesView.h"

#include "delivery/TFormDeliveryReportMessages.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kb::ui {

DeliveryReportMessagesView::DeliveryReportMessagesView(reports::TFormDeliveryReportMessages& presenter,
                                                       QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_top(new QPlainTextEdit(this)),
      m_bottom(new QPlainTextEdit(this))
{
    setWindowTitle(reports::TFormDeliveryReportMessages::caption());
    resize(620, 420);
    m_top->setPlainText(m_presenter.top());
    m_bottom->setPlainText(m_presenter.bottom());
    auto box = [this](const QString& title, QPlainTextEdit* edit) {
        auto* group = new QGroupBox(title, this);
        auto* layout = new QVBoxLayout(group);
        layout->addWidget(edit);
        return group;
    };
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(box(QStringLiteral("Top of Report"), m_top), 1);
    layout->addWidget(box(QStringLiteral("Bottom of Report"), m_bottom), 1);
    layout->addWidget(buttons);
    connect(m_top, &QPlainTextEdit::textChanged, this, [this] { m_presenter.setTop(m_top->toPlainText()); });
    connect(m_bottom, &QPlainTextEdit::textChanged, this,
            [this] { m_presenter.setBottom(m_bottom->toPlainText()); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        m_presenter.ok();
        accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, [this] {
        m_presenter.cancel();
        QDialog::reject();
    });
}

void DeliveryReportMessagesView::closeEvent(QCloseEvent* event)
{
    if (!m_presenter.closeQuery())
        event->ignore();
    else
        QDialog::closeEvent(event);
}

void DeliveryReportMessagesView::reject()
{
    // Escape and the window's close button: an unsaved change is asked about.
    if (m_presenter.closeQuery()) QDialog::reject();
}

} // namespace kb::ui
