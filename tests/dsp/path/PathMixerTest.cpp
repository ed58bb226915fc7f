#include "dsp/path/PathMixer.h"

#include "support/TestSignals.h"

#include <gtest/gtest.h>

namespace
{
struct MixedBlock
{
    std::vector<float> left;
    std::vector<float> right;
};

class PathMixerTest : public testing::Test
{
protected:
    MixedBlock mix (const PathResults& results, int count, bool useStereo, bool useMidSide)
    {
        MixedBlock mixed { std::vector<float> (static_cast<std::size_t> (count)),
                           std::vector<float> (static_cast<std::size_t> (count)) };
        mixer.mix (
            left.data(), right.data(), results, count, useStereo, useMidSide, mixed.left.data(), mixed.right.data());
        return mixed;
    }

    PathMixer mixer;
    std::vector<float> left = toFloats (noise (1000, 1));
    std::vector<float> right = toFloats (noise (1000, 2));
    std::vector<double> a = noise (1000, 3);
    std::vector<double> b = noise (1000, 4);
    std::vector<double> c = noise (1000, 5);
    std::vector<double> d = noise (1000, 6);
};

TEST_F (PathMixerTest, midIsTheMeanAndSideHalfOfRightMinusLeft)
{
    const std::vector<double> lowLeft { 1.0, 4.0 };
    const std::vector<double> lowRight { 3.0, -2.0 };
    const std::vector<float> l { 0.25f, 1.0f, -0.5f };
    const std::vector<float> r { 0.75f, -1.0f, -0.5f };
    mixer.split (l.data(), r.data(), 3, lowLeft.data(), lowRight.data(), 2);
    EXPECT_EQ (std::vector<double> (mixer.mid(), mixer.mid() + 3), (std::vector<double> { 0.5, 0.0, -0.5 }));
    EXPECT_EQ (std::vector<double> (mixer.side(), mixer.side() + 3), (std::vector<double> { 0.25, -1.0, 0.0 }));
    EXPECT_EQ (std::vector<double> (mixer.midLow(), mixer.midLow() + 2), (std::vector<double> { 2.0, 1.0 }));
    EXPECT_EQ (std::vector<double> (mixer.sideLow(), mixer.sideLow() + 2), (std::vector<double> { 1.0, -3.0 }));
}

TEST_F (PathMixerTest, splitAndJoinedAgainIsTheInputToTheBit)
{
    mixer.split (left.data(), right.data(), 1000, a.data(), b.data(), 250);
    const auto joined = mix ({ nullptr, nullptr, mixer.mid(), mixer.side() }, 1000, false, true);
    EXPECT_EQ (joined.left, left);
    EXPECT_EQ (joined.right, right);
}

TEST_F (PathMixerTest, theStereoPathAloneIsRoundedToSinglePrecision)
{
    const auto mixed = mix ({ a.data(), b.data(), nullptr, nullptr }, 1000, true, false);
    EXPECT_EQ (mixed.left, toFloats (a));
    EXPECT_EQ (mixed.right, toFloats (b));
}

TEST_F (PathMixerTest, bothPathsAddUpWithoutTheDelayedDrySignal)
{
    mixer.setLatency (274);
    const auto mixed = mix ({ a.data(), b.data(), c.data(), d.data() }, 1000, true, true);

    for (std::size_t i = 0; i < 1000; ++i)
    {
        const double dryLeft = i < 274 ? 0.0 : static_cast<double> (left[i - 274]);
        const double dryRight = i < 274 ? 0.0 : static_cast<double> (right[i - 274]);
        ASSERT_EQ (mixed.left[i], static_cast<float> ((a[i] - dryLeft) + (c[i] - d[i])));
        ASSERT_EQ (mixed.right[i], static_cast<float> ((b[i] - dryRight) + (d[i] + c[i])));
    }
}

TEST_F (PathMixerTest, aFlatStereoPathAddsExactlyNothingToMidAndSide)
{
    mixer.setLatency (100);
    const auto flatLeft = delayedBy (toDoubles (left), 100);
    const auto flatRight = delayedBy (toDoubles (right), 100);
    const auto both = mix ({ flatLeft.data(), flatRight.data(), c.data(), d.data() }, 1000, true, true);
    const auto midSideAlone = mix ({ nullptr, nullptr, c.data(), d.data() }, 1000, false, true);
    EXPECT_EQ (both.left, midSideAlone.left);
    EXPECT_EQ (both.right, midSideAlone.right);
}

TEST_F (PathMixerTest, theDryDelayMovesOnlyWhileBothPathsRun)
{
    mixer.setLatency (10);
    const std::vector<double> zeros (1000, 0.0);
    const PathResults silent { zeros.data(), zeros.data(), zeros.data(), zeros.data() };
    mix (silent, 10, true, true);
    mix (silent, 500, true, false);
    mix (silent, 500, false, true);
    const auto mixed = mix (silent, 10, true, true);

    for (std::size_t i = 0; i < 10; ++i)
    {
        EXPECT_EQ (mixed.left[i], -left[i]);
        EXPECT_EQ (mixed.right[i], -right[i]);
    }
}

TEST_F (PathMixerTest, aLatencyOfZeroTakesTheInputItselfOut)
{
    mixer.setLatency (0);
    const std::vector<double> zeros (1000, 0.0);
    const auto mixed = mix ({ zeros.data(), zeros.data(), zeros.data(), zeros.data() }, 1000, true, true);

    for (std::size_t i = 0; i < 1000; ++i)
        ASSERT_EQ (mixed.left[i], -left[i]);
}

TEST_F (PathMixerTest, noPathGivesSilence)
{
    const auto mixed = mix ({ nullptr, nullptr, nullptr, nullptr }, 100, false, false);
    EXPECT_EQ (mixed.left, std::vector<float> (100, 0.0f));
    EXPECT_EQ (mixed.right, std::vector<float> (100, 0.0f));
}
} // namespace
