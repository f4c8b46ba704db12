#pragma once

#include "store/Database.h"
#include "store/DbError.h"
#include "catalogue/FieldType.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <QHash>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace kb {

// How locate() and lookup() compare texts.
struct LocateOptions
{
    bool caseInsensitive = false;
    bool partialKey = false; // texts match when they start with the value
};

// The cursor over rows that screens and rules are written against: the rows
// of a table or a statement, fetched into memory with each row's identity
// beside it, one current row, and the states browse, edit and insert.
//
// Editing is pessimistic. edit() takes the row's lock (with the session's
// retries) and re-reads the row; post() or cancel() gives the lock back. A
// row changed by someone else since this set read it fails with
// ChangedSinceRead (8708), at edit() and again at post(), so a plain
// statement of another process in between is not overwritten. A failed
// post leaves the set in Edit or Insert with the typed values.
//
// Hooks fire in this order; a before-hook stops its operation by throwing
// kb::Abort, and nothing has changed then:
//   open():    BeforeOpen, fetch, Browse on the first row, AfterOpen, AfterScroll
//   close():   BeforeClose, a pending edit discarded and its lock freed, AfterClose
//   edit():    BeforeEdit, lock and re-read, Edit, AfterEdit
//   post():    BeforePost, write and read the row back, Browse, lock freed,
//              AfterPost, then, when the row no longer belongs to the set (a
//              live result it no longer matches, a filter it no longer
//              passes), the row leaves, the set stands on the next row, and
//              AfterScroll fires
//   cancel():  BeforeCancel, edit discarded and lock freed, Browse, AfterCancel,
//              and AfterScroll after cancelling an insert
//   insert(), append(): a pending edit is posted (or cancelled when nothing
//              was typed), BeforeInsert, BeforeScroll, a new empty row in
//              Insert with the master's key set, OnNewRecord, AfterInsert,
//              AfterScroll
//   remove():  BeforeDelete, BeforeScroll, lock and delete, the set stands
//              on the next row, AfterDelete, AfterScroll
//   moving (first, next, locate, gotoBookmark...): a pending edit is posted
//              (or cancelled when nothing was typed) with its own hooks, then
//              BeforeScroll, move, AfterScroll when the current row changed
// A data set belongs to the thread of its session and must not outlive the
// session: closing it, or its destructor, gives back its locks there (the
// destructor fires no hooks).
//
// OnCalcFields fires whenever a row's calculated fields are wanted, after
// its lookup fields are filled. Errors of edit(), post() and remove() go to
// OnEditError, OnPostError and OnDeleteError, whose answer fails, silently
// aborts or retries the operation.
class DataSet
{
public:
    enum class State { Inactive, Browse, Edit, Insert };
    enum class Hook {
        BeforeOpen, AfterOpen, BeforeClose, AfterClose,
        BeforeInsert, AfterInsert, BeforeEdit, AfterEdit,
        BeforePost, AfterPost, BeforeCancel, AfterCancel,
        BeforeDelete, AfterDelete, BeforeScroll, AfterScroll,
        OnNewRecord, OnCalcFields,
        OnPostError, OnEditError, OnDeleteError,
    };
    static constexpr int HookCount = int(Hook::OnDeleteError) + 1;
    // What an error hook wants done with the failed operation: let the error
    // go on to the caller, end it silently (kb::Abort), or run it again.
    enum class ErrorAction { Fail, Abort, Retry };
    enum class FieldKind { Data, Calculated, Lookup };

    using HookFunction = std::function<void(DataSet&)>;
    using ErrorHookFunction = std::function<ErrorAction(DataSet&, const DbError&)>;
    using FilterFunction = std::function<bool(const DataSet&)>;

    struct Field
    {
        QString name;
        FieldType type = FieldType::Unknown;
        int width = 0;
        FieldKind kind = FieldKind::Data;
        QString tableColumn; // the stored column it edits; empty when read-only
        int source = -1;     // column of the fetched row, or slot of the calculated ones
        // Lookup fields: the key field of this set and where its value is found.
        QString keyField;
        QString lookupTable;
        QString lookupKey;
        QString lookupResult;
        DataSet* lookupSet = nullptr;
    };

    // A row remembered by its identity, valid for as long as the row is in the set.
    struct Bookmark
    {
        qint64 rowId = 0;
        bool valid = false;
    };

    explicit DataSet(Database& database);
    virtual ~DataSet();
    DataSet(const DataSet&) = delete;
    DataSet& operator=(const DataSet&) = delete;

    Database& database() const { return m_database; }
    State state() const { return m_state; }
    bool isActive() const { return m_state != State::Inactive; }

    void open();
    void close();
    // Fetches the rows again and stands on the same row if it is still
    // there. In Edit it re-reads the edited row only, keeping what was typed
    // over it: what the record services do after ChangedSinceRead before
    // they retry the post.
    void refresh();
    void refreshRecord();

    // ---- moving ----
    void first();
    void last();
    void next();
    void prior();
    // Moves by up to distance rows; tells how far it went.
    int moveBy(int distance);
    bool eof() const { return m_eof; }
    bool bof() const { return m_bof; }
    bool isEmpty() const { return m_view.empty(); }
    // 1-based position among the rows the filter lets through; 0 when empty.
    int recNo() const;
    void setRecNo(int recNo);
    // Rows the filter lets through.
    int recordCount() const { return int(m_view.size()); }
    // Rows behind the set, whatever the filter or master link shows.
    virtual qint64 physicalRecordCount();

    Bookmark bookmark() const;
    bool bookmarkValid(const Bookmark& bookmark) const;
    // Throws DbError when the row is no longer in the set.
    void gotoBookmark(const Bookmark& bookmark);

    // Moves to the first row whose fields hold the values; false, and the
    // position kept, when none does.
    bool locate(const QStringList& fields, const QVariantList& values, LocateOptions options = {});
    bool locate(const QString& field, const QVariant& value, LocateOptions options = {});
    // The result field of the first row whose key fields hold the values,
    // without moving; null when none does.
    QVariant lookup(const QStringList& keyFields, const QVariantList& keyValues, const QString& resultField) const;

    // ---- editing ----
    // edit() on an empty set inserts, as a new row is then the only thing to edit.
    void edit();
    void insert();
    void append();
    void post();
    void cancel();
    void remove();
    // Posts an edit with changes, cancels one without.
    void checkBrowseMode();
    // Whether fields were typed in the current Edit or Insert.
    bool isModified() const { return m_modified; }
    bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
    // Whether post() can write, that is the rows come from one stored table
    // with their identities and the set is not read-only.
    bool canModify() const;
    // The stored table that edits go to; empty for a result that cannot be edited.
    const QString& writeTable() const { return m_writeTable; }

    // ---- fields ----
    int fieldCount() const { return int(m_fields.size()); }
    const Field& field(int index) const { return m_fields[size_t(index)]; }
    // -1 when there is no such field (names match without regard to case).
    int fieldIndex(QStringView name) const;
    QStringList fieldNames() const;
    // Null when there is no current row. Throws DbError(UnknownName) for a
    // field the set does not have.
    QVariant fieldValue(QStringView name) const;
    QVariant fieldValue(int index) const;
    // The value of a field in the row at a 0-based position among the rows
    // the filter lets through, without moving and without hooks (calculated
    // fields are worked out for that row): for lists that show many rows at
    // once. The row in edit shows its typed values. Null out of range.
    QVariant fieldValueAt(int position, int index) const;
    // In Edit or Insert only (and on calculated fields inside OnCalcFields);
    // the value is brought to the field's type at once.
    void setFieldValue(QStringView name, const QVariant& value);
    // The value the field had when the edit began.
    QVariant oldValue(QStringView name) const;

    // Added while the set is closed; they take part from the next open.
    void addCalculatedField(const QString& name, FieldType type, int width = 0);
    void addLookupField(const QString& name, const QString& keyField, const QString& table, const QString& keyColumn,
                        const QString& resultColumn);
    void addLookupField(const QString& name, const QString& keyField, DataSet& lookupSet, const QString& keyColumn,
                        const QString& resultColumn);

    // ---- filter ----
    // The callback sees each row as the current one and keeps those it
    // accepts; it applies while filtered is on.
    void setFilter(FilterFunction filter);
    void setFiltered(bool filtered);
    bool isFiltered() const { return m_filtered; }

    // ---- master and detail ----
    // Shows only the rows whose detailField equals the master's masterField,
    // following the master as it moves; new rows take the master's value.
    void setMaster(DataSet& master, const QString& masterField, const QString& detailField);
    void clearMaster();

    // ---- hooks ----
    void setHook(Hook hook, HookFunction function);
    void setErrorHook(Hook hook, ErrorHookFunction function);
    void setOnCalcFields(HookFunction function) { setHook(Hook::OnCalcFields, std::move(function)); }
    // The function set on a hook, so that a rule attaching itself can chain
    // to what was there and put it back when it detaches.
    HookFunction hook(Hook hook) const { return m_hooks[size_t(hook)]; }
    ErrorHookFunction errorHook(Hook hook) const { return m_errorHooks[size_t(hook)]; }
    void takeOff(Hook hook);
    void putBack(Hook hook);
    bool isHookOn(Hook hook) const;

    // Makes what was posted safe from a power failure: a checkpoint of the
    // data directory's log; on the server a commit is already durable. Work
    // inside a transaction is made durable by its commit.
    void flushBuffers();

protected:
    // One row as fetched: the values of the statement's columns in order, and
    // the slots of the calculated and lookup fields.
    struct Row
    {
        qint64 id = 0;
        QVariantList values;
        QVariantList extra;
        bool calculated = false;
        bool gone = false; // deleted, or left a live result
    };

    // What the subclasses supply. fetchAll gives the rows of the whole set;
    // fetchRow the one row with that identity as the set would show it, or
    // no rows when it does not belong to the set. Both return a column named
    // KB_ROWID when the rows can be edited.
    virtual ResultSet fetchAll() = 0;
    virtual ResultSet fetchRow(qint64 rowId) = 0;
    // The stored table the rows come from and the stored column of each
    // fetched column (empty for a computed one), known after fetchAll.
    virtual QString sourceTable() const = 0;
    virtual QString sourceColumn(int column, const ResultSet& result) const;
    // Holds taken while the set is open (the table's open lock).
    virtual void acquire() {}
    virtual void release() {}

    // The master's value that limits the rows, and the field it limits.
    bool hasMaster() const { return m_master != nullptr; }
    const QVariant& masterValue() const { return m_masterValue; }
    const QString& detailField() const { return m_detailField; }
    // Rows fetched and still there, whatever the filter shows.
    qint64 fetchedRowCount() const;

private:
    void requireActive() const;
    void requireEditing(const char* what) const;
    void fire(Hook hook);
    template <typename Operation> void withErrorHook(Hook hook, Operation&& operation);

    void describe(const ResultSet& result);
    void load(const ResultSet& result, std::optional<qint64> keepRowId, int keepPos);
    Row makeRow(const ResultSet& result, qsizetype index, qint64 fallbackId) const;
    void rebuildView(std::optional<qint64> keepRowId, int keepPos);
    void rebuildKeepingRow();
    bool accepts(Row& row) const;
    int viewIndexOf(qint64 rowId) const;

    const Row* readRow() const;
    void calculate(Row& row) const;
    QVariant lookupValue(const Field& field, const QVariant& key) const;
    bool valueMatches(const QVariant& stored, const QVariant& wanted, const Field& field, LocateOptions options) const;
    int findRow(const std::vector<int>& fields, const QVariantList& values, LocateOptions options) const;
    std::vector<int> fieldIndexes(const QStringList& names) const;

    // Moving to a row with the scroll hooks.
    void moveTo(int position);
    void scrolled();
    void followMasters();
    void followMaster();

    void startInsert(bool atEnd);
    void lockAndReread();
    // The fields given values in this edit, as columns, :placeholders and values.
    Params assignedValues(QStringList& columns, QStringList& placeholders) const;
    void writeEdit();
    // Gives the new row's identity.
    qint64 writeInsert();
    void writeDelete();
    void finishLeaving();
    // The stored row as the table holds it now: KB_ROWID and every column.
    ResultSet storedRow(qint64 rowId);
    bool sameStoredValues(const Row& held, const ResultSet& stored) const;
    void unlockCurrent();
    // After a post: the row takes the values the store holds, or leaves the set.
    void settle(qint64 rowId, bool inserted);

    Database& m_database;
    State m_state = State::Inactive;
    std::vector<Field> m_fields;
    std::vector<Field> m_addedFields; // calculated and lookup, as added
    QHash<QString, int> m_fieldIndex; // by lower-case name
    int m_idColumn = -1;
    int m_columnCount = 0; // of the fetched rows
    QString m_writeTable;
    bool m_readOnly = false;

    std::vector<Row> m_rows;
    std::vector<int> m_view; // indexes into m_rows, in order, filter applied
    int m_pos = -1;          // into m_view
    bool m_eof = true;
    bool m_bof = true;
    qint64 m_nextSyntheticId = 1;

    Row m_edit;             // the row being edited or inserted
    Row m_original;         // as it was when the edit began
    std::vector<bool> m_assigned;
    bool m_modified = false;
    bool m_inNewRecord = false;
    int m_insertAt = 0;
    qint64 m_lockedRow = 0;
    bool m_locked = false;
    // The row that stopped belonging to the set at its post, leaving after AfterPost.
    qint64 m_leavingRow = 0;
    bool m_leaving = false;

    mutable const Row* m_evalRow = nullptr; // the row a filter or calculation looks at
    mutable bool m_calculating = false;
    mutable QHash<QString, QVariant> m_lookupCache;

    FilterFunction m_filter;
    bool m_filtered = false;

    std::array<HookFunction, HookCount> m_hooks;
    std::array<ErrorHookFunction, HookCount> m_errorHooks;
    std::array<bool, HookCount> m_hookOff{};

    DataSet* m_master = nullptr;
    QString m_masterField;
    QString m_detailField;
    QVariant m_masterValue;
    std::vector<DataSet*> m_details;
};

} // namespace kb
