// Stop ordering against proven optima: every TSPLIB instance of the shared
// collection (optima.csv), plus small routes cut from them whose optimum is
// found by trying every order. Prints each instance's gap to the optimum,
// the gap the 1-tree bound admits, and the time, then the mean and worst gap
// and the slowest time per size class. Run on an idle core for timing.
//
// usage: order_stops_bench [TSPLIB_DIR]

#include "DistanceMatrix.h"
#include "StopOrderer.h"
#include "TsplibReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <map>
#include <numeric>
#include <string>
#include <vector>

using namespace kb::routes;

namespace {

struct Case
{
    std::string name;
    std::vector<PlanePoint> points;
    OrderOptions options;
    std::int64_t optimum = 0;
};

struct Outcome
{
    std::string name;
    int stops = 0;
    double gap = 0.0;
    double boundGap = 0.0;
    double constructionGap = 0.0;
    double ms = 0.0;
};

QString findDirectory(int argc, char** argv)
{
    QStringList candidates;
    if (argc > 1) candidates << QString::fromLocal8Bit(argv[1]);
    candidates << QStringLiteral("../shared/tsplib") << QStringLiteral("../../shared/tsplib")
               << QStringLiteral("../../../shared/tsplib") << QStringLiteral("/work/shared/tsplib");
    for (const QString& c : candidates)
        if (QFileInfo::exists(c + QStringLiteral("/optima.csv"))) return c;
    throw std::runtime_error("No TSPLIB directory with optima.csv found; give it as the first argument.");
}

std::map<QString, std::int64_t> readOptima(const QString& dir)
{
    QFile file(dir + QStringLiteral("/optima.csv"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) throw std::runtime_error("Cannot open optima.csv");
    std::map<QString, std::int64_t> optima;
    QTextStream in(&file);
    in.readLine();
    while (!in.atEnd()) {
        const QStringList fields = in.readLine().trimmed().split(QLatin1Char(','));
        if (fields.size() >= 3) optima[fields[0]] = fields[2].toLongLong();
    }
    return optima;
}

// The best round trip through a handful of points by trying every order.
std::int64_t bruteForce(const DistanceMatrix& d)
{
    std::vector<int> rest(std::size_t(d.size() - 1));
    std::iota(rest.begin(), rest.end(), 1);
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    do {
        std::int64_t sum = d.at(0, rest.front()) + d.at(rest.back(), 0);
        for (std::size_t k = 1; k < rest.size(); ++k)
            sum += d.at(rest[k - 1], rest[k]);
        best = std::min(best, sum);
    } while (std::next_permutation(rest.begin(), rest.end()));
    return best;
}

std::vector<Case> loadCases(const QString& dir)
{
    const auto optima = readOptima(dir);
    std::vector<Case> cases;
    for (const auto& [name, optimum] : optima) {
        const QString path = dir + QLatin1Char('/') + name + QStringLiteral(".tsp");
        if (!QFileInfo::exists(path)) continue;
        const TsplibInstance instance = TsplibReader::readFile(path);
        Case c;
        c.name = name.toStdString();
        c.points = instance.points;
        c.optimum = optimum;
        if (instance.fixedEdges.size() == 1) {
            // One fixed edge: its optimum is that of the open route between
            // the edge's two ends, so put them first and last and fix both.
            const auto [a, b] = instance.fixedEdges.front();
            std::vector<PlanePoint> reordered{instance.points[a]};
            for (int i = 0; i < int(instance.points.size()); ++i)
                if (i != a && i != b) reordered.push_back(instance.points[i]);
            reordered.push_back(instance.points[b]);
            c.points = reordered;
            c.options.shape = RouteShape::OpenPath;
            c.options.fixFirst = true;
            c.options.fixLast = true;
            c.name += " (open, ends fixed)";
        }
        cases.push_back(std::move(c));
    }
    // Small routes: the first few nodes of some instances.
    for (const char* source : {"berlin52", "eil51", "st70", "kroA100", "pr76"}) {
        const TsplibInstance instance =
            TsplibReader::readFile(dir + QLatin1Char('/') + QLatin1String(source) + QStringLiteral(".tsp"));
        for (int k = 5; k <= 10; ++k) {
            Case c;
            c.name = std::string(source) + "[1-" + std::to_string(k) + "]";
            c.points.assign(instance.points.begin(), instance.points.begin() + k);
            c.optimum = bruteForce(DistanceMatrix::fromPlanePoints(c.points));
            cases.push_back(std::move(c));
        }
    }
    std::stable_sort(cases.begin(), cases.end(),
                     [](const Case& a, const Case& b) { return a.points.size() < b.points.size(); });
    return cases;
}

int sizeClass(int stops)
{
    if (stops <= 10) return 0;
    if (stops <= 76) return 1;
    if (stops <= 200) return 2;
    return 3;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const QString dir = findDirectory(argc, argv);
        const auto cases = loadCases(dir);
        std::printf("%-32s %6s %10s %10s %8s %8s %8s %9s\n", "instance", "stops", "length", "optimum", "gap%",
                    "bound%", "fi%", "ms");
        std::vector<Outcome> outcomes;
        for (const Case& c : cases) {
            const auto started = std::chrono::steady_clock::now();
            const DistanceMatrix distances = DistanceMatrix::fromPlanePoints(c.points);
            const OrderResult result = StopOrderer(c.options).order(distances);
            const double ms =
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
            Outcome o;
            o.name = c.name;
            o.stops = int(c.points.size());
            o.gap = 100.0 * double(result.length - c.optimum) / double(c.optimum);
            o.boundGap = 100.0 * double(c.optimum - result.lowerBound) / double(c.optimum);
            o.constructionGap = 100.0 * double(result.constructionLength - c.optimum) / double(c.optimum);
            o.ms = ms;
            std::printf("%-32s %6d %10lld %10lld %8.3f %8.3f %8.2f %9.2f\n", o.name.c_str(), o.stops,
                        (long long)result.length, (long long)c.optimum, o.gap, o.boundGap, o.constructionGap,
                        ms);
            std::fflush(stdout);
            outcomes.push_back(o);
        }
        const char* labels[] = {"<= 10", "11-76", "77-200", "201-1084"};
        std::printf("\n%-10s %6s %10s %10s %12s %12s\n", "stops", "count", "mean gap%", "worst gap%",
                    "mean bound%", "max ms");
        for (int k = 0; k < 4; ++k) {
            int count = 0;
            double sum = 0.0, worst = 0.0, boundSum = 0.0, slowest = 0.0;
            for (const Outcome& o : outcomes) {
                if (sizeClass(o.stops) != k) continue;
                ++count;
                sum += o.gap;
                boundSum += o.boundGap;
                worst = std::max(worst, o.gap);
                slowest = std::max(slowest, o.ms);
            }
            if (count > 0)
                std::printf("%-10s %6d %10.3f %10.3f %12.3f %12.2f\n", labels[k], count, sum / count, worst,
                            boundSum / count, slowest);
        }
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 1;
    }
}
