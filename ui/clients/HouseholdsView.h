#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;
class QSplitter;
class QTableWidget;

namespace kb {
class RecordServices;
class SettingsFile;
class TFormHouseholds;
class UserInterface;
} // namespace kb

namespace kb::ui {

// "Households Maintenance": the households by name on the left, the chosen
// one's name and members on the right, and the commands below.
class HouseholdsView : public QDialog
{
    Q_OBJECT

public:
    HouseholdsView(TFormHouseholds& presenter, RecordServices& services, UserInterface& ui,
                   SettingsFile& settings, QWidget* parent = nullptr);
    ~HouseholdsView() override;

    QTableWidget* households() const { return m_households; }
    QTableWidget* members() const { return m_members; }
    QPushButton* button(const QString& caption) const;

private:
    void fill();
    void fillMembers();
    void showState();
    template <typename Work> void run(Work&& work);

    TFormHouseholds& m_presenter;
    RecordServices& m_services;
    UserInterface& m_ui;
    SettingsFile& m_settings;
    QLineEdit* m_search;
    QLineEdit* m_name;
    QTableWidget* m_households;
    QTableWidget* m_members;
    QSplitter* m_splitter;
    QList<QPushButton*> m_buttons;
    bool m_filling = false;
};

} // namespace kb::ui
