#pragma once

#include <QMainWindow>

class QAction;
class QLabel;

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

    // Shows the signed-in user's name.
    void showUser();
    QAction* runPreparationAction() const { return m_runPreparation; }
    // Process > Daily Run Preparation.
    void openRunPreparation();
    // Utilities > Order Stops by Route.
    void openOrderRoutes();
    // Utilities > Find Coordinates for Addresses.
    void openGeocoding();

private:
    TDataModule1& m_data;
    UserInterface& m_ui;
    QAction* m_runPreparation;
    QLabel* m_user;
};

} // namespace kb::ui
