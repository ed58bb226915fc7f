#include "dsp/design/TapDesigner.h"
#include "dsp/rate/ReducedRate.h"

#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <fstream>
#include <map>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace
{
using Kind = BandMessageKind;
using Mode = BlockProcessorMode;

std::vector<double> copyOf (std::span<const double> taps)
{
    return { taps.begin(), taps.end() };
}

std::vector<double> impulse (int count, int index)
{
    std::vector<double> taps (std::size_t (count), 0.0);
    taps[std::size_t (index)] = 1.0;
    return taps;
}

double decibelsAt (std::span<const double> taps, double frequencyHz, double sampleRate)
{
    std::complex<double> sum;

    for (std::size_t i = 0; i < taps.size(); ++i)
        sum += taps[i] * std::polar (1.0, -2.0 * std::numbers::pi * frequencyHz / sampleRate * double (i));

    return 20.0 * std::log10 (std::abs (sum));
}

class TapDesignerTest : public testing::Test
{
protected:
    void prepare (double sampleRate, FilterMode mode, FilterPhase phase)
    {
        settings.sampleRate = sampleRate;
        settings.decimationFactor = decimationFactorFor (sampleRate).value();
        settings.filterMode = mode;
        settings.filterPhase = phase;
        designer.prepare (sampleRate);
        designer.configureLengths (firLengthsFor (sampleRate, mode));
        designer.resetTaps();
    }

    void setBand (int band, BandSettings changed)
    {
        changed.active = 1.0f;
        settings.bands[std::size_t (band)] = changed;
        curves.designBand ({ Kind::gain, band }, changed.gainDb, settings);
        curves.sumBands (settings);
    }

    const TapSets& sets = designer.tapSets();
    DesignSettings settings;
    BandCurves curves { Mode::stereo };
    TapDesigner designer;
};

TEST_F (TapDesignerTest, resetMakesImpulsesButLeavesSolo)
{
    EXPECT_EQ (copyOf (sets.solo.taps()), std::vector<double> (soloTapCount, 0.0));

    prepare (48000.0, FilterMode::mix, FilterPhase::linear);
    EXPECT_EQ (copyOf (sets.low.taps()), impulse (101, 50));
    EXPECT_EQ (copyOf (sets.linearHigh.taps()), impulse (101, 50));
    EXPECT_EQ (copyOf (sets.minimum.taps()), impulse (50, 0));

    settings.soloActive = true;
    settings.bands[0].solo = 1.0f;
    setBand (0, settings.bands[0]);
    curves.sumSolo (settings);
    designer.makeSoloTaps (curves);
    const auto solo = copyOf (sets.solo.taps());
    EXPECT_NE (solo, std::vector<double> (soloTapCount, 0.0));

    designer.configureLengths (firLengthsFor (48000.0, FilterMode::master));
    designer.resetTaps();
    EXPECT_EQ (copyOf (sets.low.taps()), impulse (61, 30));
    EXPECT_EQ (copyOf (sets.solo.taps()), solo);
}

TEST_F (TapDesignerTest, withoutBandsAllFiltersAreImpulses)
{
    for (const auto rate : { 44100.0, 96000.0, 192000.0 })
        for (const auto mode : { FilterMode::mix, FilterMode::master })
            for (const auto phase : { FilterPhase::linear, FilterPhase::minimum })
            {
                prepare (rate, mode, phase);
                curves.sumBands (settings);
                designer.makeTaps (curves, settings);
                const auto lengths = firLengthsFor (rate, mode);
                EXPECT_EQ (copyOf (sets.low.taps()), impulse (lengths.lowTapCount, (lengths.lowTapCount - 1) / 2));
                EXPECT_EQ (copyOf (sets.linearHigh.taps()),
                           impulse (lengths.linearHighTapCount, (lengths.linearHighTapCount - 1) / 2));

                if (lengths.minimumTapCount > 0)
                {
                    EXPECT_EQ (copyOf (sets.minimum.taps()), impulse (lengths.minimumTapCount, 0));
                }
            }
}

TEST_F (TapDesignerTest, aHighBandIsDesignedForBothPhases)
{
    prepare (48000.0, FilterMode::mix, FilterPhase::linear);
    setBand (0, { .frequencyHz = 4000.0f, .gainDb = 6.0f });
    designer.makeTaps (curves, settings);

    EXPECT_EQ (sets.minimumSource.count(), 99);
    EXPECT_NEAR (decibelsAt (sets.linearHigh.taps(), 4000.0, 48000.0), 6.0, 0.01);
    EXPECT_NEAR (decibelsAt (sets.minimumSource.taps(), 4000.0, 48000.0), 6.0, 0.01);
    EXPECT_EQ (copyOf (sets.low.taps()), impulse (101, 50));
    EXPECT_EQ (copyOf (sets.minimum.taps()), impulse (50, 0)) << "not made while the phase is linear";
}

TEST_F (TapDesignerTest, withoutHighBandsOnlyTheCurrentPhasesFilterIsReset)
{
    prepare (48000.0, FilterMode::mix, FilterPhase::minimum);
    setBand (0, { .frequencyHz = 4000.0f, .gainDb = 6.0f });
    designer.makeTaps (curves, settings);
    const auto linear = copyOf (sets.linearHigh.taps());
    ASSERT_NE (copyOf (sets.minimum.taps()), impulse (50, 0));

    setBand (0, { .frequencyHz = 4000.0f, .gainDb = 0.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (copyOf (sets.minimum.taps()), impulse (50, 0));
    EXPECT_EQ (copyOf (sets.minimumSource.taps()), impulse (99, 0));
    EXPECT_EQ (copyOf (sets.linearHigh.taps()), linear);

    settings.filterPhase = FilterPhase::linear;
    designer.makeTaps (curves, settings);
    EXPECT_EQ (copyOf (sets.linearHigh.taps()), impulse (101, 50));
}

TEST_F (TapDesignerTest, aLowBandStaysLinearInMinimumPhase)
{
    prepare (48000.0, FilterMode::mix, FilterPhase::minimum);
    setBand (0, { .frequencyHz = 1000.0f, .gainDb = 6.0f });
    designer.makeTaps (curves, settings);
    EXPECT_NEAR (decibelsAt (sets.low.taps(), 1000.0, 12000.0), 6.0, 0.01);

    for (std::size_t i = 0; i < 50; ++i)
        EXPECT_EQ (sets.low.taps()[i], sets.low.taps()[100 - i]);
}

TEST_F (TapDesignerTest, aMasterBellUsesTheShortFilters)
{
    prepare (48000.0, FilterMode::master, FilterPhase::minimum);
    setBand (0, { .frequencyHz = 2000.0f, .gainDb = 4.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (sets.linearHigh.count(), 61);
    EXPECT_EQ (sets.minimumSource.count(), 59);
    EXPECT_EQ (sets.minimum.count(), 30);

    // The fit of so short a filter and the cut to its half cost tenths of a decibel at this narrow a band.
    EXPECT_NEAR (decibelsAt (sets.linearHigh.taps(), 2000.0, 48000.0), 4.0, 0.05);
    EXPECT_NEAR (decibelsAt (sets.minimum.taps(), 2000.0, 48000.0), 4.0, 0.5);
}

TEST_F (TapDesignerTest, aboveTheDoubleRatesThePathIsLinearWhateverIsAsked)
{
    prepare (192000.0, FilterMode::mix, FilterPhase::minimum);
    EXPECT_EQ (sets.minimum.count(), 0);
    setBand (0, { .frequencyHz = 6000.0f, .gainDb = -6.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (sets.linearHigh.count(), 301);
    EXPECT_NEAR (decibelsAt (sets.linearHigh.taps(), 6000.0, 192000.0), -6.0, 0.01);

    setBand (0, { .frequencyHz = 6000.0f, .gainDb = 0.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (copyOf (sets.linearHigh.taps()), impulse (301, 150));
}

TEST_F (TapDesignerTest, theLowFilterCoversASixteenthOfTheHighestRates)
{
    prepare (192000.0, FilterMode::mix, FilterPhase::linear);
    setBand (0, { .frequencyHz = 700.0f, .gainDb = 6.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (sets.low.count(), 301);
    EXPECT_NEAR (decibelsAt (sets.low.taps(), 700.0, 24000.0), 6.0, 0.01);
    EXPECT_NEAR (decibelsAt (sets.low.taps(), 11999.0, 24000.0), 0.0, 0.01);
}

TEST_F (TapDesignerTest, aRefusedMinimumPhaseKeepsTheLastAcceptedTaps)
{
    prepare (48000.0, FilterMode::mix, FilterPhase::minimum);
    setBand (0, { .frequencyHz = 3000.0f, .gainDb = 3.0f, .highShelf = 1.0f });
    designer.makeTaps (curves, settings);
    const auto accepted = copyOf (sets.minimum.taps());

    setBand (0, { .frequencyHz = 3000.0f, .gainDb = -12.0f, .highShelf = 1.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (copyOf (sets.minimum.taps()), accepted);
    EXPECT_NEAR (decibelsAt (sets.linearHigh.taps(), 20000.0, 48000.0), -12.0, 0.05);
}

TEST_F (TapDesignerTest, anUnpreparedDesignerLeavesItsTaps)
{
    settings.filterMode = FilterMode::mix;
    designer.configureLengths (firLengthsFor (48000.0, FilterMode::mix));
    designer.resetTaps();
    setBand (0, { .frequencyHz = 4000.0f, .gainDb = 6.0f });
    designer.makeTaps (curves, settings);
    EXPECT_EQ (copyOf (sets.linearHigh.taps()), impulse (101, 50));
}

TEST_F (TapDesignerTest, aDesignAfterPrepareNeitherAllocatesNorLocks)
{
    for (const auto rate : { 44100.0, 96000.0, 192000.0 })
    {
        prepare (rate, FilterMode::mix, FilterPhase::minimum);
        const RealTimeGuard guard;

        for (const auto mode : { FilterMode::mix, FilterMode::master })
        {
            settings.filterMode = mode;
            settings.soloActive = false;
            settings.bands[1].solo = 0.0f;
            designer.configureLengths (firLengthsFor (rate, mode));
            designer.resetTaps();
            setBand (0, { .frequencyHz = 700.0f, .gainDb = -4.0f });
            setBand (1, { .frequencyHz = 5000.0f, .gainDb = 4.0f });
            designer.makeTaps (curves, settings);

            settings.soloActive = true;
            settings.bands[1].solo = 1.0f;
            curves.designBand ({ Kind::solo, 1 }, 1.0f, settings);
            curves.sumSolo (settings);
            designer.makeSoloTaps (curves);
        }

        EXPECT_EQ (guard.allocations(), 0) << rate;
        EXPECT_EQ (guard.locks(), 0) << rate;
        EXPECT_NEAR (decibelsAt (sets.low.taps(), 700.0, rate / settings.decimationFactor), -4.0, 0.05) << rate;
        EXPECT_NEAR (decibelsAt (sets.solo.taps(), 5000.0, rate), 0.0, 0.05) << rate;
    }
}

TEST_F (TapDesignerTest, aReturnToAKnownRateMakesNothingAnew)
{
    prepare (48000.0, FilterMode::mix, FilterPhase::linear);
    const auto held = LeastSquaresFir::forTapCount (101);
    TapDesigner second;
    second.prepare (48000.0);
    EXPECT_EQ (LeastSquaresFir::forTapCount (101), held);
}

class ReferenceResponseTest : public TapDesignerTest
{
protected:
    using Response = std::map<double, double>;

    static Response responseOfSetting (const std::string& name)
    {
        std::ifstream file (SOLVANE_FIXTURES "/high_path_responses.csv");
        Response response;

        for (std::string line; std::getline (file, line);)
        {
            std::istringstream fields (line);
            std::string setting, frequency, decibels;
            std::getline (fields, setting, ',');
            std::getline (fields, frequency, ',');
            std::getline (fields, decibels, ',');

            if (setting == name)
                response[std::stod (frequency)] = std::stod (decibels);
        }

        EXPECT_EQ (response.size(), 60u) << name;
        return response;
    }

    void expectResponse (const std::string& name, std::span<const double> taps) const
    {
        for (const auto& [frequencyHz, decibels] : responseOfSetting (name))
            EXPECT_NEAR (decibelsAt (taps, frequencyHz, settings.sampleRate), decibels, 0.01)
                << name << ' ' << frequencyHz;
    }
};

TEST_F (ReferenceResponseTest, aBellInMasterAtLinearPhase)
{
    prepare (48000.0, FilterMode::master, FilterPhase::linear);
    setBand (0, { .frequencyHz = 4000.0f, .gainDb = 4.0f });
    designer.makeTaps (curves, settings);
    expectResponse ("high_bell_4k_48_master_lin", sets.linearHigh.taps());
}

TEST_F (ReferenceResponseTest, aShelfInMixAtMinimumPhase)
{
    prepare (44100.0, FilterMode::mix, FilterPhase::minimum);
    setBand (5, { .frequencyHz = 8000.0f, .gainDb = 6.0f, .highShelf = 1.0f });
    designer.makeTaps (curves, settings);
    expectResponse ("high_shelf_8k_44_mix_min", sets.minimum.taps());
}

TEST_F (ReferenceResponseTest, aSoloedBell)
{
    prepare (44100.0, FilterMode::mix, FilterPhase::linear);
    setBand (1, { .frequencyHz = 800.0f, .gainDb = 5.0f });
    settings.soloActive = true;
    setBand (0, { .frequencyHz = 3000.0f, .gainDb = 6.0f, .q = 2.0f, .solo = 1.0f });
    curves.sumSolo (settings);
    designer.makeSoloTaps (curves);
    expectResponse ("solo_stereo_3k_44_mix_lin", sets.solo.taps());
}
} // namespace
