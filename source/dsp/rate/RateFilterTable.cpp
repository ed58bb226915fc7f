#include "dsp/rate/RateFilterTable.h"

#include <cstddef>
#include <limits>

namespace
{
constexpr RateFilterSection<24> byFour {
    .numerator = { 1.559839810124e-05,   -8.78376274947596e-05, 0.000304698155070252, -0.000725228852936813,
                   0.00135296484847205,  -0.00201178137409065,  0.0025121339379174,   -0.00262226523246617,
                   0.0023800086656854,   -0.00184242856018878,  0.00131049805998473,  -0.000872802327018871,
                   0.000752078627875284, -0.000872802327018813, 0.00131049805998464,  -0.00184242856018868,
                   0.00238000866568531,  -0.00262226523246611,  0.00251213393791737,  -0.00201178137409064,
                   0.00135296484847205,  -0.000725228852936812, 0.000304698155070252, -8.78376274947598e-05,
                   1.55983981012401e-05 },
    .denominator = { 1.0,
                     -11.8889371029411,
                     69.7606645829057,
                     -267.653018533607,
                     751.475867876932,
                     -1639.25157068037,
                     2881.28209299407,
                     -4179.23758891396,
                     5084.34158162384,
                     -5246.38425827155,
                     4626.59531892711,
                     -3503.60228308729,
                     2283.97166434986,
                     -1282.21673961592,
                     618.914147621569,
                     -255.912865097607,
                     90.0978688763092,
                     -26.7681738860845,
                     6.62678451871623,
                     -1.34276588166652,
                     0.217039753514179,
                     -0.0269244340614516,
                     0.00240800834474157,
                     -0.000138262355214535,
                     3.82905632653967e-06 },
};

constexpr RateFilterSection<16> byEight {
    .numerator = { 2.50270067267876e-06,
                   -2.44750478618008e-05,
                   0.000114978836054864,
                   -0.000344273580650449,
                   0.000738503846805855,
                   -0.00121729496615987,
                   0.00163162962993575,
                   -0.00188014503064061,
                   0.0019571499523557,
                   -0.00188014503064061,
                   0.00163162962993575,
                   -0.00121729496615987,
                   0.000738503846805856,
                   -0.00034427358065045,
                   0.000114978836054864,
                   -2.44750478618009e-05,
                   2.50270067267877e-06 },
    .denominator = { 1.0,
                     -12.9077370543987,
                     78.3547984649345,
                     -296.88438164081,
                     785.757906296049,
                     -1540.16885772457,
                     2312.48995214843,
                     -2712.74401616989,
                     2512.48630619991,
                     -1843.19070474525,
                     1067.40216126622,
                     -482.784550377102,
                     167.179943005229,
                     -42.8438475354611,
                     7.66279019799101,
                     -0.854519710831408,
                     0.0447573822623372 },
};

/** A sum of two doubles that holds about 31 digits. Source: T. J. Dekker, "A floating-point technique for extending
    the available precision", Numerische Mathematik 18, 1971. */
struct DoubleDouble
{
    double high = 0.0;
    double low = 0.0;
};

constexpr DoubleDouble exactSum (double a, double b) noexcept
{
    const auto sum = a + b;
    const auto partOfB = sum - a;
    return { sum, (a - (sum - partOfB)) + (b - partOfB) };
}

constexpr DoubleDouble exactProduct (double a, double b) noexcept
{
    constexpr double splitter = 134217729.0; // 2^27 + 1 cuts a double's 53 bits into two halves
    const auto scaledA = splitter * a;
    const auto highA = scaledA - (scaledA - a);
    const auto lowA = a - highA;
    const auto scaledB = splitter * b;
    const auto highB = scaledB - (scaledB - b);
    const auto lowB = b - highB;
    const auto product = a * b;
    return { product, ((highA * highB - product) + highA * lowB + lowA * highB) + lowA * lowB };
}

constexpr DoubleDouble operator+ (DoubleDouble a, DoubleDouble b) noexcept
{
    const auto high = exactSum (a.high, b.high);
    const auto low = exactSum (a.low, b.low);
    const auto carried = exactSum (high.high, high.low + low.high);
    return exactSum (carried.high, carried.low + low.low);
}

constexpr DoubleDouble operator* (DoubleDouble a, DoubleDouble b) noexcept
{
    const auto product = exactProduct (a.high, b.high);
    return exactSum (product.high, product.low + (a.high * b.low + a.low * b.high));
}

/** A polynomial in 1/z with room for the longest product that is formed here. */
struct Polynomial
{
    int degree = 0;
    static constexpr std::size_t room = 136;
    std::array<DoubleDouble, room> coefficients {};

    [[nodiscard]] constexpr DoubleDouble at (int i) const noexcept
    {
        return coefficients[static_cast<std::size_t> (i)];
    }
    [[nodiscard]] constexpr DoubleDouble& at (int i) noexcept { return coefficients[static_cast<std::size_t> (i)]; }
};

template <std::size_t count>
constexpr Polynomial polynomial (const std::array<double, count>& values) noexcept
{
    Polynomial result;
    result.degree = static_cast<int> (count) - 1;

    for (std::size_t i = 0; i < count; ++i)
        result.coefficients[i] = { values[i], 0.0 };

    return result;
}

/** a(z) * b(z^stride) */
constexpr Polynomial product (const Polynomial& a, const Polynomial& b, int stride) noexcept
{
    Polynomial result;
    result.degree = a.degree + b.degree * stride;

    for (int i = 0; i <= a.degree; ++i)
        for (int j = 0; j <= b.degree; ++j)
            result.at (i + j * stride) = result.at (i + j * stride) + a.at (i) * b.at (j);

    return result;
}

constexpr Polynomial withOddSignsTurned (Polynomial polynomial) noexcept
{
    for (int i = 1; i <= polynomial.degree; i += 2)
        polynomial.at (i) = { -polynomial.at (i).high, -polynomial.at (i).low };

    return polynomial;
}

constexpr Polynomial evenPart (const Polynomial& polynomial) noexcept
{
    Polynomial result;
    result.degree = polynomial.degree / 2;

    for (int i = 0; i <= result.degree; ++i)
        result.at (i) = polynomial.at (2 * i);

    return result;
}

constexpr double magnitude (DoubleDouble value) noexcept
{
    return value.high < 0.0 ? -value.high : value.high;
}

/** The degree without the last coefficients that together are smaller than the rounding of the whole sum, and could
    not be told from it in a result. */
constexpr int degreeThatCounts (const Polynomial& polynomial) noexcept
{
    constexpr auto rounding = std::numeric_limits<double>::epsilon() / 2.0;
    double sum = 0.0;

    for (int i = 0; i <= polynomial.degree; ++i)
        sum += magnitude (polynomial.at (i));

    auto degree = polynomial.degree;

    for (auto dropped = magnitude (polynomial.at (degree)); degree > 0 && dropped < rounding * sum;
         dropped += magnitude (polynomial.at (degree)))
        --degree;

    return degree;
}

/** 0 above the degree. */
constexpr double coefficient (const Polynomial& polynomial, int i) noexcept
{
    return i <= polynomial.degree ? polynomial.at (i).high : 0.0;
}

template <int order>
constexpr RateFilterTable makeTable (const RateFilterSection<order>& section, int factor) noexcept
{
    auto feedForward = polynomial (section.numerator);
    auto recursive = polynomial (section.denominator);

    // Each step multiplies both by the denominator with its odd signs turned, after which the denominator holds even
    // powers only, and is rewritten in z^2: the root squaring of Dandelin and Graeffe.
    for (int stride = 1; stride < factor; stride *= 2)
    {
        const auto turned = withOddSignsTurned (recursive);
        feedForward = product (feedForward, turned, stride);
        recursive = evenPart (product (recursive, turned, 1));
    }

    feedForward.degree = degreeThatCounts (feedForward);
    recursive.degree = degreeThatCounts (recursive);

    RateFilterTable table;
    table.factor = factor;
    table.order = recursive.degree;
    table.feedForwardCount = (feedForward.degree + 8) / 8 * 8;
    table.branchTapCount = feedForward.degree / factor + 1;

    for (int k = 1; k <= table.order; ++k)
    {
        const auto index = static_cast<std::size_t> (RateFilterTable::framesAtOnce + k);
        table.recursive[index] = recursive.at (k).high;
        table.recursiveInPairs[2 * index] = recursive.at (k).high;
        table.recursiveInPairs[2 * index + 1] = recursive.at (k).high;
    }

    for (int i = 0; i < table.feedForwardCount; ++i)
        table.decimating[static_cast<std::size_t> (i)] = coefficient (feedForward, table.feedForwardCount - 1 - i);

    for (int i = 0; i < table.branchTapCount; ++i)
        for (int lane = 0; lane < RateFilterTable::branchWidth; ++lane)
            table.interpolating[static_cast<std::size_t> (i * RateFilterTable::branchWidth + lane)] =
                factor * coefficient (feedForward, i * factor + lane % factor);

    return table;
}
} // namespace

constexpr RateFilterSection<24> rateFilterByFour = byFour;
constexpr RateFilterSection<16> rateFilterByEight = byEight;
constexpr RateFilterTable rateTableByFour = makeTable (byFour, 4);
constexpr RateFilterTable rateTableByEight = makeTable (byEight, 8);

static_assert (rateTableByFour.order == RateFilterTable::orderByFour);
static_assert (rateTableByEight.order == RateFilterTable::orderByEight);
