#pragma once

#include <QDialog>

class QDateEdit;
class QPushButton;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormClientEpisodicItems;
} // namespace kb

namespace kb::ui {

// "Calendar-Based Delivery Items" over its presenter: the date range, one
// line per delivery date with Deliver and a quantity and item per meal.
class ClientEpisodicItemsView : public QDialog
{
    Q_OBJECT

public:
    ClientEpisodicItemsView(TFormClientEpisodicItems& presenter, SettingsFile& settings,
                            QWidget* parent = nullptr);

    QDateEdit* beginEdit() const { return m_begin; }
    QDateEdit* endEdit() const { return m_end; }
    QTableWidget* grid() const { return m_grid; }
    QPushButton* retrieveButton() const { return m_retrieve; }
    QPushButton* saveButton() const { return m_save; }

protected:
    void done(int result) override;

private:
    void fill();

    TFormClientEpisodicItems& m_presenter;
    QDateEdit* m_begin;
    QDateEdit* m_end;
    QTableWidget* m_grid;
    QPushButton* m_retrieve;
    QPushButton* m_save;
};

} // namespace kb::ui
