#pragma once

#include <QDialog>

class QComboBox;
class QDateEdit;
class QPushButton;
class QTabWidget;

namespace kb {
class SettingsFile;
class TFormDelDeliv;
} // namespace kb

namespace kb::ui {

class ClientLookupField;

// "Delete Delivery Credits" over its presenter: "By Service" and "By
// Client", each with the date and the walk-in choice.
class DeleteDeliveryCreditsView : public QDialog
{
    Q_OBJECT

public:
    DeleteDeliveryCreditsView(TFormDelDeliv& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QPushButton* okButton() const { return m_ok; }
    ClientLookupField* clientField() const { return m_client; }

private:
    void update();

    TFormDelDeliv& m_presenter;
    QTabWidget* m_pages;
    QDateEdit* m_date;
    QComboBox* m_service;
    ClientLookupField* m_client;
    QComboBox* m_kinds;
    QPushButton* m_ok;
};

} // namespace kb::ui
