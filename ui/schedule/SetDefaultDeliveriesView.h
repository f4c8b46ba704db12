#pragma once

#include <QDialog>
#include <QList>

class QButtonGroup;
class QComboBox;
class QPushButton;
class QTableWidget;

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

private:
    void showList();
    void run(void (TFormSetDefaultDeliveries::*action)());
    void cellEdited(int row, int column);

    TFormSetDefaultDeliveries& m_presenter;
    SettingsFile& m_settings;
    QComboBox* m_services;
    QButtonGroup* m_days;
    QTableWidget* m_grid;
    QList<QPushButton*> m_buttons;
    bool m_showing = false;
};

} // namespace kb::ui
