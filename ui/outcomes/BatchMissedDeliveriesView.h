#pragma once

#include <QDialog>

class QCheckBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace kb {
class TFormBatchAddMissedDeliveries;
}

namespace kb::ui {

class ClientSearchBar;

// "Record Missed Deliveries": the date and its weekday, the client search
// (or the scanner), the list of clients with their "Excused" boxes, and the
// commands that add, remove and record.
class BatchMissedDeliveriesView : public QDialog
{
    Q_OBJECT

public:
    BatchMissedDeliveriesView(TFormBatchAddMissedDeliveries& presenter, QWidget* parent = nullptr);
    QLineEdit* searchBox() const;
    QCheckBox* scannerBox() const { return m_scanner; }
    QTableWidget* list() const { return m_list; }
    QPushButton* addButton() const;
    QPushButton* removeButton() const { return m_remove; }
    QPushButton* recordButton() const { return m_record; }

private:
    void showState();
    void fillList();

    TFormBatchAddMissedDeliveries& m_presenter;
    QDateEdit* m_date;
    QLabel* m_weekday;
    ClientSearchBar* m_searchBar;
    QCheckBox* m_scanner;
    QTableWidget* m_list;
    QPushButton* m_remove;
    QPushButton* m_record;
    bool m_filling = false;
};

} // namespace kb::ui
