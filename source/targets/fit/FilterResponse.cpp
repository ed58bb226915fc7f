#include "targets/fit/FilterResponse.h"

#include "dsp/design/BandDesign.h"
#include "dsp/design/MinimumPhase.h"
#include "dsp/filters/MagnitudeCurve.h"
#include "dsp/rate/RateConverter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

namespace
{
/** Long enough for the rate filters to ring out. */
constexpr int answerLength = 4096;

/** The answer of decimation and interpolation, one behind the other, to an impulse. It depends on where the impulse
    falls between the samples that are kept; what of it is no image of other frequencies is the mean over all places. */
std::vector<double> conversionAnswer (double sampleRate, int factor)
{
    std::vector<double> mean (answerLength);

    for (int place = 0; place < factor; ++place)
    {
        RateConverter converter;
        converter.setSampleRate (sampleRate);
        converter.buildFilters();
        std::vector<float> impulse (answerLength + static_cast<std::size_t> (factor));
        impulse[static_cast<std::size_t> (place)] = 1.0f;
        const auto count = static_cast<int> (impulse.size());
        converter.decimateSingle (impulse.data(), count);
        converter.interpolateSingle (converter.outputLeft(), count / factor);

        for (std::size_t index = 0; index < mean.size(); ++index)
            mean[index] += converter.interpolatedLeft()[index + static_cast<std::size_t> (place)] / factor;
    }

    return mean;
}

std::complex<double> transformAt (const std::vector<double>& answer, double omega, double origin)
{
    const auto step = std::polar (1.0, -omega);
    auto phasor = std::polar (1.0, omega * origin);
    std::complex<double> sum;

    for (const auto sample : answer)
    {
        sum += sample * phasor;
        phasor *= step;
    }

    return sum;
}
} // namespace

FilterResponse::FilterResponse (double sampleRate,
                                FilterMode mode,
                                FilterPhase phase,
                                std::span<const double> frequenciesHz)
    : linear (effectivePhase (sampleRate, phase) == FilterPhase::linear),
      minimumTapCount (firLengthsFor (sampleRate, mode).minimumTapCount),
      frequencies (frequenciesHz.begin(), frequenciesHz.end())
{
    const auto factor = decimationFactorFor (sampleRate).value_or (4);
    const auto lengths = firLengthsFor (sampleRate, mode);
    low = sideFor (sampleRate / factor, lengths.lowTapCount, frequenciesHz);
    high = sideFor (sampleRate, linear ? lengths.linearHighTapCount : lengths.minimumSourceTapCount, frequenciesHz);

    const auto answer = conversionAnswer (sampleRate, factor);
    const auto dryDelay = static_cast<double> (lengths.dryDelaySamples - factor * lengths.lowDelaySamples());

    for (const auto frequency : frequenciesHz)
        conversion.push_back (transformAt (answer, 2.0 * std::numbers::pi * frequency / sampleRate, dryDelay));
}

FilterResponse::Side FilterResponse::sideFor (double designRate, int tapCount, std::span<const double> frequenciesHz)
{
    Side side { designRate, LeastSquaresFir::forTapCount (tapCount), {} };
    const auto terms = (LeastSquaresFir::symmetricTapCount (tapCount) + 1) / 2;

    for (int term = 0; term < terms; ++term)
        for (const auto frequency : frequenciesHz)
            side.cosines.push_back ((term == 0 ? 1.0 : 2.0)
                                    * std::cos (2.0 * std::numbers::pi * term * frequency / designRate));

    return side;
}

std::vector<double> FilterResponse::curveOf (const FitBand& band, double designRate)
{
    std::vector<double> curve (curvePointCount);
    evaluateBandCurve ({ .gainDb = static_cast<float> (band.gainDb),
                         .frequencyHz = static_cast<float> (band.frequencyHz),
                         .q = static_cast<float> (band.q),
                         .highShelf = band.highShelf,
                         .designRate = designRate },
                       curve);

    for (auto& value : curve)
        value -= 1.0;

    return curve;
}

std::vector<double> FilterResponse::deviationOf (const FitBand& band) const
{
    const auto& side = band.isLow() ? low : high;
    const auto curve = curveOf (band, side.designRate);
    std::vector<double> result (size());
    std::array<double, maxFirTapCount> taps {};

    if (side.design == nullptr)
        return result;

    const auto tapCount = static_cast<std::size_t> (side.design->tapCount());

    if (! side.design->designSymmetricFir (curve, std::span (taps).first (tapCount)))
        return result;

    const auto terms = (tapCount + 1) / 2;
    const auto* centre = taps.data() + tapCount / 2;
    const auto* row = side.cosines.data();

    for (std::size_t term = 0; term < terms; ++term, row += result.size())
        for (std::size_t index = 0; index < result.size(); ++index)
            result[index] += centre[term] * row[index];

    return result;
}

FilterResponse::Power FilterResponse::powerAt (std::size_t index, double lowSum, double highSum) const noexcept
{
    const auto through = conversion[index];
    const auto lowPower = std::norm (1.0 + lowSum * through);
    const auto highAmplitude = 1.0 + highSum;
    return { .value = lowPower * highAmplitude * highAmplitude,
             .perLow = 2.0 * (through.real() + lowSum * std::norm (through)) * highAmplitude * highAmplitude,
             .perHigh = 2.0 * lowPower * highAmplitude };
}

double FilterResponse::lowestMeanDb() const noexcept
{
    // The design refuses a geometric mean of the magnitude that is not above a half.
    return linear ? -std::numeric_limits<double>::infinity() : 20.0 * std::log10 (0.5);
}

std::optional<std::vector<double>> FilterResponse::highPowers (const std::vector<FitBand>& bands) const
{
    std::vector<double> sum (curvePointCount, 1.0);
    auto isUsed = false;

    for (const auto& band : bands)
        if (! band.isLow())
        {
            isUsed = true;
            std::ranges::transform (sum, curveOf (band, high.designRate), sum.begin(), std::plus());
        }

    if (! isUsed)
        return std::vector (size(), 1.0);

    std::vector<double> taps (static_cast<std::size_t> (high.design->tapCount()));

    if (! high.design->designSymmetricFir (sum, taps))
        return std::nullopt;

    if (! linear)
    {
        const auto source = taps;
        taps.resize (static_cast<std::size_t> (minimumTapCount));

        if (! MinimumPhase().toMinimumPhase (source, taps))
            return std::nullopt;
    }

    std::vector<double> powers;

    for (const auto hz : frequencies)
        powers.push_back (std::norm (transformAt (taps, 2.0 * std::numbers::pi * hz / high.designRate, 0.0)));

    return powers;
}
