#pragma once

#include "bills/BillOptions.h"
#include "bills/ClientBill.h"

#include <QList>

#include <optional>

namespace kb {

class Database;

// Works out the invoices of a period. All deliveries of the period are
// read once into the session's memory table MemDeliveries, which is
// indexed; each client's lines are then summed from memory. The table
// lives as long as the calculator.
//
// "Cost per item" charges each delivered item at Items.Billed_Amount; a
// comped delivery is charged nothing and stands on its own line; items
// without a price drop out. "Pledged Amount" charges what the client
// pledged, per item or category, per delivery day, per month or per year.
// Money stays exact throughout; nothing is rounded here.
class ClientBillCalculator
{
public:
    static constexpr int Slots = 10;

    ClientBillCalculator(Database& db, BillOptions options);
    ~ClientBillCalculator();
    ClientBillCalculator(const ClientBillCalculator&) = delete;
    ClientBillCalculator& operator=(const ClientBillCalculator&) = delete;

    // Reads the period's deliveries into MemDeliveries.
    void prepare();
    // The clients served in the period (QueryDistinctClientIDs).
    QList<qint64> clients();
    // The client's invoice under that number; none when its total is zero
    // or less (nothing of him is exported then).
    std::optional<ClientBill> bill(qint64 personId, const QString& invoiceNumber);

    // The merge file's field names, in order.
    static QStringList fieldNames();

private:
    struct Line
    {
        QString funding;
        qint64 itemId = 0;
        QString mealItem;
        QString meal;
        QString comp;
        qint64 quantity = 0;
        Money unitCharge;
        Money totalCharge;
        QString itemText() const;
    };
    std::vector<Line> lines(qint64 personId);
    // Fills the slots and the total from the lines as the method and option say.
    void charge(ClientBill& bill, const std::vector<Line>& lines, const QString& pledgeMethod,
                const QString& pledgePeriod, Money pledgeAmount, qint64 personId);
    void chargeItemPledges(ClientBill& bill, const std::vector<Line>& lines, qint64 personId);

    Database& m_db;
    BillOptions m_options;
    bool m_canadian = false;
    bool m_prepared = false;
};

} // namespace kb
