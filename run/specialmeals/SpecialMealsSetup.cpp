#include "specialmeals/SpecialMealsSetup.h"

#include <QStringList>

namespace kb {

namespace {

const char* const columnStems[] = {"Selection_Option", "Filter_All", "Special_Restr", "Action"};

QStringList columnNames()
{
    QStringList names;
    for (int n = 1; n <= SpecialMealsSetup::mealCount; ++n)
        for (const char* stem : columnStems)
            names << QString::fromLatin1(stem) + SpecialMealsSetup::suffix(n);
    return names;
}

QString assignments()
{
    QStringList sets;
    for (const QString& c : columnNames())
        sets << c + QStringLiteral(" = :") + c;
    return sets.join(QStringLiteral(", "));
}

QVariant textOrNone(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

} // namespace

QString SpecialMealsSetup::suffix(int n)
{
    return n == 1 ? QString() : QString::number(n);
}

std::optional<SpecialMealsSetup> SpecialMealsSetup::read(Database& db, const QDate& date)
{
    const ResultSet rows =
        db.execute(QStringLiteral("select * from special_meals where deliv_date = :Deliv_Date"),
                   {{QStringLiteral("Deliv_Date"), date}});
    if (rows.isEmpty()) return std::nullopt;
    return fromRow(rows, 0);
}

SpecialMealsSetup SpecialMealsSetup::fromRow(const ResultSet& rows, qsizetype row)
{
    SpecialMealsSetup setup;
    for (int n = 1; n <= mealCount; ++n) {
        const QString s = suffix(n);
        SpecialMealRule& rule = setup.meal(n);
        rule.selectionOption = rows.value(row, QStringLiteral("Selection_Option") + s).toString().trimmed();
        rule.filterAll = rows.value(row, QStringLiteral("Filter_All") + s).toBool();
        rule.specialRestr = rows.value(row, QStringLiteral("Special_Restr") + s).toLongLong();
        rule.action = rows.value(row, QStringLiteral("Action") + s).toString();
    }
    return setup;
}

Params SpecialMealsSetup::params() const
{
    Params values;
    for (int n = 1; n <= mealCount; ++n) {
        const QString s = suffix(n);
        const SpecialMealRule& rule = meal(n);
        values.emplace_back(QStringLiteral("Selection_Option") + s, textOrNone(rule.selectionOption));
        values.emplace_back(QStringLiteral("Filter_All") + s, rule.filterAll);
        values.emplace_back(QStringLiteral("Special_Restr") + s, rule.specialRestr);
        values.emplace_back(QStringLiteral("Action") + s, textOrNone(rule.action));
    }
    return values;
}

void SpecialMealsSetup::store(Database& db, const QDate& date) const
{
    Params values = params();
    values.emplace_back(QStringLiteral("Deliv_Date"), date);
    const qint64 changed =
        db.execute(
              QStringLiteral("Update Special_Meals set %1 where Deliv_Date = :Deliv_Date").arg(assignments()),
              values)
            .rowsAffected();
    if (changed == 0) insert(db, date);
}

void SpecialMealsSetup::insert(Database& db, const QDate& date) const
{
    const QStringList columns = columnNames();
    Params values = params();
    values.emplace_back(QStringLiteral("Deliv_Date"), date);
    db.execute(QStringLiteral("Insert into Special_Meals (Deliv_Date, %1) values (:Deliv_Date, :%2)")
                   .arg(columns.join(QStringLiteral(", ")), columns.join(QStringLiteral(", :"))),
               values);
}

void SpecialMealsSetup::update(Database& db, qint64 recordId) const
{
    Params values = params();
    values.emplace_back(QStringLiteral("RecordID"), recordId);
    db.execute(QStringLiteral("Update Special_Meals set %1 where RecordID = :RecordID").arg(assignments()),
               values);
}

} // namespace kb
