#pragma once

#include "ConfirmDeliveryItemsDialog.h"

#include <QDialog>

class QComboBox;
class QDateEdit;
class QLabel;
class QPushButton;
class QTableView;

namespace kb {
class TFormRunPrepare;
class UserInterface;
}

namespace kb::ui {

// The "Daily Run Preparation" screen over its presenter: the date, the
// delivery type, "Prepare!", the grid and the status line.
class RunPrepareView : public QDialog
{
    Q_OBJECT

public:
    RunPrepareView(TFormRunPrepare& presenter, UserInterface& ui, QWidget* parent = nullptr);
    ~RunPrepareView() override;

    QDateEdit* dateEdit() const { return m_date; }
    QComboBox* deliveryTypeList() const { return m_types; }
    QPushButton* prepareButton() const { return m_prepare; }
    QTableView* grid() const { return m_grid; }
    QLabel* clientCountLabel() const { return m_count; }

private:
    void showState();
    void prepare();

    TFormRunPrepare& m_presenter;
    UserInterface& m_ui;
    QDateEdit* m_date;
    QComboBox* m_types;
    QPushButton* m_prepare;
    QTableView* m_grid;
    QLabel* m_count;
    QLabel* m_user;
    QLabel* m_transaction;
    // Asked when the run is saved.
    ConfirmDeliveryItemsDialog m_itemConfirmation;
};

} // namespace kb::ui
