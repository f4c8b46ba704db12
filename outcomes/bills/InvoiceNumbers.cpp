#include "bills/InvoiceNumbers.h"

namespace kb {

InvoiceNumbers::InvoiceNumbers(const QString& start)
{
    QString digits;
    for (const QChar c : start) {
        if (c >= u'0' && c <= u'9')
            digits += c;
        else
            m_prefix += c;
    }
    bool ok = false;
    const qint64 number = digits.toLongLong(&ok);
    // Digits that do not make a number (none, or too many) start at 1.
    m_number = ok && number < (qint64(1) << 62) ? number : 1;
}

} // namespace kb
