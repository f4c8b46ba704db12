#include "RouteTestSupport.h"

#include "RoutingError.h"
#include "TsplibReader.h"

#include <gtest/gtest.h>

using namespace kb::routes;

namespace {

QString errorOf(const QString& text)
{
    try {
        TsplibReader::parse(text, QStringLiteral("test.tsp"));
    } catch (const RoutingError& e) {
        return QString::fromStdString(e.what());
    }
    return {};
}

} // namespace

TEST(TsplibReader, ReadsHeaderCoordinatesAndFixedEdges)
{
    const TsplibInstance t =
        TsplibReader::parse(QStringLiteral("NAME: tiny\nTYPE : TSP\nDIMENSION:3\n"
                                           "EDGE_WEIGHT_TYPE : EUC_2D\nFIXED_EDGES_SECTION\n1 3\n-1\n"
                                           "NODE_COORD_SECTION\n1 0 0\n2 3.0e+00 4\n3 -1 2.5\n"),
                            QStringLiteral("tiny.tsp"));
    EXPECT_EQ(t.name, QStringLiteral("tiny"));
    ASSERT_EQ(t.points.size(), 3u);
    EXPECT_DOUBLE_EQ(t.points[1].x, 3.0);
    EXPECT_DOUBLE_EQ(t.points[2].y, 2.5);
    EXPECT_EQ(t.fixedEdges, (std::vector<std::pair<int, int>>{{0, 2}}));
}

TEST(TsplibReader, ReadsTheSharedFiles)
{
    const TsplibInstance t =
        TsplibReader::readFile(kb::routes::testing::tsplibDir() + QStringLiteral("/pr1002.tsp"));
    EXPECT_EQ(t.points.size(), 1002u);
}

TEST(TsplibReader, MalformedFilesAreClearErrors)
{
    const QString head =
        QStringLiteral("NAME: x\nTYPE: TSP\nDIMENSION: 2\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n");
    EXPECT_EQ(errorOf(head + "1 0 0\n2 1\n"),
              QStringLiteral("test.tsp, line 7: A node line needs a number and two coordinates."));
    EXPECT_EQ(errorOf(head + "1 0 0\n"),
              QStringLiteral("test.tsp: DIMENSION is 2 but 1 node coordinates were given."));
    EXPECT_EQ(errorOf(head + "1 0 0\n3 1 1\n"),
              QStringLiteral("test.tsp, line 7: Node 3 is outside 1 to 2."));
    EXPECT_EQ(errorOf(head + "1 0 0\n1 1 1\n"), QStringLiteral("test.tsp, line 7: Node 1 is given twice."));
    EXPECT_EQ(errorOf(head + "1 0 zero\n2 1 1\n"),
              QStringLiteral("test.tsp, line 6: \"zero\" is not a number."));
    EXPECT_EQ(
        errorOf(QStringLiteral("NAME: x\nDIMENSION: 2\nEDGE_WEIGHT_TYPE: GEO\nNODE_COORD_SECTION\n1 0 0\n")),
        QStringLiteral("test.tsp, line 4: Only EDGE_WEIGHT_TYPE EUC_2D is read, not \"GEO\"."));
    EXPECT_EQ(errorOf(QStringLiteral("hello world\n")),
              QStringLiteral("test.tsp, line 1: \"hello world\" is not a header line or a known section."));
    EXPECT_EQ(errorOf(QString()), QStringLiteral("test.tsp: The file has no DIMENSION."));
    EXPECT_THROW(TsplibReader::readFile(QStringLiteral("/no/such/file.tsp")), RoutingError);
}

TEST(TsplibReader, WhatAFileDeclaresIsBoundedAndSaidOnce)
{
    const QString tail = QStringLiteral("EDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n1 0 0\n2 1 1\n");
    EXPECT_EQ(errorOf(QStringLiteral("DIMENSION: 2\n") + tail + QStringLiteral("DIMENSION: 2\n")),
              QStringLiteral("test.tsp, line 6: DIMENSION is given twice."));
    EXPECT_EQ(errorOf(QStringLiteral("DIMENSION: 2\nDIMENSION: 3\n") + tail),
              QStringLiteral("test.tsp, line 2: DIMENSION is given twice."));
    EXPECT_EQ(errorOf(QStringLiteral("TYPE: TSP\nTYPE: TSP\nDIMENSION: 2\n") + tail),
              QStringLiteral("test.tsp, line 2: TYPE is given twice."));
    EXPECT_EQ(errorOf(QStringLiteral("DIMENSION: 2000000000\n") + tail),
              QStringLiteral("test.tsp, line 1: DIMENSION 2000000000 is more than the 5000 stops that can be ordered."));
    EXPECT_EQ(errorOf(QStringLiteral("DIMENSION: 99999999999\n") + tail),
              QStringLiteral("test.tsp, line 1: \"99999999999\" is not a whole number."));
    EXPECT_EQ(errorOf(QStringLiteral("DIMENSION: 4000\n") + tail),
              QStringLiteral("test.tsp, line 1: DIMENSION is 4000 but the file has only 5 more lines."));
    EXPECT_EQ(errorOf(QStringLiteral("DIMENSION: 2\n") + tail + QStringLiteral("NODE_COORD_SECTION\n")),
              QStringLiteral("test.tsp, line 6: NODE_COORD_SECTION is given twice."));
    // Comments may come as often as the file likes.
    EXPECT_EQ(errorOf(QStringLiteral("COMMENT: a\nCOMMENT: b\nDIMENSION: 2\n") + tail), QString());
    EXPECT_EQ(errorOf(QString(int(TsplibReader::MaxFileBytes) + 1, u' ')),
              QStringLiteral("test.tsp: The text is longer than a map of 5000 stops needs."));
}
