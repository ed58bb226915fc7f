#include "core/references/TrackAudition.h"

#include "support/Fixture.h"
#include "support/PluginRig.h"
#include "support/RealTimeGuard.h"
#include "support/TrackSignal.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
using Signal = PluginRig::Signal;

std::shared_ptr<ReferenceTrack> trackOf (const std::vector<float>& left, const std::vector<float>& right)
{
    auto track = std::make_shared<ReferenceTrack> (
        ReferenceTrack::Description { .id = 1,
                                      .filePath = "/a.wav",
                                      .displayName = "A",
                                      .lengthInSamples = static_cast<juce::int64> (left.size()),
                                      .capacity = static_cast<int> (left.size()),
                                      .rates = { 48000.0, 48000.0, 4 },
                                      .isStereo = ! right.empty(),
                                      .loops = {} });
    track->append (left.data(), right.empty() ? left.data() : right.data(), static_cast<int> (left.size()));
    track->finishLoading ({});
    return track;
}

class TrackAuditionTest : public testing::Test
{
protected:
    [[nodiscard]] bool play (Signal& block)
    {
        std::vector<float*> channels;

        for (auto& channel : block)
            channels.push_back (channel.data());

        return audition.play (channels.data(), static_cast<int> (block.size()), static_cast<int> (block[0].size()));
    }

    TrackAudition audition;
};

TEST_F (TrackAuditionTest, blocksAreThoseOfTheIndependentComputation)
{
    const auto fixture = readFixture ("track_audition.json");
    ASSERT_EQ (fixture["cases"].size(), 2u);

    for (const auto& item : fixture["cases"])
    {
        const auto& inputs = item["inputs"];
        const double rate = inputs["rate"];
        const TrackSignal music (inputs["track"], rate);
        const TrackSignal host (inputs["host"], rate);
        const auto track = trackOf (music.left, music.right);
        audition.select (track.get());
        audition.isPlaying = inputs["playing"].get<bool>();
        track->playPosition = inputs["start"].get<int>();
        std::size_t at = 0;

        for (std::size_t index = 0; index < inputs["blocks"].size(); ++index)
        {
            const auto n = inputs["blocks"][index].get<std::size_t>();
            const auto part = [&] (const std::vector<float>& samples)
            {
                const auto first = samples.begin() + static_cast<std::ptrdiff_t> (at);
                return std::vector (first, first + static_cast<std::ptrdiff_t> (n));
            };
            Signal block { part (host.left), part (host.right) };
            EXPECT_TRUE (play (block));
            at += n;

            const auto& expected = item["expected"][index];
            EXPECT_EQ (track->playPosition, expected[1].get<int>()) << item["id"] << " block " << index;

            for (std::size_t channel = 0; channel < 2; ++channel)
                for (std::size_t k = 0; k < 3; ++k)
                {
                    const std::size_t places[] { 1, n / 2, n - 1 };
                    EXPECT_NEAR (block[channel][places[k]], expected[2 + channel][k].get<float>(), 2e-6f)
                        << item["id"] << " block " << index << " channel " << channel << " place " << places[k];
                }
        }
    }
}

TEST_F (TrackAuditionTest, aMonoBusHearsTheMeanOfAStereoTrackAndAMonoTrackAsItIs)
{
    const auto stereo = trackOf (std::vector (1000, 0.5f), std::vector (1000, 0.25f));
    const auto mono = trackOf (std::vector (1000, 0.5f), {});
    audition.isPlaying = true;

    audition.select (stereo.get());
    Signal block { std::vector (64, 0.1f) };
    EXPECT_TRUE (play (block));
    EXPECT_EQ (block[0], std::vector (64, 0.375f));

    audition.select (mono.get());
    EXPECT_TRUE (play (block));
    EXPECT_EQ (block[0], std::vector (64, 0.5f));
}

TEST_F (TrackAuditionTest, onlyALoadedTrackThatPlaysTakesTheBlock)
{
    const auto track = trackOf (std::vector (1000, 0.5f), {});
    const auto expectUntouched = [this] (const char* when)
    {
        Signal block { std::vector (64, 0.1f) };
        EXPECT_FALSE (play (block)) << when;
        EXPECT_EQ (block[0], std::vector (64, 0.1f)) << when;
    };

    audition.isPlaying = true;
    expectUntouched ("nothing is selected");

    audition.select (track.get());
    audition.isPlaying = false;
    expectUntouched ("nothing plays");
    EXPECT_EQ (track->playPosition, 0);

    audition.isPlaying = true;
    track->loaded = false;
    expectUntouched ("it is being loaded");
}

TEST_F (TrackAuditionTest, aBlockLongerThanTheTrackStaysTheHosts)
{
    const auto track = trackOf (std::vector (50, 0.5f), {});
    audition.select (track.get());
    audition.isPlaying = true;
    Signal block { std::vector (64, 0.1f) };
    EXPECT_TRUE (play (block));
    EXPECT_EQ (block[0], std::vector (64, 0.1f));
    EXPECT_EQ (track->playPosition, 0);
}

TEST_F (TrackAuditionTest, positionsOutsideTheTrackBeginAnew)
{
    const auto track = trackOf (std::vector (1000, 0.5f), {});
    audition.select (track.get());
    audition.isPlaying = true;

    for (const auto position : { -1, 936, 1000, std::numeric_limits<int>::max() })
    {
        track->playPosition = position;
        Signal block { std::vector (64, 0.1f) };
        EXPECT_TRUE (play (block));
        EXPECT_EQ (block[0][0], 0.1f) << position;
        EXPECT_EQ (track->playPosition, 0) << position;
    }

    track->playPosition = 935;
    Signal block { std::vector (64, 0.1f) };
    EXPECT_TRUE (play (block));
    EXPECT_EQ (block[0][63], 0.5f) << "one sample before the end is still enough";
}

TEST_F (TrackAuditionTest, playingNeitherAllocatesNorLocks)
{
    const auto track = trackOf (std::vector (1000, 0.5f), std::vector (1000, 0.5f));
    audition.select (track.get());
    audition.isPlaying = true;
    float left[64] {}, right[64] {};
    float* channels[] { left, right };
    const RealTimeGuard guard;

    for (int block = 0; block < 40; ++block)
        EXPECT_TRUE (audition.play (channels, 2, 64));

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
}

TEST_F (TrackAuditionTest, aTrackIsFreedOnlyWhenNoBlockReadsItAnyMore)
{
    audition.isPlaying = true;
    std::atomic<bool> done { false };
    std::thread audio (
        [&]
        {
            std::vector<float> left (256), right (256);
            float* channels[] { left.data(), right.data() };

            while (! done)
                std::ignore = audition.play (channels, 2, 256);
        });

    // What reads freed memory is found by the sanitizers.
    for (int round = 0; round < 300; ++round)
    {
        auto track = trackOf (std::vector (20000, 0.5f), std::vector (20000, 0.5f));
        audition.select (track.get());
        track->playPosition = round * 10;
        std::this_thread::yield();
        audition.select (nullptr);
        audition.waitUntilUnused();
        track.reset();
    }

    done = true;
    audio.join();
    EXPECT_EQ (audition.selectedTrack(), nullptr);
}
} // namespace
