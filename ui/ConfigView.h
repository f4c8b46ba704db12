#pragma once

#include <QDialog>
#include <QHash>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTableWidget;
class QTreeWidget;

namespace kb {
class TFormEditConfig;
struct ConfigField;
} // namespace kb

namespace kb::ui {

// "System Configuration" over its presenter: a page per group of settings,
// generated from the presenter's fields, the user's preferences, the system
// users, and the screen's commands. Everything typed goes to the presenter;
// the view only shows what it says.
class ConfigView : public QDialog
{
    Q_OBJECT

public:
    explicit ConfigView(TFormEditConfig& presenter, QWidget* parent = nullptr);
    ~ConfigView() override;

    QTabWidget* pages() const { return m_pages; }
    // The editor of a Config column.
    QWidget* editor(const QString& column) const { return m_editors.value(column.toUpper()); }
    QPushButton* commandButton(int command) const { return m_commands.value(command); }
    QListWidget* tabList() const { return m_tabs; }
    QTableWidget* usersGrid() const { return m_users; }
    QTableWidget* eventDefaultsGrid() const { return m_eventDefaults; }
    QTreeWidget* componentTree() const { return m_tree; }
    QLabel* preferencesNote() const { return m_notEditable; }

protected:
    void done(int result) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeEditor(const ConfigField& field);
    QWidget* buildPage(int index);
    QWidget* buildPreferences();
    QWidget* buildUsers();
    QWidget* buildEventDefaults();
    void showEventDefaults();
    QWidget* buildComponentTree();
    QGroupBox* buildMeals();
    QPushButton* commandButtonFor(int command, QWidget* parent);
    void runCommand(int command);
    void showValues();
    void showDependent();
    void showTree();
    void showPreferences();
    void showUsers();
    void changed(const QString& column, const QVariant& value);

    TFormEditConfig& m_presenter;
    QTabWidget* m_pages;
    QHash<QString, QWidget*> m_editors; // by upper-case column
    QHash<int, QPushButton*> m_commands;
    QGroupBox* m_meals = nullptr;
    QList<QCheckBox*> m_mealBoxes;
    QLabel* m_sessionWords = nullptr;
    QTreeWidget* m_tree = nullptr;
    QListWidget* m_tabs = nullptr;
    QComboBox* m_preferredTab = nullptr;
    QHash<QString, QWidget*> m_preferenceEditors;
    QLabel* m_notEditable = nullptr;
    QTableWidget* m_users = nullptr;
    QTableWidget* m_eventDefaults = nullptr;
    bool m_showing = false;
    bool m_closing = false;
};

} // namespace kb::ui
