#include "window/PageGridEditing.h"

#include "Clock.h"
#include "dataset/QueryDataSet.h"
#include "defaults/Weekdays.h"
#include "funding/FundingTerms.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "window/ClientPageData.h"
#include "window/TFormClients.h"

#include <QDate>
#include <QHash>

namespace kb {

namespace {

using K = PageCellKind;

const QString FundUses = QStringLiteral("QueryFundUses");
const QString ClientRates = QStringLiteral("QueryClientSpecificFundingRates");
const QString Pledges = QStringLiteral("QueryItemPledgeRates");
const QString Applications = QStringLiteral("QueryServiceApps");

QList<ClientListEntry> codes(std::initializer_list<std::pair<const char*, const char*>> list)
{
    QList<ClientListEntry> entries{{QVariant(), QString()}};
    for (const auto& [code, text] : list)
        entries.append({QString::fromLatin1(code), QString::fromLatin1(text)});
    return entries;
}

// The cells of each grid, by the field the grid shows.
const QHash<QString, QHash<QString, PageCell>>& gridCells()
{
    static const QHash<QString, QHash<QString, PageCell>> cells = [] {
        QHash<QString, QHash<QString, PageCell>> all;
        QHash<QString, PageCell> uses = {
            {QStringLiteral("Funding_Source"),
             {K::Choice, QStringLiteral("Fund_CD"), QStringLiteral("FundingSources")}},
            {QStringLiteral("Service_Description"),
             {K::Choice, QStringLiteral("Service_ID"), QStringLiteral("FundedServices")}},
            {QStringLiteral("Method_Text"),
             {K::Choice,
              QStringLiteral("Reimbursement_Method"),
              {},
              codes({{"T", "Time Period"}, {"I", "Meals or Meal Items"}})}},
            {QStringLiteral("Reimbursement_Rate"), {K::Money, QStringLiteral("Reimbursement_Rate")}},
            {QStringLiteral("Period_Text"),
             {K::Choice, QStringLiteral("Reimbursement_Period"), {}, codes({{"D", "Day"}})}},
        };
        for (const Weekday& day : weekdays())
            uses.insert(day.column, {K::Check, day.column});
        all.insert(FundUses, uses);
        all.insert(ClientRates, {{QStringLiteral("Unit"),
                                  {K::Choice, QStringLiteral("Unit"), QStringLiteral("FundingItems")}},
                                 {QStringLiteral("Amount"), {K::Money, QStringLiteral("Amount")}}});
        all.insert(Pledges, {{QStringLiteral("Unit"),
                              {K::Choice, QStringLiteral("Unit"), QStringLiteral("PledgeItems")}},
                             {QStringLiteral("Amount"), {K::Money, QStringLiteral("Amount")}}});
        all.insert(Applications,
                   {{QStringLiteral("App_Date"), {K::Date, QStringLiteral("App_Date")}},
                    {QStringLiteral("Service"),
                     {K::Choice, QStringLiteral("Service_ID"), QStringLiteral("OtherServices")}},
                    {QStringLiteral("Status_Text"),
                     {K::Choice,
                      QStringLiteral("App_Status"),
                      {},
                      codes({{"I", "In Process"},
                             {"P", "Pending"},
                             {"A", "Accepted"},
                             {"D", "Denied"},
                             {"C", "Cancelled"},
                             {"W", "Wait-Listed"}})}},
                    {QStringLiteral("Assigned"),
                     {K::Choice, QStringLiteral("Assigned_To"), QStringLiteral("Staff")}},
                    {QStringLiteral("Status_Comments"), {K::Text, QStringLiteral("Status_Comments")}}});
        return all;
    }();
    return cells;
}

bool editing(const DataSet& set)
{
    return set.state() == DataSet::State::Edit || set.state() == DataSet::State::Insert;
}

} // namespace

PageGridEditing::PageGridEditing(TFormClients& form) : m_form(form) {}

bool PageGridEditing::isEditableGrid(const QString& grid)
{
    return gridCells().contains(grid);
}

PageCell PageGridEditing::cell(const QString& grid, const QString& column)
{
    const auto cells = gridCells().constFind(grid);
    if (cells == gridCells().constEnd()) return {};
    for (auto it = cells->constBegin(); it != cells->constEnd(); ++it)
        if (it.key().compare(column, Qt::CaseInsensitive) == 0) return it.value();
    return {};
}

QList<ClientListEntry> PageGridEditing::choices(const QString& grid, const QString& column) const
{
    const PageCell c = cell(grid, column);
    if (c.kind != K::Choice) return {};
    if (c.list.isEmpty()) return c.codes;
    QList<ClientListEntry> entries{{QVariant(), QString()}};
    entries.append(m_form.lists().list(c.list));
    return entries;
}

DataSet* PageGridEditing::openSet(const QString& grid) const
{
    if (!isEditableGrid(grid) || !m_form.pageData().isOpen(grid)) return nullptr;
    return &m_form.pageData().query(grid);
}

bool PageGridEditing::writable(const DataSet& set) const
{
    return !set.isReadOnly() && !m_form.fieldsReadOnly();
}

int PageGridEditing::rowCount(const QString& grid) const
{
    const DataSet* set = openSet(grid);
    if (!set) return 0;
    return set->recordCount() + (set->state() == DataSet::State::Insert ? 1 : 0);
}

// A row being inserted stands at its place in the grid, before the rows
// of the set that follow it.
QVariant PageGridEditing::valueAt(const DataSet& set, int row, const QString& field)
{
    if (set.state() == DataSet::State::Insert) {
        const int inserted = set.recNo() - 1;
        if (row == inserted) return set.fieldValue(field);
        if (row > inserted) --row;
    }
    return set.fieldValueAt(row, set.fieldIndex(field));
}

bool PageGridEditing::isEditable(const QString& grid, int row, const QString& column) const
{
    const DataSet* set = openSet(grid);
    if (!set || !writable(*set) || row < 0 || row >= rowCount(grid)) return false;
    const PageCell c = cell(grid, column);
    if (c.kind == K::ReadOnly) return false;
    if (grid == FundUses &&
        (c.field == QLatin1String("Reimbursement_Rate") || c.field == QLatin1String("Reimbursement_Period")))
        return fundingRateGroups(valueAt(*set, row, QStringLiteral("Reimbursement_Method")).toString())
            .timeRates;
    return true;
}

QVariant PageGridEditing::editValue(const QString& grid, int row, const QString& column) const
{
    const PageCell c = cell(grid, column);
    return c.field.isEmpty() ? QVariant() : shownValue(grid, row, c.field);
}

QVariant PageGridEditing::shownValue(const QString& grid, int row, const QString& column) const
{
    const DataSet* set = openSet(grid);
    if (!set || row < 0 || row >= rowCount(grid) || set->fieldIndex(column) < 0) return {};
    const QVariant value = valueAt(*set, row, column);
    // A column that holds a code itself (a rate's unit) shows its caption.
    const PageCell c = cell(grid, column);
    if (c.kind == K::Choice && c.field.compare(column, Qt::CaseInsensitive) == 0 && !value.isNull())
        for (const ClientListEntry& e : choices(grid, column))
            if (!e.value.isNull() && e.value.toString().trimmed() == value.toString().trimmed())
                return e.text;
    return value;
}

bool PageGridEditing::moveTo(const QString& grid, int row)
{
    DataSet* set = openSet(grid);
    if (!set || row < 0 || row >= rowCount(grid)) return false;
    if (set->recNo() == row + 1) return true;
    // Leaving a row posts it, through the query's hooks. A posted new row
    // keeps its place; one dropped untouched frees it for the rows after.
    const bool dropped = set->state() == DataSet::State::Insert && !set->isModified();
    const int target = dropped && row > set->recNo() - 1 ? row - 1 : row;
    const bool moved = m_form.module().services().guarded([&] {
        set->checkBrowseMode();
        if (set->recordCount() > 0) set->setRecNo(std::min(target, set->recordCount() - 1) + 1);
    });
    rowChanged(grid);
    return moved;
}

bool PageGridEditing::setCell(const QString& grid, int row, const QString& column, const QVariant& value)
{
    DataSet* set = openSet(grid);
    if (!set || !isEditable(grid, row, column) || !moveTo(grid, row)) return false;
    const PageCell c = cell(grid, column);
    QVariant typed = value;
    if (c.kind != K::Check && c.kind != K::Text && typed.toString().trimmed().isEmpty()) typed = QVariant();
    const bool done = m_form.module().services().guarded([&] {
        if (!editing(*set)) set->edit();
        set->setFieldValue(c.field, typed);
    });
    rowChanged(grid);
    return done;
}

bool PageGridEditing::postRow(const QString& grid)
{
    DataSet* set = openSet(grid);
    if (!set || !editing(*set)) return true;
    const bool done = m_form.module().services().guarded([&] { set->post(); });
    rowChanged(grid);
    return done;
}

void PageGridEditing::cancelRow(const QString& grid)
{
    DataSet* set = openSet(grid);
    if (!set || !editing(*set)) return;
    m_form.module().services().guarded([&] { set->cancel(); });
    rowChanged(grid);
}

bool PageGridEditing::isEditing(const QString& grid) const
{
    const DataSet* set = openSet(grid);
    return set && editing(*set);
}

int PageGridEditing::currentRow(const QString& grid) const
{
    const DataSet* set = openSet(grid);
    return set && rowCount(grid) > 0 ? set->recNo() - 1 : -1;
}

QDate PageGridEditing::today() const
{
    return m_form.module().clock().today();
}

void PageGridEditing::rowChanged(const QString& grid)
{
    if (grid == FundUses) m_form.pageRowChanged();
}

} // namespace kb
