#pragma once

#include <QDialog>

class QListWidget;

namespace kb {
class TFilterForm;
}

namespace kb::ui {

// "Limit Clients View": the two choices of the status filter. A double
// click on a choice means OK.
class StatusFilterDialog : public QDialog
{
    Q_OBJECT

public:
    explicit StatusFilterDialog(TFilterForm& form, QWidget* parent = nullptr);

    QListWidget* statusList() const { return m_status; }
    QListWidget* suspensionList() const { return m_suspension; }

private:
    void showChoices();

    TFilterForm& m_form;
    QListWidget* m_status;
    QListWidget* m_suspension;
};

} // namespace kb::ui
