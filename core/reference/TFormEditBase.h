#pragma once

#include "reference/EditorField.h"
#include "reference/EditorScreen.h"
#include "reference/ReferenceRules.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

namespace kb {

class DataSet;
class Database;
class RecordServices;
class TFormDietCombinations;
class UserInterface;

// What a screen of its own adds to a code table's rules (the routes' screen:
// a changed code follows to the rows that hold it, a route in use stays).
struct EditorRules
{
    // Before a post, after the table's own rules; false abandons the post
    // (the user has been told).
    std::function<bool(const RowReader& row, const RowWriter& write, const RowReader& original)> beforePost;
    // Before a delete: the message that refuses it; empty lets it go on.
    std::function<QString(const RowReader& row)> deleteRefusal;
    // After the screen has closed its table.
    std::function<void()> afterClose;
};

// The maintenance screen of a code table: a browse page with a grid of the
// rows, an edit page with the row's fields, and a navigator. The table's
// rules hang on its data set's hooks (numbering and create date on a new
// row, the row limits before an insert, the rules before a post, the
// ordered delete guards), and its engine errors go to the maintenance
// reactions of the record services. Every message reaches the user
// through the user interface; the view only draws what it is told.
class TFormEditBase
{
public:
    enum class Page { Browse, Edit };
    enum class Command { First, Prior, Next, Last, Insert, Delete, Post, Cancel, Refresh };

    // The rows of the browse grid as they stood when the set was last at rest.
    struct Grid
    {
        QStringList fields;
        QList<QVariantList> rows;
        int current = -1; // index into rows
    };

    TFormEditBase(RecordServices& services, EditorScreen screen);
    ~TFormEditBase();
    TFormEditBase(const TFormEditBase&) = delete;
    TFormEditBase& operator=(const TFormEditBase&) = delete;

    const EditorScreen& screen() const { return m_screen; }
    void setRules(EditorRules rules) { m_rules = std::move(rules); }
    const QString& caption() const { return m_screen.caption; }
    // Asked before a row is deleted, unless the table's own guards asked.
    static QString deleteQuestion() { return QStringLiteral("Delete the selected row? This cannot be undone."); }
    // Told when a new row is posted before anything was typed into it.
    static QString nothingToSaveText()
    {
        return QStringLiteral("There is nothing to save yet: type the new row's values first.");
    }
    DataSet& dataSet() { return *m_set; }

    // Opens the table; false (the user told) when it cannot be opened.
    bool open();
    // Closing while a row is being edited or inserted asks whether to save
    // it: Yes posts, No cancels. False when the screen stays open (the post
    // was refused).
    bool close();

    Page page() const { return m_page; }
    void setPage(Page page);
    // A double click on a grid row: that row on the edit page.
    void openRow(int index);

    bool isEnabled(Command command) const;
    // Runs a navigator command; false when it was refused or failed, the
    // user having been told why.
    bool run(Command command);

    // The edit page.
    const QList<EditorField>& fields() const { return m_fields; }
    bool isFieldVisible(const QString& field) const;
    QList<Choice> choices(const QString& field) const;
    QVariant value(const QString& field) const;
    // Typing into a field puts the row into edit first; false when that
    // was refused, or the field is one that is shown but never typed into.
    bool setValue(const QString& field, const QVariant& value);

    const Grid& grid() const { return m_grid; }

    // Incremental search, on the screens that have it: moves to the first
    // row whose first browse column begins with the text (case aside), or
    // else whose second does. False, and the row stays, when none does or a
    // row is being edited.
    bool hasIncrementalSearch() const { return m_screen.incrementalSearch; }
    bool searchIncrementally(const QString& text);
    // Where the cursor goes on a new row: the first field the user types into.
    QString newRowField() const;

    // Called after anything the view shows may have changed.
    void setOnChanged(std::function<void()> onChanged) { m_onChanged = std::move(onChanged); }

    // TFormEditColdBagCodeUsage: the check list of the diet combinations
    // without a rule; null on other screens.
    bool offersMissingCombinations() const;
    std::unique_ptr<TFormDietCombinations> missingCombinations();
    // After the check list created rows: shows them.
    void combinationsCreated();

private:
    bool editing() const;
    template <typename Work> bool guarded(Work&& work);
    void installRules();
    void addDisplayFields();
    RowReader currentRow() const;
    RowWriter rowWriter();
    RowReader originalRow() const;
    void changed();
    void rebuildGrid();

    RecordServices& m_services;
    Database& m_db;
    UserInterface& m_ui;
    EditorScreen m_screen;
    EditorRules m_rules;
    std::unique_ptr<DataSet> m_set;
    QStringList m_dietCodes; // the diet codes by bit, for masks in words
    QList<EditorField> m_fields;
    Page m_page = Page::Browse;
    Grid m_grid;
    std::function<void()> m_onChanged;
    // The row being deleted, for the rows that go with it afterwards.
    QHash<QString, QVariant> m_deleted;
};

} // namespace kb
