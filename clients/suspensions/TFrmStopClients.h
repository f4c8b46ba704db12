#pragma once

#include "suspensions/StoppedClientsUtility.h"

namespace kb {

class Clock;

// "Update Stop Status Utility": active clients whose stop date has come by
// the chosen date (yesterday unless changed) become Stopped.
class TFrmStopClients final : public StoppedClientsUtility
{
public:
    TFrmStopClients(RecordServices& services, UserInterface& ui, DataSet& clients, const Clock& clock);

    QString caption() const override { return QStringLiteral("Update Stop Status Utility"); }
    QString dateLabel() const override
    {
        return QStringLiteral("Stop active clients who were stopped on or before:");
    }
    QString listTitle() const override;
    QString fromStatus() const override { return QStringLiteral("A"); }
    QString toStatus() const override { return QStringLiteral("S"); }
    QString progressText() const override { return QStringLiteral("Changing Clients to Stopped..."); }
    QString errorPrefix() const override { return QStringLiteral("Error encountered while stopping: "); }
    // QueryStopsOver30Days.
    QString selectionStatement() const override;
};

} // namespace kb
