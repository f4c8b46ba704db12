#pragma once

#include "clientwindow/PlugIns.h"

#include <QHash>
#include <QMainWindow>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QSplitter;
class QTabBar;
class QTabWidget;
class QTableView;
class QToolButton;

namespace kb {
class TDataModule1;
class TFormClients;
class UserInterface;
} // namespace kb

namespace kb::ui {

class ClientFieldsView;
class ClientListModel;

// "Kettlebrook Clients", the program's main window, over its presenter
// TFormClients: the menus of the command table, the navigator and the
// search, the client list, the header and the notebook of pages, and the
// status bar. Every other screen opens modally from its commands.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow(TFormClients& presenter, UserInterface& ui, QWidget* parent = nullptr);
    ~MainWindow() override;

    TFormClients& presenter() { return m_presenter; }
    TDataModule1& module();
    UserInterface& ui() { return m_ui; }

    // After sign-in: the user's level and pages, then the first row.
    void showUser();
    // Loads the plug-in modules of a folder (PlugIns::defaultFolder() in the
    // program); those passed over are told once.
    void loadPlugIns(const QString& folder);
    const PlugIns& plugIns() const { return m_plugIns; }

    // The action of a command, by its id (menus and shortcuts).
    QAction* action(const QString& id) const { return m_actions.value(id); }
    QMenu* menu(const QString& path) const { return m_menus.value(path); }
    QTableView* clientList() const { return m_list; }
    QComboBox* indexList() const { return m_index; }
    QLineEdit* searchEdit() const { return m_search; }
    QTabWidget* notebook() const { return m_notebook; }
    ClientFieldsView* fields() const { return m_fields; }
    QWidget* header() const { return m_header; }
    QLabel* statusPane(int pane) const; // 0 data, 1 user, 2 filter, 3 record state, 4 transaction
    QToolButton* navigatorButton(const QString& name) const { return m_navigator.value(name); }
    QTabBar* addressTabs() const { return m_addressTabs; }

    // The notebook tab of a page number, -1 when the page is not shown.
    int tabOfPage(int page) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildMenus();
    void buildToolBar();
    void buildCentre();
    QWidget* buildPage(int page);
    void buildStatusBar();
    void applyTabs();
    void showCommands();
    void showRow();
    void showRows();
    void showStatus();
    void selectCurrentRow();
    void saveLayouts();

    TFormClients& m_presenter;
    UserInterface& m_ui;
    QHash<QString, QAction*> m_actions;
    QHash<QString, QMenu*> m_menus;
    QHash<QString, QToolButton*> m_navigator;
    QComboBox* m_index = nullptr;
    QLineEdit* m_search = nullptr;
    QSplitter* m_splitter = nullptr;
    QTableView* m_list = nullptr;
    ClientListModel* m_model = nullptr;
    QWidget* m_header = nullptr;
    QLabel* m_popUp = nullptr;
    QTabBar* m_addressTabs = nullptr;
    QTabWidget* m_notebook = nullptr;
    ClientFieldsView* m_fields = nullptr;
    QList<QLabel*> m_panes;
    PlugIns m_plugIns;
    bool m_selecting = false;
};

} // namespace kb::ui
