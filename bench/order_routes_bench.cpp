// order_routes_bench [--clients N | --data DIR | --server ADDRESS] [--no-apply]:
// orders every route of an agency as "Optimise" on the Order Stops within
// Routes screen does, and writes each new order back, timing each step. The
// data is a demo agency generated on SQLite in a temporary directory (or on
// the server in a schema of its own, dropped first), or an existing data
// directory, which --no-apply leaves untouched. Prints the total time and the
// mean gain over the stored order.

#include "BenchDemo.h"
#include "RouteOptimisation.h"
#include "session/DataDirectory.h"
#include "session/SessionState.h"
#include "store/PostgresStore.h"
#include "TFormOrderRoutes.h"
#include "UserInterface.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

namespace {

// Answers Yes to the write-back and counts the rest.
class BenchUserInterface final : public kb::UserInterface
{
public:
    int errors = 0;
    void information(const QString&) override {}
    void warning(const QString&) override {}
    void error(const QString& text) override
    {
        ++errors;
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
    kb::Answer question(const QString&, kb::Buttons) override { return kb::Answer::No; }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const BenchOptions options = BenchOptions::read(app.arguments().mid(1), {});
    const bool apply = !options.flag("--no-apply");
    kb::FixedClock clock(QDateTime(QDate(2024, 3, 6), QTime(10, 30)));
    QTemporaryDir temp;
    QElapsedTimer timer;
    timer.start();
    const BenchSchema schema(options, QStringLiteral("kb_order_routes_bench"));
    const auto db = openBenchData(options, temp, clock, schema.name);
    if (options.dataDir.isEmpty())
        std::printf("demo agency of %d clients made in %lld ms (%s)\n", options.clients,
                    static_cast<long long>(timer.elapsed()), options.server.isEmpty() ? "sqlite" : "postgresql");

    kb::SessionState session;
    session.userFullName = QStringLiteral("Bench");
    session.cAppDataFolder = temp.path() + QLatin1Char('/');
    BenchUserInterface ui;
    kb::TFormOrderRoutes form(*db, session, ui);

    double retrieveMs = 0, optimiseMs = 0, writeMs = 0, gainSum = 0, gapSum = 0;
    qint64 before = 0, after = 0;
    int routes = 0, clients = 0, withoutCoordinates = 0, proven = 0, longer = 0, ordered = 0;
    QElapsedTimer step;
    QElapsedTimer total;
    total.start();
    for (const QString& entry : form.routeEntries()) {
        form.setRouteEntry(entry);
        step.start();
        form.ActionRetrieve();
        retrieveMs += step.nsecsElapsed() / 1e6;
        step.start();
        const kb::RouteOptimisation result = kb::RouteOptimiser::optimise(form.rows(), form.retrievedRoute());
        optimiseMs += step.nsecsElapsed() / 1e6;
        ++routes;
        clients += form.rows().count();
        withoutCoordinates += int(result.withoutCoordinates.size());
        if (result.placed < 2)
            continue;
        ++ordered;
        before += result.previousLength;
        after += result.length;
        longer += result.length > result.previousLength ? 1 : 0;
        proven += result.provenOptimal ? 1 : 0;
        gainSum += 100.0 * double(result.previousLength - result.length) / double(result.previousLength);
        gapSum += result.gapPercent();
        if (apply && !result.newStops.empty()) {
            step.start();
            form.rows().setStops(result.newStops);
            form.applyChanges();
            writeMs += step.nsecsElapsed() / 1e6;
        }
    }
    const double totalMs = total.nsecsElapsed() / 1e6;
    std::printf("ordered %d of %d routes, %d clients (%d without coordinates)\n", ordered, routes, clients,
                withoutCoordinates);
    std::printf("  total %.0f ms: retrieve %.0f ms, optimise %.0f ms, write back %.0f ms%s\n", totalMs, retrieveMs,
                optimiseMs, writeMs, apply ? "" : " (not written)");
    std::printf("  length of all routes: stored order %.1f km, new order %.1f km\n", before / 1000.0, after / 1000.0);
    std::printf("  mean gain over the stored order: %.2f %% per route; mean gap to the lower bound %.2f %%\n",
                ordered ? gainSum / ordered : 0.0, ordered ? gapSum / ordered : 0.0);
    std::printf("  proven optimal: %d routes; longer than stored: %d routes; errors: %d\n", proven, longer, ui.errors);
    return longer == 0 && ui.errors == 0 ? 0 : 1;
}
