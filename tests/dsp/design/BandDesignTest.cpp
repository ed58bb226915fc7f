#include "dsp/design/BandDesign.h"

#include "dsp/filters/MagnitudeCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{
using Kind = BandMessageKind;
using Mode = BlockProcessorMode;

DesignSettings settingsWithBand (BandSettings band, int index = 0)
{
    DesignSettings settings;
    settings.filterMode = FilterMode::mix;
    settings.bands[std::size_t (index)] = band;
    return settings;
}

DesignSettings settingsWithMidSide (float midSide, float gainDb = 6.0f)
{
    return settingsWithBand ({ .frequencyHz = 3000.0f, .gainDb = gainDb, .midSide = midSide });
}

TEST (BandMessageNameTest, readsKindAndBand)
{
    EXPECT_EQ (parseBandMessageName ("band_solo_0"), (BandMessageName { Kind::solo, 0 }));
    EXPECT_EQ (parseBandMessageName ("band_bypass_1"), (BandMessageName { Kind::bypass, 1 }));
    EXPECT_EQ (parseBandMessageName ("band_gain_2"), (BandMessageName { Kind::gain, 2 }));
    EXPECT_EQ (parseBandMessageName ("band_Q_3"), (BandMessageName { Kind::q, 3 }));
    EXPECT_EQ (parseBandMessageName ("band_frequency_4"), (BandMessageName { Kind::frequency, 4 }));
    EXPECT_EQ (parseBandMessageName ("band_highshelf_5"), (BandMessageName { Kind::highShelf, 5 }));
    EXPECT_EQ (parseBandMessageName ("band_midside_9"), (BandMessageName { Kind::midSide, 9 }));
}

TEST (BandMessageNameTest, searchesItsWordsInOrder)
{
    EXPECT_EQ (parseBandMessageName ("band_gain_solo_1"), (BandMessageName { Kind::solo, 1 }));
    EXPECT_EQ (parseBandMessageName ("band_frequency_gain_1"), (BandMessageName { Kind::gain, 1 }));
    EXPECT_EQ (parseBandMessageName ("band_midside_Q_1"), (BandMessageName { Kind::q, 1 }));
}

TEST (BandMessageNameTest, ignoresWhatItDoesNotKnow)
{
    for (const auto* name : { "",
                              "7",
                              "band_gain_",
                              "band_gain_10",
                              "band_gain_00",
                              "band_Gain_1",
                              "band_active_1",
                              "paramMode",
                              "band_q_1" })
        EXPECT_EQ (parseBandMessageName (name), std::nullopt) << name;
}

TEST (EffectiveGainTest, scalesAndLimitsOnce)
{
    auto settings = settingsWithMidSide (0.5f);
    settings.gainScalePercent = 150.0f;
    EXPECT_FLOAT_EQ (effectiveGain (4.0f, 0, Mode::stereo, settings), 6.0f);
    EXPECT_FLOAT_EQ (effectiveGain (10.0f, 0, Mode::stereo, settings), 12.0f);
    EXPECT_FLOAT_EQ (effectiveGain (-10.0f, 0, Mode::display, settings), -12.0f);

    settings.gainScaleApplied = true;
    EXPECT_FLOAT_EQ (effectiveGain (4.0f, 0, Mode::stereo, settings), 4.0f);
    EXPECT_FLOAT_EQ (effectiveGain (18.0f, 0, Mode::stereo, settings), 18.0f);
}

TEST (EffectiveGainTest, theExactCentreRunsThroughStereoAlone)
{
    const auto settings = settingsWithMidSide (0.5f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::stereo, settings), 6.0f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::mid, settings), 0.0f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::side, settings), 0.0f);
}

TEST (EffectiveGainTest, midAndSideFadeInDecibels)
{
    const auto justMid = settingsWithMidSide (0.49f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::stereo, justMid), 0.0f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::mid, justMid), 6.0f);
    EXPECT_NEAR (effectiveGain (6.0f, 0, Mode::side, justMid), 0.98f * 6.0f, 1e-5f);

    const auto mostlySide = settingsWithMidSide (0.9f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::side, mostlySide), 6.0f);
    EXPECT_NEAR (effectiveGain (6.0f, 0, Mode::mid, mostlySide), 0.2f * 6.0f, 1e-5f);

    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::mid, settingsWithMidSide (0.0f)), 6.0f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::side, settingsWithMidSide (0.0f)), 0.0f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::mid, settingsWithMidSide (1.0f)), 0.0f);
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::side, settingsWithMidSide (1.0f)), 6.0f);
}

// One step of a float beside the centre is beside the centre: both neighbours must reach both modes.
TEST (EffectiveGainTest, theNeighboursOfTheCentreAreNotTheCentre)
{
    for (const auto midSide : { std::nextafter (0.5f, 0.0f), std::nextafter (0.5f, 1.0f) })
    {
        const auto settings = settingsWithMidSide (midSide);
        EXPECT_EQ (effectiveGain (6.0f, 0, Mode::stereo, settings), 0.0f);
        EXPECT_NEAR (effectiveGain (6.0f, 0, Mode::mid, settings), 6.0f, 1e-5f);
        EXPECT_NEAR (effectiveGain (6.0f, 0, Mode::side, settings), 6.0f, 1e-5f);
    }
}

TEST (EffectiveGainTest, displayIgnoresMidSideAndSolo)
{
    auto settings = settingsWithMidSide (0.1f);
    settings.soloActive = true;
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::display, settings), 6.0f);
}

TEST (EffectiveGainTest, soloGivesOneDecibelWhateverTheGain)
{
    auto settings = settingsWithBand ({ .gainDb = 0.0f, .solo = 1.0f });
    settings.soloActive = true;
    EXPECT_EQ (effectiveGain (0.0f, 0, Mode::stereo, settings), 1.0f);
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::stereo, settings), 1.0f);
    EXPECT_EQ (effectiveGain (9.0f, 1, Mode::stereo, settings), 0.0f) << "another band";
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::mid, settings), 0.0f);
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::side, settings), 0.0f);

    settings.bands[0].midSide = 0.3f;
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::stereo, settings), 0.0f);
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::mid, settings), 1.0f);
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::side, settings), 0.0f);

    settings.bands[0].midSide = 0.7f;
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::mid, settings), 0.0f);
    EXPECT_EQ (effectiveGain (9.0f, 0, Mode::side, settings), 1.0f);
}

// Releasing one of two solos ends the solo, but the other band's switch is still down.
TEST (EffectiveGainTest, aSoloSwitchCountsInStereoWithoutAnActiveSolo)
{
    const auto settings = settingsWithBand ({ .gainDb = 6.0f, .solo = 1.0f });
    EXPECT_EQ (effectiveGain (6.0f, 0, Mode::stereo, settings), 1.0f);
}

class BandShapeTest : public testing::Test
{
protected:
    BandShapeTest()
    {
        settings.filterMode = FilterMode::mix;
        settings.bands[3] = { .frequencyHz = 3000.0f, .gainDb = 5.0f, .q = 2.0f };
    }

    [[nodiscard]] BandShape shape (Kind kind, float value, Mode mode = Mode::stereo) const
    {
        return bandShapeFor ({ kind, 3 }, value, mode, settings);
    }

    DesignSettings settings;
};

TEST_F (BandShapeTest, theMessagesValueReplacesItsParameter)
{
    EXPECT_EQ (shape (Kind::gain, -7.0f).gainDb, -7.0f);
    EXPECT_EQ (shape (Kind::gain, -7.0f).frequencyHz, 3000.0f);
    EXPECT_EQ (shape (Kind::gain, -7.0f).q, 2.0f);
    EXPECT_EQ (shape (Kind::q, 6.0f).q, 6.0f);
    EXPECT_EQ (shape (Kind::q, 6.0f).gainDb, 5.0f);
    EXPECT_EQ (shape (Kind::frequency, 8000.0f).frequencyHz, 8000.0f);
    EXPECT_EQ (shape (Kind::frequency, 8000.0f).gainDb, 5.0f);
    EXPECT_TRUE (shape (Kind::highShelf, 1.0f).highShelf);
    EXPECT_FALSE (shape (Kind::highShelf, 0.0f).highShelf);
    EXPECT_EQ (shape (Kind::solo, 0.0f).gainDb, 5.0f);
    EXPECT_EQ (shape (Kind::midSide, 0.5f).gainDb, 5.0f);
    EXPECT_EQ (shape (Kind::midSide, 0.0f).gainDb, 0.0f);
}

TEST_F (BandShapeTest, aBypassedBandHasNoGain)
{
    EXPECT_EQ (shape (Kind::bypass, 1.0f).gainDb, 0.0f);
    EXPECT_EQ (shape (Kind::bypass, 0.0f).gainDb, 5.0f);
}

TEST_F (BandShapeTest, masterLimitsTheMessageButNotTheParameter)
{
    settings.filterMode = FilterMode::master;
    EXPECT_EQ (shape (Kind::gain, 6.0f).gainDb, 4.0f);
    EXPECT_EQ (shape (Kind::gain, -6.0f).gainDb, -4.0f);
    EXPECT_EQ (shape (Kind::gain, 6.0f).q, 2.0f);
    EXPECT_EQ (shape (Kind::q, 6.0f).q, 1.5f);
    EXPECT_EQ (shape (Kind::q, 0.6f).q, 0.6f);
    EXPECT_EQ (shape (Kind::frequency, 4000.0f).gainDb, 5.0f);
    EXPECT_EQ (shape (Kind::frequency, 4000.0f).q, 2.0f);
    EXPECT_FALSE (checkMasterLimits (settings.bands));
}

TEST_F (BandShapeTest, masterLimitsBeforeTheGainScaleActs)
{
    settings.filterMode = FilterMode::master;
    settings.gainScalePercent = 150.0f;
    EXPECT_FLOAT_EQ (shape (Kind::gain, 9.0f).gainDb, 6.0f);
}

TEST_F (BandShapeTest, lowBandsAreDesignedAtTheReducedRateUnlessSoloed)
{
    EXPECT_EQ (shape (Kind::frequency, 1500.0f).designRate, 12000.0);
    EXPECT_EQ (shape (Kind::frequency, 1500.1f).designRate, 48000.0);

    settings.sampleRate = 192000.0;
    settings.decimationFactor = 8;
    EXPECT_EQ (shape (Kind::frequency, 1500.0f).designRate, 24000.0);

    settings.soloActive = true;
    EXPECT_EQ (shape (Kind::frequency, 1500.0f).designRate, 192000.0);
}

TEST_F (BandShapeTest, theMainBypassSilencesTheAudioModesWhateverArrives)
{
    settings.mainBypass = true;

    for (const auto mode : { Mode::stereo, Mode::mid, Mode::side })
        for (const auto midSide : { 0.2f, 0.5f, 0.8f })
        {
            settings.bands[3].midSide = midSide;

            for (const auto kind : { Kind::gain, Kind::q, Kind::frequency, Kind::highShelf, Kind::bypass })
                EXPECT_EQ (shape (kind, kind == Kind::bypass ? 0.0f : 3.0f, mode).gainDb, 0.0f);
        }

    EXPECT_EQ (shape (Kind::gain, 3.0f, Mode::display).gainDb, 3.0f);
}

TEST (BandCurveShapeTest, aShelfIgnoresQAndABellUsesIt)
{
    std::vector<double> wide (curvePointCount), narrow (curvePointCount);
    evaluateBandCurve ({ 6.0f, 4000.0f, 0.5f, true, 48000.0 }, wide);
    evaluateBandCurve ({ 6.0f, 4000.0f, 9.0f, true, 48000.0 }, narrow);
    EXPECT_EQ (wide, narrow);
    EXPECT_NEAR (20.0 * std::log10 (wide.back()), 6.0, 1e-6);

    evaluateBandCurve ({ 6.0f, 4000.0f, 0.5f, false, 48000.0 }, wide);
    evaluateBandCurve ({ 6.0f, 4000.0f, 9.0f, false, 48000.0 }, narrow);
    EXPECT_GT (wide[100], narrow[100] + 0.1);
    EXPECT_NEAR (wide.back(), 1.0, 1e-9);
}

TEST (MasterLimitsTest, holdForEveryBandUsedOrNot)
{
    std::array<BandSettings, bandCount> bands {};
    EXPECT_TRUE (checkMasterLimits (bands));

    for (std::size_t band = 0; band < bands.size(); ++band)
    {
        auto changed = bands;
        changed[band].gainDb = -4.0f;
        changed[band].q = 1.5f;
        EXPECT_TRUE (checkMasterLimits (changed)) << band;
        changed[band].gainDb = -4.1f;
        EXPECT_FALSE (checkMasterLimits (changed)) << band;
        changed[band].gainDb = 4.1f;
        EXPECT_FALSE (checkMasterLimits (changed)) << band;
        changed[band].gainDb = 0.0f;
        changed[band].q = 1.6f;
        EXPECT_FALSE (checkMasterLimits (changed)) << band;
    }
}
} // namespace
