#pragma once

#include <QDialog>

class QLabel;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormCompDel;
class TFormDeliveries;
} // namespace kb

namespace kb::ui {

class DeliveredItemsView;

// "Recent Deliveries" over its presenter: the client's deliveries of the
// past days, the funding column editable from a list of codes, and the
// comp, reverse, delete, items and refresh commands.
class RecentDeliveriesView : public QDialog
{
    Q_OBJECT

public:
    RecentDeliveriesView(TFormDeliveries& presenter, SettingsFile& settings, QWidget* parent = nullptr);
    ~RecentDeliveriesView() override;

    QTableWidget* table() const { return m_table; }
    QPushButton* compButton() const { return m_comp; }
    QPushButton* reverseButton() const { return m_reverse; }
    QPushButton* deleteButton() const { return m_delete; }
    QPushButton* itemsButton() const { return m_items; }
    // The items window once "Show Delivery Items" has opened it.
    DeliveredItemsView* itemsView() const { return m_itemsView; }

private:
    void fill();
    void showState();
    void showItems();
    bool compDialog(TFormCompDel& dialog);

    TFormDeliveries& m_presenter;
    SettingsFile& m_settings;
    QSpinBox* m_days;
    QLabel* m_last;
    QTableWidget* m_table;
    QPushButton* m_comp;
    QPushButton* m_reverse;
    QPushButton* m_delete;
    QPushButton* m_items;
    QPushButton* m_refresh;
    DeliveredItemsView* m_itemsView = nullptr;
    bool m_filling = false;
};

} // namespace kb::ui
