#include "dsp/meters/LUFSProcessor.h"
#include "dsp/meters/PreparedMeter.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

namespace
{
constexpr auto noReading = -std::numeric_limits<float>::infinity();

TEST (LUFSProcessorTest, partitionOrderShowsAfterTheStoreHasWrapped)
{
    const auto meter = meterAt (1000.0);

    // Loud and quiet seconds in turn: the gate moves the quiet ones behind the loud ones.
    for (int i = 0; i < 400 * 1000; ++i)
        meter->integrated ((i / 1000) % 2 == 0 ? 0.25f : 1.0e-5f);

    const auto& store = meter->blockStore().powers();
    auto changes = 0;

    for (std::size_t i = 1; i < store.size(); ++i)
        changes += (store[i] > 1.0e-2f) != (store[i - 1] > 1.0e-2f) ? 1 : 0;

    // A store in order of time would change every ten blocks. Only what came since the last gate stands in between.
    EXPECT_LE (changes, 5);
}

TEST (LUFSProcessorTest, blocksGiveTheSameBitsAsSingleFrames)
{
    for (const auto sampleRate : { 11025.0, 44100.0 })
    {
        const auto plain = meterAt (sampleRate, 60);
        const auto plainBlock = meterAt (sampleRate, 60);
        const auto weighted = meterAt (sampleRate);
        const auto weightedBlock = meterAt (sampleRate);
        std::mt19937 random (5);
        std::normal_distribution<float> samples (0.0f, 0.2f);
        std::uniform_int_distribution<int> lengths (0, 3000);
        std::vector<float> left, right;

        for (int taken = 0; taken < 5 * 44100; taken += static_cast<int> (left.size()))
        {
            left.resize (static_cast<std::size_t> (lengths (random)));
            right.resize (left.size());
            auto updated = false;
            auto updatedBlock = false;

            for (std::size_t i = 0; i < left.size(); ++i)
            {
                left[i] = samples (random);
                right[i] = samples (random);
                plain->integrated (plain->sumOfSquares (left[i], right[i]));
                weighted->shortTerm (weighted->weighting.stereoPower (left[i], right[i]), &updated);
            }

            const auto count = static_cast<int> (left.size());
            ASSERT_EQ (plainBlock->integratedOfPlain ({ left.data(), right.data() }, count), plain->integratedValue());
            ASSERT_EQ (weightedBlock->shortTermOfWeighted ({ left.data(), right.data() }, count, &updatedBlock),
                       weighted->shortTermValue());
            ASSERT_EQ (updated, updatedBlock);
        }

        EXPECT_TRUE (std::isfinite (plain->integratedValue()));
        EXPECT_TRUE (std::isfinite (weighted->shortTermValue()));
    }
}

TEST (LUFSProcessorTest, twoMetersAtOnceGiveTheSameBitsAsOneAfterTheOther)
{
    const auto first = meterAt (48000.0);
    const auto second = meterAt (48000.0);
    const auto firstAlone = meterAt (48000.0);
    const auto secondAlone = meterAt (48000.0);
    std::mt19937 random (6);
    std::normal_distribution<float> samples (0.0f, 0.2f);
    std::vector<float> a (777), b (777), c (777), d (777);

    for (int block = 0; block < 200; ++block)
    {
        for (auto* channel : { &a, &b, &c, &d })
            for (auto& sample : *channel)
                sample = samples (random);

        for (const auto stereo : { true, false })
        {
            const orvik::ChannelPointers input { a.data(), stereo ? b.data() : nullptr };
            const orvik::ChannelPointers output { c.data(), stereo ? d.data() : nullptr };
            Meter::shortTermOfWeightedPair (*first, input, *second, output, 777);
            ASSERT_EQ (first->shortTermValue(), firstAlone->shortTermOfWeighted (input, 777, nullptr));
            ASSERT_EQ (second->shortTermValue(), secondAlone->shortTermOfWeighted (output, 777, nullptr));
        }
    }

    EXPECT_TRUE (std::isfinite (first->shortTermValue()));
}

TEST (LUFSProcessorTest, firstFiguresComeAfterTheirHops)
{
    const auto meter = meterAt (48000.0);

    for (int i = 0; i < 4800; ++i)
        ASSERT_EQ (meter->shortTerm (0.5f, nullptr), noReading);

    // Counters are compared before they advance, so the hop's figure comes with the sample after it.
    EXPECT_TRUE (std::isfinite (meter->shortTerm (0.5f, nullptr)));

    for (int i = 0; i < 48000; ++i)
        ASSERT_EQ (meter->integrated (0.5f), noReading);

    EXPECT_TRUE (std::isfinite (meter->integrated (0.5f)));
}

TEST (LUFSProcessorTest, baseCountEntersTheGatesFirstIntervalTwice)
{
    const auto meter = meterAt (1000.0, 60);
    auto gates = std::vector<int>();
    auto last = noReading;

    for (int i = 0; gates.size() < 3; ++i)
    {
        const auto level = meter->integrated (0.01f * static_cast<float> (i));

        if (level != last)
            gates.push_back (i);

        last = level;
    }

    EXPECT_EQ (gates, (std::vector<int> { 1120, 2180, 3240 }));
}

TEST (LUFSProcessorTest, hopTruncatesAtTheReducedRateOf11025)
{
    const auto meter = meterAt (11025.0);
    auto updates = std::vector<int>();

    for (int i = 0; updates.size() < 4; ++i)
    {
        auto updated = false;
        meter->shortTerm (0.1f, &updated);

        if (updated)
            updates.push_back (i);
    }

    EXPECT_EQ (updates, (std::vector<int> { 1102, 2204, 3306, 4408 }));
}

TEST (LUFSProcessorTest, rateGoesThroughSinglePrecision)
{
    // As a float this is 16777216, whose tenth is one hop more than that of the double.
    const auto meter = meterAt (16777219.999);
    auto updated = false;
    auto index = 0;

    while (! updated)
        meter->shortTerm (0.1f, &updated), ++index;

    EXPECT_EQ (index - 1, static_cast<int> (static_cast<float> (16777219.999)) / 10);
}

TEST (LUFSProcessorTest, aPreparedStoreHoldsSilence)
{
    Meter meter;
    meter.setSampleRate (1000.0);
    meter.prepare();

    for (int i = 0; i < 2000; ++i)
        ASSERT_EQ (meter.integrated (0.0f), noReading);
}

TEST (LUFSProcessorTest, silenceKeepsIntegratedAtMinusInfinityAndGoesOnRunningTheGate)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 60 * 1000; ++i)
        ASSERT_EQ (meter->integrated (0.0f), noReading);

    // The gate's counter has restarted each second, so that sound is noticed within the next.
    for (int i = 0; i < 1001; ++i)
        meter->integrated (0.5f);

    EXPECT_NEAR (meter->integratedValue(), 10.0 * std::log10 (0.5) - 0.691, 1.0);
}

TEST (LUFSProcessorTest, silenceBringsShortTermFromSeventyToMinusInfinityAfterThreeSeconds)
{
    const auto meter = meterAt (1000.0);
    std::vector<float> readings;

    for (int i = 0; i <= 3200; ++i)
    {
        auto updated = false;
        const auto level = meter->shortTerm (0.0f, &updated);

        if (updated)
            readings.push_back (level);
    }

    ASSERT_EQ (readings.size(), 32u);
    EXPECT_NEAR (readings.front(), -70.0 + 10.0 * std::log10 (2899.0 / 3000.0), 1e-3);

    for (std::size_t i = 1; i < 29; ++i)
        EXPECT_LT (readings[i], readings[i - 1]);

    EXPECT_EQ (readings.back(), noReading);
}

TEST (LUFSProcessorTest, fullScaleSineReadsItsClosedForm)
{
    // One channel of 997 Hz: half a watt, so -3.01 dB and the offset; the weighting's gain there makes the offset good.
    const auto plain = meterAt (48000.0);
    const auto weighted = meterAt (48000.0);

    for (int i = 0; i < 60 * 48000; ++i)
    {
        const auto sample = static_cast<float> (std::sin (2.0 * std::numbers::pi * 997.0 * i / 48000.0));
        plain->integrated (plain->sumOfSquares (sample, 0.0f));
        weighted->shortTerm (weighted->weighting.stereoPower (sample, 0.0f), nullptr);

        if (i == 10 * 48000 - 1)
        {
            EXPECT_NEAR (plain->integratedValue(), -3.774, 0.001);
        }
    }

    // The first blocks still hold the reset level, so that the limit of -3.70 is only approached.
    EXPECT_NEAR (plain->integratedValue(), -3.712, 0.001);
    EXPECT_NEAR (weighted->shortTermValue(), -3.01, 0.005);
}

TEST (LUFSProcessorTest, relativeGateLeavesOutWhatIsTenBelowTheMean)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 20000; ++i)
        meter->integrated (0.1f);

    const auto loud = meter->integratedValue();

    for (int i = 0; i < 20000; ++i)
        meter->integrated (0.0005f);

    // 23 dB below: only the three blocks across the edge, of which one passes by its loud half, make a difference.
    EXPECT_NEAR (meter->integratedValue(), loud, 0.05);

    for (int i = 0; i < 20000; ++i)
        meter->integrated (0.05f);

    EXPECT_NEAR (meter->integratedValue(), 10.0 * std::log10 (0.075) - 0.691, 0.05);
}

TEST (LUFSProcessorTest, followsRecentMaterialAfterMoreThanThreeThousandBlocks)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 300 * 1000; ++i)
        meter->integrated (0.1f);

    EXPECT_NEAR (meter->integratedValue(), -10.691, 0.01);

    for (int i = 0; i < 310 * 1000; ++i)
        meter->integrated (0.02f);

    EXPECT_NEAR (meter->integratedValue(), 10.0 * std::log10 (0.02) - 0.691, 0.01);
}

TEST (LUFSProcessorTest, resetStartsAnewButLeavesTheWriteIndex)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 2550; ++i)
        meter->integrated (0.1f);

    meter->reset (-70.0f);
    EXPECT_EQ (meter->integratedValue(), noReading);

    for (int i = 0; i <= 100; ++i)
        meter->integrated (0.1f);

    // 25 blocks were written before; the first after the reset goes to the place behind them.
    const auto& store = meter->blockStore().powers();
    const auto resetPower = static_cast<float> (std::pow (10.0, -6.9309));
    EXPECT_FLOAT_EQ (store[24], resetPower);
    EXPECT_GT (store[25], 0.01f);
    EXPECT_FLOAT_EQ (store[26], resetPower);
}

TEST (LUFSProcessorTest, resetClearsTheWeightingsHistory)
{
    const auto meter = meterAt (48000.0);
    const auto fresh = meterAt (48000.0);

    for (int i = 0; i < 100; ++i)
        (void) meter->weighting.stereoPower (1.0f, -1.0f);

    meter->reset (-70.0f);
    EXPECT_EQ (meter->weighting.stereoPower (0.5f, 0.25f), fresh->weighting.stereoPower (0.5f, 0.25f));
}

TEST (LUFSProcessorTest, resetShortTermKeepsTheUpdatesInTheirTurn)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 1130; ++i)
        meter->shortTerm (0.5f, nullptr);

    meter->resetShortTerm (-70.0f);
    EXPECT_EQ (meter->shortTermValue(), noReading);

    auto updated = false;
    auto samples = 0;

    for (; ! updated; ++samples)
        meter->shortTerm (0.5f, &updated);

    // The eleventh figure came at sample 1100; the next is due at 1200, which is the 71st of the new ones.
    EXPECT_EQ (samples, 71);
    EXPECT_NEAR (meter->shortTermValue(), 10.0 * std::log10 (0.5 * 71.0 / 3000.0) - 0.691, 0.001);
}

TEST (LUFSProcessorTest, preparingAgainAtALowerRateKeepsTheFiguresComing)
{
    const auto meter = meterAt (192000.0);

    for (int i = 0; i < 19000; ++i)
    {
        meter->shortTerm (0.5f, nullptr);
        meter->peak (0.5f);
    }

    meter->setSampleRate (44100.0);
    meter->prepare();
    meter->reset (-70.0f);

    for (int i = 0; i <= 44100; ++i)
    {
        meter->integrated (0.1f);
        meter->shortTerm (0.1f, nullptr);
        meter->peak (0.25f);
    }

    EXPECT_TRUE (std::isfinite (meter->shortTermValue()));
    EXPECT_TRUE (std::isfinite (meter->integratedValue()));
    EXPECT_EQ (meter->peakValue(), 0.25f);
}

TEST (LUFSProcessorTest, peakFallsThreeSecondsAfterTheLoudestSample)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 4000; ++i)
    {
        const auto peak = meter->peak (i == 150 ? -0.9f : 0.1f);
        const auto expected = i < 100 ? 0.0f : i < 200 || i >= 3200 ? 0.1f : 0.9f;
        ASSERT_EQ (peak, expected) << i;
    }
}

TEST (LUFSProcessorTest, withoutASampleRateNothingHappens)
{
    Meter meter;

    for (const auto rate : { 0.0, -48000.0, std::numeric_limits<double>::quiet_NaN() })
    {
        meter.setSampleRate (rate);
        meter.prepare();
        meter.reset (-70.0f);
        meter.resetShortTerm (-70.0f);
        const std::vector<float> powers (1000, 0.5f);
        EXPECT_EQ (meter.integratedBlock (powers.data(), 1000), noReading);
        EXPECT_EQ (meter.shortTermBlock (powers.data(), 1000, nullptr), noReading);
        EXPECT_EQ (meter.integrated (0.5f), noReading);
        EXPECT_EQ (meter.shortTerm (0.5f, nullptr), noReading);
        EXPECT_EQ (meter.peak (0.5f), 0.0f);
    }
}

TEST (LUFSProcessorTest, inputThatIsNotFiniteLeavesTheReadingsFinite)
{
    const auto meter = meterAt (1000.0);

    for (int i = 0; i < 20000; ++i)
    {
        const auto power = i == 5000   ? std::numeric_limits<float>::infinity()
                           : i == 7777 ? std::numeric_limits<float>::quiet_NaN()
                                       : 0.1f;
        meter->integrated (power);
        meter->shortTerm (power, nullptr);
    }

    EXPECT_NEAR (meter->integratedValue(), -10.691, 0.1);
    EXPECT_NEAR (meter->shortTermValue(), -10.691, 0.001);
}

TEST (LUFSProcessorTest, measuringAndResettingDoNotAllocate)
{
    const auto meter = meterAt (48000.0);
    const std::vector<float> samples (50000, 0.25f);
    const RealTimeGuard guard;
    meter->integratedOfPlain ({ samples.data(), samples.data() }, 50000);
    meter->shortTermOfWeighted ({ samples.data(), nullptr }, 50000, nullptr);
    meter->peak (0.5f);
    meter->reset (-70.0f);
    meter->resetShortTerm (-70.0f);
    EXPECT_EQ (guard.allocations(), 0);
}
} // namespace
