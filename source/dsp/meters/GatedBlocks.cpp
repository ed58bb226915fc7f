#include "dsp/meters/GatedBlocks.h"

#include <algorithm>
#include <utility>

namespace orvik
{
namespace
{
/** A plain counting loop, which the compiler turns into vector compares. */
std::size_t countPassing (const float* powers, std::size_t count, float smallestPassing) noexcept
{
    int passing = 0;

    for (std::size_t i = 0; i < count; ++i)
        passing += powers[i] >= smallestPassing ? 1 : 0;

    return static_cast<std::size_t> (passing);
}
} // namespace

template <int capacity>
void GatedBlocks<capacity>::fill (float power) noexcept
{
    blocks.fill (power);
}

template <int capacity>
void GatedBlocks<capacity>::add (float power) noexcept
{
    blocks[writeIndex] = power;
    writeIndex = writeIndex + 1 == blocks.size() ? 0 : writeIndex + 1;
}

template <int capacity>
std::optional<float> GatedBlocks<capacity>::gatedLoudness() noexcept
{
    const auto audible = movePassingToFront (blocks.size(), smallestAboveAbsoluteGate);

    if (audible == 0)
        return std::nullopt;

    const auto threshold = std::max (absoluteGateDb, loudnessOf (meanOfFirst (audible)) + relativeGateDb);
    const auto passing = movePassingToFront (audible, smallestPowerAbove (threshold));

    if (passing == 0)
        return std::nullopt;

    return loudnessOf (meanOfFirst (passing));
}

/** Leaves the order that swapping from both ends leaves: the first failing entry changes places with the last passing
    one, and so on inwards. With the number of passing entries known beforehand, the places to exchange can be listed
    without a branch, so the cost does not depend on the data. */
template <int capacity>
std::size_t GatedBlocks<capacity>::movePassingToFront (std::size_t count, float smallestPassing) noexcept
{
    const auto passing = countPassing (blocks.data(), count, smallestPassing);

    if (countPassing (blocks.data(), passing, smallestPassing) == passing)
        return passing;

    std::size_t failingCount = 0;

    for (std::size_t i = 0; i < passing; ++i)
    {
        failingInFront[failingCount] = static_cast<std::uint16_t> (i);
        failingCount += blocks[i] >= smallestPassing ? 0u : 1u;
    }

    std::size_t behindCount = 0;

    for (std::size_t i = count; i-- > passing;)
    {
        passingBehind[behindCount] = static_cast<std::uint16_t> (i);
        behindCount += blocks[i] >= smallestPassing ? 1u : 0u;
    }

    for (std::size_t i = 0; i < failingCount; ++i)
        std::swap (blocks[failingInFront[i]], blocks[passingBehind[i]]);

    return passing;
}

template <int capacity>
float GatedBlocks<capacity>::meanOfFirst (std::size_t count) const noexcept
{
    constexpr std::size_t laneCount = 8;
    std::array<double, laneCount> lanes {};
    const auto whole = count - count % laneCount;

    for (std::size_t i = 0; i < whole; i += laneCount)
        for (std::size_t lane = 0; lane < laneCount; ++lane)
            lanes[lane] += static_cast<double> (blocks[i + lane]);

    for (std::size_t i = whole; i < count; ++i)
        lanes[i - whole] += static_cast<double> (blocks[i]);

    auto sum = 0.0;

    for (const auto lane : lanes)
        sum += lane;

    return static_cast<float> (sum / static_cast<double> (count));
}

template class GatedBlocks<3000>;
} // namespace orvik
