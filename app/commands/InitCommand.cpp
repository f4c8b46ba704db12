// kettlebrook init DIR [--demo N] [--seed S]: makes a new data directory,
// optionally filled with a generated demo agency; with --server before the
// command, the same tables in an empty server database.

#include "CommandRegistry.h"

#include "session/DataDirectory.h"
#include "DemoAgency.h"
#include "store/PostgresStore.h"

#include <QElapsedTimer>

namespace {

int runInit(kb::app::CommandContext& context)
{
    QString directory;
    int clients = -1;
    quint32 seed = 1;
    for (qsizetype i = 0; i < context.args.size(); ++i) {
        const QString& word = context.args[i];
        auto number = [&](const char* option) {
            if (i + 1 >= context.args.size())
                throw std::runtime_error(QStringLiteral("%1 needs a number").arg(QLatin1String(option)).toStdString());
            bool ok = false;
            const qlonglong n = context.args[++i].toLongLong(&ok);
            if (!ok || n < 0)
                throw std::runtime_error(QStringLiteral("%1 needs a whole number, not '%2'")
                                             .arg(QLatin1String(option), context.args[i])
                                             .toStdString());
            return n;
        };
        if (word == QLatin1String("--demo"))
            clients = int(number("--demo"));
        else if (word == QLatin1String("--seed"))
            seed = quint32(number("--seed"));
        else if (directory.isEmpty() && !word.startsWith(QLatin1String("--")))
            directory = word;
        else
            throw std::runtime_error(QStringLiteral("Unexpected argument '%1'").arg(word).toStdString());
    }
    if (directory.isEmpty())
        directory = context.dataDir;
    if (directory.isEmpty() && context.server.isEmpty())
        throw std::runtime_error("Name the new data directory: init DIR");
    const auto clock = kb::app::commandClock(context);
    QElapsedTimer timer;
    timer.start();
    const bool onServer = directory.isEmpty();
    const auto db = onServer ? kb::createServerDatabase(kb::ServerAddress::parse(context.server), *clock)
                             : kb::createDataDirectory(directory, *clock);
    if (clients > 0) {
        kb::DemoOptions options;
        options.clients = clients;
        options.seed = seed;
        const kb::DemoSummary summary = kb::generateDemoAgency(*db, options);
        context.err << "Generated " << summary.clients << " clients, " << summary.episodicDeliveries
                    << " dated deliveries and " << summary.deliveries << " saved deliveries in "
                    << timer.elapsed() << " ms\n";
    }
    if (onServer)
        context.out << "Created the Kettlebrook tables in " << context.server << '\n';
    else
        context.out << "Created data directory " << directory << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(QStringLiteral("init"),
                                                QStringLiteral("init DIR [--demo N] [--seed S]   (or: --server ADDRESS init [--demo N])"), runInit);

} // namespace
