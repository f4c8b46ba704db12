#pragma once

#include "Money.h"

#include <QSet>
#include <QString>
#include <QVariant>

namespace kb::reports {

// Gathers the values of one sum, count, minimum, maximum, average or
// count of distinct values. Nulls are left out of all of them. A sum of
// whole numbers stays whole, of money stays exact money; any other number
// makes it a float.
class Accumulator
{
public:
    enum class Function { Sum, Count, Min, Max, Avg, Distinct };

    explicit Accumulator(Function function = Function::Sum) : m_function(function) {}
    static Function functionOf(const QString& name);

    void reset();
    void add(const QVariant& value);
    // A sum or count of nothing is 0; the others are null.
    QVariant value() const;

private:
    Function m_function;
    qlonglong m_count = 0;
    qlonglong m_intSum = 0;
    double m_floatSum = 0;
    Money m_moneySum;
    bool m_anyFloat = false;
    bool m_anyMoney = false;
    QVariant m_min;
    QVariant m_max;
    QSet<QString> m_distinct;
};

} // namespace kb::reports
