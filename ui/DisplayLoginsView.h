#pragma once

#include <QDialog>

class QSpinBox;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormDisplayLogins;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "User Login Activity": the number of past days, Refresh, and the grid of
// User, Action and Date/Time.
class DisplayLoginsView : public QDialog
{
    Q_OBJECT

public:
    DisplayLoginsView(TFormDisplayLogins& presenter, UserInterface& ui, SettingsFile& settings,
                      QWidget* parent = nullptr);

    QSpinBox* daysBox() const { return m_days; }
    QTableWidget* grid() const { return m_grid; }
    void refresh();

protected:
    void done(int result) override;

private:
    TFormDisplayLogins& m_presenter;
    UserInterface& m_ui;
    SettingsFile& m_settings;
    QSpinBox* m_days;
    QTableWidget* m_grid;
};

} // namespace kb::ui
