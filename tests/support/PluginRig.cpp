#include "support/PluginRig.h"

#include <cmath>
#include <numbers>
#include <random>
#include <thread>

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
        while (! processor.bandEngine().isIdle())
            std::this_thread::yield();

        runSilence (4 * 8 * 4, 32);
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
    juce::MidiBuffer noMidi;

    for (int start = 0; start < length;)
    {
        const auto count = std::min (nextSize(), length - start);
        juce::AudioBuffer<float> buffer (channels, count);

        for (int channel = 0; channel < channels; ++channel)
            buffer.copyFrom (channel, 0, input[static_cast<std::size_t> (channel)].data() + start, count);

        processor.processBlock (buffer, noMidi);

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
