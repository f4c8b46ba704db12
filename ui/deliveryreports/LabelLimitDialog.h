#pragma once

#include <QDialog>

class QComboBox;
class QGroupBox;
class QListWidget;
class QRadioButton;

namespace kb::reports {
class TFormLabelLimit;
}

namespace kb::ui {

// "Label Selection and Sorting" over its presenter: which deliveries get a
// label (with the diets to match for the selected diets) and their order.
class LabelLimitDialog : public QDialog
{
    Q_OBJECT

public:
    LabelLimitDialog(reports::TFormLabelLimit& presenter, QWidget* parent = nullptr);

    QComboBox* limitList() const { return m_limit; }
    QListWidget* dietList() const { return m_diets; }
    QComboBox* sortList() const { return m_sort; }

private:
    void showDiets();

    reports::TFormLabelLimit& m_presenter;
    QComboBox* m_limit;
    QGroupBox* m_dietGroup;
    QListWidget* m_diets;
    QRadioButton* m_any;
    QRadioButton* m_all;
    QComboBox* m_sort;
};

} // namespace kb::ui
