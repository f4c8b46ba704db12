#pragma once

#include <QDialog>

class QPushButton;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormShowHouseholdMembers;
}

namespace kb::ui {

// The other members of the household after a delivery change, with
// "&Migrate" to carry the change over to the chosen one.
class ShowHouseholdMembersView : public QDialog
{
    Q_OBJECT

public:
    ShowHouseholdMembersView(TFormShowHouseholdMembers& presenter, SettingsFile& settings,
                             QWidget* parent = nullptr);
    ~ShowHouseholdMembersView() override;

    QTableWidget* grid() const { return m_grid; }
    QPushButton* migrateButton() const { return m_migrate; }

private:
    void showMembers();

    TFormShowHouseholdMembers& m_presenter;
    QTableWidget* m_grid;
    QPushButton* m_migrate;
    bool m_showing = false;
};

} // namespace kb::ui
