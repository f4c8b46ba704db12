#include "TempDataDir.h"

#include "DataDirectory.h"

namespace kb::test {

QDateTime fixedNow() { return QDateTime(QDate(2024, 3, 6), QTime(10, 30)); }

TempDataDir::TempDataDir() : m_clock(fixedNow())
{
    m_path = m_temp.filePath(QStringLiteral("data"));
    m_db = createDataDirectory(m_path, m_clock);
}

std::unique_ptr<Database> TempDataDir::openAnother() { return openDataDirectory(m_path, m_clock); }

} // namespace kb::test
