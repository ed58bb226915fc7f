#include "dsp/path/RingFir.h"

#include "dsp/path/FirKernel.h"

#include <algorithm>
#include <cstddef>

RingFir::RingFir (int numChannels, int tapCount, int maxBlock)
    : channelCount (std::clamp (numChannels, 1, 2)),
      tapValues (std::max (tapCount, 1)),
      lines { SampleLine (tapValues.size(), maxBlock), SampleLine (tapValues.size(), channelCount == 2 ? maxBlock : 0) }
{
    reset();
}

void RingFir::reset() noexcept
{
    for (auto& line : lines)
        line.setPastLength (tapValues.size() - 1);
}

void RingFir::setTaps (std::span<const double> newTaps) noexcept
{
    if (static_cast<int> (newTaps.size()) != tapValues.size())
        return;

    std::copy (newTaps.begin(), newTaps.end(), tapValues.data());
    symmetric = std::equal (newTaps.begin(), newTaps.end(), newTaps.rbegin());
}

double* RingFir::nextInput (int channel, int count) noexcept
{
    return lines[static_cast<std::size_t> (channel)].append (count);
}

void RingFir::run (double* const* output, int channelsInUse, int count) noexcept
{
    const auto used = std::clamp (channelsInUse, 0, channelCount);
    const double* const input[] { lines[0].newest(), lines[1].newest() };
    convolve ({ tapValues.data(), tapValues.size(), symmetric, input, output, used, std::max (count, 0) });
}
