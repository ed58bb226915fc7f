#include "dsp/path/BypassDelay.h"

#include <algorithm>
#include <utility>

BypassDelay::BypassDelay (int longestDelaySamples)
{
    for (auto& line : lines)
        line.resize (static_cast<std::size_t> (std::max (0, longestDelaySamples)), 0.0f);
}

void BypassDelay::setLength (int samples) noexcept
{
    published.publish (std::clamp (samples, 0, static_cast<int> (lines[0].size())));
}

void BypassDelay::takeLength() noexcept
{
    const auto length = published.takeNew();

    if (! length.has_value())
        return;

    currentLength = *length;
    index = 0;

    for (auto& line : lines)
        std::fill_n (line.begin(), currentLength, 0.0f);
}

void BypassDelay::process (float* const* channels, int channelCount, int sampleCount) noexcept
{
    takeLength();

    if (currentLength == 0)
        return;

    const auto start = index;

    for (int channel = 0; channel < std::min (channelCount, 2); ++channel)
    {
        auto* line = lines[static_cast<std::size_t> (channel)].data();
        index = start;

        for (int sample = 0; sample < sampleCount; ++sample)
        {
            std::swap (line[index], channels[channel][sample]);

            if (++index == currentLength)
                index = 0;
        }
    }
}
