#include "dsp/design/MinimumPhase.h"

#include "dsp/design/BandCurves.h"
#include "dsp/design/FirLengths.h"
#include "dsp/design/LeastSquaresFir.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <vector>

namespace
{
std::vector<double> sourceTaps (const BandShape& shape, int tapCount)
{
    std::vector<double> curve (curvePointCount);
    evaluateBandCurve (shape, curve);
    std::vector<double> taps (std::size_t (LeastSquaresFir::symmetricTapCount (tapCount)));
    EXPECT_TRUE (LeastSquaresFir::forTapCount (tapCount)->designSymmetricFir (curve, taps));
    return taps;
}

double magnitudeAt (std::span<const double> taps, double radians)
{
    std::complex<double> sum;

    for (std::size_t i = 0; i < taps.size(); ++i)
        sum += taps[i] * std::polar (1.0, -radians * double (i));

    return std::abs (sum);
}

/** The minimum-phase factor by the folded cepstrum, over so many points that its aliasing is far below the tolerance.
    Cosine sums only: the log magnitude of a real filter is even. */
std::vector<double> cepstralFactor (std::span<const double> taps, std::size_t resultCount)
{
    constexpr std::size_t length = 4096;
    std::vector<double> logMagnitude (length / 2 + 1);

    for (std::size_t bin = 0; bin < logMagnitude.size(); ++bin)
        logMagnitude[bin] = std::log (magnitudeAt (taps, 2.0 * std::numbers::pi * double (bin) / double (length)));

    // exp of the causal cepstrum, term by term: n h[n] = sum of k c[k] h[n - k].
    std::vector<double> cepstrum (resultCount), result (resultCount);

    for (std::size_t n = 0; n < resultCount; ++n)
    {
        auto sum = logMagnitude.front() + logMagnitude.back() * (n % 2 == 0 ? 1.0 : -1.0);

        for (std::size_t bin = 1; bin + 1 < logMagnitude.size(); ++bin)
            sum += 2.0 * logMagnitude[bin]
                   * std::cos (2.0 * std::numbers::pi * double (bin * n % length) / double (length));

        cepstrum[n] = (n == 0 ? 1.0 : 2.0) * sum / double (length);
    }

    result[0] = std::exp (cepstrum[0]);

    for (std::size_t n = 1; n < resultCount; ++n)
    {
        for (std::size_t k = 1; k <= n; ++k)
            result[n] += double (k) * cepstrum[k] * result[n - k];

        result[n] /= double (n);
    }

    return result;
}

struct Case
{
    const char* name;
    BandShape shape;
    int tapCount;
};

class MinimumPhaseTest : public testing::TestWithParam<Case>
{
protected:
    std::vector<double> source = sourceTaps (GetParam().shape, GetParam().tapCount);
    MinimumPhase minimumPhase;
};

TEST_P (MinimumPhaseTest, keepsTheMagnitude)
{
    ASSERT_TRUE (minimumPhase.reflect (source));
    ASSERT_EQ (minimumPhase.reflected().size(), source.size());

    for (auto radians = 0.0; radians <= std::numbers::pi; radians += 0.01)
        EXPECT_NEAR (magnitudeAt (minimumPhase.reflected(), radians), magnitudeAt (source, radians), 1e-9) << radians;
}

// 1e-9: the cepstrum's aliasing over 4096 points, for zeros no nearer to the circle than these filters have them.
TEST_P (MinimumPhaseTest, agreesWithTheCepstralFactor)
{
    ASSERT_TRUE (minimumPhase.reflect (source));
    const auto expected = cepstralFactor (source, source.size());

    for (std::size_t i = 0; i < source.size(); ++i)
        EXPECT_NEAR (minimumPhase.reflected()[i], expected[i], 1e-9) << i;
}

TEST_P (MinimumPhaseTest, cutsTheResultToTheLengthAsked)
{
    std::vector<double> taps (std::size_t (GetParam().tapCount) / 2);
    ASSERT_TRUE (minimumPhase.toMinimumPhase (source, taps));

    for (std::size_t i = 0; i < taps.size(); ++i)
        EXPECT_EQ (taps[i], minimumPhase.reflected()[i]);
}

INSTANTIATE_TEST_SUITE_P (Bands,
                          MinimumPhaseTest,
                          testing::Values (Case { "bell4k", { 6.0f, 4000.0f, 1.0f, false, 48000.0 }, 100 },
                                           Case { "cut2k", { -12.0f, 2000.0f, 2.0f, false, 44100.0 }, 100 },
                                           Case { "bell2kMaster", { 4.0f, 2000.0f, 1.0f, false, 48000.0 }, 60 },
                                           Case { "shelf8k", { 6.0f, 8000.0f, 1.0f, true, 44100.0 }, 100 },
                                           Case { "shelf3k96", { 9.0f, 3000.0f, 1.0f, true, 96000.0 }, 120 },
                                           Case { "narrow96", { 12.0f, 5000.0f, 10.0f, false, 96000.0 }, 120 },
                                           Case { "cut10k96", { -9.0f, 10000.0f, 4.0f, false, 96000.0 }, 120 },
                                           Case { "bell88Master", { -4.0f, 6000.0f, 1.5f, false, 88200.0 }, 40 }),
                          [] (const auto& tested) { return tested.param.name; });

// The first value is the geometric mean of the magnitude: this shelf's is 0.29.
TEST (MinimumPhaseRefusalTest, refusesABroadDeepCutAndKeepsTheLastTaps)
{
    const auto deep = sourceTaps ({ -12.0f, 3000.0f, 1.0f, true, 48000.0 }, 100);
    EXPECT_NEAR (cepstralFactor (deep, 1)[0], 0.29, 0.01);

    MinimumPhase minimumPhase;
    std::vector<double> taps (50);
    ASSERT_TRUE (minimumPhase.toMinimumPhase (sourceTaps ({ 6.0f, 3000.0f, 1.0f, true, 48000.0 }, 100), taps));
    const auto before = taps;
    const std::vector<double> reflectedBefore { minimumPhase.reflected().begin(), minimumPhase.reflected().end() };

    EXPECT_FALSE (minimumPhase.toMinimumPhase (deep, taps));
    EXPECT_EQ (taps, before);
    EXPECT_TRUE (std::equal (reflectedBefore.begin(), reflectedBefore.end(), minimumPhase.reflected().begin()));
}

TEST (MinimumPhaseRefusalTest, theFirstValueMustExceedAHalf)
{
    auto source = sourceTaps ({ 6.0f, 4000.0f, 1.0f, false, 48000.0 }, 60);
    const auto mean = cepstralFactor (source, 1)[0];
    MinimumPhase minimumPhase;

    for (const auto target : { 0.499, 0.501 })
    {
        auto scaled = source;

        for (auto& tap : scaled)
            tap *= target / mean;

        EXPECT_EQ (minimumPhase.reflect (scaled), target > 0.5) << target;
    }

    ASSERT_FALSE (minimumPhase.reflected().empty());
    EXPECT_NEAR (minimumPhase.reflected()[0], 0.501, 1e-9);
}

TEST (MinimumPhaseRefusalTest, refusesWhatIsNotAFilter)
{
    MinimumPhase minimumPhase;
    std::vector<double> taps (99, 0.01);
    taps[49] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE (minimumPhase.reflect (taps));
    EXPECT_FALSE (minimumPhase.reflect (std::vector<double> (99, 0.0)));
    EXPECT_FALSE (minimumPhase.reflect ({}));
    EXPECT_FALSE (minimumPhase.reflect (std::vector<double> (maxMinimumSourceTapCount + 1, 1.0)));
    EXPECT_TRUE (minimumPhase.reflected().empty());
}

TEST (MinimumPhaseEndsTest, aCentredImpulseLosesItsDelay)
{
    std::vector<double> taps (99, 0.0);
    taps[49] = 1.0;
    MinimumPhase minimumPhase;
    ASSERT_TRUE (minimumPhase.reflect (taps));
    EXPECT_NEAR (minimumPhase.reflected()[0], 1.0, 1e-14);

    for (std::size_t i = 1; i < taps.size(); ++i)
        EXPECT_NEAR (minimumPhase.reflected()[i], 0.0, 1e-14);
}

TEST (MinimumPhaseEndsTest, emptyEndsOfASymmetricFilterAreDelayOnly)
{
    const auto inner = sourceTaps ({ 6.0f, 4000.0f, 1.0f, false, 48000.0 }, 60);
    std::vector<double> padded (10, 0.0);
    padded.insert (padded.end(), inner.begin(), inner.end());
    padded.resize (padded.size() + 10, 0.0);

    MinimumPhase fromInner, fromPadded;
    ASSERT_TRUE (fromInner.reflect (inner));
    ASSERT_TRUE (fromPadded.reflect (padded));
    ASSERT_EQ (fromPadded.reflected().size(), padded.size());

    for (std::size_t i = 0; i < padded.size(); ++i)
        EXPECT_EQ (fromPadded.reflected()[i], i < inner.size() ? fromInner.reflected()[i] : 0.0) << i;
}

// Curves that a float has rounded to exactly 1 leave taps of pure rounding error around the impulse.
TEST (MinimumPhaseEndsTest, anImpulseAmongRoundingErrorsStaysAnImpulse)
{
    std::vector<double> curve (curvePointCount, 1.0), taps (99);
    ASSERT_TRUE (LeastSquaresFir::forTapCount (100)->designSymmetricFir (curve, taps));
    MinimumPhase minimumPhase;
    ASSERT_TRUE (minimumPhase.reflect (taps));
    EXPECT_NEAR (minimumPhase.reflected()[0], 1.0, 1e-12);

    for (std::size_t i = 1; i < taps.size(); ++i)
        EXPECT_NEAR (minimumPhase.reflected()[i], 0.0, 1e-12);
}

TEST (MinimumPhaseRealTimeTest, reflectingAllocatesNothing)
{
    const auto source = sourceTaps ({ 6.0f, 4000.0f, 1.0f, false, 96000.0 }, 120);
    MinimumPhase minimumPhase;
    std::vector<double> taps (60);
    const RealTimeGuard guard;
    const auto accepted = minimumPhase.toMinimumPhase (source, taps);
    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
    EXPECT_TRUE (accepted);
}
} // namespace
