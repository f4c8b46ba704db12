#pragma once

#include "Money.h"

#include <QStringList>
#include <QVariant>

#include <optional>
#include <vector>

namespace kb {

// One slot of an invoice: quantity, item text, unit price and charge. An
// empty slot has none of them.
struct BillSlot
{
    std::optional<qint64> quantity;
    QString item;
    std::optional<Money> unitPrice;
    std::optional<Money> charge;

    bool operator==(const BillSlot&) const = default;
};

// One client's invoice of a period. Not stored: it becomes a line of the
// merge file and, optionally, a History row.
struct ClientBill
{
    qint64 personId = 0;
    QString clientId;
    QString invoiceNumber;
    // InvoiceNumber to Language, in the merge file's order, texts as written.
    QStringList fields;
    std::vector<BillSlot> entries; // the slots: at least ten once complete
    Money total;
};

// Reads a money value of a result row exactly; null reads as zero.
Money moneyValue(const QVariant& value);

} // namespace kb
