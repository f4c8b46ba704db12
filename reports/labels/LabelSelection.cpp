#include "labels/LabelSelection.h"

namespace kb::reports {

namespace {

struct Limit
{
    const char* entry;
    const char* rule;
    const char* clause;
};

// Each clause follows the statement's earlier conditions, so it starts with
// "and".
const Limit Limits[] = {
    {"No Limit - Print ALL labels", " ", ""},
    {"Any Special Meal", "A",
     "and ((Deliveri.Label_Created = true) or (Deliveri.Label2_Created = true) or (Deliveri.Label3_Created = "
     "true))"},
    {"Any diet restriction", "D", "and (deliveri.diet_restr > 0)"},
    {"Diet restrictions selected below", "S", "and (deliveri.diet_restr = :nLabelDiet) "},
    {"Items other than the default", "I", "and (deliveri.custom_items = true) "},
    {"Special Meal 1", "1", "and (Deliveri.Label_Created = true)"},
    {"Not Special Meal 1", "2", "and not (Deliveri.Label_Created = true)"},
    {"Any diet restriction other than Special Meal 1", "3",
     "and (deliveri.diet_restr > 0) and not (Deliveri.Label_Created = true) "},
    {"Special Meal 2", "4", "and (Deliveri.Label2_Created = true)"},
    {"Not Special Meal 2", "5", "and not (Deliveri.Label2_Created = true)"},
    {"Any diet restriction other than Special Meal 2", "6",
     "and (deliveri.diet_restr > 0) and not (Deliveri.Label2_Created = true) "},
    {"Special Meal 3", "7", "and (Deliveri.Label3_Created = true)"},
    {"Not Special Meal 3", "8", "and not (Deliveri.Label3_Created = true)"},
    {"Any diet restriction other than Special Meal 3", "9",
     "and (deliveri.diet_restr > 0) and not (Deliveri.Label3_Created = true) "},
};

struct Sort
{
    const char* entry;
    const char* order;
};

const Sort Sorts[] = {
    {"Route / Stop", " order by Deliv_Dt, Route_ID, Stop, Household_ID, Client_ID "},
    {"Client ID", " order by Client_ID "},
    {"Last Name / First Name", " order by Last_Name, First_Name nocase "},
    {"Diet / Client ID", " order by Diet_Descr, Client_ID nocase "},
    {"Diet / Last Name", " order by Diet_Descr, Last_Name nocase "},
    {"Diet / Route / Stop", " order by Diet_Descr, Route_ID, Stop nocase "},
};

// The entries of a list table, in order.
template <typename Row, size_t N> QStringList entriesOf(const Row (&rows)[N])
{
    QStringList list;
    for (const Row& row : rows)
        list << QString::fromLatin1(row.entry);
    return list;
}

} // namespace

QString LabelSelection::effectiveRule() const
{
    const QString rule = cLabelLimit.trimmed();
    if (rule == QLatin1String("S") && nLabelDiet == 0) return QStringLiteral("A");
    return rule;
}

namespace LabelRules {

QStringList limitEntries()
{
    return entriesOf(Limits);
}

QString ruleOf(int index)
{
    return index >= 0 && index < int(std::size(Limits)) ? QString::fromLatin1(Limits[index].rule)
                                                        : QStringLiteral(" ");
}

int indexOfRule(const QString& rule)
{
    const QString wanted = rule.trimmed().isEmpty() ? QStringLiteral(" ") : rule.trimmed();
    for (int i = 0; i < int(std::size(Limits)); ++i) {
        if (wanted.compare(QLatin1String(Limits[i].rule), Qt::CaseInsensitive) == 0) return i;
    }
    return 0;
}

QString clauseOf(const QString& rule, bool filterAll)
{
    if (rule == QLatin1String("S") && !filterAll) return {};
    const int index = indexOfRule(rule);
    return QString::fromLatin1(Limits[index].clause);
}

QStringList sortOrders()
{
    return entriesOf(Sorts);
}

QString statementOrder(int sortOrder)
{
    const int index = sortOrder >= 0 && sortOrder < int(std::size(Sorts)) ? sortOrder : 0;
    return QString::fromLatin1(Sorts[index].order);
}

} // namespace LabelRules

} // namespace kb::reports
