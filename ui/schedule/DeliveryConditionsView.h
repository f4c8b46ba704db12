#pragma once

#include <QDialog>

class QDateEdit;
class QLabel;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormDeliveryConditionsVerification;
} // namespace kb

namespace kb::ui {

// The delivery condition check: a date, one line per condition with "OK"
// or its reason in red, a thumb up or down, and the items of the date.
class DeliveryConditionsView : public QDialog
{
    Q_OBJECT

public:
    DeliveryConditionsView(TFormDeliveryConditionsVerification& presenter, SettingsFile& settings,
                           QWidget* parent = nullptr);

    QTableWidget* lines() const { return m_lines; }
    QLabel* verdict() const { return m_verdict; }
    QDateEdit* date() const { return m_date; }

private:
    void showResult();

    TFormDeliveryConditionsVerification& m_presenter;
    QDateEdit* m_date;
    QTableWidget* m_lines;
    QLabel* m_verdict;
    QLabel* m_items;
};

} // namespace kb::ui
