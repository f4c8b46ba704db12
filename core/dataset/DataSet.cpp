#include "dataset/DataSet.h"

#include "dataset/Abort.h"
#include "dataset/RecordLocks.h"
#include "sql/Translator.h"
#include "store/ValueConversion.h"

#include <QDebug>

#include <algorithm>
#include <optional>

namespace kb {

namespace {

const QString RowParam = QStringLiteral("KbRow");

// Restores a member to its former value when a scope ends, also by an error.
template <typename T> class Restore
{
public:
    Restore(T& target, T value) : m_target(target), m_saved(target) { m_target = value; }
    ~Restore() { m_target = m_saved; }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

private:
    T& m_target;
    T m_saved;
};

[[noreturn]] void changedSinceRead(const QString& table)
{
    throw DbError(DbErrorCode::ChangedSinceRead,
                  QStringLiteral("Record has been changed or deleted by another user in table %1").arg(table));
}

} // namespace

DataSet::DataSet(Database& database) : m_database(database) {}

DataSet::~DataSet()
{
    // No hooks fire here: what they would touch may already be gone.
    try {
        unlockCurrent();
    } catch (const DbError& e) {
        // A destructor cannot pass the error on; the lock ends with the
        // session at the latest.
        qWarning("Releasing a record lock failed: %s", qPrintable(e.message()));
    }
    clearMaster();
    for (DataSet* detail : m_details)
        detail->m_master = nullptr;
}

// ---- checks and hooks ----

void DataSet::requireActive() const
{
    if (m_state == State::Inactive)
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot perform this operation on a closed data set"));
}

void DataSet::requireEditing(const char* what) const
{
    if (m_state != State::Edit && m_state != State::Insert)
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("Data set is not in edit or insert mode (%1)").arg(QString::fromLatin1(what)));
}

bool DataSet::canModify() const
{
    return isActive() && !m_readOnly && !m_writeTable.isEmpty() && m_idColumn >= 0 &&
           (m_database.mayWrite() || !m_database.persistentTable(m_writeTable));
}

void DataSet::setHook(Hook hook, HookFunction function) { m_hooks[size_t(hook)] = std::move(function); }

void DataSet::setErrorHook(Hook hook, ErrorHookFunction function)
{
    if (hook != Hook::OnPostError && hook != Hook::OnEditError && hook != Hook::OnDeleteError)
        throw DbError(DbErrorCode::Other, QStringLiteral("Only the error hooks take an error"));
    m_errorHooks[size_t(hook)] = std::move(function);
}

void DataSet::takeOff(Hook hook) { m_hookOff[size_t(hook)] = true; }
void DataSet::putBack(Hook hook) { m_hookOff[size_t(hook)] = false; }
bool DataSet::isHookOn(Hook hook) const { return !m_hookOff[size_t(hook)]; }

void DataSet::fire(Hook hook)
{
    if (m_hookOff[size_t(hook)] || !m_hooks[size_t(hook)])
        return;
    // A copy, so a hook may replace itself while it runs.
    const HookFunction function = m_hooks[size_t(hook)];
    function(*this);
}

template <typename Operation> void DataSet::withErrorHook(Hook hook, Operation&& operation)
{
    for (;;) {
        try {
            operation();
            return;
        } catch (const DbError& error) {
            if (m_hookOff[size_t(hook)] || !m_errorHooks[size_t(hook)])
                throw;
            const ErrorHookFunction function = m_errorHooks[size_t(hook)];
            switch (function(*this, error)) {
            case ErrorAction::Fail: throw;
            case ErrorAction::Abort: throw Abort();
            case ErrorAction::Retry: break;
            }
        }
    }
}

// ---- fields ----

QString DataSet::sourceColumn(int column, const ResultSet& result) const
{
    const TableDef* def = m_database.persistentTable(m_writeTable);
    if (!def)
        def = m_database.memoryTable(m_writeTable);
    const ColumnDef* c = def ? def->column(result.columnName(column)) : nullptr;
    return c ? c->name : QString();
}

void DataSet::describe(const ResultSet& result)
{
    m_fields.clear();
    m_fieldIndex.clear();
    m_idColumn = result.columnIndex(QString::fromLatin1(sql::RowIdColumn));
    m_columnCount = result.columnCount();
    m_writeTable = m_idColumn >= 0 ? sourceTable() : QString();
    for (int c = 0; c < result.columnCount(); ++c) {
        if (c == m_idColumn)
            continue;
        Field f;
        f.name = result.columnName(c);
        f.type = result.columnType(c);
        f.width = result.columns()[size_t(c)].width;
        f.source = c;
        if (!m_writeTable.isEmpty())
            f.tableColumn = sourceColumn(c, result);
        m_fields.push_back(f);
    }
    for (size_t i = 0; i < m_addedFields.size(); ++i) {
        Field f = m_addedFields[i];
        f.source = int(i);
        if (f.kind == FieldKind::Lookup && f.lookupSet && f.lookupSet->isActive()) {
            const int r = f.lookupSet->fieldIndex(f.lookupResult);
            if (r >= 0)
                f.type = f.lookupSet->field(r).type;
        }
        m_fields.push_back(f);
    }
    for (size_t i = 0; i < m_fields.size(); ++i)
        if (!m_fieldIndex.contains(m_fields[i].name.toLower()))
            m_fieldIndex.insert(m_fields[i].name.toLower(), int(i));
}

int DataSet::fieldIndex(QStringView name) const { return m_fieldIndex.value(name.toString().toLower(), -1); }

QStringList DataSet::fieldNames() const
{
    QStringList names;
    for (const Field& f : m_fields)
        names.append(f.name);
    return names;
}

static int requireField(const DataSet& set, QStringView name)
{
    const int index = set.fieldIndex(name);
    if (index < 0)
        throw DbError(DbErrorCode::UnknownName, QStringLiteral("Field %1 does not exist").arg(name.toString()));
    return index;
}

const DataSet::Row* DataSet::readRow() const
{
    if (m_evalRow)
        return m_evalRow;
    if (m_state == State::Edit || m_state == State::Insert)
        return &m_edit;
    if (m_pos >= 0 && m_pos < int(m_view.size()))
        return &m_rows[size_t(m_view[size_t(m_pos)])];
    return nullptr;
}

QVariant DataSet::fieldValue(QStringView name) const { return fieldValue(requireField(*this, name)); }

QVariant DataSet::fieldValue(int index) const
{
    const Row* row = readRow();
    if (!row)
        return {};
    const Field& f = m_fields[size_t(index)];
    if (f.kind == FieldKind::Data)
        return row->values.value(f.source);
    if (!row->calculated)
        calculate(const_cast<Row&>(*row));
    return row->extra.value(f.source);
}

QVariant DataSet::fieldValueAt(int position, int index) const
{
    if (position < 0 || position >= int(m_view.size()) || index < 0 || index >= int(m_fields.size()))
        return {};
    const Row* row = &m_rows[size_t(m_view[size_t(position)])];
    if (m_state == State::Edit && position == m_pos)
        row = &m_edit;
    Restore<const Row*> eval(m_evalRow, row);
    return fieldValue(index);
}

QVariant DataSet::oldValue(QStringView name) const
{
    const Field& f = m_fields[size_t(requireField(*this, name))];
    if (m_state != State::Edit || f.kind != FieldKind::Data)
        return fieldValue(name);
    return m_original.values.value(f.source);
}

void DataSet::setFieldValue(QStringView name, const QVariant& value)
{
    const int index = requireField(*this, name);
    const Field& f = m_fields[size_t(index)];
    if (m_calculating) {
        if (f.kind != FieldKind::Calculated)
            throw DbError(DbErrorCode::Other,
                          QStringLiteral("Only calculated fields can be set while calculating; %1 is not one").arg(f.name));
        const_cast<Row*>(m_evalRow)->extra[f.source] = value;
        return;
    }
    requireEditing("setting a field");
    if (f.kind != FieldKind::Data || f.tableColumn.isEmpty())
        throw DbError(DbErrorCode::Other, QStringLiteral("Field %1 cannot be modified").arg(f.name));
    QVariant canonical;
    try {
        canonical = toCanonical(value, f.type == FieldType::Unknown ? FieldType::String : f.type, f.name);
    } catch (const DbError& e) {
        throw DbError(DbErrorCode::ParameterType,
                      QStringLiteral("Field %1 expects a value of type %2; '%3' does not fit")
                          .arg(f.name, fieldTypeName(f.type), value.toString()));
    }
    m_edit.values[f.source] = canonical;
    m_edit.calculated = false;
    m_assigned[size_t(index)] = true;
    if (!m_inNewRecord)
        m_modified = true;
}

void DataSet::addCalculatedField(const QString& name, FieldType type, int width)
{
    if (isActive())
        throw DbError(DbErrorCode::Other, QStringLiteral("Fields are added while the data set is closed"));
    Field f;
    f.name = name;
    f.type = type;
    f.width = width;
    f.kind = FieldKind::Calculated;
    m_addedFields.push_back(f);
}

void DataSet::addLookupField(const QString& name, const QString& keyField, const QString& table,
                             const QString& keyColumn, const QString& resultColumn)
{
    if (isActive())
        throw DbError(DbErrorCode::Other, QStringLiteral("Fields are added while the data set is closed"));
    const TableDef* def = m_database.persistentTable(table);
    if (!def)
        def = m_database.memoryTable(table);
    if (!def)
        throw DbError(DbErrorCode::UnknownName, QStringLiteral("Table %1 does not exist").arg(table));
    const ColumnDef* key = def->column(keyColumn);
    const ColumnDef* result = def->column(resultColumn);
    if (!key || !result)
        throw DbError(DbErrorCode::UnknownName,
                      QStringLiteral("Column %1 does not exist in table %2").arg(key ? resultColumn : keyColumn, table));
    Field f;
    f.name = name;
    f.type = result->type == FieldType::AutoInc ? FieldType::Int : result->type;
    f.width = result->width;
    f.kind = FieldKind::Lookup;
    f.keyField = keyField;
    f.lookupTable = def->name();
    f.lookupKey = key->name;
    f.lookupResult = result->name;
    m_addedFields.push_back(f);
}

void DataSet::addLookupField(const QString& name, const QString& keyField, DataSet& lookupSet,
                             const QString& keyColumn, const QString& resultColumn)
{
    if (isActive())
        throw DbError(DbErrorCode::Other, QStringLiteral("Fields are added while the data set is closed"));
    Field f;
    f.name = name;
    f.kind = FieldKind::Lookup;
    f.keyField = keyField;
    f.lookupSet = &lookupSet;
    f.lookupKey = keyColumn;
    f.lookupResult = resultColumn;
    m_addedFields.push_back(f);
}

QVariant DataSet::lookupValue(const Field& field, const QVariant& key) const
{
    if (key.isNull())
        return {};
    if (field.lookupSet)
        return field.lookupSet->lookup({field.lookupKey}, {key}, field.lookupResult);
    const QString cacheKey = field.name.toLower() + QChar(0x1f) + key.toString();
    if (const auto it = m_lookupCache.constFind(cacheKey); it != m_lookupCache.constEnd())
        return *it;
    const ResultSet r = m_database.execute(QStringLiteral("select %1 from %2 where %3 = :Key")
                                               .arg(field.lookupResult, field.lookupTable, field.lookupKey),
                                           {{QStringLiteral("Key"), key}});
    const QVariant value = r.isEmpty() ? QVariant() : r.value(0, 0);
    m_lookupCache.insert(cacheKey, value);
    return value;
}

void DataSet::calculate(Row& row) const
{
    row.calculated = true;
    if (m_addedFields.empty())
        return;
    Restore<const Row*> eval(m_evalRow, &row);
    row.extra = QVariantList(qsizetype(m_addedFields.size()));
    for (const Field& f : m_fields)
        if (f.kind == FieldKind::Lookup)
            row.extra[f.source] = lookupValue(f, fieldValue(f.keyField));
    Restore<bool> calculating(m_calculating, true);
    const_cast<DataSet*>(this)->fire(Hook::OnCalcFields);
}

// ---- opening and rows ----

DataSet::Row DataSet::makeRow(const ResultSet& result, qsizetype index, qint64 fallbackId) const
{
    Row row;
    row.values = result.row(index);
    row.id = m_idColumn >= 0 ? row.values.at(m_idColumn).toLongLong() : fallbackId;
    return row;
}

bool DataSet::accepts(Row& row) const
{
    if (row.gone)
        return false;
    if (!m_filtered || !m_filter)
        return true;
    Restore<const Row*> eval(m_evalRow, &row);
    return m_filter(*this);
}

void DataSet::load(const ResultSet& result, std::optional<qint64> keepRowId, int keepPos)
{
    m_lookupCache.clear();
    m_rows.clear();
    m_rows.reserve(size_t(result.rowCount()));
    for (qsizetype i = 0; i < result.rowCount(); ++i)
        m_rows.push_back(makeRow(result, i, m_nextSyntheticId++));
    rebuildView(keepRowId, keepPos);
}

void DataSet::rebuildView(std::optional<qint64> keepRowId, int keepPos)
{
    m_view.clear();
    m_view.reserve(m_rows.size());
    for (size_t i = 0; i < m_rows.size(); ++i)
        if (accepts(m_rows[i]))
            m_view.push_back(int(i));
    int pos = keepRowId ? viewIndexOf(*keepRowId) : -1;
    if (pos < 0)
        pos = std::clamp(keepPos, 0, int(m_view.size()) - 1);
    m_pos = m_view.empty() ? -1 : pos;
    m_eof = m_bof = m_view.empty();
}

int DataSet::viewIndexOf(qint64 rowId) const
{
    for (size_t v = 0; v < m_view.size(); ++v)
        if (m_rows[size_t(m_view[v])].id == rowId)
            return int(v);
    return -1;
}

qint64 DataSet::fetchedRowCount() const
{
    return std::count_if(m_rows.begin(), m_rows.end(), [](const Row& r) { return !r.gone; });
}

void DataSet::open()
{
    if (isActive())
        return;
    fire(Hook::BeforeOpen);
    if (m_master)
        m_masterValue = m_master->isActive() ? m_master->fieldValue(m_masterField) : QVariant();
    acquire();
    try {
        const ResultSet result = fetchAll();
        describe(result);
        load(result, std::nullopt, 0);
    } catch (...) {
        m_rows.clear();
        m_view.clear();
        release();
        throw;
    }
    m_state = State::Browse;
    m_bof = true;
    fire(Hook::AfterOpen);
    scrolled();
}

void DataSet::close()
{
    if (!isActive())
        return;
    fire(Hook::BeforeClose);
    // A pending edit is dropped: the screens ask the user before they close.
    unlockCurrent();
    m_edit = Row();
    m_modified = false;
    m_leaving = false;
    m_state = State::Inactive;
    m_rows.clear();
    m_view.clear();
    m_pos = -1;
    m_eof = m_bof = true;
    m_lookupCache.clear();
    release();
    fire(Hook::AfterClose);
    followMasters();
}

void DataSet::refresh()
{
    requireActive();
    if (m_state == State::Edit) {
        refreshRecord();
        return;
    }
    checkBrowseMode();
    std::optional<qint64> keep;
    if (m_pos >= 0)
        keep = m_rows[size_t(m_view[size_t(m_pos)])].id;
    const ResultSet result = fetchAll();
    load(result, keep, m_pos);
    followMasters();
}

void DataSet::refreshRecord()
{
    requireActive();
    if (m_state == State::Insert || m_pos < 0)
        return;
    if (m_idColumn < 0) {
        // Without row identities the only way to read a row again is to read them all.
        refresh();
        return;
    }
    Row& row = m_rows[size_t(m_view[size_t(m_pos)])];
    const ResultSet fresh = fetchRow(row.id);
    if (m_state == State::Edit) {
        if (fresh.isEmpty())
            changedSinceRead(m_writeTable);
        const Row read = makeRow(fresh, 0, row.id);
        // What was typed stays over the values read again.
        Row merged = read;
        for (size_t i = 0; i < m_fields.size(); ++i)
            if (m_assigned[i] && m_fields[i].kind == FieldKind::Data)
                merged.values[m_fields[i].source] = m_edit.values.value(m_fields[i].source);
        row = read;
        m_original = read;
        m_edit = merged;
        return;
    }
    if (!fresh.isEmpty()) {
        row = makeRow(fresh, 0, row.id);
        return;
    }
    row.gone = true;
    m_view.erase(m_view.begin() + m_pos);
    m_pos = std::min(m_pos, int(m_view.size()) - 1);
    if (m_view.empty())
        m_eof = m_bof = true;
    scrolled();
}

// ---- moving ----

void DataSet::scrolled()
{
    fire(Hook::AfterScroll);
    followMasters();
}

int DataSet::recNo() const
{
    if (m_state == State::Insert)
        return m_insertAt + 1;
    return m_pos + 1;
}

void DataSet::first()
{
    requireActive();
    checkBrowseMode();
    fire(Hook::BeforeScroll);
    m_pos = m_view.empty() ? -1 : 0;
    m_bof = true;
    m_eof = m_view.empty();
    scrolled();
}

void DataSet::last()
{
    requireActive();
    checkBrowseMode();
    fire(Hook::BeforeScroll);
    m_pos = int(m_view.size()) - 1;
    m_eof = true;
    m_bof = m_view.empty();
    scrolled();
}

int DataSet::moveBy(int distance)
{
    requireActive();
    checkBrowseMode();
    fire(Hook::BeforeScroll);
    if (m_view.empty()) {
        m_eof = m_bof = true;
        return 0;
    }
    const int target = std::clamp(m_pos + distance, 0, int(m_view.size()) - 1);
    const int moved = target - m_pos;
    m_pos = target;
    if (distance > 0) {
        m_eof = moved < distance;
        m_bof = false;
    } else if (distance < 0) {
        m_bof = moved > distance;
        m_eof = false;
    }
    if (moved != 0)
        scrolled();
    return moved;
}

void DataSet::next() { moveBy(1); }
void DataSet::prior() { moveBy(-1); }

void DataSet::moveTo(int position)
{
    checkBrowseMode();
    fire(Hook::BeforeScroll);
    m_pos = position;
    m_eof = m_bof = false;
    scrolled();
}

void DataSet::setRecNo(int recNo)
{
    requireActive();
    if (recNo < 1 || recNo > int(m_view.size()))
        throw DbError(DbErrorCode::Other, QStringLiteral("Record number %1 is out of range").arg(recNo));
    moveTo(recNo - 1);
}

DataSet::Bookmark DataSet::bookmark() const
{
    if (m_pos < 0 || m_state == State::Insert)
        return {};
    return Bookmark{m_rows[size_t(m_view[size_t(m_pos)])].id, true};
}

bool DataSet::bookmarkValid(const Bookmark& bookmark) const
{
    return bookmark.valid && isActive() && viewIndexOf(bookmark.rowId) >= 0;
}

void DataSet::gotoBookmark(const Bookmark& bookmark)
{
    requireActive();
    checkBrowseMode();
    const int pos = bookmark.valid ? viewIndexOf(bookmark.rowId) : -1;
    if (pos < 0)
        throw DbError(DbErrorCode::Other, QStringLiteral("Record not found"));
    moveTo(pos);
}

std::vector<int> DataSet::fieldIndexes(const QStringList& names) const
{
    std::vector<int> indexes;
    for (const QString& name : names)
        indexes.push_back(requireField(*this, name));
    return indexes;
}

bool DataSet::valueMatches(const QVariant& stored, const QVariant& wanted, const Field& field,
                           LocateOptions options) const
{
    if (wanted.isNull())
        return stored.isNull();
    if (stored.isNull())
        return false;
    if (isText(field.type) || field.type == FieldType::Unknown) {
        const Qt::CaseSensitivity cs = options.caseInsensitive ? Qt::CaseInsensitive : Qt::CaseSensitive;
        const QString s = stored.toString();
        const QString w = wanted.toString();
        return options.partialKey ? s.startsWith(w, cs) : s.compare(w, cs) == 0;
    }
    return QVariant::compare(stored, wanted) == QPartialOrdering::Equivalent;
}

int DataSet::findRow(const std::vector<int>& fields, const QVariantList& values, LocateOptions options) const
{
    if (int(fields.size()) != values.size())
        throw DbError(DbErrorCode::Other, QStringLiteral("Locate needs one value for each field"));
    // Values are brought to the fields' types once, not for every row.
    QVariantList wanted;
    for (size_t k = 0; k < fields.size(); ++k) {
        const Field& f = m_fields[size_t(fields[k])];
        const bool plain = values[k].isNull() || isText(f.type) || f.type == FieldType::Unknown;
        wanted.append(plain ? values[k] : toCanonical(values[k], f.type, f.name));
    }
    for (size_t v = 0; v < m_view.size(); ++v) {
        Restore<const Row*> eval(m_evalRow, &m_rows[size_t(m_view[v])]);
        bool all = true;
        for (size_t k = 0; k < fields.size() && all; ++k)
            all = valueMatches(fieldValue(fields[k]), wanted[k], m_fields[size_t(fields[k])], options);
        if (all)
            return int(v);
    }
    return -1;
}

bool DataSet::locate(const QStringList& fields, const QVariantList& values, LocateOptions options)
{
    requireActive();
    checkBrowseMode();
    const int found = findRow(fieldIndexes(fields), values, options);
    if (found < 0)
        return false;
    moveTo(found);
    return true;
}

bool DataSet::locate(const QString& field, const QVariant& value, LocateOptions options)
{
    return locate(QStringList{field}, QVariantList{value}, options);
}

QVariant DataSet::lookup(const QStringList& keyFields, const QVariantList& keyValues, const QString& resultField) const
{
    requireActive();
    const int result = requireField(*this, resultField);
    const int found = findRow(fieldIndexes(keyFields), keyValues, {});
    if (found < 0)
        return {};
    Restore<const Row*> eval(m_evalRow, &m_rows[size_t(m_view[size_t(found)])]);
    return fieldValue(result);
}

qint64 DataSet::physicalRecordCount() { return fetchedRowCount(); }

// ---- filter ----

void DataSet::setFilter(FilterFunction filter)
{
    m_filter = std::move(filter);
    if (isActive() && m_filtered)
        rebuildKeepingRow();
}

void DataSet::setFiltered(bool filtered)
{
    if (m_filtered == filtered)
        return;
    m_filtered = filtered;
    if (isActive())
        rebuildKeepingRow();
}

void DataSet::rebuildKeepingRow()
{
    // An edit in progress keeps its row: the rows around it are shown anew.
    std::optional<qint64> keep;
    if (m_pos >= 0)
        keep = m_rows[size_t(m_view[size_t(m_pos)])].id;
    const int pos = m_pos;
    rebuildView(keep, pos);
    if (m_state == State::Edit && keep && viewIndexOf(*keep) < 0) {
        // The row in edit stays current even when the filter would hide it.
        const auto it = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row& r) { return r.id == *keep; });
        const int index = int(it - m_rows.begin());
        const auto at = std::lower_bound(m_view.begin(), m_view.end(), index);
        m_pos = int(at - m_view.begin());
        m_view.insert(at, index);
    }
    if (!m_view.empty())
        m_eof = m_bof = false;
}

// ---- master and detail ----

void DataSet::setMaster(DataSet& master, const QString& masterField, const QString& detailField)
{
    if (&master == this)
        throw DbError(DbErrorCode::Other, QStringLiteral("A data set cannot be its own master"));
    clearMaster();
    m_master = &master;
    m_masterField = masterField;
    m_detailField = detailField;
    master.m_details.push_back(this);
    if (isActive()) {
        m_masterValue = QVariant(QMetaType::fromType<void>()); // forces the first follow to fetch
        followMaster();
    }
}

void DataSet::clearMaster()
{
    if (!m_master)
        return;
    auto& details = m_master->m_details;
    details.erase(std::remove(details.begin(), details.end(), this), details.end());
    m_master = nullptr;
}

void DataSet::followMasters()
{
    // A copy: a detail following may change the list.
    const std::vector<DataSet*> details = m_details;
    for (DataSet* detail : details)
        detail->followMaster();
}

void DataSet::followMaster()
{
    if (!isActive() || !m_master)
        return;
    const QVariant value = m_master->isActive() ? m_master->fieldValue(m_masterField) : QVariant();
    if (value.isNull() == m_masterValue.isNull() && value == m_masterValue && m_masterValue.isValid())
        return;
    checkBrowseMode();
    m_masterValue = value;
    const ResultSet result = fetchAll();
    load(result, std::nullopt, 0);
    m_bof = true;
    scrolled();
}

// ---- editing ----

void DataSet::checkBrowseMode()
{
    if (m_state != State::Edit && m_state != State::Insert)
        return;
    if (m_modified)
        post();
    else
        cancel();
}

void DataSet::unlockCurrent()
{
    if (!m_locked)
        return;
    m_locked = false;
    m_database.recordLocks().unlock(this, m_writeTable, m_lockedRow);
}

ResultSet DataSet::storedRow(qint64 rowId)
{
    return m_database.execute(QStringLiteral("select KB_ROWID, * from %1 where KB_ROWID = :KbRow").arg(m_writeTable),
                              {{RowParam, rowId}});
}

bool DataSet::sameStoredValues(const Row& held, const ResultSet& stored) const
{
    for (const Field& f : m_fields) {
        if (f.kind != FieldKind::Data || f.tableColumn.isEmpty())
            continue;
        const int c = stored.columnIndex(f.tableColumn);
        const QVariant& now = stored.value(0, c);
        const QVariant& then = held.values.at(f.source);
        if (now.isNull() != then.isNull() || (!now.isNull() && now != then))
            return false;
    }
    return true;
}

void DataSet::lockAndReread()
{
    Row& row = m_rows[size_t(m_view[size_t(m_pos)])];
    m_database.recordLocks().lock(this, m_writeTable, row.id);
    m_locked = true;
    m_lockedRow = row.id;
    try {
        const ResultSet fresh = fetchRow(row.id);
        if (fresh.isEmpty())
            changedSinceRead(m_writeTable);
        const Row read = makeRow(fresh, 0, row.id);
        for (const Field& f : m_fields) {
            if (f.kind != FieldKind::Data || f.tableColumn.isEmpty())
                continue;
            const QVariant& now = read.values.at(f.source);
            const QVariant& then = row.values.at(f.source);
            if (now.isNull() != then.isNull() || (!now.isNull() && now != then))
                changedSinceRead(m_writeTable);
        }
        // Columns computed by a query may have moved on; take them as they are now.
        row = read;
    } catch (...) {
        unlockCurrent();
        throw;
    }
}

void DataSet::edit()
{
    requireActive();
    if (m_state == State::Edit || m_state == State::Insert)
        return;
    if (m_view.empty()) {
        insert();
        return;
    }
    m_database.checkWrite(m_writeTable);
    if (!canModify())
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot modify a read-only data set"));
    fire(Hook::BeforeEdit);
    withErrorHook(Hook::OnEditError, [this] { lockAndReread(); });
    const Row& row = m_rows[size_t(m_view[size_t(m_pos)])];
    m_edit = row;
    m_original = row;
    m_assigned.assign(m_fields.size(), false);
    m_modified = false;
    m_state = State::Edit;
    fire(Hook::AfterEdit);
}

void DataSet::startInsert(bool atEnd)
{
    requireActive();
    checkBrowseMode();
    m_database.checkWrite(m_writeTable);
    if (!canModify())
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot modify a read-only data set"));
    fire(Hook::BeforeInsert);
    fire(Hook::BeforeScroll);
    m_insertAt = atEnd || m_pos < 0 ? int(m_view.size()) : m_pos;
    m_edit = Row();
    m_edit.values = QVariantList(m_columnCount);
    m_assigned.assign(m_fields.size(), false);
    m_modified = false;
    m_state = State::Insert;
    {
        // Values a new row starts with are no changes of the user's.
        Restore<bool> defaults(m_inNewRecord, true);
        if (m_master && fieldIndex(m_detailField) >= 0)
            setFieldValue(m_detailField, m_masterValue);
        fire(Hook::OnNewRecord);
    }
    fire(Hook::AfterInsert);
    scrolled();
}

void DataSet::insert() { startInsert(false); }
void DataSet::append() { startInsert(true); }

void DataSet::cancel()
{
    if (m_state != State::Edit && m_state != State::Insert)
        return;
    fire(Hook::BeforeCancel);
    const bool inserting = m_state == State::Insert;
    unlockCurrent();
    m_edit = Row();
    m_modified = false;
    m_state = State::Browse;
    fire(Hook::AfterCancel);
    if (inserting)
        scrolled();
}

Params DataSet::assignedValues(QStringList& columns, QStringList& placeholders) const
{
    Params params;
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const Field& f = m_fields[i];
        if (!m_assigned[i] || f.kind != FieldKind::Data || f.tableColumn.isEmpty())
            continue;
        const QString name = QStringLiteral("KbV%1").arg(params.size());
        columns.append(f.tableColumn);
        placeholders.append(QLatin1Char(':') + name);
        params.emplace_back(name, m_edit.values.value(f.source));
    }
    return params;
}

void DataSet::writeEdit()
{
    QStringList columns;
    QStringList placeholders;
    Params params = assignedValues(columns, placeholders);
    if (params.empty())
        return;
    params.emplace_back(RowParam, m_edit.id);
    // A memory table is the session's own: nobody else can write between
    // the check and the write, and its work needs no hold on the data.
    const bool shared = m_database.persistentTable(m_writeTable) != nullptr;
    std::optional<TransactionGuard> guard;
    if (shared && !m_database.inTransaction())
        guard.emplace(m_database);
    // On the server the row is held first, so that no statement of another
    // workstation slips in between the check and the write.
    if (shared && m_database.dialect() == Dialect::PostgreSQL)
        m_database.execute(QStringLiteral("update %1 set %2 = %2 where KB_ROWID = :KbRow").arg(m_writeTable, columns.front()),
                           {{RowParam, m_edit.id}});
    const ResultSet stored = storedRow(m_edit.id);
    if (stored.isEmpty() || !sameStoredValues(m_original, stored))
        changedSinceRead(m_writeTable);
    QStringList sets;
    for (qsizetype i = 0; i < columns.size(); ++i)
        sets.append(columns[i] + QStringLiteral(" = ") + placeholders[i]);
    m_database.execute(QStringLiteral("update %1 set %2 where KB_ROWID = :KbRow").arg(m_writeTable, sets.join(QLatin1String(", "))),
                       params);
    if (guard)
        guard->commit();
}

qint64 DataSet::writeInsert()
{
    QStringList columns;
    QStringList placeholders;
    Params params = assignedValues(columns, placeholders);
    const TableDef* def = m_database.persistentTable(m_writeTable);
    if (!def)
        def = m_database.memoryTable(m_writeTable);
    const ColumnDef* autoinc = def ? def->autoIncColumn() : nullptr;
    QVariant givenKey;
    for (qsizetype i = columns.size() - 1; i >= 0; --i) {
        if (!autoinc || columns[i].compare(autoinc->name, Qt::CaseInsensitive) != 0)
            continue;
        givenKey = params[size_t(i)].second;
        if (givenKey.isNull()) {
            // The store gives the row key when none is given.
            columns.removeAt(i);
            placeholders.removeAt(i);
            params.erase(params.begin() + i);
        }
    }
    if (columns.isEmpty()) {
        // A row with no values at all still needs one column to name.
        for (const ColumnDef& c : def->columns()) {
            if (c.type != FieldType::AutoInc) {
                columns.append(c.name);
                placeholders.append(QStringLiteral(":KbV0"));
                params.emplace_back(QStringLiteral("KbV0"), QVariant());
                break;
            }
        }
    }
    m_database.execute(QStringLiteral("insert into %1 (%2) values (%3)")
                           .arg(m_writeTable, columns.join(QLatin1String(", ")), placeholders.join(QLatin1String(", "))),
                       params);
    // On the server a given row key is the identity; otherwise the store tells it.
    if (m_database.dialect() == Dialect::PostgreSQL && !givenKey.isNull())
        return givenKey.toLongLong();
    return m_database.store().lastInsertRowId();
}

void DataSet::settle(qint64 rowId, bool inserted)
{
    const ResultSet fresh = fetchRow(rowId);
    Row row = fresh.isEmpty() ? m_edit : makeRow(fresh, 0, rowId);
    row.id = rowId;
    row.calculated = false;
    const bool belongs = !fresh.isEmpty();
    if (inserted) {
        m_rows.push_back(row);
        const int index = int(m_rows.size()) - 1;
        m_rows.back().gone = !belongs;
        if (accepts(m_rows.back())) {
            m_view.insert(m_view.begin() + std::min(m_insertAt, int(m_view.size())), index);
            m_pos = std::min(m_insertAt, int(m_view.size()) - 1);
            m_eof = m_bof = false;
            return;
        }
    } else {
        Row& held = m_rows[size_t(m_view[size_t(m_pos)])];
        held = row;
        held.gone = !belongs;
        if (accepts(held))
            return;
    }
    // The row is written but no longer part of what the set shows; it
    // leaves once the post's hooks have seen it.
    m_leaving = true;
    m_leavingRow = rowId;
}

void DataSet::finishLeaving()
{
    if (!m_leaving)
        return;
    m_leaving = false;
    const int v = viewIndexOf(m_leavingRow);
    if (v >= 0) {
        m_view.erase(m_view.begin() + v);
        if (m_pos > v)
            --m_pos;
    }
    m_pos = std::min(std::max(m_pos, 0), int(m_view.size()) - 1);
    m_eof = m_bof = m_view.empty();
    scrolled();
}

void DataSet::post()
{
    requireActive();
    if (m_state != State::Edit && m_state != State::Insert)
        return;
    fire(Hook::BeforePost);
    const bool inserting = m_state == State::Insert;
    qint64 rowId = m_edit.id;
    withErrorHook(Hook::OnPostError, [&] {
        if (inserting)
            rowId = writeInsert();
        else
            writeEdit();
    });
    settle(rowId, inserting);
    unlockCurrent();
    m_edit = Row();
    m_modified = false;
    m_state = State::Browse;
    fire(Hook::AfterPost);
    finishLeaving();
    followMasters();
}

void DataSet::writeDelete()
{
    const qint64 rowId = m_rows[size_t(m_view[size_t(m_pos)])].id;
    const bool held = m_locked;
    if (!held) {
        m_database.recordLocks().lock(this, m_writeTable, rowId);
        m_locked = true;
        m_lockedRow = rowId;
    }
    try {
        const ResultSet done =
            m_database.execute(QStringLiteral("delete from %1 where KB_ROWID = :KbRow").arg(m_writeTable), {{RowParam, rowId}});
        if (done.rowsAffected() == 0)
            changedSinceRead(m_writeTable);
    } catch (...) {
        if (!held)
            unlockCurrent();
        throw;
    }
    unlockCurrent();
}

void DataSet::remove()
{
    requireActive();
    if (m_state == State::Insert) {
        cancel();
        return;
    }
    if (m_view.empty())
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot delete from an empty data set"));
    m_database.checkWrite(m_writeTable);
    if (!canModify())
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot modify a read-only data set"));
    fire(Hook::BeforeDelete);
    fire(Hook::BeforeScroll);
    withErrorHook(Hook::OnDeleteError, [this] { writeDelete(); });
    m_edit = Row();
    m_modified = false;
    m_state = State::Browse;
    m_rows[size_t(m_view[size_t(m_pos)])].gone = true;
    m_view.erase(m_view.begin() + m_pos);
    m_pos = std::min(m_pos, int(m_view.size()) - 1);
    m_eof = m_bof = m_view.empty();
    fire(Hook::AfterDelete);
    scrolled();
}

void DataSet::flushBuffers()
{
    if (m_database.dialect() == Dialect::SQLite && !m_database.inTransaction())
        m_database.store().exec(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)"));
}

} // namespace kb
