#pragma once

#include <QDate>

namespace kb::reports {

// How the report screen brings a date's run up to date when the user asks
// it to: prepare the date for all delivery types and save it, either
// through the run screen shown to the user (who checks, changes and saves
// there) or at once without showing anything.
class RunPreparation
{
public:
    virtual ~RunPreparation() = default;
    // Throws MessageError for a failure, which the report screen shows
    // before it runs the report on the data as it stands.
    virtual void prepareAndSave(const QDate& date, bool show) = 0;
};

} // namespace kb::reports
