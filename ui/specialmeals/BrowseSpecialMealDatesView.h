#pragma once

#include <QDialog>

class QPushButton;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormBrowseSpecialMealDates;
} // namespace kb

namespace kb::ui {

// "Special Meals by Date" over its presenter: the dates, newest first, with
// a mark per special meal under "Specials Defined", and Add Date and Edit
// Date (also a double click on a row). Its place is kept in the per-user
// settings when they are given.
class BrowseSpecialMealDatesView : public QDialog
{
    Q_OBJECT

public:
    BrowseSpecialMealDatesView(TFormBrowseSpecialMealDates& presenter, SettingsFile* settings,
                               QWidget* parent = nullptr);
    ~BrowseSpecialMealDatesView() override;

    QTableWidget* table() const { return m_table; }
    QPushButton* addButton() const { return m_add; }
    QPushButton* editButton() const { return m_edit; }

private:
    void showState();

    TFormBrowseSpecialMealDates& m_presenter;
    SettingsFile* m_settings;
    QTableWidget* m_table;
    QPushButton* m_add;
    QPushButton* m_edit;
};

} // namespace kb::ui
