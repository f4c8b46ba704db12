#include "specialmeals/TFormSetSpecialMeals.h"

#include "UserInterface.h"
#include "dialogs/RunDialogs.h"
#include "specialmeals/TFormCopySpecialMeals.h"
#include "store/Database.h"

namespace kb {

namespace {

// The codes of the rule list's entries, in the list's order.
QStringList ruleCodes(int meal)
{
    return meal <= 3 ? QStringList{QString(), QStringLiteral("I"), QStringLiteral("D"), QStringLiteral("S")}
                     : QStringList{QString(), QStringLiteral("S")};
}

} // namespace

TFormSetSpecialMeals::TFormSetSpecialMeals(Database& db, UserInterface& ui, RunDialogs* dialogs,
                                           QObject* parent)
    : QObject(parent), m_db(db), m_ui(ui), m_dialogs(dialogs), m_names(SpecialMealNames::read(db))
{
    const ResultSet diets =
        db.execute(QStringLiteral("Select Diet_ID, Diet_Desc, Diet_Code from Diet where Diet_ID "
                                  ">= 1 and Diet_ID <= 31 order by Diet_ID"));
    for (qsizetype r = 0; r < diets.rowCount(); ++r) {
        m_dietBits.push_back(diets.value(r, 0).toInt() - 1);
        m_dietLines << diets.value(r, 1).toString().trimmed() + QStringLiteral("   [") +
                           diets.value(r, 2).toString().trimmed() + QLatin1Char(']');
    }
}

QString TFormSetSpecialMeals::heading(int meal)
{
    static const char* const ordinals[] = {"First", "Second", "Third", "Fourth", "Fifth"};
    static const char* const numbers[] = {"One", "Two", "Three", "Four", "Five"};
    return QStringLiteral("%1 Special Meal (Special Meal %2)")
        .arg(QLatin1String(ordinals[meal - 1]), QLatin1String(numbers[meal - 1]));
}

QStringList TFormSetSpecialMeals::ruleEntries(int meal)
{
    QStringList entries{QString()};
    if (meal <= 3)
        entries << QStringLiteral("Items other than the default") << QStringLiteral("Any diet restriction");
    entries << QStringLiteral("Selected diet restrictions");
    return entries;
}

QString TFormSetSpecialMeals::rule(int meal) const
{
    return ruleCodes(meal).value(panel(meal).ruleIndex);
}

void TFormSetSpecialMeals::setRuleIndex(int meal, int index)
{
    if (index < 0 || index >= ruleCodes(meal).size() || index == panel(meal).ruleIndex) return;
    panel(meal).ruleIndex = index;
    emit changed();
}

bool TFormSetSpecialMeals::isDietChecked(int meal, int line) const
{
    return (panel(meal).mask & lineBit(line)) != 0;
}

void TFormSetSpecialMeals::setDietChecked(int meal, int line, bool checked)
{
    qint64& mask = panel(meal).mask;
    const qint64 before = mask;
    mask = checked ? (mask | lineBit(line)) : (mask & ~lineBit(line));
    if (mask != before) emit changed();
}

void TFormSetSpecialMeals::setMatchAll(int meal, bool matchAll)
{
    if (panel(meal).matchAll == matchAll) return;
    panel(meal).matchAll = matchAll;
    emit changed();
}

void TFormSetSpecialMeals::setAction(int meal, const QString& text)
{
    panel(meal).action = text;
}

qint64 TFormSetSpecialMeals::knownDiets() const
{
    qint64 all = 0;
    for (size_t line = 0; line < m_dietBits.size(); ++line)
        all |= lineBit(int(line));
    return all;
}

void TFormSetSpecialMeals::fill(const SpecialMealsSetup& setup)
{
    for (int meal = 1; meal <= SpecialMealsSetup::mealCount; ++meal) {
        const SpecialMealRule& r = setup.meal(meal);
        Panel& p = panel(meal);
        // A code the meal's list does not offer gets the blank entry.
        p.ruleIndex = std::max(0, int(ruleCodes(meal).indexOf(r.selectionOption)));
        p.mask = r.specialRestr;
        p.matchAll = r.filterAll;
        p.action = r.action;
    }
    m_proposal = false;
    emit changed();
}

void TFormSetSpecialMeals::propose()
{
    m_names = SpecialMealNames::read(m_db);
    for (int meal = 1; meal <= SpecialMealsSetup::mealCount; ++meal)
        panel(meal) = Panel{m_names.inUse(meal) ? int(ruleCodes(meal).size()) - 1 : 0, 0, false, {}};
    m_proposal = true;
    emit changed();
}

SpecialMealsSetup TFormSetSpecialMeals::current() const
{
    SpecialMealsSetup setup;
    for (int meal = 1; meal <= SpecialMealsSetup::mealCount; ++meal) {
        SpecialMealRule& r = setup.meal(meal);
        const Panel& p = panel(meal);
        r.selectionOption = rule(meal);
        const bool selected = r.selectionOption == QLatin1String("S");
        r.specialRestr = selected ? (p.mask & knownDiets()) : 0;
        r.filterAll = selected && p.matchAll;
        r.action = p.action;
    }
    return setup;
}

bool TFormSetSpecialMeals::accept()
{
    const SpecialMealsSetup setup = current();
    for (int meal = 1; meal <= panelCount(); ++meal) {
        if (setup.meal(meal).selectionOption == QLatin1String("S") && setup.meal(meal).specialRestr == 0) {
            m_ui.warning(QStringLiteral("You chose the 'Selected Diets' option for ") + heading(meal) +
                         QStringLiteral("\r\nbut did not select any diets!"));
            return false;
        }
    }
    m_result = setup;
    return true;
}

void TFormSetSpecialMeals::reject()
{
    m_result = SpecialMealsSetup();
    for (Panel& p : m_panels)
        p = Panel();
    emit changed();
}

void TFormSetSpecialMeals::ActionCopy()
{
    if (!m_dialogs || !m_copyVisible) return;
    TFormCopySpecialMeals copy(m_db, m_ui, current(), m_date);
    m_dialogs->copySpecialMeals(copy);
}

} // namespace kb
