#pragma once

#include "suspensions/StoppedClientsUtility.h"

namespace kb {

class Clock;
class Database;

// "Inactivate Clients Utility": stopped clients whose stop date lies on or
// before the chosen date (today minus Config.STOPPED2INACTIVE_DAYS unless
// changed) become Inactive.
class TFrmInactivateClients final : public StoppedClientsUtility
{
public:
    TFrmInactivateClients(RecordServices& services, UserInterface& ui, DataSet& clients, const Clock& clock);

    // Config.STOPPED2INACTIVE_DAYS; 0 when not set.
    static int configuredDays(Database& db);

    QString caption() const override { return QStringLiteral("Inactivate Clients Utility"); }
    QString dateLabel() const override { return QStringLiteral("Inactivate all clients stopped prior to"); }
    // Names the configured number of days, whatever date was chosen.
    QString listTitle() const override;
    QString fromStatus() const override { return QStringLiteral("S"); }
    QString toStatus() const override { return QStringLiteral("I"); }
    QString progressText() const override
    {
        return QStringLiteral("Changing Stopped Clients to Inactive...");
    }
    QString errorPrefix() const override { return QStringLiteral("Error encountered while inactivating: "); }
    QString selectionStatement() const override;

private:
    int m_days;
};

} // namespace kb
