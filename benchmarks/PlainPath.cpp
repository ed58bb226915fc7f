#include "PlainPath.h"
#include "dsp/rate/ReducedRate.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Plain
{
namespace
{
constexpr std::size_t maxBlock = 8192;
}

Fir::Fir (std::vector<double> firTaps) : taps (std::move (firTaps)), line (taps.size() - 1 + maxBlock, 0.0) {}

void Fir::run (const double* input, double* output, int count)
{
    const auto past = taps.size() - 1;
    const auto samples = static_cast<std::size_t> (count);
    std::copy_n (input, count, line.begin() + static_cast<std::ptrdiff_t> (past));

    for (std::size_t i = 0; i < samples; ++i)
    {
        double sum = 0.0;

        for (std::size_t k = 0; k < taps.size(); ++k)
            sum += taps[k] * line[past + i - k];

        output[i] = sum;
    }

    std::copy_n (line.begin() + count, past, line.begin());
}

RateFilter::RateFilter (int decimationFactor) : factor (decimationFactor)
{
    if (factor == 4)
    {
        numerator.assign (rateFilterByFour.numerator.begin(), rateFilterByFour.numerator.end());
        denominator.assign (rateFilterByFour.denominator.begin(), rateFilterByFour.denominator.end());
    }
    else
    {
        numerator.assign (rateFilterByEight.numerator.begin(), rateFilterByEight.numerator.end());
        denominator.assign (rateFilterByEight.denominator.begin(), rateFilterByEight.denominator.end());
    }

    state.assign (numerator.size(), 0.0);
}

double RateFilter::process (double input)
{
    const auto order = state.size() - 1;
    auto inner = input;

    for (auto k = order; k > 0; --k)
    {
        state[k] = state[k - 1];
        inner -= denominator[k] * state[k];
    }

    state[0] = inner;
    double output = 0.0;

    for (std::size_t k = 0; k <= order; ++k)
        output += numerator[k] * state[k];

    return output;
}

void RateFilter::decimate (const float* input, double* output, int count)
{
    for (int i = 0; i < count; ++i)
    {
        const auto filtered = process (static_cast<double> (input[i]));

        if (i % factor == 0)
            output[i / factor] = filtered;
    }
}

void RateFilter::interpolate (const double* input, double* output, int reducedCount)
{
    for (int i = 0; i < reducedCount * factor; ++i)
        output[i] = factor * process (i % factor == 0 ? input[i / factor] : 0.0);
}

double Delay::process (double input)
{
    const auto delayed = std::exchange (ring[index], input);
    index = index + 1 < ring.size() ? index + 1 : 0;
    return delayed;
}

Path::Path (double sampleRate, FilterMode mode, const std::vector<double>& lowTaps, const std::vector<double>& highTaps)
    : factor (decimationFactorFor (sampleRate).value_or (4)),
      decimator (factor),
      interpolator (factor),
      lowFir (lowTaps),
      highFir (highTaps),
      dryDelay (firLengthsFor (sampleRate, mode).dryDelaySamples),
      lowDelay (firLengthsFor (sampleRate, mode).lowDelaySamples()),
      low (maxBlock),
      correction (maxBlock),
      sum (maxBlock),
      result (maxBlock)
{
}

void Path::process (const float* input, float* output, int count)
{
    const auto reducedCount = count / factor;
    decimator.decimate (input, low.data(), count);
    lowFir.run (low.data(), correction.data(), reducedCount);

    for (std::size_t i = 0; i < static_cast<std::size_t> (reducedCount); ++i)
        correction[i] -= lowDelay.process (low[i]);

    interpolator.interpolate (correction.data(), sum.data(), reducedCount);

    for (std::size_t i = 0; i < static_cast<std::size_t> (count); ++i)
        sum[i] += dryDelay.process (static_cast<double> (input[i]));

    highFir.run (sum.data(), result.data(), count);

    for (std::size_t i = 0; i < static_cast<std::size_t> (count); ++i)
        output[i] = static_cast<float> (result[i]);
}
} // namespace Plain
