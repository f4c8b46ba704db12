#pragma once

#include <QString>

namespace kb {
class Database;
}

namespace kb::reports {

// What the signed-in user's Staff row says about delivery reports. A user
// without a row (the built-in administrator) has none of these: no report
// preselected and no check of the run.
struct StaffReportPreferences
{
    bool found = false;
    int preferredDeliveryReport = 0;
    // When to offer a fresh preparation: "M" after 30 minutes, "1" after an
    // hour, "4" after four hours, "D" after a day; empty for never.
    QString prepareDataPrompt;
    // When a preparation is shown before it is saved: "F" first, "R"
    // repeated, "A" both; else it is saved at once.
    QString displayPreparedData;

    // The row whose User_ID is the user's.
    static StaffReportPreferences read(Database& db, const QString& userId);
};

} // namespace kb::reports
