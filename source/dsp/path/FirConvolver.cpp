#include "dsp/path/FirConvolver.h"

#include "dsp/path/FirKernel.h"
#include "dsp/simd/BlockOperations.h"

#include <algorithm>
#include <cstring>

FirConvolver::Channel::Channel (int maxTapCount, int maxBlock)
    : line (maxTapCount, std::max (maxBlock, maxTapCount)), tail (maxTapCount)
{
}

FirConvolver::FirConvolver (int numChannels, int maxTapCount, int maxBlock)
    : channelCount (std::clamp (numChannels, 1, 2)),
      tapValues (maxTapCount),
      tailScratch (2 * maxTapCount),
      channels { Channel (maxTapCount, maxBlock), Channel (maxTapCount, channelCount == 2 ? maxBlock : 0) }
{
}

void FirConvolver::setTapCount (int count) noexcept
{
    taps = std::clamp (count, 0, tapValues.size());
    symmetric = true;
    tapValues.clear();
    reset();
}

void FirConvolver::reset() noexcept
{
    for (auto& channel : channels)
    {
        channel.line.setPastLength (std::max (taps - 1, 0));
        channel.tailCount = 0;
    }
}

void FirConvolver::setTaps (std::span<const double> newTaps) noexcept
{
    if (static_cast<int> (newTaps.size()) != taps || taps == 0
        || std::memcmp (newTaps.data(), tapValues.data(), newTaps.size_bytes()) == 0)
        return;

    turnPastIntoTail();
    std::copy (newTaps.begin(), newTaps.end(), tapValues.data());
    symmetric = std::equal (newTaps.begin(), newTaps.end(), newTaps.rbegin());
}

void FirConvolver::turnPastIntoTail() noexcept
{
    const auto tailLength = taps - 1;
    const double* input[2] {};
    double* const output[] { tailScratch.data(), tailScratch.data() + tapValues.size() };

    for (int c = 0; c < channelCount; ++c)
    {
        std::fill_n (line (c).append (tailLength), tailLength, 0.0);
        input[c] = line (c).newest();
    }

    convolve ({ tapValues.data(), taps, symmetric, input, output, channelCount, tailLength });

    for (int c = 0; c < channelCount; ++c)
    {
        auto& channel = channels[static_cast<std::size_t> (c)];
        addTail (channel, output[c], tailLength);
        std::copy_n (output[c], tailLength, channel.tail.data());
        channel.tailStart = 0;
        channel.tailCount = tailLength;
        channel.line.clear();
    }
}

void FirConvolver::run (double* const* output, int channelsInUse, int count) noexcept
{
    if (count <= 0)
        return;

    const auto used = std::clamp (channelsInUse, 0, channelCount);
    const double* input[2] {};

    for (int c = 0; c < used; ++c)
        input[c] = line (c).newest();

    convolve ({ tapValues.data(), taps, symmetric, input, output, used, count });

    for (int c = 0; c < used; ++c)
        addTail (channels[static_cast<std::size_t> (c)], output[c], count);
}

void FirConvolver::run (const double* const* input, double* const* output, int channelsInUse, int count) noexcept
{
    for (int c = 0; c < std::min (channelsInUse, channelCount); ++c)
        std::copy_n (input[c], count, nextInput (c, count));

    run (output, channelsInUse, count);
}

void FirConvolver::addTail (Channel& channel, double* output, int count) noexcept
{
    const auto overlap = std::min (count, channel.tailCount);
    BlockOperations::add (output, channel.tail.data() + channel.tailStart, overlap);
    channel.tailStart += overlap;
    channel.tailCount -= overlap;
}
