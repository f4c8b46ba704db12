#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace kb::reports {
class TFormDeliveryReportMessages;
}

namespace kb::ui {

// "Delivery Report Messages": the texts at the top and the bottom of the run
// sheets. OK saves them, Cancel drops the edit; closing with a change asks.
class DeliveryReportMessagesView : public QDialog
{
    Q_OBJECT

public:
    DeliveryReportMessagesView(reports::TFormDeliveryReportMessages& presenter, QWidget* parent = nullptr);

    QPlainTextEdit* topEdit() const { return m_top; }
    QPlainTextEdit* bottomEdit() const { return m_bottom; }
    // Escape and Cancel: an unsaved change is asked about first.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    reports::TFormDeliveryReportMessages& m_presenter;
    QPlainTextEdit* m_top;
    QPlainTextEdit* m_bottom;
};

} // namespace kb::ui
