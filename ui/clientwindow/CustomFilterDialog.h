#pragma once

#include <QDialog>

class QTableWidget;
class QPushButton;

namespace kb {
class ClientCustomFilter;
class DataSet;
} // namespace kb

namespace kb::ui {

// "Filter Client Data": a list of conditions, one a line, on the columns of
// Clients; OK keeps those that are complete.
class CustomFilterDialog : public QDialog
{
    Q_OBJECT

public:
    CustomFilterDialog(ClientCustomFilter& filter, const DataSet& clients, QWidget* parent = nullptr);

    QTableWidget* conditions() const { return m_table; }
    // Adds a line; the tests fill it as a user would.
    void addCondition(const QString& column = {}, int op = 0, const QString& value = {});

protected:
    void accept() override;

private:
    ClientCustomFilter& m_filter;
    QStringList m_columns;
    QTableWidget* m_table;
};

} // namespace kb::ui
