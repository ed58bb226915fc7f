#include "support/PluginRig.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <random>
#include <stdexcept>
#include <thread>

namespace juce
{
// What the framework's own message thread of a plug-in calls. A dispatch loop cannot be run twice in one process.
bool dispatchNextMessageOnSystemQueue (bool returnIfNoPendingMessages);
} // namespace juce

PluginRig::PluginRig (const HostDescription& host) : processor (host) {}

HostDescription PluginRig::plainHost()
{
    return { juce::PluginHostType::UnknownHost, "/opt/host", []() noexcept { return 0; } };
}

void PluginRig::prepare (double sampleRate, int blockSize, int channelCount)
{
    const auto set = juce::AudioChannelSet::canonicalChannelSet (channelCount);
    juce::AudioProcessor::BusesLayout layout;
    layout.inputBuses.add (set);
    layout.outputBuses.add (set);
    processor.setBusesLayout (layout);
    processor.setRateAndBufferSizeDetails (sampleRate, blockSize);
    processor.prepareToPlay (sampleRate, blockSize);
    channels = channelCount;
    block = blockSize;
}

void PluginRig::set (int band, Settings::Parameter kind, float plainValue)
{
    set (ParameterIds::ofBand (band, kind), plainValue);
}

void PluginRig::setBand (int band, float frequencyHz, float gainDb, float q)
{
    using Kind = Settings::Parameter;
    set (band, Kind::active, 1.0f);
    set (band, Kind::frequency, frequencyHz);
    set (band, Kind::q, q);
    set (band, Kind::gain, gainDb);
}

void PluginRig::settle()
{
    // A rebuild takes a turn of each BlockProcessor and asks for a design, whose taps take another turn.
    for (int round = 0; round < 3; ++round)
    {
        waitForWorkers();
        runSilence (4 * 8 * 4, 32);
    }
}

void PluginRig::waitForWorkers()
{
    while (! processor.bandEngine().isIdle())
        std::this_thread::yield();
}

TapSets PluginRig::designedTaps (BlockProcessorMode mode)
{
    waitForWorkers();
    auto& target = processor.bandEngine().block (mode);
    target.own();
    const auto taps = target.taps();
    target.disown();
    return taps;
}

void PluginRig::process (juce::AudioBuffer<float>& buffer)
{
    juce::MidiBuffer noMidi;
    processor.processBlock (buffer, noMidi);
}

void PluginRig::serveMessagesUntil (const std::function<bool()>& done)
{
    constexpr std::chrono::seconds patience { 60 };
    const auto start = std::chrono::steady_clock::now();

    while (! done())
    {
        if (std::chrono::steady_clock::now() - start > patience)
            throw std::runtime_error ("no message brought what was waited for");

        if (! juce::dispatchNextMessageOnSystemQueue (true))
            std::this_thread::yield();
    }
}

PluginRig::Signal PluginRig::run (const Signal& input, int blockSize)
{
    return run (input, [blockSize] { return blockSize; });
}

PluginRig::Signal PluginRig::run (const Signal& input, const std::function<int()>& nextSize)
{
    const auto length = static_cast<int> (input[0].size());
    auto output = input;

    for (int start = 0; start < length;)
    {
        const auto count = std::min (nextSize(), length - start);
        juce::AudioBuffer<float> buffer (channels, count);

        for (int channel = 0; channel < channels; ++channel)
            buffer.copyFrom (channel, 0, input[static_cast<std::size_t> (channel)].data() + start, count);

        process (buffer);

        for (int channel = 0; channel < channels; ++channel)
            std::copy_n (
                buffer.getReadPointer (channel), count, output[static_cast<std::size_t> (channel)].data() + start);

        start += count;
    }

    return output;
}

void PluginRig::runSilence (int count, int blockSize)
{
    const Signal silence (static_cast<std::size_t> (channels),
                          std::vector<float> (static_cast<std::size_t> (count), 0.0f));
    std::ignore = run (silence, std::min (blockSize, block));
}

PluginRig::Signal signals::noise (int channelCount, int length, unsigned seed, float amplitude)
{
    std::mt19937 generator (seed);
    std::uniform_real_distribution<float> uniform (-amplitude, amplitude);
    PluginRig::Signal signal (static_cast<std::size_t> (channelCount));

    for (auto& channel : signal)
    {
        channel.resize (static_cast<std::size_t> (length));

        for (auto& sample : channel)
            sample = uniform (generator);
    }

    return signal;
}

PluginRig::Signal signals::impulse (int channelCount, int length, int channel)
{
    PluginRig::Signal signal (static_cast<std::size_t> (channelCount),
                              std::vector<float> (static_cast<std::size_t> (length), 0.0f));
    signal[static_cast<std::size_t> (channel)][0] = 1.0f;
    return signal;
}

PluginRig::Signal signals::delayedBy (const PluginRig::Signal& signal, int samples)
{
    auto result = signal;

    for (auto& channel : result)
    {
        const auto count = std::min (static_cast<std::ptrdiff_t> (samples), std::ssize (channel));
        std::shift_right (channel.begin(), channel.end(), count);
        std::fill_n (channel.begin(), count, 0.0f);
    }

    return result;
}

std::string
signals::firstDifference (const PluginRig::Signal& actual, const PluginRig::Signal& expected, float tolerance)
{
    for (std::size_t channel = 0; channel < expected.size(); ++channel)
        for (std::size_t index = 0; index < expected[channel].size(); ++index)
            if (! (std::abs (actual[channel][index] - expected[channel][index]) <= tolerance))
                return "channel " + std::to_string (channel) + ", sample " + std::to_string (index) + ": "
                       + std::to_string (actual[channel][index]) + " instead of "
                       + std::to_string (expected[channel][index]);

    return {};
}

double signals::magnitudeDb (const std::vector<double>& sequence, double frequencyHz, double sampleRate)
{
    const auto step = 2.0 * std::numbers::pi * frequencyHz / sampleRate;
    auto real = 0.0;
    auto imaginary = 0.0;

    for (std::size_t index = 0; index < sequence.size(); ++index)
    {
        real += sequence[index] * std::cos (step * static_cast<double> (index));
        imaginary -= sequence[index] * std::sin (step * static_cast<double> (index));
    }

    return 10.0 * std::log10 (real * real + imaginary * imaginary);
}
