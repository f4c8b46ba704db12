#include "CommandRegistry.h"
#include "DesktopProgram.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>
#include <exception>

using namespace kb::app;

namespace {

void printUsage(QTextStream& err)
{
    err << "usage: kettlebrook [--data DIR | --server HOST[:PORT]/DATABASE] [--user NAME] [--today YYYY-MM-DD]\n"
           "                   COMMAND [ARGS]\n"
           "commands:\n";
    for (const auto& [name, info] : commandRegistry())
        err << "  " << info.usage << "\n";
}

} // namespace

int main(int argc, char** argv)
{
    // Without a command word this is the desktop program, which needs a screen;
    // the commands never do.
    if (kb::ui::isDesktopInvocation(argc, argv))
        return kb::ui::runDesktopProgram(argc, argv);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Kettlebrook"));
    QTextStream out(stdout);
    QTextStream err(stderr);

    QStringList words = app.arguments().mid(1);
    CommandContext context{{}, {}, {}, {}, {}, out, err};
    while (!words.isEmpty() && words.first().startsWith(QLatin1String("--"))) {
        const QString option = words.takeFirst();
        if (option == QLatin1String("--help")) {
            printUsage(err);
            return 0;
        }
        if (words.isEmpty()) {
            err << "Missing value for " << option << "\n";
            return 2;
        }
        const QString value = words.takeFirst();
        if (option == QLatin1String("--data"))
            context.dataDir = value;
        else if (option == QLatin1String("--server"))
            context.server = value;
        else if (option == QLatin1String("--user"))
            context.user = value;
        else if (option == QLatin1String("--today"))
            context.today = value;
        else {
            err << "Unknown option " << option << "\n";
            return 2;
        }
    }
    if (words.isEmpty()) {
        printUsage(err);
        return 2;
    }
    const QString command = words.takeFirst();
    const auto it = commandRegistry().find(command);
    if (it == commandRegistry().end()) {
        err << "Unknown command " << command << "\n";
        printUsage(err);
        return 2;
    }
    context.args = words;
    try {
        const int rc = it->second.run(context);
        out.flush();
        err.flush();
        return rc;
    } catch (const std::exception& e) {
        out.flush();
        err << e.what() << "\n";
        err.flush();
        return 1;
    }
}
