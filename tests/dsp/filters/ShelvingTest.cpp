#include "dsp/filters/Shelving.h"

#include "support/BiQuadResponse.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <string>

namespace
{
struct Shelf
{
    int highShelf;
    float gainDb;
};

class ShelvingTest : public testing::TestWithParam<Shelf>
{
protected:
    ShelvingTest()
    {
        filter.frequency = 5000.0f;
        filter.sampleRate = 48000.0f;
        filter.gainDb = GetParam().gainDb;
        filter.highShelf = GetParam().highShelf;
        filter.updateCoefficients();
    }

    orvik::Shelving<double> filter;
};

TEST_P (ShelvingTest, isTheAnaloguePrototypeWarped)
{
    const auto v = std::pow (10.0, std::abs (double (GetParam().gainDb)) / 20.0);

    for (auto hz = 50.0; hz < 23900.0; hz *= 1.13)
    {
        std::complex<double> s { 0.0, prototypeFrequency (hz, 5000.0, 48000.0) };

        if (GetParam().highShelf == 0)
            s = 1.0 / s;

        const auto boost = (v * s * s + std::sqrt (2.0 * v) * s + 1.0) / (s * s + std::numbers::sqrt2 * s + 1.0);
        const auto expected = GetParam().gainDb >= 0.0f ? boost : 1.0 / boost;
        EXPECT_NEAR (std::abs (responseOf (filter, hz, 48000.0) - expected), 0.0, 1e-10) << hz;
    }
}

TEST_P (ShelvingTest, hasItsGainAtOneEndAndNoneAtTheOther)
{
    const auto v = std::pow (10.0, double (GetParam().gainDb) / 20.0);
    const auto isHigh = GetParam().highShelf != 0;
    EXPECT_EQ (filter.a0, 1.0);
    EXPECT_NEAR (std::abs (responseOf (filter, 0.0, 48000.0)), isHigh ? 1.0 : v, 1e-9);
    EXPECT_NEAR (std::abs (responseOf (filter, 24000.0, 48000.0)), isHigh ? v : 1.0, 1e-9);
}

TEST_P (ShelvingTest, leavesTheState)
{
    filter.process (1.0);
    const auto before = filter;
    filter.frequency = 2000.0f;
    filter.updateCoefficients();
    EXPECT_NE (filter.b1, before.b1);
    EXPECT_EQ (filter.x1, 1.0);
    EXPECT_EQ (filter.y1, before.y1);
}

INSTANTIATE_TEST_SUITE_P (Shelves,
                          ShelvingTest,
                          testing::Values (Shelf { 1, 9.0f },
                                           Shelf { 1, -9.0f },
                                           Shelf { 1, 0.0f },
                                           Shelf { 0, 6.0f },
                                           Shelf { 0, -6.0f },
                                           Shelf { 0, 0.0f }),
                          [] (const auto& tested)
                          {
                              return std::string (tested.param.highShelf != 0 ? "high" : "low")
                                     + (tested.param.gainDb < 0.0f ? "Cut" : "Boost")
                                     + std::to_string (std::abs (int (tested.param.gainDb)));
                          });
} // namespace
