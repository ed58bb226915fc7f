#include "core/references/TargetCreation.h"

#include "support/Fixture.h"
#include "support/TrackSignal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <new>

namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto silence = -std::numeric_limits<float>::infinity();

std::shared_ptr<ReferenceTrack>
trackOf (const TrackSignal& signal, double rate, const char* name, std::vector<TrackLoop> loops = {})
{
    const auto count = static_cast<int> (signal.left.size());
    auto track = std::make_shared<ReferenceTrack> (ReferenceTrack::Description { .id = 1,
                                                                                 .filePath = name,
                                                                                 .displayName = name,
                                                                                 .lengthInSamples = count,
                                                                                 .capacity = count,
                                                                                 .rates = { rate, rate, 4 },
                                                                                 .isStereo = ! signal.right.empty(),
                                                                                 .loops = std::move (loops) });
    track->append (signal.left.data(), signal.right.empty() ? signal.left.data() : signal.right.data(), count);
    track->finishLoading ({});
    return track;
}

TrackSignal noise (int count, double amplitude, int seed)
{
    return { { { "samples", count },
               { "left", { { { "kind", "noise" }, { "amplitude", amplitude }, { "seed", seed } } } },
               { "right", nullptr } },
             48000.0 };
}

class TargetCreationTest : public testing::Test
{
protected:
    void run (std::vector<std::shared_ptr<ReferenceTrack>> tracks)
    {
        creation.run (
            std::move (tracks),
            [this] (int percent)
            {
                last = percent;
                ++reports;
            },
            presets,
            target);
    }

    [[nodiscard]] Presets::Numbers userSetting() const
    {
        return presets.numbersOf (*presets.findPresetById (Presets::userSettingId));
    }

    Presets::Library presets;
    TargetSet target;
    TargetCreation creation;
    std::atomic<int> last { -1 };
    std::atomic<int> reports { 0 };
};

TEST_F (TargetCreationTest, twoTracksGiveTheMeansOfTheIndependentComputation)
{
    const auto fixture = readFixture ("track_analysis.json");
    const auto& item =
        *std::ranges::find_if (fixture["cases"], [] (const auto& entry) { return entry["id"] == "targets-two"; });
    const double rate = item["inputs"]["rate"];
    std::vector<std::shared_ptr<ReferenceTrack>> tracks;

    for (const auto& entry : item["inputs"]["tracks"])
        tracks.push_back (trackOf (TrackSignal (entry["signal"], rate), rate, "A"));

    ASSERT_EQ (tracks.size(), 2u);
    run (tracks);

    const auto numbers = userSetting();
    EXPECT_NEAR (numbers.lufs, item["expected"]["lufs"].get<double>(), 0.001);
    EXPECT_EQ (target.targetLufs, numbers.lufs);

    for (std::size_t band = 0; band < 10; ++band)
        EXPECT_NEAR (numbers.values[band], item["expected"]["values"][band].get<double>(), 0.001) << band;

    for (std::size_t band = 0; band < 9; ++band)
        EXPECT_EQ (target.targetValues[band], numbers.values[band]) << band;

    EXPECT_NEAR (target.targetValues[9], item["expected"]["inUse9"].get<double>(), 0.001)
        << "extrapolated from the means";
}

TEST_F (TargetCreationTest, aTrackOfSilenceIsNamedAndLeftOut)
{
    const auto loud = trackOf (noise (200000, 0.2, 5), 48000.0, "LOUD");
    const auto silent = trackOf (noise (200000, 0.0, 5), 48000.0, "SILENT");
    run ({ loud });
    const auto alone = userSetting();
    run ({ silent, loud });

    EXPECT_EQ (userSetting().lufs, alone.lufs);
    EXPECT_EQ (userSetting().values, alone.values);
    EXPECT_THAT (creation.progress().unmeasured, ElementsAre (juce::String ("SILENT")));
    EXPECT_TRUE (creation.progress().complete);
}

TEST_F (TargetCreationTest, whereNothingCanBeMeasuredTheTargetIsMinusInfinity)
{
    run ({ trackOf (noise (200000, 0.0, 5), 48000.0, "SILENT") });
    EXPECT_EQ (userSetting().lufs, silence);
    EXPECT_EQ (userSetting().values[3], silence);
    EXPECT_EQ (target.targetLufs, silence);
    EXPECT_EQ (creation.progress().unmeasured.size(), 1u);
}

TEST_F (TargetCreationTest, onlyTheRangesCount)
{
    auto half = noise (400000, 0.2, 6);
    std::fill (half.left.begin() + 200000, half.left.end(), 0.001f);
    run ({ trackOf (noise (200000, 0.2, 6), 48000.0, "A") });
    const auto expected = userSetting().lufs;
    run ({ trackOf (half, 48000.0, "B", { { .startSamples = 0, .endSamples = 200000, .active = false, .id = 1 } }) });
    EXPECT_EQ (userSetting().lufs, expected);
}

TEST_F (TargetCreationTest, progressCountsTracksAndEndsWithAHundred)
{
    EXPECT_FALSE (creation.progress().complete);
    EXPECT_EQ (creation.progress().trackCount, 0);

    std::vector<std::shared_ptr<ReferenceTrack>> tracks;

    for (int seed = 1; seed <= 3; ++seed)
        tracks.push_back (trackOf (noise (100000, 0.2, seed), 48000.0, "A"));

    std::atomic<bool> completeDuringTheRun { false };
    creation.run (
        tracks,
        [&] (int percent)
        {
            last = percent;
            ++reports;

            if (percent < 100 && creation.progress().complete)
                completeDuringTheRun = true;
        },
        presets,
        target);

    EXPECT_FALSE (completeDuringTheRun);
    EXPECT_EQ (reports, 3 * 2 + 1) << "one for every 40000 samples, and the end";
    EXPECT_EQ (last, 100);
    EXPECT_EQ (creation.progress().finished, 3);
    EXPECT_EQ (creation.progress().trackCount, 3);
    EXPECT_EQ (creation.progress().percent, 80) << "of 100000 samples 80000 were reported";
    EXPECT_THAT (creation.progress().unmeasured, IsEmpty());
}

TEST_F (TargetCreationTest, aTrackThatIsRemovedAfterARunGivesItsMemoryBack)
{
    auto track = trackOf (noise (100000, 0.2, 1), 48000.0, "A");
    const std::weak_ptr<ReferenceTrack> watched = track;
    run ({ track });
    track.reset();
    EXPECT_TRUE (watched.expired());
    EXPECT_EQ (creation.progress().trackCount, 1);
    EXPECT_EQ (creation.progress().percent, 80);
}

TEST_F (TargetCreationTest, aTrackForWhichThereIsNoMemoryIsNamedAndLeftOut)
{
    const auto one = trackOf (noise (100000, 0.2, 1), 48000.0, "A");
    const auto two = trackOf (noise (100000, 0.02, 2), 48000.0, "B");
    run ({ one, two });
    std::atomic<bool> thrown { false };
    creation.run (
        { one, two },
        [&] (int)
        {
            if (! thrown.exchange (true))
                throw std::bad_alloc();
        },
        presets,
        target);

    EXPECT_EQ (creation.progress().finished, 2);
    ASSERT_EQ (creation.progress().unmeasured.size(), 1u);
    const auto& measured = creation.progress().unmeasured[0] == "A" ? two : one;
    EXPECT_EQ (userSetting().lufs, measured->reading().lufs);
}
} // namespace
