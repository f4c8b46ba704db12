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

int orderStops(kb::app::CommandContext& c)
{
    QString file;
    OrderOptions options;
    const QStringList& args = c.args;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--tsplib")) {
            if (++i >= args.size()) throw std::runtime_error("--tsplib needs a file name.");
            file = args[i];
        } else if (a == QLatin1String("--open")) {
            options.shape = RouteShape::OpenPath;
        } else if (a == QLatin1String("--fix-first")) {
            options.fixFirst = true;
        } else if (a == QLatin1String("--fix-last")) {
            options.fixLast = true;
        } else if (a == QLatin1String("--time-limit-ms")) {
            if (++i >= args.size())
                throw std::runtime_error("--time-limit-ms needs a number of milliseconds.");
            bool ok = false;
            const int ms = args[i].toInt(&ok);
            if (!ok || ms <= 0)
                throw std::runtime_error(
                    QStringLiteral("--time-limit-ms needs a positive whole number, not \"%1\".")
                        .arg(args[i])
                        .toStdString());
            options.timeLimit = std::chrono::milliseconds(ms);
        } else {
            throw std::runtime_error(
                QStringLiteral("Unknown argument \"%1\" for order-stops.").arg(a).toStdString());
        }
    }
    if (file.isEmpty()) throw std::runtime_error("order-stops needs --tsplib FILE.");

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

static kb::app::CommandRegistration reg{
    "order-stops", "order-stops --tsplib FILE [--open] [--fix-first] [--fix-last] [--time-limit-ms N]",
    orderStops};

} // namespace
