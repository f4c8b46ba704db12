// prepare_run_bench [--clients N | --data DIR | --server ADDRESS] [--repeat R] [--date YYYY-MM-DD]:
// the time from "Prepare!" to the filled working table. The data is a demo
// agency generated once on SQLite in a temporary directory, or an existing
// data directory; with --server HOST[:PORT]/DATABASE the demo agency is made
// in a schema of its own on that server (dropped afterwards).

#include "session/DataDirectory.h"
#include "store/PostgresStore.h"
#include "DemoBenchData.h"
#include "session/SessionState.h"
#include "TFormRunPrepare.h"
#include "UserInterface.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

struct BenchOptions
{
    int clients = 10000;
    QString dataDir;
    QString server;
    int repeat = 7;
    QDate date = QDate(2024, 3, 11);
};

// Counts what a run would tell the user instead of stopping for it.
class CountingUserInterface final : public kb::UserInterface
{
public:
    int messages = 0;
    void information(const QString&) override { ++messages; }
    void warning(const QString&) override { ++messages; }
    void error(const QString&) override { ++messages; }
    kb::Answer question(const QString&, kb::Buttons) override { return kb::Answer::No; }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

BenchOptions readOptions(const QStringList& args)
{
    BenchOptions o;
    for (qsizetype i = 0; i + 1 < args.size(); i += 2) {
        if (args[i] == QLatin1String("--clients"))
            o.clients = args[i + 1].toInt();
        else if (args[i] == QLatin1String("--data"))
            o.dataDir = args[i + 1];
        else if (args[i] == QLatin1String("--server"))
            o.server = args[i + 1];
        else if (args[i] == QLatin1String("--repeat"))
            o.repeat = std::max(1, args[i + 1].toInt());
        else if (args[i] == QLatin1String("--date"))
            o.date = QDate::fromString(args[i + 1], Qt::ISODate);
    }
    return o;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchOptions options = readOptions(app.arguments().mid(1));
    kb::FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    QTemporaryDir temp;
    QElapsedTimer timer;
    timer.start();
    const auto db = openDemoBenchData(options.dataDir, options.server, QStringLiteral("kb_prepare_bench"), options.clients, temp, clock);
    if (options.dataDir.isEmpty())
        std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                    static_cast<long long>(timer.elapsed()), options.server.isEmpty() ? "sqlite" : "postgresql");

    kb::SessionState session;
    session.userFullName = QStringLiteral("Bench");
    CountingUserInterface ui;
    kb::TFormRunPrepare form(*db, session, ui);
    form.FormShow();
    form.SetPrepareDate(options.date);
    // Wall time is what the user waits; processor time shows the work itself
    // when other processes share the machine.
    std::vector<double> wall;
    std::vector<double> cpu;
    for (int i = 0; i < options.repeat; ++i) {
        const std::clock_t started = std::clock();
        timer.restart();
        form.ActionPrepare();
        wall.push_back(timer.nsecsElapsed() / 1e6);
        cpu.push_back(1000.0 * double(std::clock() - started) / CLOCKS_PER_SEC);
    }
    std::sort(wall.begin(), wall.end());
    std::sort(cpu.begin(), cpu.end());
    std::printf("prepare %s: %lld rows, %d messages over %d runs\n", qPrintable(options.date.toString(Qt::ISODate)),
                static_cast<long long>(form.table().rowCount()), ui.messages / options.repeat, options.repeat);
    std::printf("  wall: min %.1f ms, median %.1f ms, max %.1f ms\n", wall.front(), wall[wall.size() / 2], wall.back());
    std::printf("  cpu:  min %.1f ms, median %.1f ms, max %.1f ms\n", cpu.front(), cpu[cpu.size() / 2], cpu.back());
    return 0;
}
