#pragma once

#include <QDialog>

class QListWidget;
class QPushButton;

namespace kb::reports {
class TFormItemLimitation;
}

namespace kb::ui {

// "Report Item Limitation": the one item a kitchen report is limited to; OK
// once an item is chosen.
class ItemLimitationDialog : public QDialog
{
    Q_OBJECT

public:
    ItemLimitationDialog(reports::TFormItemLimitation& presenter, QWidget* parent = nullptr);

    QListWidget* itemList() const { return m_items; }
    QPushButton* okButton() const { return m_ok; }

private:
    QListWidget* m_items;
    QPushButton* m_ok;
};

} // namespace kb::ui
