#pragma once

#include <QDialog>

class QDateEdit;
class QPushButton;

namespace kb {
class SettingsFile;
class TFormAssignDeliveriesToNewDate;
} // namespace kb

namespace kb::ui {

// "Shift Deliveries From One Date To Another" over its presenter: the date
// the saved deliveries fall on, the date they move to, OK and Cancel.
class AssignDeliveriesToNewDateView : public QDialog
{
    Q_OBJECT

public:
    AssignDeliveriesToNewDateView(TFormAssignDeliveriesToNewDate& presenter, SettingsFile& settings,
                                  QWidget* parent = nullptr);

    QDateEdit* oldDateEdit() const { return m_oldDate; }
    QDateEdit* newDateEdit() const { return m_newDate; }
    QPushButton* okButton() const { return m_ok; }

private:
    void update();

    TFormAssignDeliveriesToNewDate& m_presenter;
    QDateEdit* m_oldDate;
    QDateEdit* m_newDate;
    QPushButton* m_ok;
};

} // namespace kb::ui
