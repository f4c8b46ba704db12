#pragma once

#include "delivery/RunPreparation.h"

#include <functional>

namespace kb {
class Database;
class TFormRunPrepare;
class UserInterface;
struct SessionState;
} // namespace kb

namespace kb::reports {

// Prepares and saves a date's run for the report screen through a run
// screen of its own: prepared for all delivery types, then either shown to
// the user, who checks, changes and saves it there, or saved at once after
// two checks (no deliveries: nothing is saved; fewer than a tenth of the
// active clients: a warning, and the save goes on).
class HiddenRunPreparation final : public RunPreparation
{
public:
    // showRunScreen shows the prepared run screen modally, its print command
    // hidden; without one a shown preparation is saved at once as well.
    HiddenRunPreparation(Database& db, const SessionState& session, UserInterface& ui,
                         std::function<void(TFormRunPrepare&)> showRunScreen = {});

    void prepareAndSave(const QDate& date, bool show) override;

private:
    void saveAtOnce(TFormRunPrepare& form);

    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    std::function<void(TFormRunPrepare&)> m_showRunScreen;
};

// Saves the prepared run of the screen as its "Save Data" command does,
// then cleans the screen up.
void savePreparedRun(TFormRunPrepare& form);

} // namespace kb::reports
