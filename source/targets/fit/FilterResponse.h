#pragma once

#include "dsp/design/FirLengths.h"
#include "dsp/design/LeastSquaresFir.h"
#include "targets/fit/FitBand.h"

#include <complex>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/** What the equaliser's filters do at chosen frequencies, told from the bands without running a sample: the sum of the
    bands' curves on either side of 1500 Hz, as the filter of that side follows it, and the low side's way through the
    rate conversion.

    In minimum phase the high side's filter is half as long as the one that it is made from. The sums are followed as
   the longer one would; highPowers() tells what comes of them. Immutable; allocates. */
class FilterResponse
{
public:
    /** @param sampleRate one of the six that the filters serve; @param frequenciesHz where the response is asked for */
    FilterResponse (double sampleRate, FilterMode mode, FilterPhase phase, std::span<const double> frequenciesHz);

    /** What a band adds, in amplitude, to the filter of its side at each frequency. */
    [[nodiscard]] std::vector<double> deviationOf (const FitBand& band) const;

    /** The power factor at the frequency of this index, with its slopes over the two sums. */
    struct Power
    {
        double value = 1.0;
        double perLow = 0.0;
        double perHigh = 0.0;
    };

    /** @param low, high the sums of what the bands of each side add */
    [[nodiscard]] Power powerAt (std::size_t index, double low, double high) const noexcept;

    /** The power factors of the high side's filter as it will run, whatever bands of the low side there are as well.
        Nothing where cuts are too broad and deep for minimum phase. */
    [[nodiscard]] std::optional<std::vector<double>> highPowers (const std::vector<FitBand>& bands) const;

    /** How low the high side may lie in dB, as a mean over frequency and not over octaves, for highPowers() to be. */
    [[nodiscard]] double lowestMeanDb() const noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return conversion.size(); }

private:
    /** One side's filter: its design, and the cosines that make taps a response. */
    struct Side
    {
        double designRate = 0.0;
        std::shared_ptr<const LeastSquaresFir> design;
        std::vector<double> cosines; ///< a row for each of (taps + 1) / 2 terms
    };

    [[nodiscard]] static Side sideFor (double designRate, int tapCount, std::span<const double> frequenciesHz);

    /** A band's curve without the 1 that it deviates from. */
    [[nodiscard]] static std::vector<double> curveOf (const FitBand& band, double designRate);

    bool linear;
    int minimumTapCount;
    Side low;
    Side high;
    std::vector<double> frequencies;

    /** What the rate conversion makes of the low side's correction, in amplitude and in phase against the dry sound. */
    std::vector<std::complex<double>> conversion;
};
