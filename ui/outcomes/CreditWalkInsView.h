#pragma once

#include <QDialog>

#include <vector>

class QAction;
class QDateEdit;
class QLabel;
class QMenu;
class QPushButton;
class QTableView;

namespace kb {
class TFormCreditWalkIns;
}

namespace kb::ui {

// "Credit Walk-In Clients and Episodic/Scheduled Deliveries": the date,
// "Apply Changes", "Save Data", "Export Data", "Quick Clients Listing", the
// run's delivery grid with each row's own date, and the client count. The
// grid's pop-up menu holds "Delete &episodic events of selected Client"
// next to the export and the listing.
class CreditWalkInsView : public QDialog
{
    Q_OBJECT

public:
    CreditWalkInsView(TFormCreditWalkIns& presenter, QWidget* parent = nullptr);
    QPushButton* applyButton() const { return m_apply; }
    QPushButton* saveButton() const { return m_save; }
    QPushButton* exportButton() const { return m_export; }
    QPushButton* listingButton() const { return m_listing; }
    QTableView* grid() const { return m_grid; }
    // The grid's pop-up menu as it stands for the current row.
    QMenu* popupMenu();
    // Opens "Episodic/Scheduled Client Information" for the current row.
    void deleteEpisodicEvents();

private:
    void showState();
    void updateMenu();
    void exportData();
    std::vector<int> selectedRows() const;

    TFormCreditWalkIns& m_presenter;
    QDateEdit* m_through;
    QPushButton* m_apply;
    QPushButton* m_save;
    QPushButton* m_export;
    QPushButton* m_listing;
    QTableView* m_grid;
    QLabel* m_count;
    QMenu* m_menu;
    QAction* m_deleteEvents = nullptr;
    QAction* m_exportAction = nullptr;
    QAction* m_listingAction = nullptr;
};

} // namespace kb::ui
