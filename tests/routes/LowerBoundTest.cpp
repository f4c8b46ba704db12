#include "RouteTestSupport.h"

#include "DistanceMatrix.h"
#include "StopOrderer.h"
#include "TsplibReader.h"

#include <gtest/gtest.h>

#include <map>

using namespace kb::routes;
using namespace kb::routes::testing;

// Proven optimal round-trip lengths of the shared benchmark maps.
TEST(LowerBound, NeverAboveTheFoundLengthNorTheOptimum)
{
    const std::map<QString, std::int64_t> optima{{QStringLiteral("eil51"), 426},
                                                 {QStringLiteral("berlin52"), 7542},
                                                 {QStringLiteral("st70"), 675},
                                                 {QStringLiteral("kroA100"), 21282},
                                                 {QStringLiteral("ch130"), 6110}};
    for (const auto& [name, optimum] : optima) {
        const TsplibInstance instance =
            TsplibReader::readFile(tsplibDir() + QLatin1Char('/') + name + ".tsp");
        const DistanceMatrix d = DistanceMatrix::fromPlanePoints(instance.points);
        const OrderResult r = StopOrderer().order(d);
        EXPECT_LE(r.lowerBound, optimum) << name.toStdString();
        EXPECT_LE(r.lowerBound, r.length) << name.toStdString();
        EXPECT_GE(r.length, optimum) << name.toStdString();
        // A useful bound, not merely a valid one.
        EXPECT_GT(double(r.lowerBound), 0.95 * double(optimum)) << name.toStdString();
        EXPECT_TRUE(isPermutation(r.order, d.size()));
    }
}

TEST(LowerBound, HoldsForOpenRoutesWithFixedEnds)
{
    const TsplibInstance instance = TsplibReader::readFile(tsplibDir() + QStringLiteral("/eil76.tsp"));
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(instance.points);
    OrderOptions o;
    o.shape = RouteShape::OpenPath;
    o.fixFirst = true;
    o.fixLast = true;
    const OrderResult r = StopOrderer(o).order(d);
    EXPECT_EQ(r.order.front(), 0);
    EXPECT_EQ(r.order.back(), d.size() - 1);
    EXPECT_LE(r.lowerBound, r.length);
    EXPECT_GT(double(r.lowerBound), 0.9 * double(r.length));
}
