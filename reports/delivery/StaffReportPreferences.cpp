#include "delivery/StaffReportPreferences.h"

#include "store/Database.h"

namespace kb::reports {

StaffReportPreferences StaffReportPreferences::read(Database& db, const QString& userId)
{
    StaffReportPreferences p;
    if (userId.isEmpty()) return p;
    const ResultSet staff =
        db.execute(QStringLiteral("Select Preferred_Delivery_Report, Prepare_Data_Prompt, "
                                  "Display_Prepared_Data from Staff where User_ID = :User_ID"),
                   {{QStringLiteral("User_ID"), userId}});
    if (staff.isEmpty()) return p;
    p.found = true;
    p.preferredDeliveryReport = staff.value(0, 0).toInt();
    p.prepareDataPrompt = staff.value(0, 1).toString().trimmed();
    p.displayPreparedData = staff.value(0, 2).toString().trimmed();
    return p;
}

} // namespace kb::reports
