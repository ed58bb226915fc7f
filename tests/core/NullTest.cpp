#include "support/PluginRig.h"
#include "support/SanitizedBuild.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>

namespace
{
using Kind = Settings::Parameter;

enum class Bands
{
    none,
    midAtZero,
    stereoAndMidAtZero
};

struct NullCase
{
    double sampleRate;
    int channelCount;
    Bands bands;
};

constexpr int longestBlock = 8192;
constexpr int renderLength = isSanitizedBuild ? 9000 : 30000;

class NullTest : public testing::TestWithParam<NullCase>
{
protected:
    void SetUp() override
    {
        rig.prepare (GetParam().sampleRate, longestBlock, GetParam().channelCount);

        if (GetParam().bands != Bands::none)
        {
            rig.set (1, Kind::midSide, 0.0f);
            rig.setBand (1, 4000.0f, 3.0f);
            rig.set (1, Kind::gain, 0.0f);
        }

        if (GetParam().bands == Bands::stereoAndMidAtZero)
        {
            rig.setBand (2, 4000.0f, 3.0f);
            rig.set (2, Kind::gain, 0.0f);
        }

        EXPECT_EQ (rig.processor.model.midSidePathActive(),
                   GetParam().bands != Bands::none && GetParam().channelCount == 2);
        rig.settle();
    }

    [[nodiscard]] PluginRig::Signal input (int length, unsigned seed) const
    {
        return signals::noise (GetParam().channelCount, length, seed, 1.0f);
    }

    [[nodiscard]] std::string differenceFromDelayed (const PluginRig::Signal& output, const PluginRig::Signal& in) const
    {
        return signals::firstDifference (output, signals::delayedBy (in, rig.trueLatency()));
    }

    PluginRig rig;
};

TEST_P (NullTest, returnsTheInputToTheBitInBlocksOfEverySize)
{
    std::vector<int> sizes;

    for (int size = 1; size <= 64; ++size)
        sizes.insert (sizes.end(), static_cast<std::size_t> (1 + 40 / size), size);

    for (const auto size : { 65,   100,  127,  128,  129,  255,  256,  441,  480,  512,  777, 1000, 1023,
                             1024, 2047, 2048, 3001, 4095, 4096, 4097, 6000, 8191, 8192, 1,   8192 })
        sizes.push_back (size);

    const auto in = input (std::accumulate (sizes.begin(), sizes.end(), 0), 77);
    std::size_t next = 0;
    const auto output = rig.run (in, [&] { return sizes[next++]; });
    EXPECT_EQ (differenceFromDelayed (output, in), "");
}

TEST_P (NullTest, returnsTheInputToTheBitInBlocksOfRandomSizes)
{
    constexpr unsigned seed = 4711;
    std::mt19937 random (seed);
    std::uniform_int_distribution<int> anySize (1, 1500);
    const auto in = input (60000, 78);
    const auto output = rig.run (in, [&] { return anySize (random); });
    EXPECT_EQ (differenceFromDelayed (output, in), "") << "seed " << seed;
}

TEST_P (NullTest, returnsTheInputToTheBitWhenPreparedForExactlyItsBlocks)
{
    for (const auto size : { 1, 2, 3, 4, 5, 7, 8, 9, 16, 33, 64, 509, 8191 })
    {
        // What went in before comes out in silence, so that nothing of it is left at the next prepare.
        rig.runSilence (4096, 512);
        rig.prepare (GetParam().sampleRate, size, GetParam().channelCount);
        const auto in = input (4000, static_cast<unsigned> (size));
        EXPECT_EQ (differenceFromDelayed (rig.run (in, size), in), "") << size;
    }
}

std::string nameOf (const NullCase& tested)
{
    constexpr std::array names { "flat", "mid", "stereoAndMid" };
    return std::to_string (static_cast<int> (tested.sampleRate)) + (tested.channelCount == 2 ? "stereo" : "mono") + "_"
           + names[static_cast<std::size_t> (tested.bands)];
}

std::vector<NullCase> allCases()
{
    std::vector<NullCase> cases;

    for (const auto rate : { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0 })
        for (const auto channelCount : { 1, 2 })
            for (const auto bands : { Bands::none, Bands::midAtZero, Bands::stereoAndMidAtZero })
                if (channelCount == 2 || bands == Bands::none)
                    cases.push_back ({ rate, channelCount, bands });

    return cases;
}

INSTANTIATE_TEST_SUITE_P (Rates,
                          NullTest,
                          testing::ValuesIn (allCases()),
                          [] (const auto& tested) { return nameOf (tested.param); });

void setBandsOfEveryKind (PluginRig& rig)
{
    rig.setBand (0, 500.0f, 6.0f);
    rig.setBand (1, 3000.0f, -5.0f, 2.0f);
    rig.setBand (2, 9000.0f, 4.0f);
    rig.set (2, Kind::highShelf, 1.0f);
    rig.setBand (3, 1200.0f, 7.0f);
    rig.set (3, Kind::midSide, 0.0f);
    rig.setBand (4, 6000.0f, -8.0f);
    rig.set (4, Kind::midSide, 0.9f);
}

class RenderTest : public testing::TestWithParam<double>
{
protected:
    /** An offline render. */
    PluginRig::Signal render (const std::function<int()>& nextSize, float phase, int channelCount = 2)
    {
        PluginRig rig;
        rig.renderOffline();
        rig.set (ParameterIds::mode, 1.0f);
        rig.set (ParameterIds::phase, phase);
        rig.prepare (GetParam(), longestBlock, channelCount);
        setBandsOfEveryKind (rig);
        rig.settle();
        return rig.run (signals::noise (channelCount, renderLength, 99, 1.0f), nextSize);
    }

    PluginRig::Signal render (int blockSize, float phase, int channelCount = 2)
    {
        return render ([blockSize] { return blockSize; }, phase, channelCount);
    }
};

/** What is asked for is 1e-6 of full scale; what is measured is no difference at all. */
constexpr float partitionTolerance = 0.0f;

TEST_P (RenderTest, doesNotDependOnTheBlockSize)
{
    for (const auto phase : { 0.0f, 1.0f })
    {
        const auto reference = render (512, phase);

        for (const auto size : { 1, 3, 7, 8, 64, 100, 441, 1024, 4097, 8192 })
            EXPECT_EQ (signals::firstDifference (render (size, phase), reference, partitionTolerance), "") << size;

        std::mt19937 random (12);
        std::uniform_int_distribution<int> anySize (1, 3000);
        EXPECT_EQ (
            signals::firstDifference (render ([&] { return anySize (random); }, phase), reference, partitionTolerance),
            "")
            << "seed 12";
    }
}

TEST_P (RenderTest, doesNotDependOnTheBlockSizeInMono)
{
    const auto reference = render (512, 1.0f, 1);

    for (const auto size : { 1, 5, 100, 8192 })
        EXPECT_EQ (signals::firstDifference (render (size, 1.0f, 1), reference, partitionTolerance), "") << size;
}

TEST_P (RenderTest, givesTheSameSamplesTwice)
{
    EXPECT_EQ (signals::firstDifference (render (333, 1.0f), render (333, 1.0f)), "");
}

TEST_P (RenderTest, equalsALiveRenderOfTheSameSettings)
{
    const auto offline = render (512, 1.0f);
    PluginRig live;
    live.set (ParameterIds::mode, 1.0f);
    live.prepare (GetParam(), longestBlock);
    setBandsOfEveryKind (live);
    live.settle();
    EXPECT_EQ (signals::firstDifference (live.run (signals::noise (2, renderLength, 99, 1.0f), 512), offline), "");
}

INSTANTIATE_TEST_SUITE_P (Rates,
                          RenderTest,
                          testing::Values (44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0),
                          [] (const auto& tested) { return std::to_string (static_cast<int> (tested.param)); });
} // namespace
