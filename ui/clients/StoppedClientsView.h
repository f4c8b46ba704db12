#pragma once

#include <QDialog>

class QPushButton;
class QTableWidget;

namespace kb {
class SettingsFile;
class TFormStoppedClients;
} // namespace kb

namespace kb::ui {

// The clients of a status utility, each with its status to choose; OK
// writes them, Cancel leaves everything as it was.
class StoppedClientsView : public QDialog
{
    Q_OBJECT

public:
    StoppedClientsView(TFormStoppedClients& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QTableWidget* table() const { return m_table; }

private:
    TFormStoppedClients& m_presenter;
    QTableWidget* m_table;
    QPushButton* m_ok;
};

} // namespace kb::ui
