#pragma once

#include "dsp/meters/BandAnalyser.h"

#include <array>
#include <span>
#include <vector>

/** A spectrum that would have been read as eleven given numbers: the power that ten band meters and the overall one
    have to do with, at chosen frequencies.

    Between the bands' centres the density runs straight in dB over octaves, and its height there is brought to what the
    meters read through the skirts of their filters. What the overall meter heard beyond that is put below 200 Hz.
    Immutable; allocates. */
class HeardSpectrum
{
public:
    using Levels = std::array<float, analysisBandCount>;
    using Shares = std::vector<double>;

    /** @param lufs, bands   what was read; a band below the meters' gate is not finite, and has no power here
        @param sampleRate    in Hz, for the form of the band filters
        @param frequenciesHz rising, at equal steps of octaves */
    HeardSpectrum (float lufs, const Levels& bands, double sampleRate, std::span<const double> frequenciesHz);

    /** How much of what the overall meter reads comes from each frequency; adds up to 1. */
    [[nodiscard]] const Shares& overall() const noexcept { return overallShares; }

    /** The same of a band's meter; empty for a band without a reading. */
    [[nodiscard]] const Shares& band (std::size_t index) const noexcept { return bandShares[index]; }

private:
    Shares overallShares;
    std::array<Shares, analysisBandCount> bandShares;
};
