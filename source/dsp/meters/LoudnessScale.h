#pragma once

namespace orvik
{
/** 10 log10 (power) - 0.691 in single precision: the scale of ITU-R BS.1770. Minus infinity for no power.
    Real-time safe. */
[[nodiscard]] float loudnessOf (float power) noexcept;

/** The power that a meter is filled with to start at this level in dB. Real-time safe. */
[[nodiscard]] float powerOfResetLevel (float levelDb) noexcept;

/** The smallest power whose loudness is above a level in dB, so that `power >= smallestPowerAbove (level)` decides
    as `loudnessOf (power) > level` does, at the cost of a comparison. The level must be finite. Real-time safe. */
[[nodiscard]] float smallestPowerAbove (float levelDb) noexcept;
} // namespace orvik
