#include "core/audio/LevelMatch.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr float largestGain = 10.0f;
constexpr float pointerRangeDb = 12.0f;

// Nominal numbers: the smoother is clocked by blocks, not by samples.
constexpr float smootherCutoff = 0.25f;
constexpr float smootherRate = 50.0f;
} // namespace

LevelMatch::LevelMatch() noexcept
{
    levelMatchSmoother.setCutoff (smootherCutoff, smootherRate);
}

void LevelMatch::update (float inputLoudness, float outputLoudness) noexcept
{
    auto match = std::pow (10.0f, (inputLoudness - outputLoudness) / 20.0f);

    if (! (match > 0.0f) || ! std::isfinite (match) || match > largestGain)
        match = 1.0f;

    levelMatchGain.store (match, std::memory_order_relaxed);

    const auto smoothed = levelMatchSmoother.process (20.0f * std::log10 (match));
    levelMatchDb.store (smoothed, std::memory_order_relaxed);
    pointer.store (std::pow (10.0f, std::clamp (smoothed, -pointerRangeDb, pointerRangeDb) / 20.0f),
                   std::memory_order_relaxed);
}
