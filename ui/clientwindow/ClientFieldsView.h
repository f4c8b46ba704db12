#pragma once

#include "window/ClientFieldLayout.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>

#include <array>
#include <functional>

class QGroupBox;
class QLabel;
class QPushButton;
class QTableView;
class QWidget;

namespace kb {
class DataSet;
class SettingsFile;
class TFormClients;
} // namespace kb

namespace kb::ui {

class DataSetTableModel;
class PageGridModel;

// The fields, buttons and grids of the client window's header and pages,
// built from the window's field layout and bound to its presenter: what the
// user types goes to the presenter as the field's value, and what the
// presenter says (values, enabled and shown controls, captions, lists) is
// drawn. No rule lives here.
class ClientFieldsView : public QObject
{
    Q_OBJECT

public:
    ClientFieldsView(TFormClients& presenter, SettingsFile& settings, QObject* parent = nullptr);

    // A group box with the group's fields, its buttons and its grid.
    QGroupBox* buildGroup(const ClientFieldGroup& group, QWidget* parent);

    // Values, enabled and shown controls and texts, from the presenter.
    void refresh();
    // The lists and the captions that Config gives.
    void refreshLists();
    // The grids read their data sets again.
    void reloadGrids();
    // The buttons' texts, enabled state and boldness.
    void refreshButtons();
    // The address and directions fields show the alternate address.
    void setAlternate(bool alternate);
    bool alternate() const { return m_alternate; }

    // Grid column widths, in the per-user ini file.
    void saveLayouts();
    // Shows or hides the title rows of the grids of "Client Services".
    void applyServiceHeadings();

    QWidget* editor(const QString& field) const;
    QList<QWidget*> editors(const QString& field) const;
    QPushButton* button(const QString& commandId) const { return m_buttons.value(commandId); }
    QTableView* grid(const QString& name) const { return m_grids.value(name); }
    // After a new row was added to a page grid typed into in its cells: the
    // cursor goes to it and its first cell opens.
    void editCurrentRow(const QString& grid);

signals:
    // A row of a page grid was double-clicked (0-based among its rows).
    void gridRowActivated(const QString& grid, int row);

private:
    struct Bound
    {
        ClientFieldInfo info;
        QWidget* editor = nullptr;
        QLabel* label = nullptr;
        QString row = {}; // the page grid whose current row the field edits; empty: the client's
    };
    struct Group
    {
        const ClientFieldGroup* layout = nullptr;
        QPointer<QGroupBox> box;
    };

    QWidget* makeEditor(const ClientFieldInfo& info, QWidget* parent);
    // An editor of a cell of a page grid's current row, shown beside the grid.
    QWidget* makeRowEditor(const ClientFieldInfo& info, const QString& grid, QWidget* parent);
    void rowEdited(const QString& grid, const QString& field, const QVariant& value, QWidget* editor);
    void showRowField(Bound& bound);
    void fillList(Bound& bound);
    void show(Bound& bound);
    QVariant shownValue(const ClientFieldInfo& info) const;
    bool isAlternateField(const QString& field) const;
    void edited(const QString& field, const QVariant& value);
    DataSet* gridData(const QString& name) const;
    // The pop-up that reverses weekdays, weekends or all days: three
    // commands, run after `before` (which may be empty).
    void addWeekdayPopUp(QWidget& owner, const std::array<QString, 3>& commands, const std::function<void()>& before);
    bool eventFilter(QObject* watched, QEvent* event) override;
    void bindCellEditing(QTableView& view, PageGridModel& model);
    void showCurrentRow(QTableView& view, const QString& grid);
    void cellRowsChanged(const QString& grid);

    TFormClients& m_presenter;
    SettingsFile& m_settings;
    QList<Bound> m_bound;
    QList<Group> m_groups;
    QHash<QString, QPushButton*> m_buttons;
    QHash<QString, QTableView*> m_grids;
    QHash<QString, DataSetTableModel*> m_models;
    QHash<QString, QStringList> m_gridColumns; // "FIELD=Title" by grid
    QSet<QString> m_sizedByUser;               // grids whose columns the user has set
    bool m_autoSizing = false;
    bool m_loading = false;
    bool m_alternate = false;
    bool m_syncing = false; // while a grid's cursor is put on its data set's row
    QWidget* m_typingIn = nullptr; // a row field whose typed text is not redrawn while it is typed
};

} // namespace kb::ui
