#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QWidget;

namespace kb {
class RecordServices;
class SettingsFile;
class TFormHouseholdMembers;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Household Members": the members of one household, and under them the
// chosen member's person (for a new member), role and head mark.
class HouseholdMembersView : public QDialog
{
    Q_OBJECT

public:
    // The presenter has been shown (FormShow) and allowed the screen.
    HouseholdMembersView(TFormHouseholdMembers& presenter, RecordServices& services, UserInterface& ui,
                         SettingsFile& settings, QWidget* parent = nullptr);
    ~HouseholdMembersView() override;

    QTableWidget* members() const { return m_members; }
    QLineEdit* personSearch() const { return m_search; }
    QComboBox* people() const { return m_people; }
    QComboBox* role() const { return m_role; }
    QCheckBox* head() const { return m_head; }
    QPushButton* button(const QString& caption) const;

    void done(int result) override;

private:
    void fill();
    void showMember();
    void showState();
    void findPeople();
    template <typename Work> void run(Work&& work);

    TFormHouseholdMembers& m_presenter;
    RecordServices& m_services;
    UserInterface& m_ui;
    SettingsFile& m_settings;
    QTableWidget* m_members;
    QWidget* m_editor;
    QLineEdit* m_search;
    QComboBox* m_people;
    QComboBox* m_role;
    QCheckBox* m_head;
    QList<QPushButton*> m_buttons;
    bool m_filling = false;
};

} // namespace kb::ui
