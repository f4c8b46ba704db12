#pragma once

#include <QDialog>

class QListWidget;

namespace kb {
class TVisibleFieldsDlg;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Visible Fields Selection": "Available Fields" and "Visible Fields" with
// the commands that move fields between and within them.
class VisibleFieldsView : public QDialog
{
    Q_OBJECT

public:
    VisibleFieldsView(TVisibleFieldsDlg& presenter, UserInterface& ui, QWidget* parent = nullptr);

    QListWidget* availableList() const { return m_available; }
    QListWidget* visibleList() const { return m_visible; }

    // OK: kept only when the presenter could save the choice.
    void accept() override;

private:
    void showLists(int visibleRow = -1);
    void modifyLabel();

    TVisibleFieldsDlg& m_presenter;
    UserInterface& m_ui;
    QListWidget* m_available;
    QListWidget* m_visible;
};

} // namespace kb::ui
