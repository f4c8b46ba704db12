#pragma once

#include <QDialog>

class QTableWidget;

namespace kb {
class SettingsFile;
class TFormRelatedClients;
} // namespace kb

namespace kb::ui {

// "Clients related to ..." over its presenter: the clients and the name of
// each relationship; a double click moves the client window to the client.
class RelatedClientsView : public QDialog
{
    Q_OBJECT

public:
    RelatedClientsView(TFormRelatedClients& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QTableWidget* table() const { return m_table; }

private:
    TFormRelatedClients& m_presenter;
    QTableWidget* m_table;
};

} // namespace kb::ui
