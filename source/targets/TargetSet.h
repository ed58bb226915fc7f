#pragma once

#include "dsp/meters/BandAnalyser.h"

#include <array>
#include <atomic>
#include <optional>
#include <span>

/** The target that the live signal is compared with: an overall loudness and ten band levels, in LUFS.

    Any thread may read while another sets a new target: each number is whole, and a set that is read half old and half
    new lasts for one pass of the analysis. */
class TargetSet
{
public:
    /** Takes a target over. A shorter list leaves the values behind it as they are, and the last one is the
        extrapolation wherever there is one. Real-time safe.
        @param topBand the value at 18 kHz, or nothing where it cannot be extrapolated */
    void set (float lufs, std::span<const float> values, std::optional<float> topBand) noexcept;

    std::atomic<float> targetLufs { 0.0f };
    std::array<std::atomic<float>, analysisBandCount> targetValues {};
};
