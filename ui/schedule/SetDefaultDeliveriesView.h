#pragma once

#include <QDialog>
#include <QList>

#include <functional>

class QButtonGroup;
class QComboBox;
class QHBoxLayout;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace kb {
class SettingsFile;
class TFormSetDefaultDeliveries;
} // namespace kb

namespace kb::ui {

// "Set Default Deliveries": the service list, the day buttons and the grid
// of the chosen list with its commands. Every change goes to the presenter;
// the grid is drawn again from its list.
class SetDefaultDeliveriesView : public QDialog
{
    Q_OBJECT

public:
    SetDefaultDeliveriesView(TFormSetDefaultDeliveries& presenter, SettingsFile& settings,
                             QWidget* parent = nullptr);

    QTableWidget* grid() const { return m_grid; }
    QComboBox* services() const { return m_services; }
    QPushButton* button(const QString& name) const;

protected:
    void done(int result) override;

    // A command button in the row of commands, before "Close". A command
    // that works on the current line is off while the list is empty.
    QPushButton* addCommand(const QString& text, std::function<void()> action, bool needsLine = false);
    // The screen's column, for what a descendant shows beneath the list.
    QVBoxLayout* body() const { return m_body; }
    // Draws the grid again from the list.
    void showList();

private:
    void cellEdited(int row, int column);

    TFormSetDefaultDeliveries& m_presenter;
    SettingsFile& m_settings;
    QComboBox* m_services;
    QButtonGroup* m_days;
    QTableWidget* m_grid;
    QVBoxLayout* m_body;
    QHBoxLayout* m_commands;
    QList<QPushButton*> m_buttons;
    QList<QPushButton*> m_lineButtons;
    bool m_showing = false;
};

} // namespace kb::ui
