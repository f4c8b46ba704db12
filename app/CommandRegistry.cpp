#include "CommandRegistry.h"

#include "Clock.h"
#include "session/DataDirectory.h"
#include "store/PostgresStore.h"

namespace kb::app {

std::map<QString, CommandInfo>& commandRegistry()
{
    static std::map<QString, CommandInfo> registry;
    return registry;
}

std::unique_ptr<kb::Clock> commandClock(const CommandContext& context)
{
    if (context.today.isEmpty()) return std::make_unique<kb::SystemClock>();
    const QDate day = parseDateWord(context.today, QStringLiteral("--today"));
    return std::make_unique<kb::FixedClock>(QDateTime(day, QTime::currentTime()));
}

std::unique_ptr<kb::Database> openCommandDatabase(const CommandContext& context, const kb::Clock& clock)
{
    if (!context.server.isEmpty())
        return kb::openServerDatabase(kb::ServerAddress::parse(context.server), clock);
    if (context.dataDir.isEmpty())
        throw UsageError(QStringLiteral("Name the data: --data DIR, or --server HOST[:PORT]/DATABASE."));
    return kb::openDataDirectory(context.dataDir, clock);
}

int runCommand(const CommandInfo& command, CommandContext& context, const QStringList& words)
{
    const CommandArgs args = CommandArgs::parse(command.definition, words);
    if (args.helpRequested()) {
        context.out << command.definition.help();
        return 0;
    }
    if (command.definition.needsUser && context.user.isEmpty())
        throw UsageError(
            QStringLiteral("%1 signs in: give --user NAME before the command.").arg(command.definition.name));
    context.answers = args.answers();
    return command.run(context, args);
}

} // namespace kb::app
