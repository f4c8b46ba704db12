#pragma once

#include <QString>

namespace kb {

// Invoice numbers from the user's starting text: its digits form the
// number and everything else the prefix, each in the order they stand
// ("AB12" gives AB12, AB13, ...; "X" gives X1, X2, ...).
class InvoiceNumbers
{
public:
    explicit InvoiceNumbers(const QString& start);

    // The number of the next invoice exported.
    QString current() const { return m_prefix + QString::number(m_number); }
    void advance() { ++m_number; }

private:
    QString m_prefix;
    qint64 m_number = 1;
};

} // namespace kb
