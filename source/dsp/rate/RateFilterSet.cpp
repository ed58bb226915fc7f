#include "dsp/rate/RateFilterSet.h"

#include "dsp/rate/PolyphaseKernel.h"
#include "dsp/rate/RateRecursion.h"
#include "dsp/simd/BlockOperations.h"

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
        BlockOperations::convert (input[c], line, count);
        newest[c] = line;
    }

    auto* reduced = reducedFrames.data();
    PolyphaseKernel::decimatingSums (*filter, newest, reduced, channelCount, reducedCount);
    runReduced (firstDecimator, channelCount, reducedCount);

    if (channelCount == 2)
        BlockOperations::deinterleave (reduced, output[0], output[1], reducedCount);
    else
        std::copy_n (reduced, reducedCount, output[0]);
}

void RateFilterSet::interpolate (const double* const* input,
                                 double* const* output,
                                 int channelCount,
                                 int reducedCount) noexcept
{
    const double* held[maxChannels] {};
    auto* reduced = reducedFrames.data();
    const auto factor = filter->factor;

    if (channelCount == 2)
        BlockOperations::interleave (input[0], input[1], reduced, reducedCount);
    else
        std::copy_n (input[0], reducedCount, reduced);

    runReduced (firstInterpolator, channelCount, reducedCount);

    for (int c = 0; c < channelCount; ++c)
    {
        auto* line = channels[static_cast<std::size_t> (firstInterpolator + c)].line.append (reducedCount * factor);
        held[c] = line;
        BlockOperations::hold (reduced + c, channelCount, line, factor, reducedCount);
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
