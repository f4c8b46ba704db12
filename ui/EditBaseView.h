#pragma once

#include <QDialog>
#include <QHash>

class QFormLayout;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormEditBase;
} // namespace kb

namespace kb::ui {

// The one view of every code table's maintenance screen: a browse page
// with the grid, an edit page generated from the presenter's fields, and
// the navigator. It draws what the presenter says and hands every click and
// keystroke to it; no rule lives here.
class EditBaseView : public QDialog
{
    Q_OBJECT

public:
    // With settings, the screen keeps its place and size in them.
    explicit EditBaseView(TFormEditBase& presenter, QWidget* parent = nullptr, SettingsFile* settings = nullptr);
    ~EditBaseView() override;

    QTabWidget* pages() const { return m_pages; }
    QTableWidget* grid() const { return m_grid; }
    // The navigator's buttons by command, and the editor of a field.
    QPushButton* button(int command) const { return m_buttons.value(command); }
    QWidget* editor(const QString& field) const { return m_editors.value(field.toUpper()); }
    QPushButton* missingCombinationsButton() const { return m_missing; }
    // The incremental search box; null on screens without one.
    QLineEdit* searchBox() const { return m_search; }

signals:
    // The view has drawn the presenter's state again.
    void stateShown();

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildEditPage();
    QWidget* makeEditor(int fieldIndex);
    void showState();
    void showGrid();
    void showFields();
    void chooseMissingCombinations();
    // Puts the cursor in the field a new row starts with.
    void focusNewRow();

    TFormEditBase& m_presenter;
    QTabWidget* m_pages;
    QTableWidget* m_grid;
    QFormLayout* m_form = nullptr;
    QPushButton* m_missing = nullptr;
    QLineEdit* m_search = nullptr;
    QHash<int, QPushButton*> m_buttons;
    QHash<QString, QWidget*> m_editors; // by upper-case field name
    bool m_showing = false;             // while the view is being filled from the presenter
};

} // namespace kb::ui
