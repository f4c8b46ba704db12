#pragma once

#include <QString>

namespace kb {
class Clock;
class Database;
class SettingsFile;
class UserInterface;
} // namespace kb

namespace kb::reports {

// What the delivery reports run with: the data session, the clock, the
// person in front of the screen, the signed-in user, the per-user settings
// (for the dialogs' choices; may be null) and the folder of the report
// templates: the data directory, or empty where the data lives on a server,
// when the templates built into the program are used.
struct DeliveryReportContext
{
    Database& db;
    const Clock& clock;
    UserInterface& ui;
    QString userId;
    SettingsFile* settings = nullptr;
    QString templateFolder;
};

} // namespace kb::reports
