// run_items_bench [--clients N | --data DIR | --server ADDRESS] [--repeat R] [--date YYYY-MM-DD]
// [--no-row-by-row]: the items, meal and label counts and funding of a prepared run, as a save finds them
// before it writes: the confirmation candidates of the date and the lookup for the whole working table, with
// nothing confirmed and with everything confirmed. For comparison it times once the same work done one
// delivery at a time with the item and funding statements, and the writing
// of the run's MealCrdt rows in a transaction that is rolled back. The data
// is a demo agency made on SQLite in a temporary directory or, with --server
// HOST[:PORT]/DATABASE, in a schema of its own on that server (dropped
// afterwards), or an existing data directory.

#include "BenchDemo.h"

#include "TFormRunPrepare.h"
#include "confirmation/ConfirmDeliveryItems.h"
#include "confirmation/GivenItemConfirmation.h"
#include "itemstatements/OneDeliveryItems.h"
#include "save/MealCrdtWriter.h"
#include "selection/RunStatements.h"
#include "session/SessionState.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <ctime>

namespace {

struct Totals
{
    size_t deliveries = 0;
    size_t lines = 0;
    qint64 meals = 0;
    size_t custom = 0;
    size_t funded = 0;
};

Totals totalsOf(const kb::RunItems& run)
{
    Totals t;
    t.deliveries = run.deliveries().size();
    for (const kb::DeliveryItems& d : run.deliveries()) {
        t.lines += d.lines.size();
        t.meals += d.numberMeals;
        t.custom += d.customItems ? 1 : 0;
        t.funded += d.fundingDesc.isEmpty() ? 0 : 1;
    }
    return t;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    BenchOptions defaults;
    defaults.repeat = 5;
    defaults.date = QDate(2024, 3, 8); // a Friday: its lists hold items that need confirmation
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), defaults);
    BenchRun bench(options, QStringLiteral("kb_items_bench"));
    kb::Database& db = *bench.db;
    kb::TFormRunPrepare& form = *bench.form;
    QElapsedTimer timer;
    timer.restart();
    form.ActionPrepare();
    std::printf("prepare %s: %lld rows in %.1f ms\n", qPrintable(options.date.toString(Qt::ISODate)),
                static_cast<long long>(form.table().rowCount()), timer.nsecsElapsed() / 1e6);
    std::printf("items needing confirmation on that date: %lld\n",
                static_cast<long long>(kb::itemsRequiringConfirmation(db, options.date).size()));

    kb::GivenItemConfirmation none = kb::GivenItemConfirmation::none();
    kb::GivenItemConfirmation all = kb::GivenItemConfirmation::all();
    kb::ConfirmedItems confirmedAll;
    for (auto [name, answer] : {std::pair{"none confirmed", &none}, std::pair{"all confirmed", &all}}) {
        form.setItemConfirmation(answer);
        // Processor time shows the work itself when other processes share
        // the machine; on the server it leaves out the server's own work.
        Timings wall;
        Timings cpu;
        Totals totals;
        for (int i = 0; i < options.repeat; ++i) {
            const std::clock_t started = std::clock();
            timer.restart();
            const kb::ConfirmedItems confirmed = form.ConfirmDeliveryItems();
            const kb::RunItems run = form.FindRunItems(confirmed);
            wall.add(timer.nsecsElapsed() / 1e6);
            cpu.add(1000.0 * double(std::clock() - started) / CLOCKS_PER_SEC);
            totals = totalsOf(run);
            if (answer == &all) confirmedAll = confirmed;
        }
        std::printf(
            "whole run, %s: %zu deliveries, %zu item lines, %lld meals, %zu with own items, %zu funded\n",
            name, totals.deliveries, totals.lines, static_cast<long long>(totals.meals), totals.custom,
            totals.funded);
        std::printf("  wall: min %.1f ms, median %.1f ms, max %.1f ms over %d runs\n", wall.min(),
                    wall.median(), wall.max(), options.repeat);
        std::printf("  cpu:  min %.1f ms, median %.1f ms, max %.1f ms\n", cpu.min(), cpu.median(), cpu.max());
    }
    form.setItemConfirmation(nullptr);

    const kb::RunItems run = form.FindRunItems(confirmedAll);
    if (!options.flag("--no-row-by-row")) {
        timer.restart();
        kb::OneDeliveryItems one(db, options.date, confirmedAll);
        size_t lines = 0;
        for (const kb::DeliveryItems& d : run.deliveries())
            lines += one.find(d.delivery).lines.size();
        std::printf("one delivery at a time, all confirmed: %zu item lines in %.1f ms\n", lines,
                    timer.nsecsElapsed() / 1e6);
    }

    timer.restart();
    {
        kb::TransactionGuard transaction(db);
        kb::MealCrdtWriter writer(db, kb::RunStatements::dayCode(options.date));
        qint64 delivId = 1;
        for (const kb::DeliveryItems& d : run.deliveries())
            writer.MoveToMealCrdts(d, delivId++);
        writer.flush();
        std::printf("MoveToMealCrdts, all confirmed: %lld rows in %.1f ms (rolled back)\n",
                    static_cast<long long>(writer.rowsWritten()), timer.nsecsElapsed() / 1e6);
    }
    form.FormClose();
    return 0;
}
