#include "dsp/meters/LUFSProcessor.h"
#include "support/Fixture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <numbers>
#include <string>

namespace
{
struct Frame
{
    float left;
    float right;
};

double sine (double frequencyHz, double amplitude, int index, double rate)
{
    return amplitude * std::sin (2.0 * std::numbers::pi * frequencyHz * index / rate);
}

Frame both (double value)
{
    return { static_cast<float> (value), static_cast<float> (value) };
}

/** The fixture's signals by name, one frame after the other; mono ones leave the right channel at 0. */
std::function<Frame (int)> signalOf (const std::string& name)
{
    if (name == "sine997_left")
        return [] (int n) { return Frame { static_cast<float> (sine (997.0, 1.0, n, 48000.0)), 0.0f }; };

    if (name == "sine1k_both_441")
        return [] (int n) { return both (sine (1000.0, 0.1, n, 44100.0)); };

    if (name == "loud_then_quiet")
        return [] (int n) { return both (sine (440.0, n < 144000 ? 0.5 : 0.005, n, 48000.0)); };

    if (name == "lcg_noise_96")
        return [state = std::uint32_t { 12345 }] (int) mutable
        {
            const auto next = [&state]
            {
                state = 1664525u * state + 1013904223u;
                return static_cast<float> (0.25 * (state / 2147483648.0 - 1.0));
            };
            const auto left = next();
            return Frame { left, next() };
        };

    if (name == "tone_then_silence")
        return [] (int n) { return both (n < 96000 ? sine (2000.0, 0.8, n, 48000.0) : 0.0); };

    if (name == "two_tone_mono")
        return [] (int n)
        {
            const auto swell = (1.0 + sine (0.5, 1.0, n, 44100.0)) / 2.0;
            return Frame { static_cast<float> (sine (60.0, 0.3, n, 44100.0) + sine (5000.0, 0.2, n, 44100.0) * swell),
                           0.0f };
        };

    return {};
}

void expectReading (float actual, const nlohmann::json& expected, const std::string& what)
{
    const auto level = numberOf (expected);

    if (std::isinf (level))
        EXPECT_EQ (static_cast<double> (actual), level) << what;
    else
        EXPECT_NEAR (actual, level, 0.01) << what;
}

TEST (LoudnessReferenceTest, readingsEqualIndependentFigures)
{
    const auto cases = readFixture ("loudness.json");
    ASSERT_EQ (cases.size(), 6u);

    for (const auto& signalCase : cases)
    {
        const auto name = signalCase["name"].get<std::string>();
        auto signal = signalOf (name);
        ASSERT_TRUE (signal) << name;

        orvik::LUFSProcessor<3000> plain;
        orvik::LUFSProcessor<3000> weighted;

        for (auto* meter : { &plain, &weighted })
        {
            meter->setSampleRate (signalCase["rate"].get<double>());
            meter->prepare();
            meter->reset (-70.0f);
            meter->resetShortTerm (-70.0f);
        }

        int fed = 0;

        for (const auto& reading : signalCase["readings"])
        {
            for (; fed < reading["samples"].get<int>(); ++fed)
            {
                const auto [left, right] = signal (fed);
                plain.integrated (plain.sumOfSquares (left, right));
                const auto power = weighted.weighting.stereoPower (left, right);
                weighted.integrated (power);
                weighted.shortTerm (power, nullptr);
            }

            const auto where = name + " after " + std::to_string (fed);
            expectReading (plain.integratedValue(), reading["integratedPlain"], where + ", plain");
            expectReading (weighted.integratedValue(), reading["integratedK"], where + ", weighted");
            expectReading (weighted.shortTermValue(), reading["shortTermK"], where + ", short term");
        }
    }
}
} // namespace
