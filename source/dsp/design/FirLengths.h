#pragma once

#include <optional>

/** `paramMode`: how long the equaliser's filters are. The values are those of the parameter. */
enum class FilterMode
{
    master = 0,
    mix = 1
};

/** `paramPhase`: the shape of the filter for the bands above 1500 Hz. The values are those of the parameter. */
enum class FilterPhase
{
    minimum = 0,
    linear = 1
};

/** Lengths of one BlockProcessor's filters and delays.

    Delays are in samples at the host's rate, but for `lowDelaySamples`, which is at the reduced rate.
    The minimum-phase lengths are 0 where no minimum-phase filter is designed. */
struct FirLengths
{
    int dryDelaySamples = 0;
    int linearHighTapCount = 0;
    int lowTapCount = 0;
    int minimumSourceTapCount = 0;
    int minimumTapCount = 0;

    [[nodiscard]] constexpr int lowDelaySamples() const noexcept { return (lowTapCount - 1) / 2; }

    bool operator== (const FirLengths&) const = default;
};

/** Largest entries of the table, for buffers that are sized once. */
constexpr int maxFirTapCount = 301;
constexpr int maxMinimumSourceTapCount = 120;
constexpr int maxDryDelaySamples = 1254;
constexpr int maxBaseLatencySamples = 1404;

/** Taps of the solo filter, and its delay in samples at the host's rate. */
constexpr int soloTapCount = 257;
constexpr int soloDelaySamples = (soloTapCount - 1) / 2;

/** Lengths for any host rate in Hz: rates up to 48 kHz, up to 96 kHz and above share a row each. */
[[nodiscard]] FirLengths firLengthsFor (double sampleRate, FilterMode mode) noexcept;

/** Delay of the whole path in samples at the host's rate, without the block FIFO's share, or nothing when the rate is
    not one of the six. A minimum-phase filter counts as no delay. */
[[nodiscard]] std::optional<int> baseLatencyFor (double sampleRate, FilterMode mode, FilterPhase phase) noexcept;

/** The phase that is heard: above 96 kHz there are no minimum-phase lengths, and the path is linear whatever is asked.
 */
[[nodiscard]] FilterPhase effectivePhase (double sampleRate, FilterPhase wanted) noexcept;
