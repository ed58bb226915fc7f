#pragma once

#include "dsp/meters/SpectrumAnalyser.h"

#include <array>
#include <span>

/** The highest magnitude that each bin of the spectrum has had of late, from 0 to 1.

    What lies above 1 counts as 1: no strip glows brighter than that, and a loud sound fades in the same time as a quiet
    one. What is no number counts as silence. One thread at a time; nothing allocates. */
class HeatPeaks
{
public:
    static constexpr std::size_t binCount = SpectrumAnalyser::binCount;

    /** What is left of a peak after a frame that does not reach it. */
    static constexpr float decay = 0.7f;

    using Magnitudes = std::span<const float, binCount>;

    /** A frame with a new spectrum: each bin takes its magnitude if that reaches the peak, and falls otherwise. So what
        goes on above 1 does not flicker. */
    void update (Magnitudes magnitudes) noexcept;

    /** A frame without a new spectrum: all bins fall. */
    void fall() noexcept;

    void clear() noexcept { peaks.fill (0.0f); }

    [[nodiscard]] Magnitudes values() const noexcept { return peaks; }

private:
    std::array<float, binCount> peaks {};
};
