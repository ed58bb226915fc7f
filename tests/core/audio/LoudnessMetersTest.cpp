#include "core/audio/LoudnessMeters.h"
#include "dsp/meters/BandAnalyser.h"
#include "support/Fixture.h"
#include "support/LiveRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <limits>
#include <random>
#include <thread>

namespace
{
constexpr auto nothing = -std::numeric_limits<float>::infinity();

/** The left channel of a signal of the reference figures by its name, and whether the right one is the same. */
PluginRig::Signal referenceSignal (const std::string& name, int length)
{
    if (name == "sine997_left")
        return signals::tones ({ { 997.0, 1.0 } }, length, 48000.0, 2, 0.0);

    if (name == "sine1k_both_441")
        return signals::tones ({ { 1000.0, 0.1 } }, length, 44100.0);

    auto signal = signals::tones ({ { 440.0, 0.5 } }, length, 48000.0);

    for (auto& channel : signal)
        for (std::size_t n = 144000; n < channel.size(); ++n)
            channel[n] *= 0.01f;

    return signal;
}

class LoudnessMetersTest : public testing::TestWithParam<const char*>
{
};

TEST_P (LoudnessMetersTest, meetTheIndependentFigures)
{
    const auto all = readFixture ("loudness.json");
    const auto reference =
        *std::find_if (all.begin(), all.end(), [] (const auto& entry) { return entry["name"] == GetParam(); });
    const auto signal = referenceSignal (GetParam(), reference["readings"].back()["samples"]);
    LoudnessMeters meters;
    meters.prepare (reference["rate"]);
    std::mt19937 random (12);
    auto position = 0;

    for (const auto& reading : reference["readings"])
    {
        for (const auto end = reading["samples"].get<int>(); position < end;)
        {
            const auto count = std::min (static_cast<int> (1 + random() % 700), end - position);
            const orvik::ChannelPointers block { signal[0].data() + position, signal[1].data() + position };
            meters.process (block, block, count, true);
            position += count;
        }

        const auto integrated = numberOf (reading["integratedPlain"]);

        if (std::isinf (integrated))
            EXPECT_EQ (meters.inputLoudness(), nothing) << position;
        else
            EXPECT_NEAR (meters.inputLoudness(), integrated, 0.01) << position;

        EXPECT_NEAR (meters.matchInputLoudness(), numberOf (reading["shortTermK"]), 0.01) << position;
        EXPECT_EQ (meters.matchOutputLoudness(), meters.matchInputLoudness());
    }
}

INSTANTIATE_TEST_SUITE_P (Signals,
                          LoudnessMetersTest,
                          testing::Values ("sine997_left", "sine1k_both_441", "loud_then_quiet"),
                          [] (const auto& tested) { return std::string (tested.param); });

//======================================================================================================================
class LiveMetersTest : public testing::Test
{
protected:
    LiveMetersTest() { rig.prepare (48000.0, 480); }

    void run (int samples, double amplitude = 0.1)
    {
        std::ignore = rig.run (signals::tones ({ { 997.0, amplitude } }, samples, 48000.0, 2, 0.0), 480);
    }

    PluginRig rig;
    LoudnessMeters& meters = rig.processor.loudnessMeters();
};

TEST_F (LiveMetersTest, showNothingBeforeTheirFirstFigure)
{
    EXPECT_EQ (meters.inputLoudness(), nothing);
    EXPECT_EQ (meters.matchInputLoudness(), nothing);
    run (4800);
    EXPECT_EQ (meters.matchInputLoudness(), nothing) << "the hop is counted before it is due";
    run (480);
    EXPECT_GT (meters.matchInputLoudness(), -70.0f);
    EXPECT_EQ (meters.inputLoudness(), nothing);
    run (48000 - 5280);
    EXPECT_EQ (meters.inputLoudness(), nothing);
    run (480);
    EXPECT_GT (meters.inputLoudness(), -40.0f);
}

TEST_F (LiveMetersTest, aSineReadsByItsPowerWithAndWithoutWeighting)
{
    run (48000 * 5, 1.0);
    EXPECT_NEAR (meters.matchInputLoudness(), -3.01f, 0.01f);
    EXPECT_NEAR (meters.inputLoudness(), -3.70f, 0.2f) << "the first windows hold the reset level still";
    EXPECT_NEAR (meters.matchOutputLoudness(), -3.01f, 0.01f) << "a flat equaliser changes nothing";
}

TEST_F (LiveMetersTest, theInputIsMeasuredBeforeTheFilters)
{
    rig.renderOffline();
    rig.set (ParameterIds::mode, 1.0f);
    rig.setBand (2, 2000.0f, 12.0f, 0.5f);
    rig.settle();
    std::ignore = rig.run (signals::tones ({ { 2000.0, 0.1 } }, 48000 * 4, 48000.0), 480);
    EXPECT_NEAR (meters.matchOutputLoudness() - meters.matchInputLoudness(), 12.0f, 0.1f);
}

TEST_F (LiveMetersTest, silenceReadsNothing)
{
    rig.runSilence (48000 * 4, 480);
    EXPECT_EQ (meters.inputLoudness(), nothing);
    EXPECT_EQ (meters.matchInputLoudness(), nothing) << "the whole window is zero by now";
}

TEST_F (LiveMetersTest, shortTermSilenceStartsNearTheResetLevel)
{
    rig.runSilence (4800 + 480, 480);
    EXPECT_NEAR (meters.matchInputLoudness(), resetLevelDb, 0.2f);
}

TEST_F (LiveMetersTest, aRequestedResetTakesTheReadingAtOnceAndTheRestAtTheNextBlock)
{
    run (48000 * 3);
    ASSERT_GT (meters.inputLoudness(), -40.0f);
    const auto shortTerm = meters.matchInputLoudness();
    meters.requestReset();
    EXPECT_EQ (meters.inputLoudness(), nothing);
    EXPECT_EQ (meters.matchInputLoudness(), shortTerm) << "belongs to the audio thread";
    run (480);
    EXPECT_EQ (meters.inputLoudness(), nothing);
    run (48000 * 4);
    EXPECT_NEAR (meters.inputLoudness(), -23.70f, 0.3f);
    EXPECT_NEAR (meters.matchInputLoudness(), -23.01f, 0.01f);
}

TEST_F (LiveMetersTest, aResetForgetsTheThreeSecondsBefore)
{
    run (48000 * 4, 1.0);
    meters.requestReset();
    rig.runSilence (4800 * 2, 480);
    EXPECT_LT (meters.matchInputLoudness(), -40.0f) << "what is left is how the weighting takes the sudden end";
    EXPECT_LT (meters.matchOutputLoudness(), -20.0f) << "and what the filters still held";
}

TEST_F (LiveMetersTest, aPrepareStartsThemAnew)
{
    run (48000 * 3);
    rig.prepare (48000.0, 480);
    EXPECT_EQ (meters.inputLoudness(), nothing);
    EXPECT_EQ (meters.matchInputLoudness(), nothing);
    EXPECT_EQ (meters.matchOutputLoudness(), nothing);
}

TEST (MonoMetersTest, readTheOneChannel)
{
    PluginRig rig;
    rig.prepare (48000.0, 480, 1);
    std::ignore = rig.run (signals::tones ({ { 997.0, 1.0 } }, 48000 * 5, 48000.0, 1), 480);
    EXPECT_NEAR (rig.processor.loudnessMeters().matchInputLoudness(), -3.01f, 0.01f);
    EXPECT_NEAR (rig.processor.loudnessMeters().matchOutputLoudness(), -3.01f, 0.01f);
    EXPECT_NEAR (rig.processor.loudnessMeters().inputLoudness(), -3.70f, 0.3f)
        << "counted once; the first figures are low";
}

TEST (MeterResetTest, aBlockUnderWayDoesNotBringTheReadingBack)
{
    constexpr auto rate = 48000;
    constexpr int warmUp = rate + 960;
    constexpr int blockLength = 4096; // ends before the second's gate comes again
    const auto signal = signals::tones ({ { 997.0, 0.5 } }, warmUp, rate);
    const orvik::ChannelPointers block { signal[0].data(), signal[1].data() };
    LoudnessMeters meters;

    for (int round = 0; round < 200; ++round)
    {
        meters.prepare (rate);
        meters.process (block, block, warmUp, false);
        ASSERT_GT (meters.inputLoudness(), -20.0f);

        std::atomic<bool> begun { false };
        std::thread audio (
            [&]
            {
                begun = true;
                meters.process (block, block, blockLength, false);
            });

        while (! begun)
            std::this_thread::yield();

        for (const auto until = std::chrono::steady_clock::now() + std::chrono::microseconds (round % 40);
             std::chrono::steady_clock::now() < until;)
        {
        }

        meters.requestReset();
        audio.join();
        ASSERT_EQ (meters.inputLoudness(), nothing) << "round " << round;
    }
}
} // namespace
