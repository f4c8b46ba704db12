#pragma once

#include <QDialog>
#include <QHash>

class QLabel;
class QPushButton;
class QTableView;

namespace kb {
class RecordServices;
class SettingsFile;
class TFormAddressOverride;
} // namespace kb

namespace kb::ui {

class DataSetTableModel;

// "Address Overrides" over its presenter: a grid to move through the
// client's alternate addresses and the current one's fields below it, shown
// by its type, with the screen's commands.
class AddressOverrideView : public QDialog
{
    Q_OBJECT

public:
    AddressOverrideView(TFormAddressOverride& presenter, RecordServices& services, SettingsFile& settings,
                        QWidget* parent = nullptr);

    QTableView* grid() const { return m_grid; }
    QWidget* editor(const QString& column) const { return m_editors.value(column.toUpper()); }
    QPushButton* button(const QString& text) const { return m_buttons.value(text); }

protected:
    void done(int result) override;

private:
    QWidget* makeEditor(const QString& column);
    void setValue(const QString& column, const QVariant& value);
    void showRow();
    void reload();
    void locateDate();
    void locateOnMap();

    TFormAddressOverride& m_presenter;
    RecordServices& m_services;
    QTableView* m_grid;
    DataSetTableModel* m_model;
    QHash<QString, QWidget*> m_editors;
    QHash<QString, QWidget*> m_rows; // the label of each editor's line
    QHash<QString, QPushButton*> m_buttons;
    QLabel* m_cityLabel = nullptr;
    bool m_showing = false;
};

} // namespace kb::ui
