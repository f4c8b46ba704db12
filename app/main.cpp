#include "CommandLine.h"
#include "CommandRegistry.h"
#include "DesktopProgram.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>

using namespace kb::app;

namespace {

void printUsage(QTextStream& stream)
{
    stream << GlobalOptions::usage() << "commands:\n";
    for (const auto& [name, info] : commandRegistry())
        stream << "  " << info.definition.usage() << "\n";
}

QStringList argumentWords(int argc, char** argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << QString::fromLocal8Bit(argv[i]);
    return words;
}

// The desktop program needs a display; without one Qt would abort.
bool displayAvailable()
{
    const auto set = [](const char* name) {
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return set("DISPLAY") || set("WAYLAND_DISPLAY") || set("QT_QPA_PLATFORM");
}

} // namespace

int main(int argc, char** argv)
{
    GlobalOptions options;
    try {
        options = GlobalOptions::parse(argumentWords(argc, argv));
    } catch (const UsageError& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 2;
    }
    if (options.command.isEmpty() && !options.help && !options.version) {
        if (!displayAvailable()) {
            std::fputs("The desktop program needs a display (set DISPLAY, or start it under xvfb-run).\n"
                       "To work without one, give a command: kettlebrook --help lists them.\n",
                       stderr);
            return 2;
        }
        kb::ui::DesktopOptions desktop;
        desktop.dataDir = options.dataDir;
        desktop.server = options.server;
        desktop.today = options.today;
        return kb::ui::runDesktopProgram(argc, argv, desktop);
    }

    // Commands that draw pages need fonts, which come with the GUI
    // application; without a display they draw offscreen.
    const auto found = commandRegistry().find(options.command);
    const bool paints = found != commandRegistry().end() && found->second.definition.paints;
    if (paints && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
    const std::unique_ptr<QCoreApplication> app = paints ? std::make_unique<QGuiApplication>(argc, argv)
                                                         : std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Kettlebrook"));
    QCoreApplication::setApplicationVersion(QStringLiteral("0.1"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (options.version) {
        out << "kettlebrook " << QCoreApplication::applicationVersion() << '\n';
        return 0;
    }
    if (options.command.isEmpty()) {
        printUsage(out);
        return 0;
    }
    const auto it = commandRegistry().find(options.command);
    if (it == commandRegistry().end()) {
        err << "Unknown command '" << options.command << "'.\n";
        printUsage(err);
        return 2;
    }
    CommandContext context{options.dataDir, options.server, options.user, options.today, out, err};
    try {
        const int rc = runCommand(it->second, context, options.rest);
        out.flush();
        err.flush();
        return rc;
    } catch (const UsageError& e) {
        out.flush();
        err << e.what() << "\n";
        err.flush();
        return 2;
    } catch (const std::exception& e) {
        out.flush();
        err << e.what() << "\n";
        err.flush();
        return 1;
    }
}
