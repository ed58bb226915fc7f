#include "targets/SmartBands.h"

#include "support/Fixture.h"
#include "targets/DisplayCurve.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace
{
using SmartBands::Extremum;
using SmartBands::Limits;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto infinity = std::numeric_limits<float>::infinity();

/** Ascending from 1000 Hz on in steps of 100, unless told otherwise. */
std::vector<double> frequenciesFor (const std::vector<double>& curve, double first = 1000.0, double step = 100.0)
{
    std::vector<double> frequencies;

    for (std::size_t i = 0; i < curve.size(); ++i)
        frequencies.push_back (first + static_cast<double> (i) * step);

    return frequencies;
}

std::vector<SmartBand> bandsOf (const std::vector<double>& curve)
{
    return SmartBands::findSmartBands (curve, frequenciesFor (curve));
}

std::vector<int> frequenciesOf (const std::vector<SmartBand>& bands)
{
    std::vector<int> frequencies;

    for (const auto& band : bands)
        frequencies.push_back (band.frequency);

    return frequencies;
}

SmartBand bandOf (int frequency, float gain, float q = 1.0f)
{
    return { .q = q, .gain = gain, .upper = 0, .lower = 0, .frequency = frequency };
}

/** The one setting that a band leads to. */
SmartBands::Setting settingOf (const SmartBand& band, Limits limits = Limits::mix)
{
    const auto settings = SmartBands::settingsFor (std::array { band }, limits);
    EXPECT_EQ (settings.size(), 1u);
    return settings.empty() ? SmartBands::Setting() : settings.front();
}

bool isLeftOut (const SmartBand& band, Limits limits = Limits::mix)
{
    return SmartBands::settingsFor (std::array { band }, limits).empty();
}

/** A curve with one peak of `gain` at each of the frequencies, between which it falls to 0. */
std::vector<SmartBand> bandsWithPeaksAt (const std::vector<std::pair<double, double>>& peaks)
{
    std::vector<double> curve, frequencies;

    for (const auto& [frequency, gain] : peaks)
        for (const auto offset : { -6.0, -4.0, -2.0, 0.0, 2.0, 4.0, 6.0 })
        {
            curve.push_back (offset == 0.0 ? gain : 0.01);
            frequencies.push_back (frequency + offset);
        }

    return SmartBands::findSmartBands (curve, frequencies);
}

void expectSettings (const std::vector<SmartBands::Setting>& actual, const nlohmann::json& expected)
{
    ASSERT_EQ (actual.size(), expected.size());

    for (std::size_t i = 0; i < actual.size(); ++i)
    {
        EXPECT_EQ (actual[i].frequency, expected[i]["frequency"].get<int>());
        EXPECT_NEAR (actual[i].gain, expected[i]["gain"].get<float>(), 1e-4);
        EXPECT_NEAR (actual[i].q, expected[i]["Q"].get<float>(), 1e-4);
        EXPECT_EQ (actual[i].shelf, expected[i]["highshelf"] == 1);
    }
}
} // namespace

TEST (SmartBandsTest, examplesAreThoseOfTheIndependentComputation)
{
    const auto fixture = readFixture ("smart_bands.json");
    const auto frequencies = DisplayCurve::frequencies (fixture["roomHeight"]);
    ASSERT_EQ (fixture["examples"].size(), 3u);

    for (const auto& example : fixture["examples"])
    {
        SCOPED_TRACE (example["name"]);
        const auto curve =
            DisplayCurve::valuesAt (frequencies, example["gainTarget"].get<std::array<float, analysisBandCount>>());

        EXPECT_EQ (SmartBands::findExtrema (curve, Extremum::maximum),
                   example["maximaIndices"].get<std::vector<std::size_t>>());
        EXPECT_EQ (SmartBands::findExtrema (curve, Extremum::minimum),
                   example["minimaIndices"].get<std::vector<std::size_t>>());

        const auto bands = SmartBands::findSmartBands (curve, frequencies);
        const auto& expected = example["smartBands"];
        ASSERT_EQ (bands.size(), expected.size());

        for (std::size_t i = 0; i < bands.size(); ++i)
        {
            EXPECT_EQ (bands[i].frequency, expected[i]["frequency"].get<int>());
            EXPECT_EQ (bands[i].lower, expected[i]["lower"].get<int>());
            EXPECT_EQ (bands[i].upper, expected[i]["upper"].get<int>());
            EXPECT_NEAR (bands[i].gain, expected[i]["gain"].get<float>(), 1e-4);
            EXPECT_NEAR (bands[i].q, expected[i]["q"].get<float>(), 1e-4);
        }

        expectSettings (SmartBands::settingsFor (bands, Limits::mix), example["bandsInMix"]);
        expectSettings (SmartBands::settingsFor (bands, Limits::master), example["bandsInMaster"]);
    }
}

TEST (SmartBandsTest, noCurveHasNoBands)
{
    EXPECT_THAT (bandsOf ({}), IsEmpty());
    EXPECT_THAT (bandsOf (std::vector<double> (100, 0.0)), IsEmpty());
}

TEST (SmartBandsTest, allPointsOfFewerThanFourAreExtrema)
{
    for (const auto wanted : { Extremum::maximum, Extremum::minimum })
    {
        EXPECT_THAT (SmartBands::findExtrema (std::array { 1.0, 2.0, 3.0 }, wanted), ElementsAre (0u, 1u, 2u));
        EXPECT_THAT (SmartBands::findExtrema (std::array { 0.0 }, wanted), ElementsAre (0u));
    }

    EXPECT_THAT (SmartBands::findExtrema (std::array { 1.0, 2.0, 3.0, 4.0 }, Extremum::maximum), IsEmpty());
}

TEST (SmartBandsTest, beforeItsFirstPointACurveIsZero)
{
    // So the first point can be a peak when it is positive, and a dip when it is negative.
    EXPECT_THAT (SmartBands::findExtrema (std::array { 2.0, 1.0, 0.5, 0.2, 0.1 }, Extremum::maximum), ElementsAre (0u));
    EXPECT_THAT (SmartBands::findExtrema (std::array { -2.0, -1.0, -0.5, -0.2, -0.1 }, Extremum::minimum),
                 ElementsAre (0u));
    EXPECT_THAT (SmartBands::findExtrema (std::array { -2.0, -3.0, -4.0, -5.0, -6.0 }, Extremum::maximum), IsEmpty());
}

TEST (SmartBandsTest, theLastPointIsNeitherPeakNorDip)
{
    EXPECT_THAT (SmartBands::findExtrema (std::array { 0.0, 1.0, 2.0, 3.0, 4.0 }, Extremum::maximum), IsEmpty());
    EXPECT_THAT (SmartBands::findExtrema (std::array { 0.0, -1.0, -2.0, -3.0, -4.0 }, Extremum::minimum), IsEmpty());
}

TEST (SmartBandsTest, aPlateauPeaksAtItsEndAndHasNoDip)
{
    EXPECT_THAT (SmartBands::findExtrema (std::array { 0.0, 1.0, 1.0, 1.0, 0.0, 0.0 }, Extremum::maximum),
                 ElementsAre (3u));
    EXPECT_THAT (SmartBands::findExtrema (std::array { 1.0, 0.0, 0.0, 0.0, 1.0, 1.0 }, Extremum::minimum), IsEmpty());
}

TEST (SmartBandsTest, aPeakHasToStandOutOfTheSlopesAroundIt)
{
    // Slopes before the peak count with their sign, those behind it as magnitudes.
    const std::vector<double> small { 0, 0, 0, 0, -10, -20, -30, -29, -30, -30, -30, -30, -30 };
    EXPECT_THAT (SmartBands::findExtrema (small, Extremum::maximum), ElementsAre (3u));

    auto deep = small;
    std::ranges::fill (deep.begin() + 8, deep.end(), -59.0);
    EXPECT_THAT (SmartBands::findExtrema (deep, Extremum::maximum), ElementsAre (3u, 7u));

    // Exactly level: -10 -10 -10 +1 +29 is not enough.
    deep[7] = -29.0;
    std::ranges::fill (deep.begin() + 8, deep.end(), -58.0);
    EXPECT_THAT (SmartBands::findExtrema (deep, Extremum::maximum), ElementsAre (3u));
}

TEST (SmartBandsTest, slopesReachFourPointsToEitherSide)
{
    // The fall of 5 lies four points before the peak and is heard; one point further it is not.
    EXPECT_THAT (SmartBands::findExtrema (std::array { 9.0, 9.0, 4.0, 4.0, 4.0, 4.0, 5.0, 4.0, 4.0, 4.0, 4.0, 4.0 },
                                          Extremum::maximum),
                 ElementsAre (1u));
    EXPECT_THAT (SmartBands::findExtrema (
                     std::array { 9.0, 9.0, 4.0, 4.0, 4.0, 4.0, 4.0, 5.0, 4.0, 4.0, 4.0, 4.0, 4.0 }, Extremum::maximum),
                 ElementsAre (1u, 7u));
}

TEST (SmartBandsTest, aPeakNeedsATenthOfADecibelAndADipNone)
{
    EXPECT_THAT (bandsOf ({ 0.01, 0.01, 0.11, 0.01, 0.01, 0.01 }), testing::SizeIs (1));
    EXPECT_THAT (bandsOf ({ 0.01, 0.01, 0.1, 0.01, 0.01, 0.01 }), IsEmpty());

    const auto atZero = bandsOf ({ 0.05, 0.05, 0.0, 0.05, 0.05, 0.05 });
    ASSERT_EQ (atZero.size(), 1u);
    EXPECT_EQ (atZero[0].gain, 0.0f);
    EXPECT_THAT (bandsOf ({ 0.05, 0.05, 0.001, 0.05, 0.05, 0.05 }), IsEmpty());
}

TEST (SmartBandsTest, aLonelyPeakWithoutEdgesIsAsWideAsItsFrequency)
{
    // Nothing falls to the edge's level below it, and above it nothing is looked for.
    const auto bands = bandsOf ({ 5.0, 5.1, 5.2, 5.3, 5.0, 4.0, 1.0, 0.0, -1.0 });
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].frequency, 1300);
    EXPECT_EQ (bands[0].lower, 650);
    EXPECT_EQ (bands[0].upper, 1950);
    EXPECT_EQ (bands[0].q, 1.0f);
}

TEST (SmartBandsTest, halvesAreWholeNumbersOfHertz)
{
    const std::vector<double> curve { 5.0, 5.1, 5.2, 5.3, 5.0, 4.0, 1.0 };
    const auto bands = SmartBands::findSmartBands (curve, frequenciesFor (curve, 1000.9, 1.0));
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].frequency, 1003);
    EXPECT_EQ (bands[0].lower, 502);
    EXPECT_EQ (bands[0].upper, 1504);
    EXPECT_EQ (bands[0].q, 1003.0f / 1002.0f);
}

TEST (SmartBandsTest, edgesLieWhereTheCurveHasFallenToTheShare)
{
    // 10 dB: the edge lies below 7.070000171661377.
    const auto bands = bandsOf ({ 1, 7.07, 7.0701, 9, 10, 8, 7.0701, 7.07, 3, 9, 1, 1, 1, 1 });
    ASSERT_EQ (bands.size(), 2u);
    EXPECT_EQ (bands[1].frequency, 1400);
    EXPECT_EQ (bands[1].lower, 1100);
    EXPECT_EQ (bands[1].upper, 1700);
}

TEST (SmartBandsTest, theLastPeakIgnoresItsOwnFallAndEndsAtADip)
{
    // The fall to the edge at 1700 Hz is not looked for; the dip at 2000 Hz is.
    const auto bands = bandsOf ({ 1, 2, 8, 10, 9.5, 9, 8, 2, 1, 1, 0.5, 0.6, 0.7 });
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].lower, 1100);
    EXPECT_EQ (bands[0].upper, 2000);
}

TEST (SmartBandsTest, peaksWithAShallowValleyMeetInIt)
{
    const auto bands = bandsOf ({ 1, 9, 10, 9, 8, 9, 9.5, 9, 1, 8, 0.5, 0.6 });
    EXPECT_THAT (frequenciesOf (bands), ElementsAre (1900, 1600, 1200));
    EXPECT_EQ (bands[1].lower, 1400);
    EXPECT_EQ (bands[1].upper, 1800);
    EXPECT_EQ (bands[2].upper, 1400);
}

TEST (SmartBandsTest, aDipReachesToWhereTheCurveHasRisenToTheShare)
{
    const auto bands = bandsOf ({ 1, 5, 1, -7, -8, -10, -9, -7.06, 0, 4, 1, 1, 1 });
    EXPECT_THAT (frequenciesOf (bands), ElementsAre (1900, 1500, 1100));
    EXPECT_EQ (bands[1].gain, -10.0f);
    EXPECT_EQ (bands[1].lower, 1300);
    EXPECT_EQ (bands[1].upper, 1700);
    EXPECT_EQ (bands[1].q, 1500.0f / 400.0f);
}

TEST (SmartBandsTest, aDipThatNeverRisesEnoughReachesToThePeaksBesideIt)
{
    const auto bands = bandsOf ({ -9, -9, -9, -9, -9, -9, -8.5, -8, -8.5, -10, -9, -8.2, -8, -8.1, -8.2 });
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].frequency, 1900);
    EXPECT_EQ (bands[0].lower, 1700);
    EXPECT_EQ (bands[0].upper, 2200);
}

TEST (SmartBandsTest, aDipWithoutPeaksIsAsWideAsItsFrequencyHoweverTheCurveRises)
{
    const auto bands = bandsOf ({ -1, -2, -8, -10, -9, -2, 0, 1, 2 });
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].lower, 650);
    EXPECT_EQ (bands[0].upper, 1950);
}

TEST (SmartBandsTest, anEdgeAtZeroHertzCountsAsNotFound)
{
    const std::vector<double> curve { 0.2, 5, 10, 9, 8, 7.5, 7.4, 7.3 };
    const std::vector<double> frequencies { 0.5, 0.9, 900, 1000, 1100, 1200, 1300, 1400 };
    const auto bands = SmartBands::findSmartBands (curve, frequencies);
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].lower, 450);
}

TEST (SmartBandsTest, bandsComeWithFallingFrequenciesAndEqualOnesTheLastFirst)
{
    // Fewer than four points are peaks and dips at once; at one frequency the dip was found last.
    const auto bands =
        SmartBands::findSmartBands (std::array { -1.0, 1.0, -2.0 }, std::array { 1000.2, 1000.4, 1000.6 });
    ASSERT_EQ (bands.size(), 3u);
    EXPECT_EQ (bands[0].gain, -2.0f);
    EXPECT_EQ (bands[1].gain, -1.0f);
    EXPECT_EQ (bands[2].gain, 1.0f);
}

TEST (SmartBandsTest, atEitherEndOnlyTheStrongestBandIsTaken)
{
    EXPECT_THAT (frequenciesOf (bandsWithPeaksAt (
                     { { 336, 5 }, { 400, 4 }, { 431, 1 }, { 5000, 2 }, { 14799, 1 }, { 14850, 2 }, { 16000, 3 } })),
                 ElementsAre (14799, 5000, 431, 16000, 336));

    EXPECT_THAT (frequenciesOf (bandsWithPeaksAt ({ { 400, 4 }, { 430, 1 }, { 14800, 1 }, { 16000, 3 } })),
                 ElementsAre (16000, 400));

    // One alone is taken as it is.
    EXPECT_THAT (frequenciesOf (bandsWithPeaksAt ({ { 430, 0.2 }, { 14800, 0.2 } })), ElementsAre (14800, 430));
}

TEST (SmartBandsTest, ofEquallyStrongBandsAtAnEndTheLowestIsTaken)
{
    EXPECT_THAT (frequenciesOf (bandsWithPeaksAt ({ { 340, 5 }, { 400, 5 }, { 15000, 5 }, { 16000, 5 } })),
                 ElementsAre (15000, 340));
}

TEST (SmartBandsTest, theStrengthOfADipIsItsDepth)
{
    const std::vector<double> curve { 0, 0, 4, 0, 0, 0, -5, 0, 0, 0.05, 0, 0 };
    const auto bands = SmartBands::findSmartBands (curve, frequenciesFor (curve, 350.0, 5.0));
    ASSERT_EQ (bands.size(), 1u);
    EXPECT_EQ (bands[0].frequency, 380);
    EXPECT_EQ (bands[0].gain, -5.0f);
}

TEST (SmartBandsTest, settingsHoldTheLimitsOfTheMode)
{
    EXPECT_EQ (settingOf (bandOf (2000, 15.0f, 8.0f)).gain, 12.0f);
    EXPECT_EQ (settingOf (bandOf (2000, -15.0f, 8.0f)).gain, -12.0f);
    EXPECT_EQ (settingOf (bandOf (2000, 6.0f, 8.0f)).q, 5.0f);
    EXPECT_EQ (settingOf (bandOf (2000, 6.0f, 0.2f)).q, 0.5f);

    EXPECT_EQ (settingOf (bandOf (2000, 6.0f, 8.0f), Limits::master).gain, 4.0f);
    EXPECT_EQ (settingOf (bandOf (2000, -6.0f, 8.0f), Limits::master).gain, -4.0f);
    EXPECT_EQ (settingOf (bandOf (2000, 6.0f, 8.0f), Limits::master).q, 1.5f);
    EXPECT_EQ (settingOf (bandOf (2000, 6.0f, 0.2f), Limits::master).q, 0.5f);
}

TEST (SmartBandsTest, whatIsNotWorthABandIsLeftOut)
{
    EXPECT_TRUE (isLeftOut (bandOf (2000, 0.49f)));
    EXPECT_TRUE (isLeftOut (bandOf (2000, -0.49f)));
    EXPECT_FALSE (isLeftOut (bandOf (2000, 0.5f)));
    EXPECT_FALSE (isLeftOut (bandOf (2000, -0.5f)));
    EXPECT_TRUE (isLeftOut (bandOf (320, 5.0f)));
    EXPECT_FALSE (isLeftOut (bandOf (321, 5.0f)));
    EXPECT_TRUE (isLeftOut (bandOf (2000, 5.0f, infinity)));
    EXPECT_TRUE (isLeftOut (bandOf (2000, 5.0f, -infinity)));
}

TEST (SmartBandsTest, inMasterABandWithoutAWidthGetsTheLimit)
{
    EXPECT_EQ (settingOf (bandOf (2000, 2.0f, infinity), Limits::master).q, 1.5f);
    EXPECT_TRUE (isLeftOut (bandOf (2000, 2.0f, -infinity), Limits::master));
}

TEST (SmartBandsTest, aStrongBandAboveFifteenKilohertzBecomesAShelf)
{
    const auto shelf = settingOf (bandOf (16000, 1.01f));
    EXPECT_TRUE (shelf.shelf);
    EXPECT_EQ (shelf.frequency, 13500);
    EXPECT_TRUE (settingOf (bandOf (15001, -3.0f)).shelf);

    for (const auto& band : { bandOf (16000, 1.0f), bandOf (16000, -1.0f), bandOf (15000, 5.0f) })
    {
        const auto peak = settingOf (band);
        EXPECT_FALSE (peak.shelf);
        EXPECT_EQ (peak.frequency, band.frequency);
    }
}

TEST (SmartBandsTest, onlyTheFirstTenCountAndWhatIsLeftOutUsesUpItsPlace)
{
    std::vector<SmartBand> bands;

    for (int i = 0; i < 12; ++i)
        bands.push_back (bandOf (10000 - 100 * i, i < 3 ? 0.1f : 2.0f));

    const auto settings = SmartBands::settingsFor (bands, Limits::mix);
    ASSERT_EQ (settings.size(), 7u);
    EXPECT_EQ (settings.front().frequency, 9700);
    EXPECT_EQ (settings.back().frequency, 9100);
}
