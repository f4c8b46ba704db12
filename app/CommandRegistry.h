#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <map>
#include <memory>

namespace kb {
class Clock;
class Database;
}

namespace kb::app {

// What every headless command receives: the options that stand before the
// command word, its own arguments, and where to print.
struct CommandContext
{
    QString dataDir;       // --data DIR
    QString server;        // --server HOST[:PORT]/DATABASE
    QString user;          // --user NAME
    QString today;         // --today YYYY-MM-DD: run as if on that date
    QStringList args;      // the words after the command
    QTextStream& out;      // CSV results
    QTextStream& err;      // messages
};

// The clock of a command: the system's, or the --today date at the present
// time of day.
std::unique_ptr<kb::Clock> commandClock(const CommandContext& context);

// Opens the data named by --data (or --server). Throws with a message when
// none is named or it cannot be opened.
std::unique_ptr<kb::Database> openCommandDatabase(const CommandContext& context, const kb::Clock& clock);

using CommandFunction = std::function<int(CommandContext&)>;

struct CommandInfo
{
    QString usage;
    CommandFunction run;
};

// Commands register themselves from their own source file, so adding one
// touches nothing else.
std::map<QString, CommandInfo>& commandRegistry();

struct CommandRegistration
{
    CommandRegistration(const QString& name, const QString& usage, CommandFunction run)
    {
        commandRegistry()[name] = CommandInfo{usage, std::move(run)};
    }
};

} // namespace kb::app
