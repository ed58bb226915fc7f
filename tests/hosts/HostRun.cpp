#include "hosts/HostRun.h"

#include <chrono>
#include <cmath>
#include <limits>

namespace
{
/** More than the longest filter, and than the turns that four BlockProcessors need. */
constexpr int settleFrames = 4096;

constexpr auto longestDesign = std::chrono::seconds (60);
} // namespace

hostRun::Signal hostRun::run (HostedPlugin& plugin, const Signal& input, const std::function<int()>& nextSize)
{
    const auto channelCount = static_cast<int> (input.size());
    const auto length = static_cast<int> (input[0].size());
    auto output = input;

    for (int start = 0; start < length;)
    {
        const auto count = std::min (nextSize(), length - start);
        juce::AudioBuffer<float> buffer (channelCount, count);

        for (int channel = 0; channel < channelCount; ++channel)
            buffer.copyFrom (channel, 0, input[static_cast<std::size_t> (channel)].data() + start, count);

        plugin.process (buffer);

        for (int channel = 0; channel < channelCount; ++channel)
            std::copy_n (
                buffer.getReadPointer (channel), count, output[static_cast<std::size_t> (channel)].data() + start);

        start += count;
    }

    return output;
}

hostRun::Signal hostRun::run (HostedPlugin& plugin, const Signal& input, int blockSize)
{
    return run (plugin, input, [blockSize] { return blockSize; });
}

void hostRun::settle (HostedPlugin& plugin, int channelCount, int blockSize)
{
    const Signal silence (static_cast<std::size_t> (channelCount), std::vector<float> (settleFrames, 0.0f));
    std::ignore = run (plugin, silence, std::min (blockSize, 64));
}

bool hostRun::comesTrue (const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + longestDesign;

    while (! condition())
        if (std::chrono::steady_clock::now() > end)
            return false;

    return true;
}

float hostRun::differenceOnceDesigned (HostedPlugin& plugin, const Signal& input, const Signal& expected, int blockSize)
{
    auto difference = 0.0f;

    std::ignore = comesTrue (
        [&]
        {
            settle (plugin, static_cast<int> (input.size()), blockSize);
            difference = differenceFromDelayed (run (plugin, input, blockSize), expected, 0);
            return difference == 0.0f;
        });

    return difference;
}

bool hostRun::soundTheSameOnceDesigned (HostedPlugin& first,
                                        HostedPlugin& second,
                                        const Signal& input,
                                        int delay,
                                        int blockSize)
{
    constexpr auto flatness = 0.01f;

    return comesTrue (
        [&]
        {
            const auto channelCount = static_cast<int> (input.size());
            settle (first, channelCount, blockSize);
            settle (second, channelCount, blockSize);
            const auto output = run (first, input, blockSize);

            return differenceFromDelayed (output, input, delay) > flatness
                   && differenceFromDelayed (run (second, input, blockSize), output, 0) == 0.0f;
        });
}

float hostRun::differenceFromDelayed (const Signal& output, const Signal& input, int delay)
{
    auto largest = 0.0f;
    const auto shift = static_cast<std::size_t> (delay);

    for (std::size_t channel = 0; channel < output.size(); ++channel)
        for (std::size_t index = 0; index < output[channel].size(); ++index)
        {
            const auto expected = index >= shift ? input[channel][index - shift] : 0.0f;
            const auto difference = std::abs (output[channel][index] - expected);
            largest = std::isnan (difference) ? std::numeric_limits<float>::infinity() : std::max (largest, difference);
        }

    return largest;
}
