#pragma once

#include <QWidget>

class QTableWidget;

namespace kb {
class SettingsFile;
class TFormDeliveredItems;
class TFormDeliveries;
} // namespace kb

namespace kb::ui {

// "Delivered Items" beside "Recent Deliveries": a window of its own, not
// modal, that shows the items of the list's current delivery and follows
// the list as it moves.
class DeliveredItemsView : public QWidget
{
    Q_OBJECT

public:
    DeliveredItemsView(TFormDeliveries& list, SettingsFile& settings, QWidget* parent);
    ~DeliveredItemsView() override;

    QTableWidget* table() const { return m_table; }
    // Shows the items of the list's current delivery, if it changed.
    void follow();

private:
    void fill();

    TFormDeliveries& m_list;
    TFormDeliveredItems& m_presenter;
    SettingsFile& m_settings;
    QTableWidget* m_table;
};

} // namespace kb::ui
