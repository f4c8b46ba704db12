#pragma once

#include "store/Database.h"

#include <QChar>
#include <QList>
#include <QStringList>

#include <array>

namespace kb {

struct ConfirmedItems;

// The item statements of a save, each a family member that reads one kind of
// list: item rows in Sort_Order, or the sums of a list (Total_Meals is the
// sum of quantity times the item's meals, Total_Labels of quantity times its
// labels).
enum class ItemQuery {
    GetDefaultItems,         // a service's default lines (:del_day, :Svcs_Used)
    GetOngoingItems,         // a client's standing lines (:person_id, :del_day, :Service_ID)
    GetOngoingNumberOfMeals, // their sums (:person_id, :del_day, :svcs_used)
    GetOngoingNumberOfLabels,
    GetEpisodicItems, // a dated delivery's lines (:person_id, :deliv_ID)
    GetEpisodicNumberOfMeals,
    GetEpisodicNumberOfLabels,
    GetNumberOfMeals, // a dated delivery's sums under the weekly filter
    GetNumberOfLabels,
};
inline constexpr int itemQueryCount = int(ItemQuery::GetNumberOfLabels) + 1;

// The texts are built line by line: the core logic leaves the bracket of the
// item filter open, the confirmation logic adds the confirmed items, and the
// sort order closes the bracket. Each statement leaves out the items that
// need confirmation on its kind of list ("O" on weekly lists, "S" on dated
// ones, "A" everywhere) unless the item is among the confirmed ones; an item
// without a code never needs confirmation. Confirmed items are bound as
// :Confirmed_O1, :Confirmed_O2, ... rather than written into the text.
class ItemStatements
{
public:
    // Built with nothing confirmed.
    ItemStatements();

    void SetItemQueriesCoreLogic();
    void SetItemQueriesConfirmationLogic(ItemQuery ConfirmedQuery, const QList<qint64>& ConfirmedItems,
                                         QChar letter);
    void SetItemQueriesSortOrder();
    // All three steps: the six statements of letter O with the ongoing list,
    // the three Episodic ones of letter S with the scheduled list.
    void build(const ConfirmedItems& confirmed);

    // "O" for the statements of weekly lists and GetNumberOf..., "S" for the
    // Episodic ones.
    static QChar letterOf(ItemQuery query);
    QString text(ItemQuery query) const;
    // Runs a statement with the delivery's values and the confirmed items.
    ResultSet run(Database& db, ItemQuery query, const Params& values) const;

private:
    struct Statement
    {
        QStringList lines;
        Params confirmed;
    };
    Statement& at(ItemQuery query) { return m_statements[size_t(query)]; }
    const Statement& at(ItemQuery query) const { return m_statements[size_t(query)]; }

    std::array<Statement, itemQueryCount> m_statements;
};

} // namespace kb
