#include "dsp/design/PolynomialDeflation.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
std::vector<double> product (const std::vector<double>& a, const std::vector<double>& b)
{
    std::vector<double> result (a.size() + b.size() - 1);

    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t j = 0; j < b.size(); ++j)
            result[i + j] += a[i] * b[j];

    return result;
}

const std::vector<double> quotient { 1.0, -0.5, 2.0, 3.0, -1.0, 0.25 };

void expectQuotient (std::span<const double> actual)
{
    ASSERT_EQ (actual.size(), quotient.size());

    for (std::size_t i = 0; i < quotient.size(); ++i)
        EXPECT_NEAR (actual[i], quotient[i], 1e-12) << i;
}

TEST (PolynomialDeflationTest, dividesARealZeroOutWhateverItsSize)
{
    for (const auto zero : { 0.0, 1e-3, -0.4, 1.0, 7.0, -1e3 })
    {
        SCOPED_TRACE (zero);
        auto polynomial = product (quotient, { 1.0, -zero });
        expectQuotient (divideOut (polynomial, zero));
    }
}

TEST (PolynomialDeflationTest, dividesAPairOfZerosOutWhateverTheirSize)
{
    for (const auto modulus : { 1e-3, 0.5, 1.0, 6.0, 1e3 })
    {
        SCOPED_TRACE (modulus);
        const auto u = -0.8 * modulus, v = modulus * modulus;
        auto polynomial = product (quotient, { 1.0, u, v });
        expectQuotient (divideOut (polynomial, u, v));
    }
}

TEST (PolynomialDeflationTest, leavesAConstantOfTheSmallestDegrees)
{
    std::vector<double> line { 1.0, -3.0 };
    EXPECT_EQ (divideOut (line, 3.0).size(), 1u);
    EXPECT_EQ (line[0], 1.0);

    std::vector<double> parabola { 1.0, 2.0, 5.0 };
    EXPECT_EQ (divideOut (parabola, 2.0, 5.0).size(), 1u);
    EXPECT_EQ (parabola[0], 1.0);
}
} // namespace
