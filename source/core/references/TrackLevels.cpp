#include "core/references/TrackLevels.h"

#include <algorithm>
#include <cmath>

TrackLevels::TrackLevels (double length)
    : expectedLength (length), window (static_cast<int> (length * (1.0 / usualCount)))
{
    levels.reserve (usualCount);
}

void TrackLevels::take (const float* left, const float* right, int sampleCount)
{
    taken += sampleCount;
    const auto isComplete = static_cast<double> (taken) == expectedLength;

    for (int i = 0; i < sampleCount; ++i)
    {
        leftSum += left[i] * left[i];
        rightSum += right[i] * right[i];

        if (count == window || (isComplete && i == sampleCount - 1))
            appendLevel();
        else
            ++count;
    }
}

void TrackLevels::appendLevel()
{
    if (const auto divisor = static_cast<float> (count); count > 0)
        levels.push_back ((std::sqrt (rightSum / divisor) + std::sqrt (leftSum / divisor)) * 0.5f);

    leftSum = 0.0f;
    rightSum = 0.0f;
    count = 0;
}

std::vector<float> TrackLevels::finish()
{
    constexpr auto highest = 0.8f;
    const auto largest = levels.empty() ? 0.0f : *std::ranges::max_element (levels);

    if (largest > 0.0f)
        for (auto& level : levels)
            level = level * highest / largest;

    return std::move (levels);
}
