// prepare_run_bench [--clients N | --data DIR | --server ADDRESS] [--repeat R] [--date YYYY-MM-DD]:
// the time from "Prepare!" to the filled working table. The data is a demo
// agency generated once on SQLite in a temporary directory, or an existing
// data directory; with --server HOST[:PORT]/DATABASE the demo agency is made
// in a schema of its own on that server (dropped afterwards).

#include "BenchDemo.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <ctime>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), {});
    BenchRun bench(options, QStringLiteral("kb_prepare_bench"));
    kb::TFormRunPrepare& form = *bench.form;
    QElapsedTimer timer;
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
                static_cast<long long>(form.table().rowCount()), bench.ui.messages / options.repeat, options.repeat);
    std::printf("  wall: min %.1f ms, median %.1f ms, max %.1f ms\n", wall.min(), wall.median(), wall.max());
    std::printf("  cpu:  min %.1f ms, median %.1f ms, max %.1f ms\n", cpu.min(), cpu.median(), cpu.max());
    return 0;
}
