#pragma once

#include <QDialog>

class QDateEdit;

namespace kb {
class SettingsFile;
class TFormResetStartDate;
}

namespace kb::ui {

// "Reset Start Date": the start date and, when the agency recertifies,
// the recertification date, with OK and Cancel.
class ResetStartDateView : public QDialog
{
    Q_OBJECT

public:
    ResetStartDateView(TFormResetStartDate& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QDateEdit* startDateEdit() const { return m_start; }
    QDateEdit* recertificationDateEdit() const { return m_recert; }

protected:
    void done(int result) override;

private:
    TFormResetStartDate& m_presenter;
    QDateEdit* m_start;
    QDateEdit* m_recert;
};

} // namespace kb::ui
