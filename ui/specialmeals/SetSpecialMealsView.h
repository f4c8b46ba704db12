#pragma once

#include <QDialog>
#include <QList>

class QButtonGroup;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kb {
class TFormSetSpecialMeals;
}

namespace kb::ui {

// "Set Special Meal Qualifications" over its presenter: one panel per meal
// in use, side by side, each with its rule list, its diets (enabled only for
// "Selected diet restrictions"), Match Any or Match All and, when the agency
// shows it, the report title or instructions. OK closes only when the
// presenter accepts the panels; Cancel clears them.
class SetSpecialMealsView : public QDialog
{
    Q_OBJECT

public:
    explicit SetSpecialMealsView(TFormSetSpecialMeals& presenter, QWidget* parent = nullptr);

    int panelCount() const { return int(m_panels.size()); }
    QGroupBox* panel(int meal) const { return m_panels[meal - 1].box; }
    QComboBox* ruleList(int meal) const { return m_panels[meal - 1].rules; }
    QListWidget* dietList(int meal) const { return m_panels[meal - 1].diets; }
    QRadioButton* matchAllButton(int meal) const { return m_panels[meal - 1].all; }
    QLineEdit* actionEdit(int meal) const { return m_panels[meal - 1].action; }
    QPushButton* okButton() const { return m_ok; }
    QPushButton* copyButton() const { return m_copy; }

    void accept() override;
    void reject() override;

private:
    struct Panel
    {
        QGroupBox* box = nullptr;
        QComboBox* rules = nullptr;
        QListWidget* diets = nullptr;
        QRadioButton* any = nullptr;
        QRadioButton* all = nullptr;
        QLineEdit* action = nullptr;
    };
    void showState();

    TFormSetSpecialMeals& m_presenter;
    QList<Panel> m_panels;
    QPushButton* m_ok = nullptr;
    QPushButton* m_copy = nullptr;
    bool m_showing = false;
};

} // namespace kb::ui
