#include "reference/TFormEditBase.h"

#include "store/Database.h"
#include "records/RecordServices.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "reference/DeleteGuards.h"
#include "DietCodes.h"
#include "reference/EditorFieldRules.h"
#include "reference/TFormDietCombinations.h"

#include <algorithm>

namespace kb {

namespace {

bool is(const QString& a, const char* b)
{
    return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

QString configuredPostalFormat(Database& db)
{
    return db.execute(QStringLiteral("Select POSTAL_FORMAT from Config")).value(0, 0).toString();
}

// A table with an index that gives the order is opened as a table; a
// filtered list, or an order no index gives, as a live statement.
std::unique_ptr<DataSet> makeDataSet(Database& db, const EditorScreen& screen)
{
    if (screen.usage.isEmpty() && screen.orderBy.isEmpty()) {
        auto table = std::make_unique<TableDataSet>(db, screen.table);
        table->setIndexName(screen.indexName);
        return table;
    }
    QString text = QStringLiteral("select * from %1").arg(screen.table);
    if (!screen.usage.isEmpty()) text += QStringLiteral(" where USAGE = :Usage");
    if (!screen.orderBy.isEmpty()) text += QStringLiteral(" order by ") + screen.orderBy;
    auto query = std::make_unique<QueryDataSet>(db, text);
    if (!screen.usage.isEmpty()) query->setParam(QStringLiteral("Usage"), screen.usage);
    query->setRequestLive(true);
    return query;
}

} // namespace

TFormEditBase::TFormEditBase(RecordServices& services, EditorScreen screen)
    : m_services(services), m_db(services.db()), m_ui(services.ui()), m_screen(std::move(screen))
{
}

TFormEditBase::~TFormEditBase() = default;

bool TFormEditBase::editing() const
{
    return m_set && (m_set->state() == DataSet::State::Edit || m_set->state() == DataSet::State::Insert);
}

// Runs a step of the screen; a refusal has already been told, anything
// else is told here. The view is told to redraw either way.
template <typename Work> bool TFormEditBase::guarded(Work&& work)
{
    const bool done = m_services.guarded(std::forward<Work>(work));
    changed();
    return done;
}

RowReader TFormEditBase::currentRow() const
{
    return [this](const QString& column) { return m_set->fieldValue(column); };
}

RowWriter TFormEditBase::rowWriter()
{
    return [this](const QString& column, const QVariant& value) { m_set->setFieldValue(column, value); };
}

RowReader TFormEditBase::originalRow() const
{
    if (m_set->state() == DataSet::State::Insert) return [](const QString&) { return QVariant(); };
    return [this](const QString& column) { return m_set->oldValue(column); };
}

namespace {

// Passes everything on to the user and counts the questions, so that a
// delete its guards have already asked about is not asked about twice.
class CountingQuestions final : public UserInterface
{
public:
    explicit CountingQuestions(UserInterface& ui) : m_ui(ui) {}
    int questions = 0;
    void information(const QString& text) override { m_ui.information(text); }
    void warning(const QString& text) override { m_ui.warning(text); }
    void error(const QString& text) override { m_ui.error(text); }
    Answer question(const QString& text, Buttons buttons) override
    {
        ++questions;
        return m_ui.question(text, buttons);
    }
    void progressStart(const QString& text) override { m_ui.progressStart(text); }
    void progressStep(int percent) override { m_ui.progressStep(percent); }
    void progressEnd() override { m_ui.progressEnd(); }
    void setBusy(bool busy) override { m_ui.setBusy(busy); }

private:
    UserInterface& m_ui;
};

} // namespace

void TFormEditBase::installRules()
{
    DataSet& set = *m_set;
    m_services.installMaintenanceErrorHooks(set);
    set.setHook(DataSet::Hook::BeforeInsert, [this](DataSet&) {
        if (!allowsInsert(m_db, m_ui, m_screen.table)) throw Abort();
    });
    set.setHook(DataSet::Hook::OnNewRecord, [this](DataSet& s) {
        initialiseNewRow(m_db, m_screen.table, rowWriter());
        if (!m_screen.usage.isEmpty()) s.setFieldValue(u"USAGE", m_screen.usage);
    });
    set.setHook(DataSet::Hook::BeforePost, [this](DataSet&) {
        if (!beforeReferencePost(m_db, m_ui, m_screen.table, currentRow(), rowWriter(), originalRow()))
            throw Abort();
        if (m_rules.beforePost && !m_rules.beforePost(currentRow(), rowWriter(), originalRow())) throw Abort();
    });
    set.setHook(DataSet::Hook::BeforeDelete, [this](DataSet& s) {
        if (m_rules.deleteRefusal) {
            const QString refusal = m_rules.deleteRefusal(currentRow());
            if (!refusal.isEmpty()) {
                m_ui.warning(refusal);
                throw Abort();
            }
        }
        CountingQuestions ui(m_ui);
        if (!passesDeleteGuards(m_db, ui, m_screen.table, currentRow())) throw Abort();
        // A row goes for good: the user says so first, unless a guard just asked.
        if (ui.questions == 0 && m_ui.question(deleteQuestion(), Buttons::YesNo) != Answer::Yes) throw Abort();
        m_deleted.clear();
        for (const QString& name : s.fieldNames())
            m_deleted.insert(name.toUpper(), s.fieldValue(name));
    });
    set.setHook(DataSet::Hook::AfterDelete, [this](DataSet&) {
        deleteDependentRows(m_db, m_screen.table,
                            [this](const QString& column) { return m_deleted.value(column.toUpper()); });
    });
}

// The grid's columns that the table does not hold: a service by name, a
// diet mask in words, a bag by its code.
void TFormEditBase::addDisplayFields()
{
    if (is(m_screen.table, "EventCds"))
        m_set->addLookupField(QStringLiteral("SERVICE_NAME"), QStringLiteral("SERVICE_ID"),
                              QStringLiteral("Services"), QStringLiteral("SERVICE_ID"),
                              QStringLiteral("SERVICE_DESC"));
    if (is(m_screen.table, "Cold_Bag_Usage")) {
        m_set->addCalculatedField(QStringLiteral("DIET_WORDS"), FieldType::String, 250);
        m_set->addLookupField(QStringLiteral("BAG_CODE"), QStringLiteral("Bag_ID"),
                              QStringLiteral("Cold_Bag_Codes"), QStringLiteral("Record_ID"),
                              QStringLiteral("Bag_Code"));
        m_set->setOnCalcFields([this](DataSet& s) {
            s.setFieldValue(u"DIET_WORDS", ConvertDietCode(s.fieldValue(u"Diet_Restr").toLongLong(), m_dietCodes));
        });
    }
}

bool TFormEditBase::open()
{
    return guarded([this] {
        m_fields = editFieldsOf(m_db, m_screen, postalFormat(configuredPostalFormat(m_db)));
        m_dietCodes = loadDietCodes(m_db);
        m_set = makeDataSet(m_db, m_screen);
        installRules();
        addDisplayFields();
        m_set->open();
    });
}

bool TFormEditBase::close()
{
    if (!m_set || !m_set->isActive()) return true;
    // A new row nothing was typed into is dropped without a question.
    if (m_set->state() == DataSet::State::Insert && !m_set->isModified())
        guarded([this] { m_set->cancel(); });
    if (editing()) {
        if (m_ui.question(QStringLiteral("Save changes to data before closing window?"), Buttons::YesNo) ==
            Answer::Yes) {
            if (!guarded([this] { m_set->post(); })) return false;
        } else {
            guarded([this] { m_set->cancel(); });
        }
    }
    return guarded([this] {
        m_set->close();
        if (m_rules.afterClose) m_rules.afterClose();
    });
}

void TFormEditBase::setPage(Page page)
{
    m_page = page;
    changed();
}

void TFormEditBase::openRow(int index)
{
    if (guarded([&] { m_set->setRecNo(index + 1); })) setPage(Page::Edit);
}

bool TFormEditBase::searchIncrementally(const QString& text)
{
    const QString wanted = text.trimmed();
    if (!m_screen.incrementalSearch || wanted.isEmpty() || !m_set || !m_set->isActive() || editing())
        return false;
    for (int column = 0; column < std::min<qsizetype>(2, m_grid.fields.size()); ++column) {
        for (int row = 0; row < m_grid.rows.size(); ++row) {
            if (!m_grid.rows[row].value(column).toString().trimmed().startsWith(wanted, Qt::CaseInsensitive))
                continue;
            if (row == m_grid.current) return true;
            return guarded([&] { m_set->setRecNo(row + 1); });
        }
    }
    return false;
}

QString TFormEditBase::newRowField() const
{
    for (const EditorField& field : m_fields)
        if (!field.readOnly && isFieldVisible(field.name)) return field.name;
    return {};
}

bool TFormEditBase::isEnabled(Command command) const
{
    if (!m_set || !m_set->isActive()) return false;
    if (editing()) return command == Command::Post || command == Command::Cancel;
    switch (command) {
    case Command::First:
    case Command::Prior:
        return m_set->recNo() > 1;
    case Command::Next:
    case Command::Last:
        return m_set->recNo() < m_set->recordCount();
    case Command::Insert:
        return m_set->canModify();
    case Command::Delete:
        return m_set->canModify() && !m_set->isEmpty();
    case Command::Refresh:
        return true;
    case Command::Post:
    case Command::Cancel:
        return false;
    }
    return false;
}

bool TFormEditBase::run(Command command)
{
    if (!isEnabled(command)) return false;
    DataSet& set = *m_set;
    switch (command) {
    case Command::First:
        return guarded([&] { set.first(); });
    case Command::Prior:
        return guarded([&] { set.prior(); });
    case Command::Next:
        return guarded([&] { set.next(); });
    case Command::Last:
        return guarded([&] { set.last(); });
    case Command::Insert:
        if (!guarded([&] { set.insert(); })) return false;
        setPage(Page::Edit);
        return true;
    case Command::Delete:
        return guarded([&] { set.remove(); });
    case Command::Post:
        // An empty new row is not saved: the row waits for its values.
        if (set.state() == DataSet::State::Insert && !set.isModified()) {
            m_ui.information(nothingToSaveText());
            return false;
        }
        return guarded([&] { set.post(); });
    case Command::Cancel:
        return guarded([&] { set.cancel(); });
    case Command::Refresh:
        return guarded([&] { set.refresh(); });
    }
    return false;
}

bool TFormEditBase::isFieldVisible(const QString& field) const
{
    return kb::isFieldVisible(m_screen, field, [this](const QString& column) { return value(column); });
}

QList<Choice> TFormEditBase::choices(const QString& field) const
{
    return fieldChoices(m_db, m_screen, field, [this](const QString& column) { return value(column); });
}

QVariant TFormEditBase::value(const QString& field) const
{
    if (!m_set || !m_set->isActive() || m_set->fieldIndex(field) < 0) return {};
    return m_set->fieldValue(field);
}

bool TFormEditBase::setValue(const QString& field, const QVariant& value)
{
    for (const EditorField& f : m_fields)
        if (f.readOnly && f.name.compare(field, Qt::CaseInsensitive) == 0)
            return false;
    if (!editing() && !guarded([this] { m_set->edit(); })) return false;
    return guarded([&] { m_set->setFieldValue(field, value); });
}

bool TFormEditBase::offersMissingCombinations() const
{
    return m_screen.formName == QLatin1String("TFormEditColdBagCodeUsage");
}

std::unique_ptr<TFormDietCombinations> TFormEditBase::missingCombinations()
{
    if (!offersMissingCombinations()) return nullptr;
    return std::make_unique<TFormDietCombinations>(m_db, m_ui);
}

void TFormEditBase::combinationsCreated()
{
    guarded([this] { m_set->refresh(); });
}

void TFormEditBase::changed()
{
    if (m_set && m_set->isActive() && !editing()) rebuildGrid();
    if (m_onChanged) m_onChanged();
}

// Walks the rows at rest to copy them for the grid, and comes back to
// the row it stood on.
void TFormEditBase::rebuildGrid()
{
    m_grid.fields = m_screen.browseFields;
    m_grid.rows.clear();
    const int current = m_set->recNo();
    if (!m_set->isEmpty()) {
        for (m_set->first(); !m_set->eof(); m_set->next()) {
            QVariantList row;
            for (const QString& field : m_grid.fields)
                row.append(gridValue(m_screen, field, value(field)));
            m_grid.rows.append(row);
            if (m_set->recNo() == m_set->recordCount()) break;
        }
        m_set->setRecNo(current);
    }
    m_grid.current = current - 1;
}

} // namespace kb
