#include "dsp/simd/BlockOperations.h"

#include "support/SimdLevels.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <tuple>

namespace
{
constexpr int largest = 70;
constexpr std::size_t room = 700;

/** Each operation runs for every count from 0 to `largest`, with a mark behind the block that must stay. */
class BlockOperationsTest : public testing::TestWithParam<SimdLevel>
{
protected:
    ScopedSimdLevel level { GetParam() };
    std::vector<double> a = noise (largest, 1);
    std::vector<double> b = noise (largest, 2);
    std::vector<double> c = noise (largest, 3);
    std::vector<double> d = noise (largest, 4);
    std::vector<float> f = toFloats (noise (largest, 5));
    std::vector<float> g = toFloats (noise (largest, 6));

    template <typename Sample, typename Expected>
    static void
    expectBlock (const std::vector<Sample>& output, std::size_t count, Sample mark, const Expected& expected)
    {
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_EQ (output[i], expected (i)) << i << " of " << count;

        for (auto i = count; i < output.size(); ++i)
            ASSERT_EQ (output[i], mark) << "behind " << count;
    }
};

INSTANTIATE_TEST_SUITE_P (Levels, BlockOperationsTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

TEST_P (BlockOperationsTest, convertsBothWays)
{
    for (int count = 0; count <= largest; ++count)
    {
        std::vector<double> doubles (room, 9.0);
        std::vector<float> floats (room, 9.0f);
        BlockOperations::convert (f.data(), doubles.data(), count);
        BlockOperations::convert (a.data(), floats.data(), count);
        const auto size = static_cast<std::size_t> (count);
        expectBlock (doubles, size, 9.0, [&] (auto i) { return static_cast<double> (f[i]); });
        expectBlock (floats, size, 9.0f, [&] (auto i) { return static_cast<float> (a[i]); });
    }
}

TEST_P (BlockOperationsTest, limitsToFiniteValuesAndKeepsTheOthersToTheBit)
{
    using Limits = std::numeric_limits<float>;
    constexpr auto limit = 1.0e9f;
    const std::vector<std::pair<float, float>> special { { Limits::quiet_NaN(), 0.0f },
                                                         { -Limits::quiet_NaN(), 0.0f },
                                                         { Limits::infinity(), 0.0f },
                                                         { -Limits::infinity(), 0.0f },
                                                         { Limits::max(), limit },
                                                         { -Limits::max(), -limit },
                                                         { 1.1e9f, limit },
                                                         { -limit, -limit },
                                                         { 0.9e9f, 0.9e9f },
                                                         { -0.0f, -0.0f },
                                                         { Limits::denorm_min(), Limits::denorm_min() } };

    for (int count = 0; count <= largest; ++count)
    {
        const auto size = static_cast<std::size_t> (count);
        auto input = f;
        auto expected = f;

        for (std::size_t i = 0; i < size; i += 2)
            std::tie (input[i], expected[i]) = special[(i / 2 + size) % special.size()];

        std::vector<float> output (room, 9.0f);
        BlockOperations::limitToFinite (input.data(), limit, output.data(), count);
        BlockOperations::limitToFinite (input.data(), limit, input.data(), count);

        expectBlock (output, size, 9.0f, [&] (auto i) { return expected[i]; });
        EXPECT_EQ (std::memcmp (output.data(), expected.data(), size * sizeof (float)), 0);
        EXPECT_EQ (std::memcmp (input.data(), expected.data(), input.size() * sizeof (float)), 0);
    }
}

TEST_P (BlockOperationsTest, addsAndSubtracts)
{
    for (int count = 0; count <= largest; ++count)
    {
        auto sum = a;
        auto difference = a;
        BlockOperations::add (sum.data(), b.data(), count);
        BlockOperations::subtract (difference.data(), b.data(), count);

        for (std::size_t i = 0; i < a.size(); ++i)
        {
            const auto inside = i < static_cast<std::size_t> (count);
            ASSERT_EQ (sum[i], inside ? a[i] + b[i] : a[i]);
            ASSERT_EQ (difference[i], inside ? a[i] - b[i] : a[i]);
        }
    }
}

TEST_P (BlockOperationsTest, exchangesAlsoInPlace)
{
    for (int count = 0; count <= largest; ++count)
    {
        const auto size = static_cast<std::size_t> (count);
        auto stored = b;
        std::vector<double> output (room, 9.0);
        BlockOperations::exchange (f.data(), stored.data(), output.data(), count);
        expectBlock (output, size, 9.0, [&] (auto i) { return b[i]; });

        auto inPlace = a;
        auto storedBefore = stored;
        BlockOperations::exchange (inPlace.data(), stored.data(), inPlace.data(), count);

        for (std::size_t i = 0; i < a.size(); ++i)
        {
            ASSERT_EQ (storedBefore[i], i < size ? static_cast<double> (f[i]) : b[i]);
            ASSERT_EQ (inPlace[i], i < size ? storedBefore[i] : a[i]);
            ASSERT_EQ (stored[i], i < size ? a[i] : b[i]);
        }
    }
}

TEST_P (BlockOperationsTest, interleavesAndBack)
{
    for (int count = 0; count <= largest; ++count)
    {
        const auto size = static_cast<std::size_t> (count);
        std::vector<double> interleaved (room, 9.0);
        std::vector<double> left (room, 9.0);
        std::vector<double> right (room, 9.0);
        BlockOperations::interleave (a.data(), b.data(), interleaved.data(), count);
        BlockOperations::deinterleave (interleaved.data(), left.data(), right.data(), count);
        expectBlock (interleaved, 2 * size, 9.0, [&] (auto i) { return i % 2 == 0 ? a[i / 2] : b[i / 2]; });
        expectBlock (left, size, 9.0, [&] (auto i) { return a[i]; });
        expectBlock (right, size, 9.0, [&] (auto i) { return b[i]; });
    }
}

TEST_P (BlockOperationsTest, holdsEveryStrideForFactorSamples)
{
    for (const auto factor : { 4, 8 })
    {
        for (const auto stride : { 1, 2 })
        {
            for (int count = 0; count <= largest / 2; ++count)
            {
                std::vector<double> output (room, 9.0);
                BlockOperations::hold (a.data(), stride, output.data(), factor, count);
                expectBlock (output,
                             static_cast<std::size_t> (count * factor),
                             9.0,
                             [&] (auto i)
                             { return a[i / static_cast<std::size_t> (factor) * static_cast<std::size_t> (stride)]; });
            }
        }
    }
}

TEST_P (BlockOperationsTest, splitsAndJoinsMidAndSide)
{
    for (int count = 0; count <= largest; ++count)
    {
        const auto size = static_cast<std::size_t> (count);
        std::vector<double> mid (room, 9.0);
        std::vector<double> side (room, 9.0);
        std::vector<float> left (room, 9.0f);
        std::vector<float> right (room, 9.0f);
        BlockOperations::splitMidSide (f.data(), g.data(), mid.data(), side.data(), count);
        BlockOperations::joinMidSide (mid.data(), side.data(), left.data(), right.data(), count);
        expectBlock (mid, size, 9.0, [&] (auto i) { return 0.5 * (double { f[i] } + double { g[i] }); });
        expectBlock (side, size, 9.0, [&] (auto i) { return 0.5 * (double { g[i] } - double { f[i] }); });
        expectBlock (left, size, 9.0f, [&] (auto i) { return f[i]; });
        expectBlock (right, size, 9.0f, [&] (auto i) { return g[i]; });

        BlockOperations::splitMidSide (a.data(), b.data(), mid.data(), side.data(), count);
        expectBlock (mid, size, 9.0, [&] (auto i) { return (a[i] + b[i]) * 0.5; });
        expectBlock (side, size, 9.0, [&] (auto i) { return (b[i] - a[i]) * 0.5; });
    }
}

TEST_P (BlockOperationsTest, joinsPathsWithEitherSign)
{
    for (int count = 0; count <= largest; ++count)
    {
        for (const auto sign : { 1.0, -1.0 })
        {
            std::vector<float> output (room, 9.0f);
            BlockOperations::joinPaths (a.data(), b.data(), c.data(), d.data(), sign, output.data(), count);
            expectBlock (output,
                         static_cast<std::size_t> (count),
                         9.0f,
                         [&] (auto i) { return static_cast<float> ((a[i] - b[i]) + (c[i] + sign * d[i])); });
        }
    }
}
} // namespace
