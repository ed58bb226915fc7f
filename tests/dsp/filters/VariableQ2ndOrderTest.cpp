#include "dsp/filters/VariableQ2ndOrder.h"

#include "support/BiQuadResponse.h"

#include <gtest/gtest.h>

#include <complex>
#include <string>

namespace
{
using Filter = orvik::VariableQ2ndOrder<double>;

struct Case
{
    double q;
    float frequency;
    float sampleRate;
};

class VariableQ2ndOrderTest : public testing::TestWithParam<Case>
{
protected:
    // s is the analogue frequency variable in units of the corner.
    static std::complex<double> denominator (std::complex<double> s, double q) { return s * s + s / q + 1.0; }
};

TEST_P (VariableQ2ndOrderTest, lowPassIsTheAnaloguePrototypeWarped)
{
    const auto [q, frequency, sampleRate] = GetParam();
    Filter filter;
    filter.setResponse (q, frequency, sampleRate, Filter::lowPass);
    EXPECT_EQ (filter.a0, 1.0);

    for (auto probe = 0.001; probe < 0.499; probe += 0.0173)
    {
        const auto hz = probe * double (sampleRate);
        const std::complex<double> s { 0.0, prototypeFrequency (hz, double (frequency), double (sampleRate)) };
        EXPECT_NEAR (std::abs (responseOf (filter, hz, double (sampleRate)) - 1.0 / denominator (s, q)), 0.0, 1e-9)
            << hz;
    }
}

TEST_P (VariableQ2ndOrderTest, highPassIsTheAnaloguePrototypeWarped)
{
    const auto [q, frequency, sampleRate] = GetParam();
    Filter filter;
    filter.setResponse (q, frequency, sampleRate, Filter::highPass);
    EXPECT_EQ (filter.a0, 1.0);

    for (auto probe = 0.001; probe < 0.499; probe += 0.0173)
    {
        const auto hz = probe * double (sampleRate);
        const std::complex<double> s { 0.0, prototypeFrequency (hz, double (frequency), double (sampleRate)) };
        EXPECT_NEAR (std::abs (responseOf (filter, hz, double (sampleRate)) - s * s / denominator (s, q)), 0.0, 1e-9)
            << hz;
    }
}

INSTANTIATE_TEST_SUITE_P (Corners,
                          VariableQ2ndOrderTest,
                          testing::Values (Case { 0.5411961, 480.0f, 11025.0f },
                                           Case { 1.306563, 480.0f, 11025.0f },
                                           Case { 0.5411961, 12000.0f, 48000.0f },
                                           Case { 1.306563, 19000.0f, 192000.0f }),
                          [] (const auto& tested)
                          {
                              return std::to_string (int (tested.param.frequency)) + "HzAt"
                                     + std::to_string (int (tested.param.sampleRate)) + "Section"
                                     + std::to_string (tested.index % 2);
                          });

TEST (VariableQ2ndOrderTypeTest, anUnknownTypeLeavesCoefficientsAndState)
{
    Filter filter;
    filter.setResponse (0.7, 1000.0f, 48000.0f, Filter::lowPass);
    filter.process (1.0);
    const auto before = filter;

    for (const auto type : { -1, 2, 100 })
        filter.setResponse (2.0, 5000.0f, 48000.0f, type);

    EXPECT_EQ (filter.a1, before.a1);
    EXPECT_EQ (filter.a2, before.a2);
    EXPECT_EQ (filter.b0, before.b0);
    EXPECT_EQ (filter.b1, before.b1);
    EXPECT_EQ (filter.b2, before.b2);
    EXPECT_EQ (filter.x1, 1.0);
    EXPECT_EQ (filter.y1, before.y1);
}

TEST (VariableQ2ndOrderTypeTest, aRedesignLeavesTheState)
{
    Filter filter;
    filter.setResponse (0.7, 1000.0f, 48000.0f, Filter::lowPass);
    filter.process (1.0);
    filter.process (0.5);
    const auto before = filter;
    filter.setResponse (0.7, 3000.0f, 48000.0f, Filter::highPass);
    EXPECT_EQ (filter.x1, before.x1);
    EXPECT_EQ (filter.x2, before.x2);
    EXPECT_EQ (filter.y1, before.y1);
    EXPECT_EQ (filter.y2, before.y2);
}
} // namespace
