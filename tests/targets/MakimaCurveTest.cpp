#include "targets/MakimaCurve.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

namespace
{
constexpr std::array knots { 320.0, 640.0, 1000.0, 2000.0, 3000.0, 4000.0, 6000.0, 10000.0, 15000.0, 18000.0, 20000.0 };
constexpr std::array values { 1.0, -2.0, 3.0, 3.5, -1.0, 0.5, 2.0, -4.0, 1.0, 2.5, 2.5 };

double derivative (const MakimaCurve::Cubic& cubic, double x)
{
    return (3.0 * cubic.a * x + 2.0 * cubic.b) * x + cubic.c;
}

TEST (MakimaCurveTest, passesThroughItsKnotsWithOneSlopeOnBothSides)
{
    const MakimaCurve curve (knots, values);
    ASSERT_EQ (curve.segmentCount(), knots.size() - 1);
    ASSERT_TRUE (curve.isDefined());

    for (std::size_t i = 0; i < curve.segmentCount(); ++i)
    {
        EXPECT_NEAR (curve.segment (i).at (knots[i]), values[i], 1e-8) << i;
        EXPECT_NEAR (curve.segment (i).at (knots[i + 1]), values[i + 1], 1e-8) << i;
        EXPECT_NEAR (derivative (curve.segment (i), knots[i]), curve.knotSlopes()[i], 1e-11) << i;
        EXPECT_NEAR (derivative (curve.segment (i), knots[i + 1]), curve.knotSlopes()[i + 1], 1e-11) << i;
    }
}

TEST (MakimaCurveTest, slopesWeighTheNeighbouringSecantsByTheOtherSidesChange)
{
    const std::array x { 0.0, 1.0, 2.0, 3.0, 4.0 };
    const std::array y { 0.0, 1.0, 3.0, 4.0, 8.0 };
    const MakimaCurve curve (x, y);

    // Secants 1, 2, 1, 4. At the middle knot: w1 = |4 - 1| + 5 / 2, w2 = |2 - 1| + 3 / 2.
    EXPECT_NEAR (curve.knotSlopes()[2], (5.5 * 2.0 + 2.5 * 1.0) / 8.0, 1e-12);
    // At the first, the secants go on as 0 and -1 before it: w1 = 1 + 3 / 2, w2 = 1 + 1 / 2.
    EXPECT_NEAR (curve.knotSlopes()[0], (2.5 * 0.0 + 1.5 * 1.0) / 4.0, 1e-12);
    // At the last, as 7 and 10 behind it: w1 = 3 + 17 / 2, w2 = 3 + 5 / 2.
    EXPECT_NEAR (curve.knotSlopes()[4], (11.5 * 4.0 + 5.5 * 7.0) / 17.0, 1e-12);
}

TEST (MakimaCurveTest, aLineStaysALineBeyondItsEnds)
{
    std::vector<double> line;

    for (const auto x : knots)
        line.push_back (0.25 * x - 3.0);

    const MakimaCurve curve (knots, line);
    EXPECT_NEAR (curve.segment (curve.segmentCount() - 1).at (25000.0), 0.25 * 25000.0 - 3.0, 1e-6);
    EXPECT_NEAR (curve.segment (4).at (3500.0), 0.25 * 3500.0 - 3.0, 1e-6);
}

TEST (MakimaCurveTest, aFlatStretchIsUndefinedWhereBothWeightsVanish)
{
    const std::array y { 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 1.0, 2.0, 5.0 };
    const MakimaCurve curve (knots, y);
    EXPECT_FALSE (curve.isDefined());
    EXPECT_FALSE (curve.segment (0).isDefined());
    EXPECT_TRUE (curve.segment (9).isDefined());
    EXPECT_TRUE (std::isnan (curve.segment (0).at (400.0)));
}

TEST (MakimaCurveTest, hasNoSegmentsWithFewerThanThreeKnots)
{
    const std::array x { 1.0, 2.0 };
    EXPECT_EQ (MakimaCurve (x, x).segmentCount(), 0u);
    EXPECT_EQ (MakimaCurve ({}, {}).segmentCount(), 0u);
}

TEST (MakimaCurveTest, twoKnotsInOnePlaceLeaveTheirSegmentUndefined)
{
    const std::array x { 1.0, 2.0, 2.0, 3.0 };
    const std::array y { 0.0, 1.0, 2.0, 5.0 };
    EXPECT_FALSE (MakimaCurve (x, y).segment (1).isDefined());
}
} // namespace
