#include "RouteTestSupport.h"

#include "DistanceMatrix.h"
#include "Households.h"
#include "RoutingError.h"
#include "StopOrderer.h"

#include <gtest/gtest.h>

using namespace kb::routes;
using namespace kb::routes::testing;

namespace {

std::vector<OrderOptions> allShapes()
{
    std::vector<OrderOptions> result;
    for (RouteShape shape : {RouteShape::ClosedTour, RouteShape::OpenPath})
        for (int ends = 0; ends < 4; ++ends) {
            OrderOptions o;
            o.shape = shape;
            o.fixFirst = ends & 1;
            o.fixLast = ends & 2;
            result.push_back(o);
        }
    return result;
}

void expectValidOrder(const OrderResult& r, const DistanceMatrix& d, const OrderOptions& o)
{
    const int n = d.size();
    ASSERT_TRUE(isPermutation(r.order, n));
    if (o.fixFirst) {
        EXPECT_EQ(r.order.front(), 0);
    }
    if (o.fixLast) {
        EXPECT_EQ(r.order.back(), n - 1);
    }
    EXPECT_EQ(r.length, d.length(r.order, o.shape == RouteShape::ClosedTour));
    EXPECT_LE(r.lowerBound, r.length);
    EXPECT_LE(r.length, r.constructionLength);
}

} // namespace

TEST(StopOrderer, AgreesWithTryingEveryOrderUpToNineStops)
{
    std::uint64_t seed = 1;
    for (int n = 1; n <= 9; ++n)
        for (int instance = 0; instance < 3; ++instance) {
            const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(n, seed++));
            for (const OrderOptions& o : allShapes()) {
                const OrderResult r = StopOrderer(o).order(d);
                expectValidOrder(r, d, o);
                EXPECT_EQ(r.length, bruteForceLength(d, o))
                    << "n=" << n << " open=" << int(o.shape) << " first=" << o.fixFirst
                    << " last=" << o.fixLast;
                EXPECT_EQ(r.lowerBound, r.length);
                EXPECT_TRUE(r.provenOptimal);
            }
        }
}

TEST(StopOrderer, AgreesWithTryingEveryOrderWhenHouseholdsStayTogether)
{
    const std::vector<double> stops{1, 2.1, 2.2, 3, 4.1, 4.2, 4.3, 5, 6};
    const auto links = Households::links(stops);
    for (std::uint64_t seed = 100; seed < 104; ++seed) {
        const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(int(stops.size()), seed));
        for (const OrderOptions& o : allShapes()) {
            const OrderResult r = StopOrderer(o).order(d, links);
            expectValidOrder(r, d, o);
            EXPECT_TRUE(keepsLinks(r.order, links, o.shape == RouteShape::ClosedTour));
            EXPECT_EQ(r.length, bruteForceLength(d, o, links));
        }
    }
}

TEST(StopOrderer, KeepsHouseholdsTogetherOnLargeRoutes)
{
    // Households whose members live far apart, so the shortest route alone would split them.
    // Twenty households of three (1.1, 1.2, 1.3, 2.1, ...) among single stops.
    const int n = 120;
    std::vector<double> stops;
    for (int i = 0; i < n; ++i)
        stops.push_back(i < 60 ? double(i / 3 + 1) + 0.1 * (i % 3 + 1) : double(100 + i));
    const auto links = Households::links(stops);
    ASSERT_EQ(links.size(), 40u);
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(n, 7));
    for (const OrderOptions& o : allShapes()) {
        const OrderResult r = StopOrderer(o).order(d, links);
        expectValidOrder(r, d, o);
        EXPECT_TRUE(keepsLinks(r.order, links, o.shape == RouteShape::ClosedTour));
    }
}

TEST(StopOrderer, SameInputGivesSameOrder)
{
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(250, 42));
    OrderOptions o;
    o.shape = RouteShape::OpenPath;
    o.fixFirst = true;
    const OrderResult a = StopOrderer(o).order(d);
    const OrderResult b = StopOrderer(o).order(d);
    EXPECT_EQ(a.order, b.order);
    EXPECT_EQ(a.length, b.length);
    EXPECT_EQ(a.lowerBound, b.lowerBound);
}

TEST(StopOrderer, StopsAtOnePointDoNotTrapTheSearch)
{
    // Forty stops on five points: most links have length 0.
    std::vector<PlanePoint> points;
    for (int i = 0; i < 40; ++i)
        points.push_back({double((i % 5) * 100), double((i % 5) * 37 % 100)});
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(points);
    for (const OrderOptions& o : allShapes()) {
        const OrderResult r = StopOrderer(o).order(d);
        expectValidOrder(r, d, o);
    }
    // The best round trip visits each of the five points once.
    std::vector<PlanePoint> distinct(points.begin(), points.begin() + 5);
    const DistanceMatrix five = DistanceMatrix::fromPlanePoints(distinct);
    EXPECT_EQ(StopOrderer().order(d).length, bruteForceLength(five, OrderOptions{}));
}

TEST(StopOrderer, RealStopsUseGreatCircleMetres)
{
    // Four corners of a small square near 45 degrees north; the diagonal order is longer.
    const std::vector<GeoPoint> points{{45.0, -75.0}, {45.01, -74.99}, {45.0, -74.99}, {45.01, -75.0}};
    const DistanceMatrix d = DistanceMatrix::fromGeoPoints(points);
    EXPECT_NEAR(d.at(0, 2), 786, 2);  // 0.01 degree of longitude at 45 degrees north
    EXPECT_NEAR(d.at(0, 3), 1112, 2); // 0.01 degree of latitude
    const OrderResult r = StopOrderer().order(d);
    EXPECT_EQ(r.length, d.at(0, 2) + d.at(2, 1) + d.at(1, 3) + d.at(3, 0));
}

TEST(StopOrderer, EmptyRouteIsAClearError)
{
    try {
        StopOrderer().order(DistanceMatrix(0));
        FAIL() << "expected an error";
    } catch (const RoutingError& e) {
        EXPECT_STREQ(e.what(), "There are no stops to order.");
    }
}

TEST(StopOrderer, ImpossibleHouseholdLinksAreAClearError)
{
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(6, 3));
    EXPECT_THROW(StopOrderer().order(d, {{0, 1}, {0, 2}, {0, 3}}), RoutingError);
    EXPECT_THROW(StopOrderer().order(d, {{0, 1}, {1, 2}, {2, 0}}), RoutingError);
    EXPECT_THROW(StopOrderer().order(d, {{0, 9}}), RoutingError);
}

TEST(StopOrderer, SingleAndPairRoutes)
{
    const DistanceMatrix one = DistanceMatrix::fromPlanePoints({{0, 0}});
    EXPECT_EQ(StopOrderer().order(one).order, std::vector<int>{0});
    const DistanceMatrix two = DistanceMatrix::fromPlanePoints({{0, 0}, {3, 4}});
    OrderOptions o;
    o.shape = RouteShape::OpenPath;
    o.fixLast = true;
    const OrderResult r = StopOrderer(o).order(two);
    EXPECT_EQ(r.order, (std::vector<int>{0, 1}));
    EXPECT_EQ(r.length, 5);
}

TEST(Households, ChainStopsSharingAWholeNumber)
{
    const auto links = Households::links({4.2, 3, 4.1, 0, 0, -1, 5, 4, 10000});
    // 4 (index 7) < 4.1 (index 2) < 4.2 (index 0); unnumbered and special rows stay apart.
    EXPECT_EQ(links, (std::vector<std::pair<int, int>>{{7, 2}, {2, 0}}));
}

TEST(StopOrderer, AShortTimeLimitStillGivesAValidOrder)
{
    // The limit cuts the search short; the order must still be complete,
    // keep its fixed ends and be no longer than farthest insertion.
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(1500, 11, 100000));
    OrderOptions o;
    o.shape = RouteShape::OpenPath;
    o.fixFirst = true;
    o.fixLast = true;
    o.timeLimit = std::chrono::milliseconds(1);
    const OrderResult r = StopOrderer(o).order(d);
    expectValidOrder(r, d, o);
}

TEST(StopOrderer, RejectsAZeroTimeLimit)
{
    OrderOptions o;
    o.timeLimit = std::chrono::milliseconds(0);
    EXPECT_THROW(StopOrderer{o}, RoutingError);
}
