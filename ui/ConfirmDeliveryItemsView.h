#pragma once

#include <QDialog>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace kb {
class TFormConfirmDeliveryItems;
}

namespace kb::ui {

// "Confirm Delivery Items" over its presenter: the heading, the items as
// check boxes (greyed out when the filter leaves them out), the filter with
// its commands, Check All and Uncheck All, OK and Cancel. OK follows the
// presenter: it needs a checked item.
class ConfirmDeliveryItemsView : public QDialog
{
    Q_OBJECT

public:
    explicit ConfirmDeliveryItemsView(TFormConfirmDeliveryItems& presenter, QWidget* parent = nullptr);

    QListWidget* list() const { return m_list; }
    QLineEdit* filterEdit() const { return m_filter; }
    QPushButton* okButton() const { return m_ok; }
    // The button of a command by its caption: "Filter", "Clear Filter",
    // "Check Filtered", "Check All", "Uncheck All".
    QPushButton* commandButton(const QString& caption) const;

private:
    void showState();

    TFormConfirmDeliveryItems& m_presenter;
    QListWidget* m_list;
    QLineEdit* m_filter;
    QPushButton* m_ok;
    bool m_showing = false; // while the view is being filled from the presenter
};

} // namespace kb::ui
