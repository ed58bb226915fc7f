#include "app/ReferenceSamples.h"

#include "app/CommandError.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <random>

namespace
{
constexpr int length = 300000;
constexpr double fileRate = 44100.0;

PluginRig::Signal noise (int channels)
{
    std::mt19937 random (5);
    std::uniform_real_distribution<float> values (-0.5f, 0.5f);
    PluginRig::Signal signal (static_cast<std::size_t> (channels), std::vector<float> (length));

    for (auto& channel : signal)
        std::ranges::generate (channel, [&] { return values (random); });

    return signal;
}

/** A whole signal through the framework's converter, in blocks of the same length. */
PluginRig::Signal converted (const PluginRig::Signal& signal, double sessionRate)
{
    const auto channels = static_cast<int> (signal.size());
    juce::AudioBuffer<float> buffer (channels, length);

    for (int channel = 0; channel < channels; ++channel)
        buffer.copyFrom (channel, 0, signal[static_cast<std::size_t> (channel)].data(), length);

    juce::MemoryAudioSource source (buffer, false);
    juce::ResamplingAudioSource converter (&source, false, channels);
    converter.setResamplingRatio (fileRate / sessionRate);
    converter.prepareToPlay (ReferenceSamples::blockLength, fileRate);

    const auto count = static_cast<int> (std::ceil (length / (fileRate / sessionRate)));
    juce::AudioBuffer<float> result (channels, count);

    for (int start = 0; start < count; start += ReferenceSamples::blockLength)
        converter.getNextAudioBlock ({ &result, start, std::min (ReferenceSamples::blockLength, count - start) });

    PluginRig::Signal all;

    for (int channel = 0; channel < channels; ++channel)
        all.emplace_back (result.getReadPointer (channel), result.getReadPointer (channel) + count);

    return all;
}

class ReferenceSamplesTest : public testing::Test
{
protected:
    std::string written (const PluginRig::Signal& signal)
    {
        const auto path = folder.path ("in.wav");
        std::filesystem::remove (path); // or the framework would append
        writeFloatWav (path, signal, fileRate);
        return path;
    }

    const TemporaryFolder folder;
};

TEST_F (ReferenceSamplesTest, areThoseOfTheWholeFileWhateverIsAskedFor)
{
    for (const auto channels : { 1, 2 })
        for (const auto sessionRate : { 44100.0, 48000.0, 96000.0 })
        {
            const auto signal = noise (channels);
            const auto expected = sessionRate == fileRate ? signal : converted (signal, sessionRate);
            AudioInput input (written (signal));
            ReferenceSamples samples (input, "in.wav", sessionRate);
            ASSERT_EQ (samples.count(), static_cast<int> (expected[0].size()));

            std::mt19937 random (7);
            std::vector<std::pair<int, int>> questions { { 0, 1 }, { 0, 65536 }, { 65000, 1024 }, { 131072, 1 } };

            // Forwards in chunks, and then anywhere.
            for (int start = 140000; start + 1024 <= 270000; start += 1024)
                questions.emplace_back (start, 1024);

            for (int index = 0; index < 20; ++index)
            {
                const auto count = static_cast<int> (random() % 65536) + 1;
                questions.emplace_back (static_cast<int> (random() % static_cast<unsigned> (samples.count() - count)),
                                        count);
            }

            questions.emplace_back (samples.count() - 65536, 65536);

            for (const auto& [start, count] : questions)
            {
                const auto [left, right] = samples.at (start, count);
                ASSERT_EQ (right != nullptr, channels == 2);
                ASSERT_TRUE (std::equal (left, left + count, expected[0].begin() + start)) << start;

                if (right != nullptr)
                {
                    ASSERT_TRUE (std::equal (right, right + count, expected[1].begin() + start)) << start;
                }
            }
        }
}

TEST_F (ReferenceSamplesTest, countWhatIsNoNumberOnceAndOnlyWhereItWasRead)
{
    auto signal = noise (2);
    signal[0][10] = std::numeric_limits<float>::quiet_NaN();
    signal[1][70000] = std::numeric_limits<float>::infinity();
    signal[1][290000] = std::numeric_limits<float>::quiet_NaN();
    AudioInput input (written (signal));
    ReferenceSamples samples (input, "in.wav", fileRate);
    EXPECT_EQ (samples.notFiniteCount(), 0);
    EXPECT_EQ (samples.at (10, 1).left[0], 0.0f);
    EXPECT_EQ (samples.notFiniteCount(), 1);

    for (const auto start : { 140000, 0, 140000, 5 })
        (void) samples.at (start, 1000);

    EXPECT_EQ (samples.notFiniteCount(), 2);
}

TEST_F (ReferenceSamplesTest, goOnWhereTheFileVanishesAndStopWhereItIsCut)
{
    const auto signal = noise (1);
    const auto path = written (signal);
    AudioInput input (path);
    ReferenceSamples samples (input, "in.wav", fileRate);
    EXPECT_EQ (samples.at (0, 1).left[0], signal[0][0]);

    // Its name goes, and it stays as long as it is open.
    std::filesystem::rename (path, folder.path ("gone.wav"));
    EXPECT_EQ (samples.at (100000, 1).left[0], signal[0][100000]);

    std::filesystem::resize_file (folder.path ("gone.wav"), 4 * 200000);
    EXPECT_THROW ((void) samples.at (250000, 1), CommandError);
}
} // namespace
