#include "dsp/design/BandCurves.h"

#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{
using Kind = BandMessageKind;
using Mode = BlockProcessorMode;
using testing::Each;

class BandCurvesTest : public testing::Test
{
protected:
    BandCurvesTest() { settings.filterMode = FilterMode::mix; }

    void setBand (int band, float frequencyHz, float gainDb, float q = 1.0f)
    {
        auto& changed = settings.bands[std::size_t (band)];
        changed.frequencyHz = frequencyHz;
        changed.gainDb = gainDb;
        changed.q = q;
        changed.active = 1.0f;
    }

    void design (BandCurves& target, int band)
    {
        target.designBand ({ Kind::gain, band }, settings.bands[std::size_t (band)].gainDb, settings);
    }

    DesignSettings settings;
    BandCurves curves { Mode::stereo };
};

TEST_F (BandCurvesTest, startsFlat)
{
    EXPECT_THAT (curves.bandCurve (0), Each (1.0));
    EXPECT_THAT (curves.soloBandCurve (9), Each (1.0));
    EXPECT_THAT (curves.displayCurve(), Each (1.0));
    EXPECT_THAT (curves.highCurve(), Each (0.0));
    EXPECT_THAT (curves.lowCurve(), Each (0.0));
    EXPECT_THAT (curves.soloCurve(), Each (0.0));
    EXPECT_EQ (curves.bandPresence(), (BandPresence { false, false }));
}

TEST_F (BandCurvesTest, withoutGainsNoBandIsPresentAndTheSumsAreOne)
{
    for (int band = 0; band < bandCount; ++band)
        design (curves, band);

    curves.sumBands (settings);
    EXPECT_EQ (curves.bandPresence(), (BandPresence { false, false }));
    EXPECT_THAT (curves.highCurve(), Each (1.0));
    EXPECT_THAT (curves.lowCurve(), Each (1.0));
}

TEST_F (BandCurvesTest, theLimitFrequencyIsLow)
{
    setBand (0, 1500.0f, 3.0f);
    curves.sumBands (settings);
    EXPECT_EQ (curves.bandPresence(), (BandPresence { false, true }));

    setBand (0, 1500.1f, 3.0f);
    curves.sumBands (settings);
    EXPECT_EQ (curves.bandPresence(), (BandPresence { true, false }));
}

TEST_F (BandCurvesTest, addsDeviationsWithEachSumRoundedToFloat)
{
    setBand (1, 2000.0f, 6.0f);
    setBand (4, 3000.0f, -5.0f, 2.0f);
    setBand (7, 5000.0f, 4.0f, 0.7f);
    setBand (2, 800.0f, -8.0f);

    for (const auto band : { 1, 2, 4, 7 })
        design (curves, band);

    curves.sumBands (settings);
    EXPECT_EQ (curves.bandPresence(), (BandPresence { true, true }));

    for (std::size_t k = 0; k < curvePointCount; ++k)
    {
        auto sum = float (curves.bandCurve (1)[k]);
        sum = float (double (sum) + curves.bandCurve (4)[k]);
        sum = float (double (sum) + curves.bandCurve (7)[k]);
        ASSERT_EQ (curves.highCurve()[k], double (sum - 2.0f)) << k;
        ASSERT_EQ (curves.lowCurve()[k], double (float (curves.bandCurve (2)[k]))) << k;
    }
}

TEST_F (BandCurvesTest, twoDeepCutsCanMakeANegativeSum)
{
    setBand (0, 4000.0f, -12.0f);
    setBand (1, 4000.0f, -12.0f);
    design (curves, 0);
    design (curves, 1);
    curves.sumBands (settings);
    EXPECT_LT (*std::min_element (curves.highCurve().begin(), curves.highCurve().end()), -0.49);
}

TEST_F (BandCurvesTest, aBypassedBandIsFlatAndLeftOut)
{
    setBand (0, 4000.0f, 9.0f);
    setBand (1, 7000.0f, 3.0f);
    design (curves, 0);
    design (curves, 1);
    settings.bands[0].bypass = 1.0f;
    curves.designBand ({ Kind::bypass, 0 }, 1.0f, settings);
    curves.sumBands (settings);

    for (std::size_t k = 0; k < curvePointCount; ++k)
    {
        EXPECT_NEAR (curves.bandCurve (0)[k], 1.0, 1e-12);
        ASSERT_EQ (curves.highCurve()[k], double (float (curves.bandCurve (1)[k]))) << k;
    }
}

TEST_F (BandCurvesTest, countsByParameterAndNotByTheActiveSwitch)
{
    setBand (0, 4000.0f, 9.0f);
    settings.bands[0].active = 0.0f;
    curves.sumBands (settings);
    EXPECT_TRUE (curves.bandPresence().high);
}

TEST_F (BandCurvesTest, aMidBandIsFlatInStereoAndDrawnInFull)
{
    BandCurves display (Mode::display);
    setBand (0, 4000.0f, 9.0f);
    settings.bands[0].midSide = 0.0f;
    design (curves, 0);
    design (display, 0);
    EXPECT_NEAR (*std::max_element (curves.bandCurve (0).begin(), curves.bandCurve (0).end()), 1.0, 1e-12);
    EXPECT_NEAR (
        20.0 * std::log10 (*std::max_element (display.bandCurve (0).begin(), display.bandCurve (0).end())), 9.0, 0.01);
}

TEST_F (BandCurvesTest, theDisplayReadsTheLowCurveWithAStride)
{
    BandCurves display (Mode::display);
    setBand (0, 700.0f, 6.0f);
    setBand (1, 6000.0f, -3.0f);
    design (display, 0);
    design (display, 1);

    for (const auto factor : { 4, 8 })
    {
        display.sumBands (settings);
        display.sumDisplay (factor);
        const auto split = std::size_t (1024 / factor);

        for (std::size_t k = 0; k < curvePointCount; ++k)
            ASSERT_EQ (display.displayCurve()[k],
                       k < split ? display.highCurve()[k] + display.lowCurve()[k * std::size_t (factor)] - 1.0
                                 : display.highCurve()[k])
                << k;
    }

    // 700 Hz on the host's grid of 1023 steps up to 24 kHz, with the low curve designed at 12 kHz.
    display.sumDisplay (4);
    const auto peak = std::max_element (display.displayCurve().begin(), display.displayCurve().begin() + 60);
    EXPECT_NEAR (double (peak - display.displayCurve().begin()) / 1023.0 * 24000.0, 700.0, 25.0);
}

TEST_F (BandCurvesTest, soloMakesABandPassOfPeakOneEvenWithoutGain)
{
    setBand (0, 3000.0f, 0.0f, 2.0f);
    setBand (1, 8000.0f, 9.0f);
    settings.bands[0].solo = 1.0f;
    settings.soloActive = true;
    design (curves, 0);
    design (curves, 1);
    curves.sumSolo (settings);

    const auto solo = curves.soloCurve();
    const auto peak = std::max_element (solo.begin(), solo.end());
    EXPECT_EQ (*peak, 1.0);
    EXPECT_NEAR (double (peak - solo.begin()) / 1023.0 * 24000.0, 3000.0, 24.0);
    EXPECT_NEAR (solo.front(), 0.0, 1e-5);
    EXPECT_NEAR (solo.back(), 0.0, 1e-5);
    EXPECT_THAT (curves.soloBandCurve (1), Each (1.0));
    EXPECT_THAT (curves.bandCurve (0), Each (1.0)) << "the normal curves stay while a band is soloed";
}

TEST_F (BandCurvesTest, soloedLowBandsAreDesignedAtTheFullRate)
{
    setBand (0, 1500.0f, 6.0f);
    settings.bands[0].solo = 1.0f;
    settings.soloActive = true;
    design (curves, 0);
    const auto curve = curves.soloBandCurve (0);
    const auto peak = std::max_element (curve.begin(), curve.end());
    EXPECT_NEAR (double (peak - curve.begin()) / 1023.0 * 24000.0, 1500.0, 24.0);
}

TEST_F (BandCurvesTest, aSoloThatThisModeDoesNotHearIsSilent)
{
    BandCurves side (Mode::side);
    setBand (0, 3000.0f, 6.0f);
    settings.bands[0].solo = 1.0f;
    settings.soloActive = true;
    design (side, 0);
    side.sumSolo (settings);
    EXPECT_THAT (side.soloCurve(), Each (0.0));
}

TEST_F (BandCurvesTest, nothingAllocatesOrLocksAfterConstruction)
{
    setBand (0, 3000.0f, 6.0f);
    setBand (1, 700.0f, 6.0f);
    settings.bands[1].highShelf = 1.0f;

    const RealTimeGuard guard;

    for (const auto solo : { false, true })
    {
        settings.soloActive = solo;
        design (curves, 0);
        design (curves, 1);
        curves.sumBands (settings);
        curves.sumDisplay (4);
        curves.sumSolo (settings);
    }

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
}
} // namespace
