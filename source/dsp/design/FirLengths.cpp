#include "dsp/design/FirLengths.h"

#include "dsp/rate/ReducedRate.h"

namespace
{
struct LengthRow
{
    double highestRate;
    FirLengths mix;
    FirLengths master;
};

constexpr double highestMinimumPhaseRate = 96000.0;

// The dry delay is the low filter's centre at the host's rate plus 24 (factor 4) or 54 (factor 8) samples for a
// decimation and an interpolation in series. 40 source taps at 96 kHz in Master are fewer than at 48 kHz on purpose.
constexpr LengthRow lengthRows[] {
    { 48000.0, { 224, 101, 101, 100, 50 }, { 144, 61, 61, 60, 30 } },
    { 96000.0, { 424, 201, 201, 120, 60 }, { 264, 121, 121, 40, 20 } },
};

constexpr FirLengths mixAboveAllRows { 1254, 301, 301, 0, 0 };
constexpr FirLengths masterAboveAllRows { 774, 181, 181, 0, 0 };
} // namespace

FirLengths firLengthsFor (double sampleRate, FilterMode mode) noexcept
{
    for (const auto& row : lengthRows)
        if (sampleRate <= row.highestRate)
            return mode == FilterMode::mix ? row.mix : row.master;

    return mode == FilterMode::mix ? mixAboveAllRows : masterAboveAllRows;
}

FilterPhase effectivePhase (double sampleRate, FilterPhase wanted) noexcept
{
    return sampleRate > highestMinimumPhaseRate ? FilterPhase::linear : wanted;
}

std::optional<int> baseLatencyFor (double sampleRate, FilterMode mode, FilterPhase phase) noexcept
{
    if (! decimationFactorFor (sampleRate).has_value())
        return std::nullopt;

    const auto lengths = firLengthsFor (sampleRate, mode);
    const auto highDelay =
        effectivePhase (sampleRate, phase) == FilterPhase::linear ? (lengths.linearHighTapCount - 1) / 2 : 0;
    return lengths.dryDelaySamples + highDelay;
}
