#include "support/SessionRig.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

namespace
{
using Kind = Settings::Parameter;

constexpr int blockSize = 512;
constexpr int signalLength = 8192;

/** Offline, so that every change reaches the filters on the calling thread. */
std::unique_ptr<PluginRig> makeRig (bool prepared)
{
    auto rig = std::make_unique<PluginRig>();
    rig->renderOffline();

    if (prepared)
        rig->prepare (48000.0, blockSize);

    return rig;
}

/** What comes out once every tap set has been handed over, and the flags of the paths. */
PluginRig::Signal outputOf (PluginRig& rig)
{
    rig.settle();
    rig.runSilence (signalLength, blockSize);
    return rig.run (signals::noise (2, signalLength, 77), blockSize);
}

double largestDifference (const PluginRig::Signal& a, const PluginRig::Signal& b)
{
    auto largest = 0.0;

    for (std::size_t channel = 0; channel < a.size(); ++channel)
        for (std::size_t sample = 0; sample < a[channel].size(); ++sample)
            largest = std::max (largest, std::abs (static_cast<double> (a[channel][sample] - b[channel][sample])));

    return largest;
}

bool isFinite (const PluginRig::Signal& signal)
{
    return std::all_of (
        signal.begin(),
        signal.end(),
        [] (const auto& channel)
        { return std::all_of (channel.begin(), channel.end(), [] (float x) { return std::isfinite (x); }); });
}

/** Designs are the same to the bit; the recursive rate filters may still ring from what ran before. */
constexpr double ringing = 1.0e-6;

juce::MemoryBlock fullBlock()
{
    PluginRig rig;
    sessions::fillSession (rig);
    return sessions::save (rig.processor);
}

juce::MemoryBlock soloBlock (int band)
{
    PluginRig rig;
    rig.setBand (0, 500.0f, 2.0f);
    rig.setBand (5, 5000.0f, -3.0f);
    rig.set (band, Kind::solo, 1.0f);
    return sessions::save (rig.processor);
}

TEST (SessionRestoreTest, aBlockSoundsTheSameWhetherItComesBeforePrepareAfterItOrTwice)
{
    const auto block = fullBlock();

    const auto before = makeRig (false);
    sessions::load (before->processor, block);
    before->prepare (48000.0, blockSize);
    const auto expected = outputOf (*before);

    const auto after = makeRig (true);
    sessions::load (after->processor, block);
    EXPECT_LE (largestDifference (outputOf (*after), expected), ringing);

    sessions::load (after->processor, block);
    EXPECT_LE (largestDifference (outputOf (*after), expected), ringing);

    EXPECT_GT (largestDifference (expected, outputOf (*makeRig (true))), 0.01) << "the block is heard at all";
}

TEST (SessionRestoreTest, aBlockSoundsTheSameWhateverWasSetBefore)
{
    for (const auto& [first, second] : { std::pair { 0, 5 }, std::pair { 5, 0 } })
    {
        const auto fresh = makeRig (true);
        sessions::load (fresh->processor, soloBlock (second));

        const auto changed = makeRig (true);
        sessions::load (changed->processor, soloBlock (first));
        std::ignore = outputOf (*changed);
        sessions::load (changed->processor, soloBlock (second));

        EXPECT_TRUE (changed->processor.model.soloActive());
        EXPECT_EQ (changed->processor.model.soloBand(), second);
        EXPECT_LE (largestDifference (outputOf (*changed), outputOf (*fresh)), ringing) << first << " to " << second;
    }
}

TEST (SessionRestoreTest, aBlockWithoutSoloEndsTheSolo)
{
    const auto rig = makeRig (true);
    sessions::load (rig->processor, soloBlock (5));
    std::ignore = outputOf (*rig);
    sessions::load (rig->processor, fullBlock());

    const auto fresh = makeRig (true);
    sessions::load (fresh->processor, fullBlock());
    EXPECT_FALSE (rig->processor.model.soloActive());
    EXPECT_LE (largestDifference (outputOf (*rig), outputOf (*fresh)), ringing);
}

TEST (SessionRestoreTest, theOtherSideOfTheComparisonIsHeard)
{
    const auto rig = makeRig (true);
    rig->setBand (1, 1000.0f, 6.0f);
    rig->set (1, Kind::midSide, 0.0f);
    rig->processor.sessionState().compareCopy();
    rig->set (1, Kind::midSide, 0.5f);
    rig->set (1, Kind::gain, -6.0f);
    rig->processor.sessionState().compareSwitch (true);
    EXPECT_TRUE (rig->processor.model.midSidePathActive());
    EXPECT_FALSE (rig->processor.model.stereoPathActive());

    const auto fresh = makeRig (true);
    fresh->setBand (1, 1000.0f, 6.0f);
    fresh->set (1, Kind::midSide, 0.0f);
    EXPECT_LE (largestDifference (outputOf (*rig), outputOf (*fresh)), ringing);
}

//======================================================================================================================
/** The drawn response in dB at a frequency; its points lie evenly from 0 Hz to half the rate. */
float drawnDb (VelmoraAudioProcessor& processor, double frequencyHz)
{
    const std::scoped_lock lock (processor.model.responseLock);
    const auto last = static_cast<double> (processor.model.responseCurveDb.size() - 1);
    return processor.model.responseCurveDb[static_cast<std::size_t> (std::lround (frequencyHz / 24000.0 * last))];
}

TEST (SessionRestoreTest, theGainScaleWorksFromTheGainsAsLoaded)
{
    const auto source = makeRig (true);
    source->setBand (2, 3000.0f, 3.0f);
    source->set (ParameterIds::mode, 1.0f);
    const auto block = sessions::save (source->processor);

    const auto rig = makeRig (true);
    sessions::load (rig->processor, block);
    EXPECT_EQ (rig->processor.model.storedBandGains[2], 3.0f);
    rig->set (2, Kind::gain, 1.0f);
    rig->set (ParameterIds::gainScale, 200.0f);
    EXPECT_NEAR (drawnDb (rig->processor, 3000.0), 6.0f, 0.02f);

    sessions::load (rig->processor, sessions::save (rig->processor));
    EXPECT_EQ (rig->processor.model.storedBandGains[2], 1.0f);
    EXPECT_NEAR (drawnDb (rig->processor, 3000.0), 2.0f, 0.02f);
}

TEST (SessionRestoreTest, theGainScaleOfANewInstanceWorksFromTheLiveGains)
{
    const auto rig = makeRig (true);
    rig->setBand (2, 3000.0f, 3.0f);
    rig->set (ParameterIds::mode, 1.0f);
    rig->set (2, Kind::gain, 1.0f);
    rig->set (ParameterIds::gainScale, 200.0f);
    EXPECT_NEAR (drawnDb (rig->processor, 3000.0), 2.0f, 0.02f);
}

//======================================================================================================================
/** A parameter's value as text, and what has to come of it. */
struct ValueCase
{
    const char* id;
    const char* value;
    float expected;
};

class ForeignValueTest : public testing::TestWithParam<ValueCase>
{
};

TEST_P (ForeignValueTest, becomesAValueInRangeAndTheOutputStaysFinite)
{
    const auto [id, value, expected] = GetParam();
    const auto rig = makeRig (true);
    rig->setBand (3, 2000.0f, 4.0f);
    sessions::loadText (rig->processor,
                        std::string ("<ZVQ_Processor><PARAM id=\"") + id + "\" value=\"" + value
                            + "\"/><PARAM id=\"band_active_3\" value=\"1.0\"/></ZVQ_Processor>");
    EXPECT_EQ (rig->processor.getAPVTS().getRawParameterValue (id)->load(), expected);
    EXPECT_TRUE (isFinite (outputOf (*rig)));
}

INSTANTIATE_TEST_SUITE_P (Values,
                          ForeignValueTest,
                          testing::Values (ValueCase { "band_gain_3", "nan", 0.0f },
                                           ValueCase { "band_gain_3", "-nan", 0.0f },
                                           ValueCase { "band_gain_3", "inf", 0.0f },
                                           ValueCase { "band_gain_3", "-inf", 0.0f },
                                           ValueCase { "band_gain_3", "1e400", 0.0f },
                                           ValueCase { "band_gain_3", "1e300", 12.0f },
                                           ValueCase { "band_gain_3", "-1e300", -12.0f },
                                           ValueCase { "band_gain_3", "99", 12.0f },
                                           ValueCase { "band_gain_3", "words", 0.0f },
                                           ValueCase { "band_gain_3", "", 0.0f },
                                           ValueCase { "band_Q_3", "nan", 1.0f },
                                           ValueCase { "band_Q_3", "0", 0.5f },
                                           ValueCase { "band_Q_3", "1e30", 5.0f },
                                           ValueCase { "band_frequency_3", "nan", 320.0f },
                                           ValueCase { "band_frequency_3", "-5", 320.0f },
                                           ValueCase { "band_frequency_3", "1e30", 20000.0f },
                                           ValueCase { "band_midside_3", "inf", 0.5f },
                                           ValueCase { "band_midside_3", "-7", 0.0f },
                                           ValueCase { "paramGainScale", "nan", 100.0f },
                                           ValueCase { "paramGainScale", "1e9", 200.0f },
                                           ValueCase { "paramOutputGainDb", "nan", 0.0f },
                                           ValueCase { "paramOutputGainDb", "1e9", 12.0f },
                                           ValueCase { "paramCurrentZVQPreset", "nan", 131.0f },
                                           ValueCase { "paramCurrentZVQPreset", "-1", 0.0f }),
                          [] (const auto& tested) { return "case" + std::to_string (tested.index); });

TEST (SessionRestoreTest, parametersThatABlockLacksTakeTheirDefaults)
{
    PluginRig rig;
    rig.setBand (0, 5000.0f, 3.0f);
    rig.set (ParameterIds::outputGain, 3.0f);
    sessions::loadText (rig.processor,
                        "<ZVQ_Processor><PARAM id=\"band_gain_0\" value=\"2.0\"/><PARAM id=\"unknown\" value=\"1\"/>"
                        "<PARAM/><OTHER/></ZVQ_Processor>");
    EXPECT_EQ (rig.processor.model.getBandValue (0, Kind::gain), 2.0f);
    EXPECT_EQ (rig.processor.model.getBandValue (0, Kind::frequency), 320.0f);
    EXPECT_EQ (rig.processor.model.outputGainDb(), 0.0f);
}

TEST (SessionRestoreTest, thePresetOfASessionIsInUseWithoutAPrepare)
{
    PluginRig rig;
    sessions::loadText (rig.processor,
                        "<ZVQ_Processor><PARAM id=\"paramCurrentZVQPreset\" value=\"130.0\"/>"
                        "<settings lufs-overall=\"-8.5\" lufs-2=\"-19.0\"/></ZVQ_Processor>");
    EXPECT_EQ (rig.processor.presets.currentPreset().id, Presets::userSettingId);
    EXPECT_EQ (rig.processor.target.targetLufs, -8.5f);
    EXPECT_EQ (rig.processor.target.targetValues[2], -19.0f);
}

//======================================================================================================================
TEST (SessionRestoreTest, blocksMayComeAndGoOnOtherThreadsWhileAudioRuns)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    const std::array blocks { fullBlock(), soloBlock (0), soloBlock (5) };
    std::atomic<int> running { 3 };
    auto finite = true;

    std::thread loading (
        [&]
        {
            for (std::size_t round = 0; round < 30; ++round)
                sessions::load (rig.processor, blocks[round % blocks.size()]);

            --running;
        });
    std::thread saving (
        [&]
        {
            for (int round = 0; round < 60; ++round)
                if (parseBlock (sessions::save (rig.processor)) == nullptr)
                    finite = false;

            --running;
        });
    std::thread comparing (
        [&]
        {
            for (int round = 0; round < 30; ++round)
            {
                rig.processor.sessionState().fillMissingStores();
                rig.processor.sessionState().compareSwitch (round % 2 == 0);
            }

            --running;
        });

    const auto input = signals::noise (2, 64, 3);
    auto output = true;

    while (running > 0)
        output = output && isFinite (rig.run (input, 64));

    loading.join();
    saving.join();
    comparing.join();
    EXPECT_TRUE (output);
    EXPECT_TRUE (finite);

    sessions::load (rig.processor, blocks[1]);
    PluginRig fresh;
    fresh.prepare (48000.0, 64);
    sessions::load (fresh.processor, blocks[1]);
    EXPECT_LE (largestDifference (outputOf (rig), outputOf (fresh)), ringing);
}
} // namespace
