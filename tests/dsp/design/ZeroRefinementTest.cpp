#include "dsp/design/ZeroRefinement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace
{
using Zero = std::complex<double>;

// (x - 1)(x - 2)(x^2 + 2x + 5), with the zeros 1, 2 and -1 +- 2i.
const std::vector<double> polynomial { 1.0, -1.0, 1.0, -11.0, 10.0 };

bool holds (const std::vector<Zero>& zeros, Zero wanted)
{
    return std::any_of (
        zeros.begin(), zeros.end(), [&] (const Zero& zero) { return std::abs (zero - wanted) < 1e-10; });
}

void expectAllFour (const std::vector<Zero>& zeros)
{
    for (const auto& zero : { Zero { 1.0 }, Zero { 2.0 }, Zero { -1.0, 2.0 }, Zero { -1.0, -2.0 } })
        EXPECT_TRUE (holds (zeros, zero)) << zero;
}

TEST (ZeroRefinementTest, improvesAZeroToTheLastPlaces)
{
    const ZeroRefinement refinement (polynomial);
    EXPECT_NEAR (std::abs (refinement.improve (1.02, {}, false) - 1.0), 0.0, 1e-14);
    EXPECT_NEAR (std::abs (refinement.improve ({ -1.1, 1.9 }, {}, true) - Zero { -1.0, 2.0 }), 0.0, 1e-14);
}

TEST (ZeroRefinementTest, doesNotFallBackToAKnownZero)
{
    const ZeroRefinement refinement (polynomial);
    const std::vector<Zero> known { 1.0, { -1.0, 2.0 }, { -1.0, -2.0 } };
    EXPECT_NEAR (std::abs (refinement.improve (1.1, known, false) - 2.0), 0.0, 1e-12);
}

TEST (ZeroRefinementTest, settlesFromPoorApproximations)
{
    std::vector<Zero> zeros { 0.5, 3.0, { -0.5, 1.0 }, { -0.5, -1.0 } };
    EXPECT_TRUE (ZeroRefinement (polynomial).settle (zeros));
    expectAllFour (zeros);
}

TEST (ZeroRefinementTest, sendsARepeatedZeroToTheOneThatIsMissing)
{
    std::vector<Zero> zeros { 1.0, 1.0, { -1.0, 2.0 }, { -1.0, -2.0 } };
    EXPECT_TRUE (ZeroRefinement (polynomial).settle (zeros));
    expectAllFour (zeros);
}

TEST (ZeroRefinementTest, leavesTheRealAxisWhereItMust)
{
    std::vector<Zero> zeros { 1.0, 2.0, -1.5, -0.5 };
    EXPECT_TRUE (ZeroRefinement (polynomial).settle (zeros));
    expectAllFour (zeros);
}

TEST (ZeroRefinementTest, comesBackFromBeyondOverflow)
{
    std::vector<double> longPolynomial (100, 0.0);
    longPolynomial.front() = 1.0;
    longPolynomial.back() = -1.0;
    std::vector<Zero> zeros (99, 1e10);

    for (std::size_t i = 0; i < zeros.size(); ++i)
        zeros[i] = std::polar (i == 0 ? 1e10 : 0.9, 0.1 + 0.063 * double (i));

    ASSERT_TRUE (ZeroRefinement (longPolynomial).settle (zeros));

    for (const auto& zero : zeros)
        EXPECT_NEAR (std::abs (zero), 1.0, 1e-12);
}

TEST (ZeroRefinementTest, acceptsTrueDoubleZeros)
{
    const std::vector<double> square { 1.0, -2.0, 1.0 };
    std::vector<Zero> zeros { 1.0, 1.0 };
    EXPECT_TRUE (ZeroRefinement (square).settle (zeros));
    EXPECT_EQ (zeros, (std::vector<Zero> { 1.0, 1.0 }));
}
} // namespace
