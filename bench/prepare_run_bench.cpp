// prepare_run_bench [--clients N | --data DIR | --server ADDRESS] [--repeat R] [--date YYYY-MM-DD]:
// the time from "Prepare!" to the filled working table. The data is a demo
// agency generated once on SQLite in a temporary directory, or an existing
// data directory; with --server HOST[:PORT]/DATABASE the demo agency is made
// in a schema of its own on that server (dropped afterwards).

#include "BenchDemo.h"

#include "session/SessionState.h"
#include "TFormRunPrepare.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <ctime>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), {});
    kb::FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    QTemporaryDir temp;
    QElapsedTimer timer;
    timer.start();
    const BenchSchema schema(options, QStringLiteral("kb_prepare_bench"));
    const auto db = openBenchData(options, temp, clock, schema.name);
    if (options.dataDir.isEmpty())
        std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                    static_cast<long long>(timer.elapsed()), options.storeName());

    kb::SessionState session;
    session.userFullName = QStringLiteral("Bench");
    CountingUserInterface ui;
    kb::TFormRunPrepare form(*db, session, ui);
    form.FormShow();
    form.SetPrepareDate(options.date);
    // Wall time is what the user waits; processor time shows the work itself
    // when other processes share the machine.
    Timings wall;
    Timings cpu;
    for (int i = 0; i < options.repeat; ++i) {
        const std::clock_t started = std::clock();
        timer.restart();
        form.ActionPrepare();
        wall.add(timer.nsecsElapsed() / 1e6);
        cpu.add(1000.0 * double(std::clock() - started) / CLOCKS_PER_SEC);
    }
    std::printf("prepare %s: %lld rows, %d messages over %d runs\n", qPrintable(options.date.toString(Qt::ISODate)),
                static_cast<long long>(form.table().rowCount()), ui.messages / options.repeat, options.repeat);
    std::printf("  wall: min %.1f ms, median %.1f ms, max %.1f ms\n", wall.min(), wall.median(), wall.max());
    std::printf("  cpu:  min %.1f ms, median %.1f ms, max %.1f ms\n", cpu.min(), cpu.median(), cpu.max());
    return 0;
}
