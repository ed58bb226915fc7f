#include "targets/TrackAnalysis.h"

#include "dsp/rate/ReducedRate.h"
#include "support/Fixture.h"
#include "support/TrackSignal.h"
#include "targets/MeanTarget.h"
#include "targets/RateCorrection.h"
#include "targets/TopBand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace
{
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto silence = -std::numeric_limits<float>::infinity();

nlohmann::json caseOf (const std::string& id)
{
    const auto fixture = readFixture ("track_analysis.json");

    for (const auto& item : fixture["cases"])
        if (item["id"] == id)
            return item;

    throw std::runtime_error ("no case " + id);
}

std::vector<TrackRange> rangesOf (const nlohmann::json& loops)
{
    std::vector<TrackRange> ranges;

    for (const auto& loop : loops)
        ranges.push_back ({ loop[0], loop[1] });

    return ranges;
}

struct Analysed
{
    TrackReading reading;
    std::vector<int> percents;
};

Analysed analysed (const TrackSignal& signal, const std::vector<TrackRange>& ranges, double rate, double fileRate)
{
    Analysed result;
    const TrackSamples samples { signal.left.data(),
                                 signal.right.empty() ? nullptr : signal.right.data(),
                                 static_cast<int> (signal.left.size()) };
    result.reading = analyseTrack (samples,
                                   ranges,
                                   { rate, fileRate, decimationFactorFor (rate).value() },
                                   [&] (float percent) { result.percents.push_back (static_cast<int> (percent)); });
    return result;
}

Analysed analysed (const nlohmann::json& inputs)
{
    const double rate = inputs["rate"];
    return analysed (TrackSignal (inputs["signal"], rate),
                     rangesOf (inputs.value ("loops", nlohmann::json::array())),
                     rate,
                     inputs.value ("fileRate", rate));
}

void expectLevel (float actual, const nlohmann::json& expected, const std::string& what)
{
    constexpr auto tolerance = 0.001;

    if (const auto value = numberOf (expected); std::isfinite (value))
    {
        EXPECT_NEAR (actual, value, tolerance) << what;
    }
    else
    {
        EXPECT_EQ (actual, silence) << what;
    }
}

/** Noise, other for each seed. */
TrackSignal noise (std::size_t count, int seed, double amplitude = 0.1)
{
    const nlohmann::json term { { "kind", "noise" }, { "amplitude", amplitude }, { "seed", seed } };
    return { { { "samples", count }, { "left", { term } }, { "right", nullptr } }, 48000.0 };
}
} // namespace

class TrackAnalysisCaseTest : public testing::TestWithParam<const char*>
{
};

TEST_P (TrackAnalysisCaseTest, measuresWhatTheIndependentComputationDoes)
{
    const auto item = caseOf (GetParam());
    const auto& expected = item["expected"];
    const auto result = analysed (item["inputs"]);

    expectLevel (result.reading.lufs, expected["lufs"], "overall");

    if (expected.contains ("bands"))
        for (std::size_t band = 0; band < analysisBandCount; ++band)
            expectLevel (result.reading.bands[band], expected["bands"][band], "band " + std::to_string (band));

    if (expected.contains ("band"))
        expectLevel (result.reading.bands[expected["band"].get<std::size_t>()], expected["level"], "the tone's band");

    if (expected.contains ("percents"))
    {
        EXPECT_EQ (result.percents, expected["percents"].get<std::vector<int>>());
    }

    if (expected.contains ("rangeResults"))
    {
        ASSERT_EQ (result.reading.rangeLufs.size(), expected["rangeResults"].size());

        for (std::size_t range = 0; range < result.reading.rangeLufs.size(); ++range)
            expectLevel (result.reading.rangeLufs[range], expected["rangeResults"][range], "range");
    }
}

INSTANTIATE_TEST_SUITE_P (Fixture,
                          TrackAnalysisCaseTest,
                          testing::Values ("stereo-44100",
                                           "mono-48000",
                                           "centre-4000",
                                           "quiet",
                                           "start-48000",
                                           "silent",
                                           "range-one",
                                           "ranges-in-order",
                                           "ranges-out-of-order",
                                           "range-inactive",
                                           "range-empty-second",
                                           "range-under-1024",
                                           "correction-44100-96000",
                                           "correction-48000-44100"),
                          [] (const auto& tested)
                          {
                              auto name = std::string (tested.param);
                              std::ranges::replace (name, '-', '_');
                              return name;
                          });

TEST (TrackAnalysisTest, targetsAreTheMeansOfTheDecibels)
{
    const auto item = caseOf ("targets-two");
    const double rate = item["inputs"]["rate"];
    std::vector<TrackReading> readings;

    for (std::size_t track = 0; track < 2; ++track)
    {
        const auto& signal = item["inputs"]["tracks"][track]["signal"];
        const auto result = analysed (TrackSignal (signal, rate), {}, rate, rate);
        EXPECT_EQ (result.percents, item["expected"]["percents"][track].get<std::vector<int>>());
        readings.push_back (result.reading);
    }

    const auto target = MeanTarget::of (readings);
    ASSERT_TRUE (target.has_value());
    expectLevel (target->lufs, item["expected"]["lufs"], "overall");

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        expectLevel (target->values[band], item["expected"]["values"][band], "band " + std::to_string (band));

    const auto inUse = topBandValueOf ({ static_cast<double> (target->values[6]),
                                         static_cast<double> (target->values[7]),
                                         static_cast<double> (target->values[8]) });
    ASSERT_TRUE (inUse.has_value());
    expectLevel (*inUse, item["expected"]["inUse9"], "the tenth in use");
}

TEST (TrackAnalysisTest, percentagesCountARangeAgainstTheWholeTrack)
{
    const auto item = caseOf ("progress-3");
    const auto signal = noise (item["inputs"]["numSamples"], 3);
    EXPECT_EQ (analysed (signal, rangesOf (item["inputs"]["ranges"]), 48000.0, 48000.0).percents,
               item["expected"].get<std::vector<int>>());
}

TEST (TrackAnalysisTest, rangesAreCutToTheTrack)
{
    const auto signal = noise (144000, 5);
    const auto whole = analysed (signal, {}, 48000.0, 48000.0).reading;
    const auto wide = analysed (signal, { { -5000, 1000000 } }, 48000.0, 48000.0).reading;
    EXPECT_EQ (wide.lufs, whole.lufs);
    EXPECT_EQ (wide.bands, whole.bands);
}

TEST (TrackAnalysisTest, behindTheTracksEndTheLowBandsHearZeros)
{
    // A range over the last 600 samples asks for a chunk that the track does not fill; often enough to be read.
    auto shorter = noise (200000, 7);
    auto longer = shorter;
    longer.left.resize (201000, 0.0f);
    std::vector<TrackRange> ranges (150, { 199400, 200000 });
    ranges.insert (ranges.begin(), { 40000, 140000 });
    EXPECT_EQ (analysed (shorter, ranges, 48000.0, 48000.0).reading.bands,
               analysed (longer, ranges, 48000.0, 48000.0).reading.bands);
}

TEST (TrackAnalysisTest, emptyRangesMeasureNothing)
{
    const auto signal = noise (144000, 5);
    const auto reading = analysed (signal, { { 5000, 5000 }, { 7000, 6000 } }, 48000.0, 48000.0).reading;
    EXPECT_FALSE (reading.exists);
    EXPECT_EQ (reading.lufs, 0.0f);
    EXPECT_THAT (reading.bands, Each (resetLevelDb));

    // In front of another they count as 0 in the mean.
    const auto before = analysed (signal, { { 5000, 5000 }, { 0, 144000 } }, 48000.0, 48000.0).reading;
    const auto alone = analysed (signal, { { 0, 144000 } }, 48000.0, 48000.0).reading;
    EXPECT_TRUE (before.exists);
    EXPECT_EQ (before.lufs, alone.lufs / 2.0f);
    EXPECT_THAT (before.rangeLufs, ElementsAre (0.0f, alone.lufs));
}

TEST (TrackAnalysisTest, correctionsComeBeforeTheTopBand)
{
    const auto signal = noise (144000, 5);
    const auto plain = analysed (signal, {}, 48000.0, 48000.0).reading;
    const auto corrected = analysed (signal, {}, 48000.0, 44100.0).reading;
    const auto correction = rateCorrectionDb (48000.0, 44100.0);

    for (std::size_t band = 0; band < 9; ++band)
        EXPECT_EQ (corrected.bands[band], plain.bands[band] + correction[band]);

    EXPECT_EQ (corrected.bands[9],
               topBandValueOf ({ static_cast<double> (corrected.bands[6]),
                                 static_cast<double> (corrected.bands[7]),
                                 static_cast<double> (corrected.bands[8]) }));
}

/** What was given before is gone with each call, as where a window moves along a file. */
TEST (TrackAnalysisTest, readsEachRangeFromFrontToBackAndKeepsNothing)
{
    constexpr int length = 150000;
    const auto signal = noise (length, 3);
    const std::vector<TrackRange> ranges { { 60000, 149990 }, { 100, 55001 } };
    std::vector<float> given;
    std::vector<int> starts;

    const auto read = [&] (int start, int count)
    {
        EXPECT_GE (start, 0);
        EXPECT_TRUE (count > 0 && count <= 1024 && start + count <= length) << start << ' ' << count;
        std::ranges::fill (given, std::numeric_limits<float>::quiet_NaN());
        given.assign (signal.left.begin() + start, signal.left.begin() + start + count);
        starts.push_back (start);
        return orvik::ChannelPointers { given.data(), nullptr };
    };

    const TrackRates rates { 48000.0, 48000.0, 4 };
    const auto reading = analyseTrack (read, length, ranges, rates, {});
    const auto expected = analyseTrack ({ signal.left.data(), nullptr, length }, ranges, rates, {});
    EXPECT_EQ (reading.lufs, expected.lufs);
    EXPECT_EQ (reading.bands, expected.bands);

    const auto second = std::ranges::find (starts, 100);
    ASSERT_NE (second, starts.end());
    EXPECT_TRUE (std::is_sorted (starts.begin(), second));
    EXPECT_TRUE (std::is_sorted (second, starts.end()));
}

TEST (TrackAnalysisTest, aCallerCanBreakAnAnalysisOff)
{
    const auto signal = noise (144000, 5);
    const TrackSamples samples { signal.left.data(), nullptr, 144000 };
    EXPECT_THROW (std::ignore = analyseTrack (
                      samples, {}, { 48000.0, 48000.0, 4 }, [] (float) { throw std::runtime_error ("enough"); }),
                  std::runtime_error);
}

TEST (MeanTargetTest, tracksWithoutAReadingAreLeftOut)
{
    TrackReading loud { .lufs = -10.0f, .bands = {}, .rangeLufs = {}, .exists = true };
    loud.bands.fill (-20.0f);
    auto quiet = loud;
    quiet.lufs = -30.0f;
    quiet.bands.fill (-40.0f);
    TrackReading silent { .lufs = silence, .bands = {}, .rangeLufs = {}, .exists = false };
    silent.bands.fill (silence);

    const auto target = MeanTarget::of (std::array { loud, silent, quiet });
    ASSERT_TRUE (target.has_value());
    EXPECT_EQ (target->lufs, -20.0f);
    EXPECT_THAT (target->values, Each (-30.0f));

    EXPECT_FALSE (MeanTarget::of (std::array { silent, silent }).has_value());
    EXPECT_FALSE (MeanTarget::of ({}).has_value());
}

TEST (MeanTargetTest, aBandThatOneTrackIsSilentInIsSilentInTheMean)
{
    TrackReading full { .lufs = -10.0f, .bands = {}, .rangeLufs = {}, .exists = true };
    full.bands.fill (-20.0f);
    auto dark = full;
    dark.bands[8] = silence;
    const auto target = MeanTarget::of (std::array { full, dark });
    ASSERT_TRUE (target.has_value());
    EXPECT_EQ (target->values[7], -20.0f);
    EXPECT_EQ (target->values[8], silence);
}
