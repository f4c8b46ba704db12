#pragma once

#include "ConfirmDeliveryItemsDialog.h"
#include "specialmeals/QtRunDialogs.h"

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
// delivery type, "Prepare!", the commands on the run (Save Data, Print
// Report, Populate Grid With Previously Saved Deliveries, Export Data,
// Quick Clients Listing), the grid and the status line. Routes and stops
// edited in the grid are saved with the run.
class RunPrepareView : public QDialog
{
    Q_OBJECT

public:
    RunPrepareView(TFormRunPrepare& presenter, UserInterface& ui, QWidget* parent = nullptr);
    ~RunPrepareView() override;

    QDateEdit* dateEdit() const { return m_date; }
    QComboBox* deliveryTypeList() const { return m_types; }
    QPushButton* prepareButton() const { return m_prepare; }
    QPushButton* saveButton() const { return m_save; }
    QPushButton* printReportButton() const { return m_printReport; }
    QPushButton* populateButton() const { return m_populate; }
    QPushButton* exportButton() const { return m_export; }
    QPushButton* listingButton() const { return m_listing; }
    QTableView* grid() const { return m_grid; }
    QLabel* clientCountLabel() const { return m_count; }

private:
    void showState();
    void fitColumns();
    // Runs a command, showing what it throws.
    void run(void (TFormRunPrepare::*action)());

    TFormRunPrepare& m_presenter;
    UserInterface& m_ui;
    QDateEdit* m_date;
    QComboBox* m_types;
    QPushButton* m_prepare;
    QPushButton* m_save;
    QPushButton* m_printReport;
    QPushButton* m_populate;
    QPushButton* m_export;
    QPushButton* m_listing;
    QTableView* m_grid;
    QLabel* m_count;
    QLabel* m_user;
    QLabel* m_transaction;
    // Asked when the run is saved.
    ConfirmDeliveryItemsDialog m_itemConfirmation;
    // The special meals of a save and the date of a reload.
    QtRunDialogs m_dialogs;
};

} // namespace kb::ui
