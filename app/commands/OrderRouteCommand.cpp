// kettlebrook --user NAME order-route ROUTE [--day MON..SUN] [--fix-first]
// [--fix-last] [--apply] [--episodic]: orders the clients of one route by the
// drive between their coordinates, as "Optimise" on the Order Stops within
// Routes screen does. Prints the route's summary (the new length, the length
// of the order as it stands, the lower bound and the gap), an empty line,
// then every client in the new order with the old and the new stop. Clients
// without coordinates are listed on the error stream and keep their place.
// With --apply the new stops are written in one transaction: to the default
// route's columns, or the weekday's with --day, and with --episodic to the
// clients' future dated deliveries too.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "OrderRoutesStatements.h"
#include "RouteOptimisation.h"
#include "TFormOrderRoutes.h"

#include <QLocale>

#include <map>

namespace {

using namespace kb;

QString metres(std::int64_t m) { return QString::number(m); }

int orderRoute(app::CommandContext& context, const app::CommandArgs& args)
{
    const QString route = args.positional(0).trimmed();
    const QString day = args.choice(QStringLiteral("day"), {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"}, QString());
    const bool apply = args.isSet(QStringLiteral("apply"));

    app::CommandSession session(context);
    TFormOrderRoutes form(session.data().db(), session.data().session(), session.ui());
    if (!form.setRoute(route)) {
        context.err << "There is no route " << route << ".\n";
        session.close();
        return 1;
    }
    form.setDayIndex(OrderRoutesStatements::dayIndexOf(day));
    form.setIncludeEpisodics(args.isSet(QStringLiteral("episodic")));
    form.ActionRetrieve();

    RouteOptimiserOptions options;
    options.fixFirst = args.isSet(QStringLiteral("fix-first"));
    options.fixLast = args.isSet(QStringLiteral("fix-last"));
    const RouteOptimisation result = RouteOptimiser::optimise(form.rows(), form.retrievedRoute(), options);

    std::map<int, double> newStop(result.newStops.begin(), result.newStops.end());
    const OrderRoutesWorkingSet& rows = form.rows();
    std::vector<int> keys;
    for (int key = 0; key < rows.count(); ++key)
        keys.push_back(key);
    const auto stopAfter = [&](int key) {
        const auto it = newStop.find(key);
        return it == newStop.end() ? rows.row(key).stop : it->second;
    };
    std::stable_sort(keys.begin(), keys.end(), [&](int a, int b) {
        if (stopAfter(a) != stopAfter(b))
            return stopAfter(a) < stopAfter(b);
        return rows.row(a).clientId < rows.row(b).clientId;
    });

    bool applied = false;
    if (apply && !result.newStops.empty()) {
        form.rows().setStops(result.newStops);
        if (!form.applyChanges()) {
            session.close();
            return 1;
        }
        applied = true;
    }

    for (int key : result.withoutCoordinates) {
        const OrderRoutesRow& r = rows.row(key);
        context.err << "No coordinates, kept in place: " << r.clientId.trimmed() << ' ' << r.firstName.trimmed() << ' '
                    << r.lastName.trimmed() << ", " << r.address1.trimmed() << ", stop " << stopText(r.stop) << '\n';
    }
    const QLocale c = QLocale::c();
    context.out << "route,day,clients,with_coordinates,without_coordinates,previous_length_m,length_m,lower_bound_m,"
                   "gap_percent,proven_optimal,improved,applied,ms\n";
    context.out << csvField(result.route) << ',' << (day.isEmpty() ? QStringLiteral("DEF") : day) << ',' << rows.count()
                << ',' << result.placed << ',' << result.withoutCoordinates.size() << ','
                << metres(result.previousLength) << ',' << metres(result.length) << ',' << metres(result.lowerBound)
                << ',' << c.toString(result.gapPercent(), 'f', 2) << ','
                << (result.provenOptimal ? "true" : "false") << ',' << (result.improved ? "true" : "false") << ','
                << (applied ? "true" : "false") << ',' << c.toString(result.elapsedMs, 'f', 1) << '\n';
    context.out << '\n';
    context.out << "person_id,client_id,name,address1,latitude,longitude,old_stop,new_stop\n";
    for (int key : keys) {
        const OrderRoutesRow& r = rows.row(key);
        const OrderRoutesRow& before = rows.original(key);
        context.out << r.personId << ',' << csvField(r.clientId.trimmed()) << ','
                    << csvField((r.firstName.trimmed() + QLatin1Char(' ') + r.lastName.trimmed()).trimmed()) << ','
                    << csvField(r.address1.trimmed()) << ',' << csvText(r.latitude) << ',' << csvText(r.longitude)
                    << ',' << csvText(before.stop) << ',' << csvText(stopAfter(key)) << '\n';
    }
    session.close();
    return 0;
}

const app::CommandRegistration registration(
    {.name = QStringLiteral("order-route"),
     .arguments = QStringLiteral("ROUTE"),
     .description = QStringLiteral(
         "Orders the clients of ROUTE by the drive between their coordinates and prints the new order with its "
         "length, the length of the order as it stands and the gap to the lower bound. Households stay together; "
         "clients without coordinates keep their place. --apply writes the new stops in one transaction."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("day"),
                                    QStringLiteral("Order the weekday's route then the default route, and write the "
                                                   "weekday's route and stop. The default route when not given."),
                                    QStringLiteral("MON..SUN")),
                 QCommandLineOption(QStringLiteral("fix-first"), QStringLiteral("The first stop stays first.")),
                 QCommandLineOption(QStringLiteral("fix-last"), QStringLiteral("The last stop stays last.")),
                 QCommandLineOption(QStringLiteral("apply"), QStringLiteral("Write the new stops.")),
                 QCommandLineOption(QStringLiteral("episodic"),
                                    QStringLiteral("With --apply, give the clients' future dated deliveries the same "
                                                   "route and stop."))},
     .needsUser = true},
    orderRoute);

} // namespace
