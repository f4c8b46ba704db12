#include "funding/FundingTerms.h"

#include "dataset/DataSet.h"

#include <QHash>

namespace kb {

QString fundingRateItemName(const QString& unit, const QString& mealItem)
{
    if (!mealItem.trimmed().isEmpty()) return mealItem.trimmed();
    static const QHash<QString, QString> categories = {
        {QStringLiteral("D"), QStringLiteral("Dinners")},
        {QStringLiteral("L"), QStringLiteral("Lunches")},
        {QStringLiteral("B"), QStringLiteral("Breakfasts")},
        {QStringLiteral("S"), QStringLiteral("Snacks")},
        {QStringLiteral("MF"), QStringLiteral("Medical Food")},
        {QStringLiteral("SM"), QStringLiteral("Specialized Medical Food")},
    };
    return categories.value(unit.trimmed().toUpper(), QStringLiteral("Other"));
}

QString reimbursementMethodText(const QString& method)
{
    const QString m = method.trimmed();
    if (m == QLatin1String("T")) return QStringLiteral("Time Period");
    if (m == QLatin1String("I")) return QStringLiteral("Meals or Meal Items");
    return {};
}

QString pledgeMethodGroup(const QString& method)
{
    return method.trimmed() == QLatin1String("I") ? PledgeItemsGroup : PledgedAmountGroup;
}

FundingRateGroups fundingRateGroups(const QString& method)
{
    const QString m = method.trimmed();
    return {m == QLatin1String("T"), m == QLatin1String("I")};
}

FundingSheets fundingSheets(const QString& configuration)
{
    const QString c = configuration.trimmed();
    if (c == QLatin1String("2")) return {true, false, false};
    if (c == QLatin1String("3")) return {true, true, true};
    if (c == QLatin1String("4")) return {false, true, true};
    return {true, true, false};
}

QString timeMethodProblem(const QString& method, const QString& period, double rate)
{
    if (method.trimmed() != QLatin1String("T")) return {};
    if (period.trimmed().isEmpty())
        return QStringLiteral(
            "You have specified Time as the reimbursement method\r\nbut have left the Reimbursement "
            "Period blank!");
    if (rate == 0)
        return QStringLiteral(
            "You have specified Time as the reimbursement method\r\nbut have left the Reimbursement "
            "Rate at zero!");
    return {};
}

QString rateProblem(DataSet& rate, const QString& zeroText, const QString& noUnitText)
{
    const QString unit = rate.fieldValue(u"Unit").toString().trimmed();
    bool numeric = false;
    const qint64 item = unit.toLongLong(&numeric);
    if (numeric) rate.setFieldValue(u"Item_ID", item);
    if (rate.fieldValue(u"Amount").toDouble() == 0) return zeroText;
    if (unit.isEmpty()) return noUnitText;
    return {};
}

} // namespace kb
