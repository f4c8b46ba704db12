#include "specialmeals/SpecialMealFlags.h"

#include "DietCodes.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "save/BatchedStatement.h"
#include "specialmeals/SpecialMealsSetup.h"
#include "specialmeals/TableSpecialLabels.h"

#include <limits>
#include <map>
#include <set>
#include <utility>

namespace kb {

namespace {

QString flagColumn(int meal)
{
    switch (meal) {
    case 1:
        return QStringLiteral("Label_Created");
    case 2:
        return QStringLiteral("Label2_Created");
    case 3:
        return QStringLiteral("Label3_Created");
    default:
        return {};
    }
}

const QString updateStart = QStringLiteral(" Update Deliveri set %1 = true where (Deliv_Dt = :dDate) and ");

} // namespace

SpecialMealFlags::SpecialMealFlags(Database& db, UserInterface& ui, TableSpecialLabels& labels,
                                   const QDate& runDate, const QStringList& aDietCodes)
    : m_db(db), m_ui(ui), m_labels(labels), m_date(runDate), m_dietCodes(aDietCodes)
{
}

void SpecialMealFlags::FlagSpecialMeals(int iSpecialMeal, const SpecialMealRule& rule)
{
    if (iSpecialMeal < 1 || iSpecialMeal > SpecialMealsSetup::mealCount)
        throw MessageError(QStringLiteral("An unexpected value was passed to FlagSpecialMeals."));
    m_ui.progressStart(QStringLiteral("Setting Special Label flags..."));
    const QString column = flagColumn(iSpecialMeal);
    if (rule.selectionOption == QLatin1String("I")) {
        flagWhere(column, QStringLiteral(" (custom_items = true) "), {});
    } else if (rule.selectionOption == QLatin1String("D")) {
        flagWhere(column, QStringLiteral(" (Diet_Restr > 0) "), {});
    } else if (rule.selectionOption == QLatin1String("S")) {
        if (!rule.filterAll) {
            flagMatchAny(iSpecialMeal, column, rule.specialRestr);
        } else if (column.isEmpty()) {
            m_ui.warning(
                QStringLiteral("Filtering on All Matching Diets was attempted for Special Meal 4 or 5!"));
        } else {
            flagWhere(column, QStringLiteral("(deliveri.diet_restr = :nLabelDiet) "),
                      {{QStringLiteral("nLabelDiet"), rule.specialRestr}});
        }
    }
}

void SpecialMealFlags::flagWhere(const QString& column, const QString& condition, const Params& values)
{
    if (column.isEmpty()) return; // meals 4 and 5 flag no column of Deliveri
    Params all = values;
    all.emplace_back(QStringLiteral("dDate"), m_date);
    m_db.execute(updateStart.arg(column) + condition, all);
}

void SpecialMealFlags::flagMatchAny(int meal, const QString& column, qint64 mask)
{
    // The deliveries the save has just written that share a diet with the
    // mask, and the matching diets of each, by its Person_ID and Deliv_ID.
    const ResultSet deliveries = m_db.execute(
        QStringLiteral("Select Deliv_ID, Person_ID, Client_ID, Diet_Restr from Deliveri where Deliv_Dt = "
                       ":Deliv_Dt"),
        {{QStringLiteral("Deliv_Dt"), m_date}});
    using Key = std::pair<qint64, qint64>; // Person_ID, Deliv_ID
    std::map<Key, qint64> matched;
    std::vector<qint64> persons;
    qint64 lowest = std::numeric_limits<qint64>::max();
    qint64 highest = 0;
    for (qsizetype r = 0; r < deliveries.rowCount(); ++r) {
        const qint64 diets = deliveries.value(r, 3).toLongLong();
        if ((diets & mask) == 0) continue;
        const qint64 delivId = deliveries.value(r, 0).toLongLong();
        const qint64 person = deliveries.value(r, 1).toLongLong();
        matched[{person, delivId}] = diets & mask;
        persons.push_back(person);
        lowest = std::min(lowest, delivId);
        highest = std::max(highest, delivId);
    }

    m_labels.empty();
    if (m_labels.rowCount() > 0) m_ui.warning(QStringLiteral("TableSpecialLabels was not properly emptied!"));
    if (matched.empty()) return;

    // Each delivery has at most one Special_Diets row: the ones the earlier
    // meals of this save made are found and completed, the others added.
    const ResultSet existing = m_db.execute(
        QStringLiteral(
            "Select Person_ID, Deliv_ID from Special_Diets where Deliv_ID >= :Lowest and Deliv_ID <= "
            ":Highest"),
        {{QStringLiteral("Lowest"), lowest}, {QStringLiteral("Highest"), highest}});
    std::set<Key> present;
    for (qsizetype r = 0; r < existing.rowCount(); ++r)
        present.insert({existing.value(r, 0).toLongLong(), existing.value(r, 1).toLongLong()});
    BatchedStatement add(m_db,
                         QStringLiteral("Insert into Special_Diets (Person_ID, Deliv_ID, Deliv_Dt) values "
                                        "(:Person_ID, :Deliv_ID, :Deliv_Dt)"));
    const QString prefix =
        meal == 1 ? QStringLiteral("Special_Diet_") : QStringLiteral("Special%1_Diet_").arg(meal);
    BatchedStatement set(m_db,
                         QStringLiteral("Update Special_Diets set %1Restr = :Restr, %1Descr = :Descr where "
                                        "Person_ID = :Person_ID and Deliv_ID = :Deliv_ID")
                             .arg(prefix));
    for (const auto& [key, diets] : matched) {
        const Params keyValues = {{QStringLiteral("Person_ID"), key.first},
                                  {QStringLiteral("Deliv_ID"), key.second}};
        if (!present.contains(key)) {
            Params values = keyValues;
            values.emplace_back(QStringLiteral("Deliv_Dt"), m_date);
            add.add(std::move(values));
        }
        Params values = keyValues;
        values.emplace_back(QStringLiteral("Restr"), diets);
        values.emplace_back(QStringLiteral("Descr"), ConvertDietCode(diets, m_dietCodes));
        set.add(std::move(values));
    }
    add.flush();
    set.flush();

    if (column.isEmpty()) return;
    m_labels.fill(m_date, persons);
    // Joined by Person_ID: every delivery of such a client on the date is
    // flagged, also one of another service without the diet.
    m_db.execute(
        QStringLiteral("Update Deliveri set %1 = true from Deliveri inner join Memory %2 as "
                       "TableSpecialLabels on (Deliveri.Person_ID = TableSpecialLabels.Person_ID ) where "
                       "Deliveri.Deliv_Dt = :dDate ")
            .arg(column, m_labels.name()),
        {{QStringLiteral("dDate"), m_date}});
}

} // namespace kb
