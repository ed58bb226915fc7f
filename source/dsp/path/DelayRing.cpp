#include "dsp/path/DelayRing.h"

#include "dsp/simd/BlockOperations.h"

#include <algorithm>
#include <utility>

DelayRing::DelayRing (int channelCount, int maxLength)
    : channels (std::clamp (channelCount, 1, 2)), maxDelay (std::max (maxLength, 0)), storage (channels * maxDelay)
{
}

void DelayRing::setLength (int samples) noexcept
{
    delay = std::clamp (samples, 0, maxDelay);
    clear();
}

void DelayRing::clear() noexcept
{
    index = 0;
    storage.clear();
}

double DelayRing::process (double input) noexcept
{
    if (delay == 0)
        return input;

    const auto delayed = std::exchange (channel (0)[index], input);
    advance();
    return delayed;
}

void DelayRing::process (double& left, double& right) noexcept
{
    if (delay == 0)
        return;

    std::swap (left, channel (0)[index]);
    std::swap (right, channel (channels - 1)[index]);
    advance();
}

void DelayRing::processSingle (const double* input, double* output, int count) noexcept
{
    processBlock (&input, &output, 1, count);
}

void DelayRing::processSingle (const float* input, double* output, int count) noexcept
{
    processBlock (&input, &output, 1, count);
}

void DelayRing::processStereo (const double* left,
                               const double* right,
                               double* outLeft,
                               double* outRight,
                               int count) noexcept
{
    const double* const input[] { left, right };
    double* const output[] { outLeft, outRight };
    processBlock (input, output, channels, count);
}

void DelayRing::processStereo (const float* left,
                               const float* right,
                               double* outLeft,
                               double* outRight,
                               int count) noexcept
{
    const float* const input[] { left, right };
    double* const output[] { outLeft, outRight };
    processBlock (input, output, channels, count);
}

template <typename Sample>
void DelayRing::processBlock (const Sample* const* input, double* const* output, int channelsInUse, int count) noexcept
{
    if (delay == 0)
    {
        for (int c = 0; c < channelsInUse; ++c)
            for (int i = 0; i < count; ++i)
                output[c][i] = static_cast<double> (input[c][i]);

        return;
    }

    for (int done = 0; done < count;)
    {
        const auto span = std::min (count - done, delay - index);

        for (int c = 0; c < channelsInUse; ++c)
            BlockOperations::exchange (input[c] + done, channel (c) + index, output[c] + done, span);

        done += span;
        index = index + span < delay ? index + span : 0;
    }
}

void DelayRing::advance() noexcept
{
    index = index + 1 < delay ? index + 1 : 0;
}
