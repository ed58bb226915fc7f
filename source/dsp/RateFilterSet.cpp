#include "dsp/RateFilterSet.h"

#include "dsp/PolyphaseKernel.h"
#include "dsp/RateRecursion.h"

#include <algorithm>
#include <cstddef>

namespace
{
constexpr int smallestFactor = 4;
constexpr int maxChannels = 2;
constexpr int firstDecimator = 0;
constexpr int firstInterpolator = 2;
} // namespace

RateFilterSet::RateFilterSet (int maxBlock)
    : channels { IirChannel (maxBlock), IirChannel (maxBlock), IirChannel (maxBlock), IirChannel (maxBlock) },
      reducedFrames (maxChannels * (maxBlock / smallestFactor))
{
}

void RateFilterSet::prepare (const RateFilterTable& newTable) noexcept
{
    filter = &newTable;

    for (auto& channel : channels)
    {
        channel.line.setPastLength (RateFilterTable::maxFeedForwardCount);
        channel.results.fill (0.0);
    }
}

void RateFilterSet::decimate (const float* const* input, double* const* output, int channelCount, int count) noexcept
{
    const double* newest[maxChannels] {};
    const auto reducedCount = count / filter->factor;

    for (int c = 0; c < channelCount; ++c)
    {
        auto* line = channels[static_cast<std::size_t> (firstDecimator + c)].line.append (count);
        std::copy_n (input[c], count, line);
        newest[c] = line;
    }

    auto* reduced = reducedFrames.data();
    PolyphaseKernel::decimatingSums (*filter, newest, reduced, channelCount, reducedCount);
    runReduced (firstDecimator, channelCount, reducedCount);

    for (int c = 0; c < channelCount; ++c)
        for (int i = 0; i < reducedCount; ++i)
            output[c][i] = reduced[i * channelCount + c];
}

void RateFilterSet::interpolate (const double* const* input,
                                 double* const* output,
                                 int channelCount,
                                 int reducedCount) noexcept
{
    const double* held[maxChannels] {};
    auto* reduced = reducedFrames.data();
    const auto factor = filter->factor;

    for (int c = 0; c < channelCount; ++c)
        for (int i = 0; i < reducedCount; ++i)
            reduced[i * channelCount + c] = input[c][i];

    runReduced (firstInterpolator, channelCount, reducedCount);

    for (int c = 0; c < channelCount; ++c)
    {
        auto* line = channels[static_cast<std::size_t> (firstInterpolator + c)].line.append (reducedCount * factor);
        held[c] = line;

        for (int i = 0; i < reducedCount; ++i)
            std::fill_n (line + i * factor, factor, reduced[i * channelCount + c]);
    }

    PolyphaseKernel::interpolatingSums (*filter, held, output, channelCount, reducedCount);
}

void RateFilterSet::runReduced (int firstChannel, int channelCount, int frameCount) noexcept
{
    RecursionState* states[maxChannels] {};

    for (int c = 0; c < channelCount; ++c)
        states[c] = &channels[static_cast<std::size_t> (firstChannel + c)].results;

    runRecursion (*filter, reducedFrames.data(), frameCount, states, channelCount);
}
