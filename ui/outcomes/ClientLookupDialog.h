#pragma once

#include <QDialog>

#include <optional>

#include "ClientLookup.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace kb {
class SettingsFile;
}

namespace kb::ui {

class ClientLookupModel;

// The client look-up dialog over its presenter: "Search By:" name or
// number, "Search For:" searching as the user types, and the clients from
// that place on, read a window at a time as the list scrolls. OK, Enter or
// a double click chooses the current client.
class ClientLookupDialog : public QDialog
{
    Q_OBJECT

public:
    ClientLookupDialog(ClientLookup& lookup, SettingsFile& settings, const QString& text = {},
                       QWidget* parent = nullptr);
    ~ClientLookupDialog() override;

    QComboBox* searchByBox() const { return m_searchBy; }
    QLineEdit* searchEdit() const { return m_search; }
    QTableView* table() const { return m_table; }
    QPushButton* okButton() const { return m_ok; }
    // The client chosen when the dialog was accepted.
    const std::optional<ClientLookup::Row>& chosen() const { return m_chosen; }

private:
    void search();
    void showState();

    ClientLookup& m_lookup;
    SettingsFile& m_settings;
    QComboBox* m_searchBy;
    QLineEdit* m_search;
    QLabel* m_status;
    QTableView* m_table;
    ClientLookupModel* m_model;
    QPushButton* m_ok;
    std::optional<ClientLookup::Row> m_chosen;
};

} // namespace kb::ui
