#pragma once

#include "CommandLine.h"
#include "CommandRegistry.h"

#include <functional>
#include <memory>

namespace kb {
class Clock;
class DataSet;
class RecordServices;
class StoppedClientsUtility;
class UserInterface;
} // namespace kb

namespace kb::app {

// stop-clients and inactivate-clients: the utility made over the session,
// its date (--date, or the utility's own default), "Stop All" or
// "Inactivate All", and the clients changed as CSV.
using MakeUtility = std::function<std::unique_ptr<kb::StoppedClientsUtility>(
    kb::RecordServices&, kb::UserInterface&, kb::DataSet&, const kb::Clock&)>;
int runStatusUtility(CommandContext& context, const CommandArgs& args, const MakeUtility& make);

} // namespace kb::app
