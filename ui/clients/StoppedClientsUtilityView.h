#pragma once

#include <QDialog>

class QDateEdit;
class QPushButton;

namespace kb {
class SettingsFile;
class StoppedClientsUtility;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Update Stop Status Utility" and "Inactivate Clients Utility": the
// date, "View Clients" (the list to set each client), the change of all
// clients at once, and Close.
class StoppedClientsUtilityView : public QDialog
{
    Q_OBJECT

public:
    StoppedClientsUtilityView(StoppedClientsUtility& utility, UserInterface& ui, SettingsFile& settings,
                              QWidget* parent = nullptr);

    QDateEdit* dateEdit() const { return m_date; }
    QPushButton* allButton() const { return m_all; }
    QPushButton* viewButton() const { return m_view; }

private:
    void viewClients();
    void changeAll();
    void enableButtons(bool enabled);

    StoppedClientsUtility& m_utility;
    UserInterface& m_ui;
    SettingsFile& m_settings;
    QDateEdit* m_date;
    QPushButton* m_view;
    QPushButton* m_all;
    QPushButton* m_close;
};

} // namespace kb::ui
