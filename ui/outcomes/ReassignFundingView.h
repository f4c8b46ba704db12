#pragma once

#include <QDialog>

class QComboBox;
class QDateEdit;
class QPushButton;
class QRadioButton;

namespace kb {
class SettingsFile;
class TFormReassignFunding;
} // namespace kb

namespace kb::ui {

class ClientLookupField;

// "Reassign Funding to Existing Events and Deliveries" over its presenter.
class ReassignFundingView : public QDialog
{
    Q_OBJECT

public:
    ReassignFundingView(TFormReassignFunding& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    ClientLookupField* clientField() const { return m_client; }
    QComboBox* serviceBox() const { return m_service; }
    QComboBox* fundingBox() const { return m_funding; }
    QDateEdit* startEdit() const { return m_start; }
    QDateEdit* endEdit() const { return m_end; }
    QRadioButton* removeButton() const { return m_remove; }
    QRadioButton* reassignButton() const { return m_reassign; }
    QPushButton* okButton() const { return m_ok; }

private:
    void update();

    TFormReassignFunding& m_presenter;
    ClientLookupField* m_client;
    QComboBox* m_service;
    QDateEdit* m_start;
    QDateEdit* m_end;
    QRadioButton* m_remove;
    QRadioButton* m_reassign;
    QComboBox* m_funding;
    QPushButton* m_ok;
};

} // namespace kb::ui
