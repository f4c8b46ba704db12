#pragma once

#include "CommandLine.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

#include <functional>
#include <map>
#include <memory>

namespace kb {
class Clock;
class Database;
} // namespace kb

namespace kb::app {

// What every headless command receives: the options that stand before the
// command word, how its questions are answered, and where to print.
struct CommandContext
{
    QString dataDir;                            // --data DIR
    QString server;                             // --server HOST[:PORT]/DATABASE
    QString user;                               // --user NAME
    QString today;                              // --today YYYY-MM-DD: run as if on that date (checked)
    QTextStream& out;                           // CSV results
    QTextStream& err;                           // messages
    AnswerPolicy answers = AnswerPolicy::Least; // --yes / --no of a command that asks
};

// The clock of a command: the system's, or the --today date at the present
// time of day.
std::unique_ptr<kb::Clock> commandClock(const CommandContext& context);

// Opens the data named by --data (or --server). Throws with a message when
// none is named or it cannot be opened.
std::unique_ptr<kb::Database> openCommandDatabase(const CommandContext& context, const kb::Clock& clock);

using CommandFunction = std::function<int(CommandContext&, const CommandArgs&)>;

struct CommandInfo
{
    CommandDefinition definition;
    CommandFunction run;
};

// Commands register themselves from their own source file, so adding one
// touches nothing else.
std::map<QString, CommandInfo>& commandRegistry();

struct CommandRegistration
{
    CommandRegistration(CommandDefinition definition, CommandFunction run)
    {
        const QString name = definition.name;
        commandRegistry()[name] = CommandInfo{std::move(definition), std::move(run)};
    }
};

// Parses the command's words against its definition and runs it: --help prints
// the command's help; bad words give a UsageError before anything is opened.
int runCommand(const CommandInfo& command, CommandContext& context, const QStringList& words);

} // namespace kb::app
