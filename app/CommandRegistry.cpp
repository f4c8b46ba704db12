#include "CommandRegistry.h"

namespace kb::app {

std::map<QString, CommandInfo>& commandRegistry()
{
    static std::map<QString, CommandInfo> registry;
    return registry;
}

} // namespace kb::app

#include "Clock.h"
#include "session/DataDirectory.h"
#include "store/DbError.h"
#include "store/PostgresStore.h"
#include "store/ValueConversion.h"

namespace kb::app {

std::unique_ptr<kb::Clock> commandClock(const CommandContext& context)
{
    if (context.today.isEmpty())
        return std::make_unique<kb::SystemClock>();
    const QDate day = kb::parseDate(context.today);
    if (!day.isValid())
        throw std::runtime_error(QStringLiteral("--today needs a date as YYYY-MM-DD, not '%1'")
                                     .arg(context.today)
                                     .toStdString());
    return std::make_unique<kb::FixedClock>(QDateTime(day, QTime::currentTime()));
}

std::unique_ptr<kb::Database> openCommandDatabase(const CommandContext& context, const kb::Clock& clock)
{
    if (!context.server.isEmpty())
        return kb::openServerDatabase(kb::ServerAddress::parse(context.server), clock);
    if (context.dataDir.isEmpty())
        throw std::runtime_error("Name the data directory with --data DIR");
    return kb::openDataDirectory(context.dataDir, clock);
}

} // namespace kb::app
