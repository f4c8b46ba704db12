#include "screens/TFormResetStartDate.h"

namespace kb {

TFormResetStartDate::TFormResetStartDate(const QDate& startDate, const QDate& recertificationDate,
                                         bool recertificationVisible)
    : m_startDate(startDate), m_recertificationDate(recertificationDate),
      m_recertificationVisible(recertificationVisible)
{
}

} // namespace kb
