#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace kb {

// What "Export Client Pledge Solicitation and Invoice Data" is asked to do.
struct BillOptions
{
    // "Calculate the amount by using:"
    enum class Method { CostPerItem, PledgedAmount };
    // The time pledge option of "Pledged Amount".
    enum class Pledges { PerItem, PerItemAndDay, Monthly, Yearly };
    // Which delivered items count.
    enum class ItemFilter { All, IncludeOnly, Exclude };

    QDate start; // both days included
    QDate end;
    Method method = Method::CostPerItem;
    Pledges pledges = Pledges::PerItem;
    ItemFilter filter = ItemFilter::All;
    QList<qint64> items;     // the checked items of the tree
    QString startingInvoice; // "Starting Invoice Number:"
    bool postToHistory = true;
    // Only deliveries charged to these funding codes; empty for all. The
    // screen bills every funding source; the bills command may narrow it.
    QStringList fundingCodes;
};

} // namespace kb
