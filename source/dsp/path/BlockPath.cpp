#include "dsp/path/BlockPath.h"

#include "dsp/simd/BlockOperations.h"

#include <algorithm>

namespace
{
constexpr int channelCapacity = 2;
constexpr int maxLowDelaySamples = (maxFirTapCount - 1) / 2;

template <typename Sample>
void delayInto (DelayRing& delay,
                const Sample* const* input,
                double* const* output,
                int channelCount,
                int count) noexcept
{
    if (channelCount == 2)
        delay.processStereo (input[0], input[1], output[0], output[1], count);
    else
        delay.processSingle (input[0], output[0], count);
}
} // namespace

BlockPath::BlockPath()
    : lowFir (channelCapacity, maxFirTapCount, maxBlock),
      linearHighFir (channelCapacity, maxFirTapCount, maxBlock),
      minimumHighFir (channelCapacity, maxMinimumSourceTapCount / 2, maxBlock),
      soloFir (channelCapacity, soloTapCount, maxBlock),
      dryDelay (channelCapacity, maxDryDelaySamples),
      lowDelay (channelCapacity, maxLowDelaySamples),
      lowCorrection { AlignedBuffer (maxBlock), AlignedBuffer (maxBlock) },
      delayedLow { AlignedBuffer (maxBlock), AlignedBuffer (maxBlock) },
      output { AlignedBuffer (maxBlock), AlignedBuffer (maxBlock) }
{
}

void BlockPath::configureLengths (const FirLengths& lengths) noexcept
{
    lowFir.setTapCount (lengths.lowTapCount);
    linearHighFir.setTapCount (lengths.linearHighTapCount);
    minimumHighFir.setTapCount (lengths.minimumTapCount);
    dryDelay.setLength (lengths.dryDelaySamples);
    lowDelay.setLength (lengths.lowDelaySamples());
}

void BlockPath::prepare (double sampleRateHz) noexcept
{
    sampleRate = sampleRateHz;
    rateConverter.setSampleRate (sampleRateHz);
    rateConverter.buildFilters();
    resetSolo();
}

void BlockPath::resetSolo() noexcept
{
    soloFir.reset();
}

void BlockPath::setTaps (const PathTaps& taps) noexcept
{
    lowFir.setTaps (taps.low);
    linearHighFir.setTaps (taps.linearHigh);
    minimumHighFir.setTaps (taps.minimum);
    soloFir.setTaps (taps.solo);
}

void BlockPath::processStereo (const float* left,
                               const float* right,
                               const double* lowLeft,
                               const double* lowRight,
                               int count,
                               bool soloActive,
                               FilterPhase phase) noexcept
{
    const float* const input[] { left, right };
    const double* const low[] { lowLeft, lowRight };
    process (input, low, 2, count, soloActive, phase);
}

void BlockPath::processSingle (const float* input,
                               const double* low,
                               int count,
                               bool soloActive,
                               FilterPhase phase) noexcept
{
    process (&input, &low, 1, count, soloActive, phase);
}

void BlockPath::processSingle (const double* input,
                               const double* low,
                               int count,
                               bool soloActive,
                               FilterPhase phase) noexcept
{
    process (&input, &low, 1, count, soloActive, phase);
}

template <typename Sample>
void BlockPath::process (const Sample* const* input,
                         const double* const* low,
                         int channelCount,
                         int count,
                         bool soloActive,
                         FilterPhase phase) noexcept
{
    if (count <= 0)
        return;

    count = std::min (count, maxBlock);

    if (soloActive)
    {
        runSolo (input, channelCount, count);
        return;
    }

    const auto linear = effectivePhase (sampleRate, phase) == FilterPhase::linear;

    if (const auto factor = rateConverter.decimationFactor(); factor > 0)
        makeCorrection (low, channelCount, count / factor);

    runHigh (linear ? linearHighFir : minimumHighFir, input, channelCount, count);
}

template <typename Sample>
void BlockPath::runSolo (const Sample* const* input, int channelCount, int count) noexcept
{
    double* const results[] { output[0].data(), output[1].data() };

    for (int c = 0; c < channelCount; ++c)
        std::copy_n (input[c], count, soloFir.nextInput (c, count));

    soloFir.run (results, channelCount, count);
}

void BlockPath::makeCorrection (const double* const* low, int channelCount, int reducedCount) noexcept
{
    double* const corrections[] { lowCorrection[0].data(), lowCorrection[1].data() };
    double* const delayed[] { delayedLow[0].data(), delayedLow[1].data() };
    lowFir.run (low, corrections, channelCount, reducedCount);
    delayInto (lowDelay, low, delayed, channelCount, reducedCount);

    for (int c = 0; c < channelCount; ++c)
        BlockOperations::subtract (corrections[c], delayed[c], reducedCount);

    if (channelCount == 2)
        rateConverter.interpolateStereo (corrections[0], corrections[1], reducedCount);
    else
        rateConverter.interpolateSingle (corrections[0], reducedCount);
}

template <typename Sample>
void BlockPath::runHigh (FirConvolver& fir, const Sample* const* input, int channelCount, int count) noexcept
{
    double* sums[channelCapacity] {};
    const double* const interpolated[] { rateConverter.interpolatedLeft(), rateConverter.interpolatedRight() };
    double* const results[] { output[0].data(), output[1].data() };

    for (int c = 0; c < channelCount; ++c)
        sums[c] = fir.nextInput (c, count);

    delayInto (dryDelay, input, sums, channelCount, count);

    for (int c = 0; c < channelCount; ++c)
        BlockOperations::add (sums[c], interpolated[c], count);

    fir.run (results, channelCount, count);
}
