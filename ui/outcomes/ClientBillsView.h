#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTreeWidget;

namespace kb {
class SettingsFile;
class TFormClientBills;
} // namespace kb

namespace kb::ui {

// "Export Client Pledge Solicitation and Invoice Data" over its presenter:
// the period, the method, the items, the invoice number and the files.
class ClientBillsView : public QDialog
{
    Q_OBJECT

public:
    ClientBillsView(TFormClientBills& presenter, SettingsFile& settings, QWidget* parent = nullptr);
    ~ClientBillsView() override;

    QLineEdit* fileEdit() const { return m_file; }
    QPushButton* okButton() const { return m_ok; }
    QComboBox* methodBox() const { return m_method; }
    QComboBox* pledgeBox() const { return m_pledges; }

private:
    void showState();

    TFormClientBills& m_presenter;
    QDateEdit* m_start;
    QDateEdit* m_end;
    QComboBox* m_method;
    QComboBox* m_pledges;
    QRadioButton* m_all;
    QRadioButton* m_include;
    QRadioButton* m_exclude;
    QTreeWidget* m_tree;
    QLineEdit* m_invoice;
    QCheckBox* m_history;
    QLineEdit* m_file;
    QCheckBox* m_launch;
    QLineEdit* m_master;
    QPushButton* m_ok;
    bool m_updating = false;
};

} // namespace kb::ui
