#include "support/DesignedFilter.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;

class SoloTest : public testing::Test
{
protected:
    void prepare (double sampleRate = 48000.0)
    {
        rig.set (ParameterIds::mode, 1.0f);
        rig.prepare (sampleRate, 64);
        rig.settle();
    }

    void solo (int band, bool on)
    {
        rig.set (band, Kind::solo, on ? 1.0f : 0.0f);
        rig.settle();
    }

    /** The response to an impulse on one channel, after silence. */
    PluginRig::Signal responseTo (int channel)
    {
        rig.runSilence (4096, 64);
        return rig.run (signals::impulse (2, 1024, channel), 64);
    }

    static std::vector<double> toDoubles (const std::vector<float>& values) { return { values.begin(), values.end() }; }

    static float largest (const std::vector<float>& values)
    {
        auto result = 0.0f;

        for (const auto value : values)
            result = std::max (result, std::abs (value));

        return result;
    }

    PluginRig rig;
};

TEST_F (SoloTest, delaysBy128SamplesAndTheFactorWhileTheReportStays)
{
    for (const auto& [rate, factor] : { std::pair (48000.0, 4), std::pair (96000.0, 4), std::pair (192000.0, 8) })
    {
        prepare (rate);
        rig.setBand (0, 8000.0f, 6.0f);
        rig.prepare (rate, 64);
        const auto reported = rig.reportedLatency();
        solo (0, true);

        const auto response = responseTo (0)[0];
        const auto centre = static_cast<std::size_t> (128 + factor);

        // A symmetric filter: its middle is its delay.
        for (std::size_t distance = 0; distance <= 128; ++distance)
            EXPECT_NEAR (response[centre - distance], response[centre + distance], 1.0e-7f) << distance;

        EXPECT_EQ (largest (response), std::abs (response[centre]));
        EXPECT_EQ (rig.reportedLatency(), reported);
        solo (0, false);
    }
}

TEST_F (SoloTest, isABandPassAroundTheBandWhateverItsGain)
{
    for (const auto gain : { 0.0f, 6.0f, -12.0f })
        for (const auto frequency : { 1000.0f, 6000.0f })
        {
            prepare();
            rig.setBand (0, frequency, gain, 4.0f);
            solo (0, true);
            const auto response = toDoubles (responseTo (1)[1]);

            // 257 taps round the narrow peak off.
            EXPECT_NEAR (signals::magnitudeDb (response, static_cast<double> (frequency), 48000.0), 0.0, 1.2) << gain;
            EXPECT_LT (signals::magnitudeDb (response, static_cast<double> (frequency) * 3.0, 48000.0), -15.0) << gain;
            solo (0, false);
        }
}

TEST_F (SoloTest, isSilentUntilItsFirstTapsArrive)
{
    prepare();
    rig.setBand (0, 8000.0f, 6.0f);
    rig.settle();

    auto& block = rig.processor.bandEngine().block (BlockProcessorMode::stereo);
    block.own();
    rig.set (0, Kind::solo, 1.0f);
    const auto output = rig.run (signals::noise (2, 640, 4), 64);
    block.disown();

    // What the block before left in the FIFO comes first.
    EXPECT_EQ (largest ({ output[0].begin() + 4, output[0].end() }), 0.0f);
    rig.settle();
    EXPECT_GT (largest (rig.run (signals::noise (2, 640, 4), 64)[0]), 0.01f);
}

TEST_F (SoloTest, aStereoBandRunsTheStereoPathAlone)
{
    prepare();
    rig.setBand (0, 8000.0f, 6.0f);
    rig.setBand (1, 3000.0f, 6.0f);
    rig.set (1, Kind::midSide, 0.0f);
    rig.settle();
    EXPECT_GT (largest (responseTo (1)[0]), 0.01f) << "a mid band sends right to left";

    solo (0, true);
    const auto response = responseTo (1);
    EXPECT_EQ (largest (response[0]), 0.0f);
    EXPECT_GT (largest (response[1]), 0.01f);
    EXPECT_LT (signals::magnitudeDb (toDoubles (response[1]), 1000.0, 48000.0), -6.0) << "no dry signal is left";
}

TEST_F (SoloTest, aMidBandRunsItsOwnPathAlone)
{
    prepare();
    rig.setBand (0, 8000.0f, 6.0f);
    rig.setBand (1, 3000.0f, 6.0f);
    rig.set (1, Kind::midSide, 0.0f);
    solo (1, true);

    const auto response = responseTo (1);
    EXPECT_EQ (signals::firstDifference ({ response[0] }, { response[1] }), "") << "mid is the same on both sides";
    EXPECT_NEAR (signals::magnitudeDb (toDoubles (response[0]), 3000.0, 48000.0), -6.02, 0.6) << "half of one channel";
}

TEST_F (SoloTest, aSideBandRunsItsOwnPathAlone)
{
    prepare();
    rig.setBand (1, 3000.0f, 6.0f);
    rig.set (1, Kind::midSide, 1.0f);
    solo (1, true);

    auto response = responseTo (1);

    for (auto& sample : response[0])
        sample = -sample;

    EXPECT_GT (largest (response[0]), 0.01f);
    EXPECT_EQ (signals::firstDifference ({ response[0] }, { response[1] }), "");
}

TEST_F (SoloTest, leavesTheOtherBandsCurrentWhenItEnds)
{
    prepare();
    rig.setBand (0, 8000.0f, 6.0f);
    rig.setBand (1, 500.0f, -6.0f);
    rig.setBand (2, 4000.0f, 3.0f);
    solo (0, true);
    rig.set (1, Kind::gain, 4.0f);
    rig.set (2, Kind::frequency, 3000.0f);
    rig.set (2, Kind::q, 2.0f);
    solo (0, false);

    PluginRig never;
    never.set (ParameterIds::mode, 1.0f);
    never.prepare (48000.0, 64);
    never.setBand (0, 8000.0f, 6.0f);
    never.setBand (1, 500.0f, 4.0f);
    never.setBand (2, 3000.0f, 3.0f, 2.0f);
    EXPECT_EQ (designedFilter::high (rig), designedFilter::high (never));
    EXPECT_EQ (designedFilter::low (rig), designedFilter::low (never));
}

TEST_F (SoloTest, keepsTheNormalFiltersThroughARebuildInBetween)
{
    prepare();
    rig.setBand (0, 8000.0f, 6.0f);
    solo (0, true);
    rig.set (ParameterIds::mode, 0.0f);
    rig.settle();
    rig.set (ParameterIds::mode, 1.0f);
    rig.settle();
    solo (0, false);
    EXPECT_NEAR (designedFilter::highLevelDb (rig, 8000.0), 6.0, 0.1);
}

TEST_F (SoloTest, worksOnAMonoBus)
{
    rig.set (ParameterIds::mode, 1.0f);
    rig.prepare (48000.0, 64, 1);
    rig.setBand (0, 6000.0f, 0.0f, 4.0f);
    solo (0, true);
    rig.runSilence (4096, 64);
    const auto response = rig.run (signals::impulse (1, 1024, 0), 64)[0];
    EXPECT_EQ (largest (response), std::abs (response[132]));
    EXPECT_NEAR (signals::magnitudeDb (toDoubles (response), 6000.0, 48000.0), 0.0, 0.6);
}
} // namespace
