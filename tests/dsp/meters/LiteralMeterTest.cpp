#include "support/LiteralMeter.h"
#include "dsp/meters/PreparedMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

// The meter against one that keeps every power and adds up anew each time.

namespace
{
/** Powers that change about every 50 ms over some 80 dB, each a multiple of 2^-30 with few digits, so that sums over
    windows are exact in double precision in any order. */
class ExactPowers
{
public:
    explicit ExactPowers (int samplesPerStep) : stepLength (samplesPerStep) {}

    float next()
    {
        if (taken++ % stepLength == 0)
            power = std::ldexp (static_cast<float> (mantissas (random)), exponents (random));

        return power;
    }

private:
    std::mt19937 random { 31 };
    std::uniform_int_distribution<int> mantissas { 1, 15 };
    std::uniform_int_distribution<int> exponents { -26, -3 };
    int stepLength;
    int taken = 0;
    float power = 0.0f;
};

struct MeterCase
{
    double sampleRate;
    int baseCount;
    int seconds;
};

class LiteralMeterTest : public testing::TestWithParam<MeterCase>
{
};

TEST_P (LiteralMeterTest, integratedEqualsTheLiteralReadingToTheBit)
{
    const auto& [sampleRate, baseCount, seconds] = GetParam();
    const auto meter = meterAt (sampleRate, baseCount);
    LiteralMeter literal (sampleRate, baseCount, 3000);
    ExactPowers powers (static_cast<int> (sampleRate / 20.0));
    const auto count = static_cast<long> (sampleRate * seconds);

    for (long i = 0; i < count; ++i)
    {
        const auto power = powers.next();
        ASSERT_EQ (meter->integrated (power), literal.integrated (power)) << "sample " << i;
    }

    EXPECT_TRUE (std::isfinite (meter->integratedValue()));
    const auto& store = meter->blockStore().powers();
    EXPECT_EQ (std::vector<float> (store.begin(), store.end()), literal.blocks);
}

TEST_P (LiteralMeterTest, shortTermAndPeakEqualTheLiteralReadingToTheBit)
{
    const auto& [sampleRate, baseCount, seconds] = GetParam();
    const auto meter = meterAt (sampleRate, baseCount);
    LiteralMeter literal (sampleRate, baseCount, 3000);
    ExactPowers powers (static_cast<int> (sampleRate / 20.0));
    const auto count = static_cast<long> (sampleRate * std::min (seconds, 12));
    auto updates = 0;

    for (long i = 0; i < count; ++i)
    {
        const auto power = powers.next();
        auto updated = false;
        auto literalUpdated = false;
        // The reset level has more digits than the powers: while it is in the window, sums may round.
        ASSERT_NEAR (std::pow (10.0, meter->shortTerm (power, &updated) / 10.0),
                     std::pow (10.0, literal.shortTerm (power, &literalUpdated) / 10.0),
                     i < static_cast<long> (4.0 * sampleRate) ? 1e-7 : 0.0)
            << "sample " << i;
        ASSERT_EQ (updated, literalUpdated) << "sample " << i;
        ASSERT_EQ (meter->peak (-power), literal.peak (-power)) << "sample " << i;
        updates += updated ? 1 : 0;
    }

    const auto hop = static_cast<long> (sampleRate) / 10;
    EXPECT_EQ (updates, (count - 1 - baseCount) / hop);
}

// 1000 Hz keeps ten minutes short: the store wraps after 3000 blocks, five minutes, whatever the rate.
INSTANTIATE_TEST_SUITE_P (Rates,
                          LiteralMeterTest,
                          testing::Values (MeterCase { 1000.0, 0, 900 },
                                           MeterCase { 1000.0, 60, 700 },
                                           MeterCase { 1009.0, 20, 700 },
                                           MeterCase { 100.0, 180, 700 },
                                           MeterCase { 11025.0, 40, 20 },
                                           MeterCase { 44100.0, 0, 12 },
                                           MeterCase { 48000.0, 180, 12 }),
                          [] (const auto& tested) {
                              return std::to_string (int (tested.param.sampleRate)) + "Base"
                                     + std::to_string (tested.param.baseCount);
                          });
} // namespace
