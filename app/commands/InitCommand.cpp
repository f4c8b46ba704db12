// kettlebrook init DIR [--demo N] [--seed S]: makes a new data directory,
// optionally filled with a generated demo agency; with --server before the
// command, the same tables in an empty server database.

#include "CommandRegistry.h"

#include "session/DataDirectory.h"
#include "DemoAgency.h"
#include "template/TemplateRegistry.h"
#include "store/PostgresStore.h"

#include <QElapsedTimer>

namespace {

// The largest demo agency init makes; beyond it the generator would only
// fill the disk.
constexpr qint64 MaxDemoClients = 1000000;

int runInit(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    QString directory = args.positional(0);
    const int clients = int(args.integer(QStringLiteral("demo"), 0, MaxDemoClients, 0));
    const auto seed = quint32(args.integer(QStringLiteral("seed"), 0, 0xFFFFFFFFLL, 1));
    if (directory.isEmpty())
        directory = context.dataDir;
    if (directory.isEmpty() && context.server.isEmpty())
        throw kb::app::UsageError(QStringLiteral("Name the new data directory: init DIR"));
    const auto clock = kb::app::commandClock(context);
    QElapsedTimer timer;
    timer.start();
    // The demo agency is part of the new data, made before anyone can see it.
    kb::DemoSummary summary;
    kb::NewAgencyFill fill;
    if (clients > 0)
        fill = [&](kb::Database& db) {
            kb::DemoOptions options;
            options.clients = clients;
            options.seed = seed;
            summary = kb::generateDemoAgency(db, options);
        };
    const bool onServer = directory.isEmpty();
    if (onServer) {
        kb::createServerDatabase(kb::ServerAddress::parse(context.server), *clock, fill);
    } else {
        kb::createDataDirectory(directory, *clock, fill);
        // The fixed reports' templates, which the agency may then adjust.
        kb::reports::TemplateRegistry::install(directory);
    }
    if (clients > 0)
        context.err << "Generated " << summary.clients << " clients, " << summary.episodicDeliveries
                    << " dated deliveries and " << summary.deliveries << " saved deliveries in " << timer.elapsed()
                    << " ms\n";
    if (onServer)
        context.out << "Created the Kettlebrook tables in " << context.server << '\n';
    else
        context.out << "Created data directory " << directory << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("init"),
     .arguments = QStringLiteral("DIR"),
     .description = QStringLiteral("Makes a new data directory, with the templates of the fixed reports (or, with --server before "
                                  "the command, the same tables "
                                   "in an empty server database), optionally filled with a generated demo agency."),
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("demo"), QStringLiteral("Generate a demo agency of N clients."),
                                    QStringLiteral("N")),
                 QCommandLineOption(QStringLiteral("seed"),
                                    QStringLiteral("The seed of the demo agency; the same seed gives the same agency."),
                                    QStringLiteral("S"))},
     .repeatable = {}},
    runInit);

} // namespace
