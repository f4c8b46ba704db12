#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QStackedWidget;

namespace kb {
class RecordServices;
class SettingsFile;
class TFormHouseholdWizard;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Household Wizard": one page a step, with Back, Next, Finish and Cancel.
class HouseholdWizardView : public QDialog
{
    Q_OBJECT

public:
    // The role list offers the presenter's remembered roles.
    HouseholdWizardView(TFormHouseholdWizard& presenter, RecordServices& services, UserInterface& ui,
                        SettingsFile& settings, QWidget* parent = nullptr);

    QPushButton* backButton() const { return m_back; }
    QPushButton* nextButton() const { return m_next; }
    QPushButton* finishButton() const { return m_finish; }
    QRadioButton* newChoice() const { return m_new; }
    QRadioButton* existingChoice() const { return m_existing; }
    QLineEdit* nameEdit() const { return m_name; }
    QLineEdit* searchEdit() const { return m_search; }
    QListWidget* found() const { return m_found; }
    QComboBox* role() const { return m_role; }
    QCheckBox* head() const { return m_head; }

private:
    void showStep();
    void fillFound();
    void finish();

    TFormHouseholdWizard& m_presenter;
    RecordServices& m_services;
    UserInterface& m_ui;
    QStackedWidget* m_pages;
    QRadioButton* m_new;
    QRadioButton* m_existing;
    QLineEdit* m_name;
    QLineEdit* m_search;
    QListWidget* m_found;
    QComboBox* m_role;
    QCheckBox* m_head;
    QPushButton* m_back;
    QPushButton* m_next;
    QPushButton* m_finish;
    bool m_filling = false;
};

} // namespace kb::ui
