#pragma once

#include "dsp/meters/LoudnessScale.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace orvik
{
/** The powers of the last `capacity` measuring blocks, and their gated loudness.

    The gate partitions the store in place while the write index goes on counting, so that after the store has
    wrapped the entry that is replaced need not be the oldest. That order belongs to the reading.
    One thread at a time. Allocates nothing; every call is real-time safe. */
template <int capacity>
class GatedBlocks
{
public:
    static_assert (capacity > 0 && capacity <= 65536);

    /** Overwrites every entry and leaves the write index where it stands. */
    void fill (float power) noexcept;

    /** Starts writing at the first entry again. */
    void rewind() noexcept { writeIndex = 0; }

    /** Stores the mean power of one block over the entry at the write index. */
    void add (float power) noexcept;

    /** Runs both gates and returns the loudness of what passes, in dB, or nothing when no block is above -70 dB. */
    [[nodiscard]] std::optional<float> gatedLoudness() noexcept;

    /** The store in its present order. */
    [[nodiscard]] const std::array<float, static_cast<std::size_t> (capacity)>& powers() const noexcept
    {
        return blocks;
    }

private:
    static constexpr float absoluteGateDb = -70.0f;
    static constexpr float relativeGateDb = -10.0f;

    std::size_t movePassingToFront (std::size_t count, float smallestPassing) noexcept;
    [[nodiscard]] float meanOfFirst (std::size_t count) const noexcept;

    /** Searched for here and not at the first gate, at which several threads may arrive at once. */
    float smallestAboveAbsoluteGate = smallestPowerAbove (absoluteGateDb);

    std::array<float, static_cast<std::size_t> (capacity)> blocks {};
    std::size_t writeIndex = 0;

    /** Positions that the partition has to exchange, kept here and not on the audio thread's stack. */
    std::array<std::uint16_t, static_cast<std::size_t> (capacity)> failingInFront {};
    std::array<std::uint16_t, static_cast<std::size_t> (capacity)> passingBehind {};
};

extern template class GatedBlocks<3000>;
} // namespace orvik
