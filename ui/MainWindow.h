#pragma once

#include <QMainWindow>

class QAction;
class QLabel;
class QMenu;

namespace kb {
class TDataModule1;
class UserInterface;
}

namespace kb::ui {

// "Kettlebrook Clients": the one loop of the program. It holds the menus
// and the signed-in user's name; every other screen opens modally from here.
// The client records themselves come to this window later, so it stays a
// shell whose menus enable only what exists.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(TDataModule1& data, UserInterface& ui, QWidget* parent = nullptr);

    // Shows the signed-in user's name and applies the user's access level
    // to the menus.
    void showUser();
    QAction* runPreparationAction() const { return m_runPreparation; }
    QAction* configurationAction() const { return m_configuration; }
    QMenu* editMenu() const { return m_edit; }
    QMenu* tableMaintenanceMenu() const { return m_tableMaintenance; }
    QMenu* processMenu() const { return m_process; }
    QMenu* analyzeMenu() const { return m_analyze; }
    // Process > Daily Run Preparation.
    void openRunPreparation();
    // Utilities > Order Stops by Route.
    void openOrderRoutes();
    // Utilities > Find Coordinates for Addresses.
    void openGeocoding();
    // Edit > Table Maintenance > Configuration.
    void openConfiguration();
    // Edit > Special Meals.
    void openSpecialMeals();

protected:
    // Closing: the layout and position are remembered, then an unsaved
    // client is asked about; a refused save keeps the window open.
    void closeEvent(QCloseEvent* event) override;

private:
    void applyAccessLevel();

    TDataModule1& m_data;
    UserInterface& m_ui;
    QMenu* m_edit;
    QMenu* m_tableMaintenance;
    QMenu* m_process;
    QMenu* m_analyze;
    QAction* m_runPreparation;
    QAction* m_configuration;
    QAction* m_driverMessages;
    QAction* m_specialMeals;
    QLabel* m_user;
};

} // namespace kb::ui
