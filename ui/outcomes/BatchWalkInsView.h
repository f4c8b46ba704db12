#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace kb {
class TFormBatchAddWalkIns;
}

namespace kb::ui {

class ClientSearchBar;

// "Record Walk-In Visits": the service date, route and service given to the
// clients added next, the client search (or the scanner), the list of
// walk-ins, whose date, route, delivery type and "Complimentary" box can be
// edited in place, and the commands that add, remove and record.
class BatchWalkInsView : public QDialog
{
    Q_OBJECT

public:
    BatchWalkInsView(TFormBatchAddWalkIns& presenter, QWidget* parent = nullptr);
    QLineEdit* searchBox() const;
    QComboBox* searchBy() const;
    QComboBox* service() const { return m_service; }
    QCheckBox* complimentaryBox() const;
    QCheckBox* scannerBox() const { return m_scanner; }
    QTableWidget* list() const { return m_list; }
    QPushButton* addButton() const;
    QPushButton* removeButton() const { return m_remove; }
    QPushButton* recordButton() const { return m_record; }

    // Closing asks whether to record a list not yet recorded.
    void done(int result) override;

private:
    void showState();
    void fillList();
    QString serviceText(qint64 service) const;
    void lineEdited(int row);

    TFormBatchAddWalkIns& m_presenter;
    QDateEdit* m_date;
    QLabel* m_weekday;
    QLineEdit* m_route;
    QComboBox* m_service;
    ClientSearchBar* m_searchBar;
    QCheckBox* m_scanner;
    QTableWidget* m_list;
    QPushButton* m_remove;
    QPushButton* m_record;
    bool m_filling = false;
};

} // namespace kb::ui
