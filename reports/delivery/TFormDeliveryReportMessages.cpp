#include "delivery/TFormDeliveryReportMessages.h"

#include "UserInterface.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"

namespace kb::reports {

TFormDeliveryReportMessages::TFormDeliveryReportMessages(Database& db, UserInterface& ui) : m_db(db), m_ui(ui)
{
    const ConfigRecord config = ConfigRecord::read(db);
    m_top = m_savedTop = config.text(QStringLiteral("DELIV_REPORT_MSG_TOP"));
    m_bottom = m_savedBottom = config.text(QStringLiteral("DELIV_REPORT_MSG_BOT"));
}

void TFormDeliveryReportMessages::ok()
{
    m_db.execute(
        QStringLiteral("Update Config set DELIV_REPORT_MSG_TOP = :Top, DELIV_REPORT_MSG_BOT = :Bottom, "
                       "LAST_UPDATED = :Now"),
        {{QStringLiteral("Top"), m_top},
         {QStringLiteral("Bottom"), m_bottom},
         {QStringLiteral("Now"), m_db.clock().now()}});
    m_savedTop = m_top;
    m_savedBottom = m_bottom;
}

void TFormDeliveryReportMessages::cancel()
{
    m_top = m_savedTop;
    m_bottom = m_savedBottom;
}

bool TFormDeliveryReportMessages::closeQuery()
{
    if (!isModified()) return true;
    switch (
        m_ui.question(QStringLiteral("Save your changes to the Driver Messages?"), Buttons::YesNoCancel)) {
    case Answer::Yes:
        ok();
        return true;
    case Answer::No:
        cancel();
        return true;
    default:
        return false;
    }
}

} // namespace kb::reports
