#include "suspensions/TFormRecentStops.h"

#include "Clock.h"
#include "UserInterface.h"
#include "suspensions/RecentStops.h"

#include <QDir>
#include <QFileInfo>

namespace kb {

TFormRecentStops::TFormRecentStops(Database& db, UserInterface& ui, const Clock& clock,
                                   QString templateFolder)
    : m_db(db), m_ui(ui), m_templateFolder(std::move(templateFolder)), m_stopDate(clock.today()),
      m_recencyDate(clock.today().addDays(-1))
{
}

QString TFormRecentStops::missingTemplateText(const QString& path)
{
    return QStringLiteral("The requested report template file:\r\n") + path +
           QStringLiteral("\r\ncould not be found.");
}

QString TFormRecentStops::templatePath() const
{
    return QDir::toNativeSeparators(QDir(m_templateFolder).filePath(templateFileName()));
}

bool TFormRecentStops::ActionPrint()
{
    if (!m_stopDate.isValid() || !m_recencyDate.isValid()) {
        m_ui.warning(QStringLiteral("Please enter both dates."));
        return false;
    }
    // Without a folder (data on a server) the template built into the program is used.
    if (!m_templateFolder.isEmpty() &&
        !QFileInfo::exists(QDir(m_templateFolder).filePath(templateFileName()))) {
        m_ui.error(missingTemplateText(templatePath()));
        return false;
    }
    Report report;
    {
        BusyGuard busy(m_ui);
        report.rows = RecentStops::select(m_db, m_stopDate, m_recencyDate);
        report.deliveryDate = RecentStops::deliveryDate(m_db, m_stopDate);
    }
    report.stopDate = m_stopDate;
    report.recencyDate = m_recencyDate;
    report.destination = m_destination;
    report.templatePath = templatePath();
    if (m_printer) m_printer(report);
    return true;
}

} // namespace kb
