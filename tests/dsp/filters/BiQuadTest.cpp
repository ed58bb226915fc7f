#include "dsp/filters/BiQuad.h"

#include <gtest/gtest.h>

#include <array>
#include <type_traits>

namespace
{
template <typename T>
class BiQuadTest : public testing::Test
{
};

using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE (BiQuadTest, Precisions);

TYPED_TEST (BiQuadTest, passesItsInputUntilCoefficientsAreWritten)
{
    orvik::BiQuad<TypeParam> filter;

    for (const auto sample : { 0.5, -1.0, 0.25 })
        EXPECT_EQ (filter.process (static_cast<TypeParam> (sample)), static_cast<TypeParam> (sample));
}

// Dyadic coefficients and samples keep every step exact in both precisions.
TYPED_TEST (BiQuadTest, followsTheDifferenceEquationWrittenOut)
{
    orvik::BiQuad<TypeParam> filter;
    filter.a0 = TypeParam { 2 };
    filter.a1 = static_cast<TypeParam> (0.5);
    filter.a2 = static_cast<TypeParam> (-0.25);
    filter.b0 = static_cast<TypeParam> (1.5);
    filter.b1 = static_cast<TypeParam> (-0.75);
    filter.b2 = static_cast<TypeParam> (0.125);

    const std::array<double, 4> input { 1.0, -2.0, 0.5, 0.0 };
    std::array<double, 4> expected {};

    for (std::size_t n = 0; n < input.size(); ++n)
    {
        auto sum = 1.5 * input[n];

        if (n >= 1)
            sum += -0.75 * input[n - 1] - 0.5 * expected[n - 1];

        if (n >= 2)
            sum += 0.125 * input[n - 2] + 0.25 * expected[n - 2];

        expected[n] = sum / 2.0;
        EXPECT_EQ (filter.process (static_cast<TypeParam> (input[n])), static_cast<TypeParam> (expected[n])) << n;
    }

    EXPECT_EQ (filter.x1, static_cast<TypeParam> (input[3]));
    EXPECT_EQ (filter.x2, static_cast<TypeParam> (input[2]));
    EXPECT_EQ (filter.y1, static_cast<TypeParam> (expected[3]));
    EXPECT_EQ (filter.y2, static_cast<TypeParam> (expected[2]));
}

TYPED_TEST (BiQuadTest, keepsItsStateWhenCoefficientsChange)
{
    orvik::BiQuad<TypeParam> filter;
    filter.process (TypeParam { 1 });
    filter.b0 = TypeParam { 0 };
    filter.b1 = TypeParam { 1 };
    EXPECT_EQ (filter.process (TypeParam { 0 }), TypeParam { 1 });
}

TYPED_TEST (BiQuadTest, isPolymorphic)
{
    EXPECT_TRUE (std::has_virtual_destructor_v<orvik::BiQuad<TypeParam>>);
}
} // namespace
