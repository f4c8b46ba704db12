// order-stops: orders the nodes of a TSPLIB EUC_2D file the way routes are
// ordered, for checking the optimiser from a shell or a script. Prints CSV:
// "length,lower_bound,ms", one row, then the line "tour" and the node
// numbers of the file in visiting order, one per line. Required pairs in a
// FIXED_EDGES_SECTION stay next to each other.

#include "CommandRegistry.h"

#include "DistanceMatrix.h"
#include "StopOrderer.h"
#include "TsplibReader.h"

#include <chrono>
#include <stdexcept>

namespace {

using namespace kb::routes;

int orderStops(kb::app::CommandContext& c, const kb::app::CommandArgs& args)
{
    OrderOptions options;
    const QString file = args.value(QStringLiteral("tsplib"));
    if (file.isEmpty()) throw kb::app::UsageError(QStringLiteral("order-stops needs --tsplib FILE."));
    if (args.isSet(QStringLiteral("open"))) options.shape = RouteShape::OpenPath;
    options.fixFirst = args.isSet(QStringLiteral("fix-first"));
    options.fixLast = args.isSet(QStringLiteral("fix-last"));
    if (args.isSet(QStringLiteral("time-limit-ms")))
        options.timeLimit = std::chrono::milliseconds(
            args.integer(QStringLiteral("time-limit-ms"), 1, 24 * 3600 * 1000, 0));

    const TsplibInstance instance = TsplibReader::readFile(file);
    const auto started = std::chrono::steady_clock::now();
    const DistanceMatrix distances = DistanceMatrix::fromPlanePoints(instance.points);
    const OrderResult result = StopOrderer(options).order(distances, instance.fixedEdges);
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();

    c.out << "length,lower_bound,ms\n";
    c.out << result.length << ',' << result.lowerBound << ',' << QString::number(ms, 'f', 2) << '\n';
    c.out << "tour\n";
    for (int node : result.order)
        c.out << node + 1 << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("order-stops"),
     .description = QStringLiteral("Orders the nodes of a TSPLIB EUC_2D file the way routes are ordered; prints the "
                                   "length, the lower bound and the time, then the tour."),
     .options = {QCommandLineOption(QStringLiteral("tsplib"), QStringLiteral("The TSPLIB file."), QStringLiteral("FILE")),
                 QCommandLineOption(QStringLiteral("open"), QStringLiteral("An open route: no way back to the start.")),
                 QCommandLineOption(QStringLiteral("fix-first"), QStringLiteral("The first node stays first.")),
                 QCommandLineOption(QStringLiteral("fix-last"), QStringLiteral("The last node stays last.")),
                 QCommandLineOption(QStringLiteral("time-limit-ms"), QStringLiteral("Stop searching after N ms."),
                                    QStringLiteral("N"))}},
    orderStops);

} // namespace
