#pragma once

#include "window/ClientLists.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QVariant>

namespace kb {

class DataSet;
class TFormClients;

// How a cell of a page grid is typed.
enum class PageCellKind {
    ReadOnly,
    Text,
    Money,
    Date,
    Check,  // a boolean column
    Choice, // one entry of a list, stored by its value
};

// What a column of a page grid edits: the grid may show a name (the funding
// source's, the method's caption) for the code it stores.
struct PageCell
{
    PageCellKind kind = PageCellKind::ReadOnly;
    QString field;                     // the stored column the cell edits
    QString list = {};                 // a list of the client window (Choice)
    QList<ClientListEntry> codes = {}; // fixed codes with their captions (Choice without a list)
};

// The grids of the "Client Services" and "Funding/Billing" pages typed into
// in their cells. A cell's value goes into the row (which goes into edit);
// leaving the row, or saving it, posts it, so the page query's hooks decide
// as for any post: a refused row stays current and in edit with what was
// typed, the rule's message having been shown. Grids and columns are named
// as the window's field layout names them (the shown field).
class PageGridEditing
{
public:
    explicit PageGridEditing(TFormClients& form);

    // Whether the grid's rows are typed into in their cells.
    static bool isEditableGrid(const QString& grid);
    static PageCell cell(const QString& grid, const QString& column);

    // The entries of a Choice cell: the fixed codes, or the window's list
    // with an empty entry first.
    QList<ClientListEntry> choices(const QString& grid, const QString& column) const;
    // Whether the cell may be typed into now: the grid is open and writable
    // for this user, the column edits something, and the row's values allow
    // it (a funding use's time rate and period only for the time method).
    bool isEditable(const QString& grid, int row, const QString& column) const;
    // The stored value a cell edits (the code behind its caption).
    QVariant editValue(const QString& grid, int row, const QString& column) const;
    // What the grid shows in a cell: the value, or the caption of a code.
    QVariant shownValue(const QString& grid, int row, const QString& column) const;
    // The grid's rows: those of its data set, and a row being inserted in
    // its place among them.
    int rowCount(const QString& grid) const;

    // Makes a row (0-based) current; the row left is posted first. False,
    // and the row left still current, when its post was refused.
    bool moveTo(const QString& grid, int row);
    // Types a value into a cell of a row, moving to it first.
    bool setCell(const QString& grid, int row, const QString& column, const QVariant& value);
    // Saves the current row if it is being edited; false when refused.
    bool postRow(const QString& grid);
    void cancelRow(const QString& grid);
    bool isEditing(const QString& grid) const;
    // The current row (0-based), -1 when the grid is closed or empty.
    int currentRow(const QString& grid) const;
    // What a date cell with no date offers first.
    QDate today() const;

private:
    DataSet* openSet(const QString& grid) const;
    bool writable(const DataSet& set) const;
    static QVariant valueAt(const DataSet& set, int row, const QString& field);
    void rowChanged(const QString& grid);

    TFormClients& m_form;
};

} // namespace kb
