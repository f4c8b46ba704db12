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
    // Cancel, Escape or the close button: changes are given up only after
    // the user says so.
    void reject() override;
    static QString discardQuestion()
    {
        return QStringLiteral("Close without keeping your changes to the visible fields?");
    }

private:
    void showLists(int visibleRow = -1);
    void modifyLabel();

    TVisibleFieldsDlg& m_presenter;
    UserInterface& m_ui;
    QListWidget* m_available;
    QListWidget* m_visible;
    QString m_opened; // the choice as it stood when the screen opened
};

} // namespace kb::ui
