#include "dsp/PathMixer.h"

#include "dsp/FirLengths.h"

#include <algorithm>

namespace
{
template <typename Sample>
void splitBlock (const Sample* left, const Sample* right, double* mid, double* side, int count) noexcept
{
    for (int i = 0; i < count; ++i)
    {
        const auto l = static_cast<double> (left[i]);
        const auto r = static_cast<double> (right[i]);
        mid[i] = (l + r) * 0.5;
        side[i] = (r - l) * 0.5;
    }
}

void toSingle (const double* input, float* output, int count) noexcept
{
    for (int i = 0; i < count; ++i)
        output[i] = static_cast<float> (input[i]);
}
} // namespace

PathMixer::PathMixer() : dryDelay (2, maxBaseLatencySamples) {}

void PathMixer::setLatency (int samples) noexcept
{
    dryDelay.setLength (samples);
}

void PathMixer::split (const float* left,
                       const float* right,
                       int count,
                       const double* lowLeft,
                       const double* lowRight,
                       int reducedCount) noexcept
{
    splitBlock (left, right, midBlock.data(), sideBlock.data(), std::min (count, maxBlock));
    splitBlock (lowLeft, lowRight, midLowBlock.data(), sideLowBlock.data(), std::min (reducedCount, maxBlock));
}

void PathMixer::mix (const float* left,
                     const float* right,
                     const PathResults& results,
                     int count,
                     bool useStereo,
                     bool useMidSide,
                     float* outLeft,
                     float* outRight) noexcept
{
    count = std::clamp (count, 0, maxBlock);

    if (useStereo && useMidSide)
    {
        auto* delayedLeft = dryLeft.data();
        auto* delayedRight = dryRight.data();
        dryDelay.processStereo (left, right, delayedLeft, delayedRight, count);

        for (int i = 0; i < count; ++i)
        {
            outLeft[i] =
                static_cast<float> ((results.stereoLeft[i] - delayedLeft[i]) + (results.mid[i] - results.side[i]));
            outRight[i] =
                static_cast<float> ((results.stereoRight[i] - delayedRight[i]) + (results.side[i] + results.mid[i]));
        }
    }
    else if (useStereo)
    {
        toSingle (results.stereoLeft, outLeft, count);
        toSingle (results.stereoRight, outRight, count);
    }
    else if (useMidSide)
    {
        for (int i = 0; i < count; ++i)
        {
            outLeft[i] = static_cast<float> (results.mid[i] - results.side[i]);
            outRight[i] = static_cast<float> (results.side[i] + results.mid[i]);
        }
    }
    else
    {
        std::fill_n (outLeft, count, 0.0f);
        std::fill_n (outRight, count, 0.0f);
    }
}
