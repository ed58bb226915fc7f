#include "dsp/path/PathMixer.h"

#include "dsp/design/FirLengths.h"
#include "dsp/simd/BlockOperations.h"

#include <algorithm>

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
    BlockOperations::splitMidSide (left, right, midBlock.data(), sideBlock.data(), std::min (count, maxBlock));
    BlockOperations::splitMidSide (
        lowLeft, lowRight, midLowBlock.data(), sideLowBlock.data(), std::min (reducedCount, maxBlock));
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

        BlockOperations::joinPaths (results.stereoLeft, delayedLeft, results.mid, results.side, -1.0, outLeft, count);
        BlockOperations::joinPaths (results.stereoRight, delayedRight, results.side, results.mid, 1.0, outRight, count);
    }
    else if (useStereo)
    {
        BlockOperations::convert (results.stereoLeft, outLeft, count);
        BlockOperations::convert (results.stereoRight, outRight, count);
    }
    else if (useMidSide)
    {
        BlockOperations::joinMidSide (results.mid, results.side, outLeft, outRight, count);
    }
    else
    {
        std::fill_n (outLeft, count, 0.0f);
        std::fill_n (outRight, count, 0.0f);
    }
}
