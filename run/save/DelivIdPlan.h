#pragma once

#include <QString>

#include <vector>

namespace kb {

struct DeliveryItems;

// The Deliv_IDs of a run's rows in the run's order, as the save hands them
// out: the first row takes the first number, and each further row the next
// one, except that with Consolidate_Deliveries a row of the same Person_ID
// as the row before it continues that row's delivery: it shares its number
// and writes its Delivery_Type with a lower-case first letter ("oD", "sD").
// Only adjacent rows are looked at, and only Person_ID: two members of one
// household keep numbers of their own.
class DelivIdPlan
{
public:
    static DelivIdPlan make(const std::vector<DeliveryItems>& rows, qint64 first, bool consolidate);

    qint64 delivId(size_t row) const { return m_ids[row]; }
    bool consolidated(size_t row) const { return m_consolidated[row]; }
    // The Delivery_Type the row is written with.
    QString deliveryType(size_t row, const QString& rowType) const;
    qint64 first() const { return m_first; }
    // The highest number used; first() - 1 for a run without rows.
    qint64 last() const { return m_ids.empty() ? m_first - 1 : m_ids.back(); }
    // Where the count stands after the last row, to which SaveIDNumber
    // adds one: the last row looks at itself once more as the next, so
    // with consolidation this is the last number used, without it one more.
    qint64 afterLastRow() const { return m_afterLast; }

private:
    qint64 m_first = 1;
    qint64 m_afterLast = 1;
    std::vector<qint64> m_ids;
    std::vector<bool> m_consolidated;
};

// "OD" continuing a delivery becomes "oD".
QString consolidatedDeliveryType(const QString& deliveryType);

} // namespace kb
