#include "dsp/meters/LUFSProcessor.h"
#include "support/Recording.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include <ebur128.h>

namespace
{
using Meter = orvik::LUFSProcessor<3000>;

constexpr auto noReading = -std::numeric_limits<double>::infinity();

std::unique_ptr<Meter> meterAt (double sampleRate)
{
    auto meter = std::make_unique<Meter>();
    meter->setSampleRate (sampleRate);
    meter->prepare();
    meter->reset (-70.0f);
    meter->resetShortTerm (-70.0f);
    return meter;
}

/** A 1 kHz sine on both channels, its peak level in dB relative to full scale, or silence. */
struct Segment
{
    double levelDb;
    double seconds;
};

std::vector<float> sineOf (const std::vector<Segment>& segments, double sampleRate)
{
    std::vector<float> samples;

    for (const auto& segment : segments)
    {
        const auto amplitude = std::pow (10.0, segment.levelDb / 20.0);
        const auto end = samples.size() + static_cast<std::size_t> (std::lround (segment.seconds * sampleRate));

        while (samples.size() < end)
            samples.push_back (static_cast<float> (
                amplitude
                * std::sin (2.0 * std::numbers::pi * 1000.0 * static_cast<double> (samples.size()) / sampleRate)));
    }

    return samples;
}

/** Runs a signal through the weighting into `integrated`. */
double integratedOf (const std::vector<float>& samples, double sampleRate)
{
    const auto meter = meterAt (sampleRate);

    for (const auto sample : samples)
        meter->integrated (meter->weighting.stereoPower (sample, sample));

    return meter->integratedValue();
}

/** All short-term readings, one each 100 ms. */
std::vector<double> shortTermOf (const std::vector<float>& left, const std::vector<float>& right, double sampleRate)
{
    const auto meter = meterAt (sampleRate);
    std::vector<double> readings;

    for (std::size_t i = 0; i < left.size(); ++i)
    {
        auto updated = false;
        const auto level = meter->shortTerm (meter->weighting.stereoPower (left[i], right[i]), &updated);

        if (updated)
            readings.push_back (level);
    }

    return readings;
}

struct StandardCase
{
    const char* name;
    std::vector<Segment> segments;
};

std::ostream& operator<< (std::ostream& stream, const StandardCase& tested)
{
    return stream << tested.name;
}

/** The stereo signals of EBU Tech 3341 whose integrated loudness is -23 LUFS, after their numbers there. */
class IntegratedStandardTest : public testing::TestWithParam<StandardCase>
{
};

TEST_P (IntegratedStandardTest, readsMinus23WithinATenth)
{
    for (const auto rate : { 44100.0, 48000.0 })
        EXPECT_NEAR (integratedOf (sineOf (GetParam().segments, rate), rate), -23.0, 0.1) << rate;
}

INSTANTIATE_TEST_SUITE_P (
    Signals,
    IntegratedStandardTest,
    testing::Values (StandardCase { "case1", { { -23.0, 20.0 } } },
                     StandardCase { "case3", { { -36.0, 10.0 }, { -23.0, 60.0 }, { -36.0, 10.0 } } },
                     StandardCase {
                         "case4",
                         { { -72.0, 10.0 }, { -36.0, 10.0 }, { -23.0, 60.0 }, { -36.0, 10.0 }, { -72.0, 10.0 } } },
                     StandardCase { "case5", { { -26.0, 20.0 }, { -20.0, 20.1 }, { -26.0, 20.0 } } }),
    [] (const auto& tested) { return std::string (tested.param.name); });

TEST (LoudnessStandardTest, readsCase2AtItsLevel)
{
    EXPECT_NEAR (integratedOf (sineOf ({ { -33.0, 20.0 } }, 48000.0), 48000.0), -33.0, 0.1);
}

// Beyond the signals of the standard: this meter forgets after five minutes and computes once a second, and its first
// three blocks hold the reset level. The last of these is the whole difference on a short signal.
TEST (LoudnessStandardTest, aShortSignalReadsLowByItsFirstThreeBlocksAlone)
{
    const auto level = integratedOf (sineOf ({ { -23.0, 3.2 } }, 48000.0), 48000.0);
    const auto blocks = 30.0;
    EXPECT_LT (level, -23.1);
    EXPECT_NEAR (level - 10.0 * std::log10 ((blocks - 1.5) / blocks), -23.0, 0.03);
}

TEST (LoudnessStandardTest, whatIsOlderThanFiveMinutesIsForgotten)
{
    const auto rate = 8000.0;
    const auto level = integratedOf (sineOf ({ { -20.0, 30.0 }, { -26.0, 301.0 } }, rate), rate);
    EXPECT_NEAR (level, integratedOf (sineOf ({ { -26.0, 331.0 } }, rate), rate), 0.05);
}

// Case 9: louder and softer in turn, three seconds together, so that every window of three seconds holds the same.
TEST (LoudnessStandardTest, shortTermIsConstantOnThePeriodicSignal)
{
    std::vector<Segment> segments;

    for (int i = 0; i < 5; ++i)
        segments.insert (segments.end(), { { -20.0, 1.34 }, { -30.0, 1.66 } });

    const auto samples = sineOf (segments, 48000.0);
    const auto readings = shortTermOf (samples, samples, 48000.0);
    ASSERT_EQ (readings.size(), 149u);

    for (std::size_t i = 30; i < readings.size(); ++i)
        EXPECT_NEAR (readings[i], -23.0, 0.1) << i;
}

// Cases 10 and 11: a tone of three seconds that starts 0.15 s later each time must be caught by a window.
TEST (LoudnessStandardTest, shortTermCatchesAToneOfThreeSecondsWhereverItStarts)
{
    for (int i = 0; i < 20; ++i)
    {
        const auto levelDb = -38.0 + i;
        const auto samples = sineOf ({ { noReading, 0.15 * i }, { levelDb, 3.0 }, { noReading, 1.0 } }, 48000.0);
        const auto readings = shortTermOf (samples, samples, 48000.0);
        EXPECT_NEAR (*std::max_element (readings.begin(), readings.end()), levelDb, 0.1) << i;
    }
}

struct RecordingCase
{
    const char* name;
    int sampleRate;
};

std::ostream& operator<< (std::ostream& stream, const RecordingCase& tested)
{
    return stream << tested.name << " at " << tested.sampleRate;
}

class RecordingLoudnessTest : public testing::TestWithParam<RecordingCase>
{
};

TEST_P (RecordingLoudnessTest, shortTermAgreesWithLibebur128)
{
    const auto rate = GetParam().sampleRate;
    auto recording = readRecording (GetParam().name, rate);

    // Short recordings are played in a loop, so that three seconds fill.
    while (recording.left.size() < static_cast<std::size_t> (8 * rate))
        for (auto* channel : { &recording.left, &recording.right })
        {
            const auto once = *channel;
            channel->insert (channel->end(), once.begin(), once.end());
        }

    const auto frames = std::min (recording.left.size(), static_cast<std::size_t> (20 * rate));
    const auto meter = meterAt (rate);
    const auto deleter = [] (ebur128_state* state) { ebur128_destroy (&state); };
    const std::unique_ptr<ebur128_state, decltype (deleter)> other (
        ebur128_init (2, static_cast<unsigned long> (rate), EBUR128_MODE_S), deleter);
    ASSERT_NE (other, nullptr);
    auto compared = 0;
    auto largestDifference = 0.0;

    for (std::size_t i = 0; i < frames; ++i)
    {
        const float frame[] { recording.left[i], recording.right[i] };
        auto updated = false;
        const auto level = meter->shortTerm (meter->weighting.stereoPower (frame[0], frame[1]), &updated);
        ASSERT_EQ (ebur128_add_frames_float (other.get(), frame, 1), EBUR128_SUCCESS);

        if (updated && i >= static_cast<std::size_t> (3 * rate))
        {
            auto expected = 0.0;
            ASSERT_EQ (ebur128_loudness_shortterm (other.get(), &expected), EBUR128_SUCCESS);
            ASSERT_NEAR (level, expected, 0.05) << "after " << static_cast<double> (i) / rate << " s";
            largestDifference = std::max (largestDifference, std::abs (static_cast<double> (level) - expected));
            ++compared;
        }
    }

    RecordProperty ("largestDifference", std::to_string (largestDifference));
    EXPECT_GE (compared, 49);
}

INSTANTIATE_TEST_SUITE_P (Recordings,
                          RecordingLoudnessTest,
                          testing::Values (RecordingCase { "loop_amen_full", 44100 },
                                           RecordingCase { "loop_amen_full", 48000 },
                                           RecordingCase { "loop_amen_full", 96000 },
                                           RecordingCase { "loop_garzul", 44100 },
                                           RecordingCase { "loop_garzul", 48000 },
                                           RecordingCase { "loop_garzul", 96000 },
                                           RecordingCase { "guit_em9", 44100 },
                                           RecordingCase { "guit_em9", 48000 },
                                           RecordingCase { "guit_em9", 96000 }),
                          [] (const auto& tested)
                          { return std::string (tested.param.name) + "_" + std::to_string (tested.param.sampleRate); });
} // namespace
