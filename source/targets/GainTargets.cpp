#include "targets/GainTargets.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
constexpr float smallestMoveDb = 0.05f;

float finiteOrZero (float value) noexcept
{
    return std::isfinite (value) ? value : 0.0f;
}
} // namespace

bool GainTargets::updateGainTargets (Values bandLevels,
                                     Values targets,
                                     float lufsDifference,
                                     bool alreadyReady) noexcept
{
    auto moved = false;
    auto largest = 0.0f;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        const auto value = finiteOrZero ((targets[band] - bandLevels[band]) - lufsDifference);
        const auto change = std::abs (value - finiteOrZero (previousGainTarget[band]));

        moved = moved || change > smallestMoveDb;
        largest = std::max (largest, change);
        previousGainTarget[band] = value;
        gainTarget[band].store (value, std::memory_order_relaxed);
    }

    maxChange.store (alreadyReady ? 0.0f : largest, std::memory_order_relaxed);
    return moved;
}

void GainTargets::clear() noexcept
{
    for (auto& value : gainTarget)
        value.store (0.0f, std::memory_order_relaxed);
}
