#pragma once

#include <QDialog>

class QButtonGroup;
class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kb::reports {
class TFormDeliveryDietCriteria;
}

namespace kb::ui {

// "Delivery Diet Criteria" over its presenter: the diets to include, any or
// all of them, the sort order and a title.
class DeliveryDietCriteriaDialog : public QDialog
{
    Q_OBJECT

public:
    DeliveryDietCriteriaDialog(reports::TFormDeliveryDietCriteria& presenter, QWidget* parent = nullptr);

    QListWidget* dietList() const { return m_diets; }
    QPushButton* okButton() const { return m_ok; }

private:
    void showOk();

    reports::TFormDeliveryDietCriteria& m_presenter;
    QListWidget* m_diets;
    QButtonGroup* m_match;
    QComboBox* m_sort;
    QLineEdit* m_title;
    QPushButton* m_ok;
};

} // namespace kb::ui
