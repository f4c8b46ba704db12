#include "engine/Accumulator.h"

#include "data/RowsPipe.h"
#include "engine/Evaluator.h"
#include "engine/ValueKinds.h"

namespace kb::reports {

Accumulator::Function Accumulator::functionOf(const QString& name)
{
    const QString n = name.toLower();
    if (n == QLatin1String("count"))
        return Function::Count;
    if (n == QLatin1String("min"))
        return Function::Min;
    if (n == QLatin1String("max"))
        return Function::Max;
    if (n == QLatin1String("avg"))
        return Function::Avg;
    if (n == QLatin1String("distinct"))
        return Function::Distinct;
    return Function::Sum;
}

void Accumulator::reset()
{
    m_count = 0;
    m_intSum = 0;
    m_floatSum = 0;
    m_moneySum = Money();
    m_anyFloat = m_anyMoney = false;
    m_min = m_max = QVariant();
    m_distinct.clear();
}

void Accumulator::add(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return;
    ++m_count;
    switch (m_function) {
    case Function::Count:
        return;
    case Function::Distinct:
        m_distinct.insert(linkKeyText(value));
        return;
    case Function::Min:
        if (!m_min.isValid() || Evaluator::compare(value, m_min) < 0)
            m_min = value;
        return;
    case Function::Max:
        if (!m_max.isValid() || Evaluator::compare(value, m_max) > 0)
            m_max = value;
        return;
    case Function::Sum:
    case Function::Avg:
        break;
    }
    if (value.typeId() == qMetaTypeId<Money>()) {
        m_anyMoney = true;
        m_moneySum = m_moneySum + value.value<Money>();
        m_floatSum += value.value<Money>().toDouble();
        return;
    }
    if (isIntegerValue(value) || value.typeId() == QMetaType::Bool) {
        m_intSum += value.toLongLong();
        m_floatSum += value.toDouble();
        return;
    }
    bool ok = false;
    const double d = value.typeId() == QMetaType::QString ? value.toString().trimmed().toDouble(&ok)
                                                          : value.toDouble(&ok);
    if (!ok) {
        --m_count; // a text that is no number does not count towards a sum
        return;
    }
    m_anyFloat = true;
    m_floatSum += d;
}

QVariant Accumulator::value() const
{
    switch (m_function) {
    case Function::Count:
        return m_count;
    case Function::Distinct:
        return qlonglong(m_distinct.size());
    case Function::Min:
        return m_min;
    case Function::Max:
        return m_max;
    case Function::Avg:
        return m_count ? QVariant(m_floatSum / double(m_count)) : QVariant();
    case Function::Sum:
        break;
    }
    if (m_anyFloat || (m_anyMoney && m_intSum != 0))
        return m_floatSum;
    if (m_anyMoney)
        return QVariant::fromValue(m_moneySum);
    return m_intSum;
}

} // namespace kb::reports
