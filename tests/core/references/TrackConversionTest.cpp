#include "core/references/TrackConversion.h"

#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using Signal = PluginRig::Signal;

/** A signal as a source, with silence behind its end. */
class SignalSource final : public juce::AudioSource
{
public:
    explicit SignalSource (const Signal& signalToGive) : signal (signalToGive) {}

    void prepareToPlay (int, double) override {}
    void releaseResources() override {}

    void getNextAudioBlock (const juce::AudioSourceChannelInfo& info) override
    {
        for (int i = 0; i < info.numSamples; ++i, ++position)
            for (int channel = 0; channel < info.buffer->getNumChannels(); ++channel)
            {
                const auto& samples = signal[static_cast<std::size_t> (channel) % signal.size()];
                info.buffer->setSample (
                    channel, info.startSample + i, position < samples.size() ? samples[position] : 0.0f);
            }
    }

private:
    const Signal& signal;
    std::size_t position = 0;
};

Signal converted (const Signal& signal, double fileRate, double sessionRate, std::vector<int>* counts = nullptr)
{
    SignalSource source (signal);
    const auto channels = static_cast<int> (signal.size());
    TrackConversion conversion (source, static_cast<juce::int64> (signal[0].size()), fileRate, sessionRate, channels);
    juce::AudioBuffer<float> block (channels, TrackConversion::blockLength);
    Signal result (signal.size());

    while (const auto count = conversion.take (block))
    {
        if (counts != nullptr)
            counts->push_back (count);

        for (int channel = 0; channel < channels; ++channel)
            result[static_cast<std::size_t> (channel)].insert (result[static_cast<std::size_t> (channel)].end(),
                                                               block.getReadPointer (channel),
                                                               block.getReadPointer (channel) + count);
    }

    return result;
}

TEST (TrackConversionTest, equalRatesGiveTheSoundBackToTheBit)
{
    const auto input = signals::noise (2, 150000, 1);
    std::vector<int> counts;
    EXPECT_EQ (signals::firstDifference (converted (input, 48000.0, 48000.0, &counts), input), "");
    EXPECT_EQ (counts, (std::vector { 65536, 65536, 18928 }));
}

TEST (TrackConversionTest, allOfAFileComesOutAtAnyRatio)
{
    // A minute's tenth at each of these must not gain or lose a sample.
    const auto lengthAt = [] (double fileRate, double sessionRate)
    { return converted (signals::noise (1, 600000, 2), fileRate, sessionRate)[0].size(); };

    EXPECT_EQ (lengthAt (44100.0, 48000.0), 653062u);
    EXPECT_EQ (lengthAt (192000.0, 44100.0), 137813u);
    EXPECT_EQ (lengthAt (8000.0, 96000.0), 7200000u);
}

TEST (TrackConversionTest, aSineStaysASineOfTheSamePitch)
{
    for (const auto& [from, to] : { std::pair (44100.0, 48000.0), std::pair (96000.0, 44100.0) })
    {
        Signal input (1);

        for (int n = 0; n < static_cast<int> (from); ++n)
            input[0].push_back (0.5f * static_cast<float> (std::sin (2.0 * std::numbers::pi * 200.0 * n / from)));

        const auto output = converted (input, from, to);
        auto crossings = 0;

        for (std::size_t n = 1; n < output[0].size(); ++n)
            crossings += output[0][n - 1] < 0.0f && output[0][n] >= 0.0f ? 1 : 0;

        EXPECT_NEAR (crossings, 200, 1) << from;
        EXPECT_NEAR (*std::ranges::max_element (output[0]), 0.5f, 0.005f) << from;
    }
}

TEST (TrackConversionTest, aSampleThatIsNoNumberHarmsNothingBehindIt)
{
    auto input = signals::noise (1, 100000, 3);
    input[0][10] = std::numeric_limits<float>::quiet_NaN();
    input[0][20] = std::numeric_limits<float>::infinity();

    for (const auto sessionRate : { 44100.0, 48000.0, 88200.0 })
    {
        const auto output = converted (input, 48000.0, sessionRate);
        auto energy = 0.0;

        for (const auto sample : output[0])
        {
            ASSERT_TRUE (std::isfinite (sample));
            energy += static_cast<double> (sample) * static_cast<double> (sample);
        }

        EXPECT_GT (energy / static_cast<double> (output[0].size()), 0.04) << sessionRate;
    }
}

TEST (TrackConversionTest, whatAnIntCannotCountHasNoLength)
{
    EXPECT_EQ (TrackConversion::sampleCountFor (480000, 48000.0, 44100.0), 441000);
    EXPECT_EQ (TrackConversion::sampleCountFor (1, 44100.0, 48000.0), 2) << "a fraction takes a sample of its own";
    EXPECT_EQ (TrackConversion::sampleCountFor (0, 44100.0, 48000.0), 0);
    EXPECT_EQ (TrackConversion::sampleCountFor (2147483647, 48000.0, 48000.0), 2147483647);
    EXPECT_EQ (TrackConversion::sampleCountFor (2147483648, 48000.0, 48000.0), std::nullopt);
    EXPECT_EQ (TrackConversion::sampleCountFor (2000000000, 44100.0, 48000.0), std::nullopt);
    EXPECT_EQ (TrackConversion::sampleCountFor (1000, 0.0, 48000.0), std::nullopt);
    EXPECT_EQ (TrackConversion::sampleCountFor (-5, 48000.0, 48000.0), std::nullopt);
}
} // namespace
