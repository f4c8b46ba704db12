#include "itemstatements/ItemStatements.h"

#include "confirmation/ConfirmedItems.h"

namespace kb {

namespace {

enum class Result { Items, Meals, Labels };

Result resultOf(ItemQuery query)
{
    switch (query) {
    case ItemQuery::GetDefaultItems:
    case ItemQuery::GetOngoingItems:
    case ItemQuery::GetEpisodicItems:
        return Result::Items;
    case ItemQuery::GetOngoingNumberOfMeals:
    case ItemQuery::GetEpisodicNumberOfMeals:
    case ItemQuery::GetNumberOfMeals:
        return Result::Meals;
    default:
        return Result::Labels;
    }
}

// The lines that choose the rows, up to the item filter.
QStringList rowLines(ItemQuery query)
{
    const QString person = QStringLiteral(" where (defdels.person_id = :person_id) and ");
    const QString day = QStringLiteral("       (defdels.del_day = :del_day) and ");
    const QString weekly = QStringLiteral("       (defdels.Deliv_ID is Null) and ");
    switch (query) {
    case ItemQuery::GetDefaultItems:
        return {QStringLiteral(" where (defdels.person_id = 0) and "), day,
                QStringLiteral("       (defdels.Service_ID = :Svcs_Used) and "), weekly};
    case ItemQuery::GetOngoingItems:
        return {person, day, QStringLiteral("       (defdels.Service_ID = :Service_ID) and "), weekly};
    case ItemQuery::GetOngoingNumberOfMeals:
    case ItemQuery::GetOngoingNumberOfLabels:
        return {person, day, QStringLiteral("       (defdels.service_id = :svcs_used) and "), weekly};
    default:
        return {person, QStringLiteral("       (defdels.deliv_ID = :deliv_ID) and ")};
    }
}

} // namespace

ItemStatements::ItemStatements()
{
    build(ConfirmedItems{});
}

QChar ItemStatements::letterOf(ItemQuery query)
{
    switch (query) {
    case ItemQuery::GetEpisodicItems:
    case ItemQuery::GetEpisodicNumberOfMeals:
    case ItemQuery::GetEpisodicNumberOfLabels:
        return u'S';
    default:
        return u'O';
    }
}

void ItemStatements::SetItemQueriesCoreLogic()
{
    for (int q = 0; q < itemQueryCount; ++q) {
        const auto query = ItemQuery(q);
        Statement& s = at(query);
        s.confirmed.clear();
        switch (resultOf(query)) {
        case Result::Items:
            s.lines = {QStringLiteral(
                " select defdels.item_id, defdels.quantity, defdels.sort_order, items.number_meals ")};
            break;
        case Result::Meals:
            s.lines = {
                QStringLiteral(
                    " select sum (defdels.quantity) as Quantity, Sum (items.Number_Meals) as Number_Meals, "),
                QStringLiteral("        sum(defdels.quantity * items.Number_Meals) as Total_Meals ")};
            break;
        case Result::Labels:
            s.lines = {
                QStringLiteral(" select  sum(defdels.quantity * items.Number_Labels) as Total_Labels ")};
            break;
        }
        s.lines << QStringLiteral(" from defdels join items on defdels.item_id = items.item_id ")
                << rowLines(query);
        // An item without a code goes out everywhere, as any other code does;
        // a plain comparison would drop it along with the codes asked about.
        const QString letter = QString(letterOf(query));
        s.lines << QStringLiteral(
                       "       ( (items.confirmation_required is null) or (not ((items.confirmation_required "
                       "= 'A') or (items.confirmation_required = '%1'))) ")
                       .arg(letter);
    }
}

void ItemStatements::SetItemQueriesConfirmationLogic(ItemQuery ConfirmedQuery,
                                                     const QList<qint64>& ConfirmedItems, QChar letter)
{
    if (ConfirmedItems.isEmpty()) return;
    Statement& s = at(ConfirmedQuery);
    s.lines
        << QStringLiteral(
               "  or ( ((Items.Confirmation_Required = 'A') or (Items.Confirmation_Required = '%1')) and ")
               .arg(letter);
    for (qsizetype i = 0; i < ConfirmedItems.size(); ++i) {
        const QString name = QStringLiteral("Confirmed_%1%2").arg(letter).arg(i + 1);
        s.lines << (i == 0 ? QStringLiteral("    (   (Item_ID = :%1)")
                           : QStringLiteral("     or (Item_ID = :%1)"))
                       .arg(name);
        s.confirmed.emplace_back(name, ConfirmedItems[i]);
    }
    s.lines << QStringLiteral(" )) ");
}

void ItemStatements::SetItemQueriesSortOrder()
{
    for (int q = 0; q < itemQueryCount; ++q) {
        Statement& s = at(ItemQuery(q));
        s.lines << QStringLiteral(" ) ");
        // Lines of one Sort_Order keep the order they were made in.
        if (resultOf(ItemQuery(q)) == Result::Items)
            s.lines << QStringLiteral(" order by defdels.sort_order, defdels.RecordID ");
    }
}

void ItemStatements::build(const ConfirmedItems& confirmed)
{
    SetItemQueriesCoreLogic();
    for (int q = 0; q < itemQueryCount; ++q) {
        const auto query = ItemQuery(q);
        const QChar letter = letterOf(query);
        SetItemQueriesConfirmationLogic(query, letter == u'S' ? confirmed.scheduled : confirmed.ongoing,
                                        letter);
    }
    SetItemQueriesSortOrder();
}

QString ItemStatements::text(ItemQuery query) const
{
    return at(query).lines.join(QString());
}

ResultSet ItemStatements::run(Database& db, ItemQuery query, const Params& values) const
{
    Params all = values;
    const Params& confirmed = at(query).confirmed;
    all.insert(all.end(), confirmed.begin(), confirmed.end());
    return db.execute(text(query), all);
}

} // namespace kb
