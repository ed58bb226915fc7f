#pragma once

#include "dsp/design/FirLengths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

/** The taps of one filter, in memory of a fixed size: a new length allocates nothing. Starts as one tap of 0. */
template <int capacity>
class TapSet
{
public:
    /** Sets the length, 0 to `capacity`, and zeroes the taps. Real-time safe. */
    void setCount (int count) noexcept
    {
        tapCount = static_cast<std::size_t> (std::clamp (count, 0, capacity));
        values.fill (0.0);
    }

    /** A filter that delays by `index` samples and does nothing else. Real-time safe. */
    void setImpulse (int index) noexcept
    {
        values.fill (0.0);

        if (index >= 0 && static_cast<std::size_t> (index) < tapCount)
            values[static_cast<std::size_t> (index)] = 1.0;
    }

    /** A filter that delays by half its length. Real-time safe. */
    void setCentredImpulse() noexcept { setImpulse ((count() - 1) / 2); }

    [[nodiscard]] int count() const noexcept { return static_cast<int> (tapCount); }
    [[nodiscard]] std::span<double> taps() noexcept { return { values.data(), tapCount }; }
    [[nodiscard]] std::span<const double> taps() const noexcept { return { values.data(), tapCount }; }

private:
    std::array<double, static_cast<std::size_t> (capacity)> values {};
    std::size_t tapCount = 1;
};

/** The tap sets of one BlockProcessor: written by the designer, copied by the audio thread at hand-over. */
struct TapSets
{
    TapSet<maxFirTapCount> linearHigh;
    TapSet<maxFirTapCount> low;

    /** The symmetric filter from which the minimum-phase one is made: an odd count, one below an even length. */
    TapSet<maxFirTapCount> minimumSource;
    TapSet<maxFirTapCount> minimum;

    /** Zero until the first solo. */
    TapSet<soloTapCount> solo;
};
