#include "support/PluginRig.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>

namespace
{
using Json = nlohmann::json;

const Json& cases()
{
    static const auto parsed = Json::parse (std::ifstream (SOLVANE_FIXTURES "/eq_cases.json"));
    return parsed;
}

double levelOf (const Json& value)
{
    return value.is_string() ? -std::numeric_limits<double>::infinity() : value.get<double>();
}

/** The figures are computed independently from the formulas, with extended precision in the rate filters. Below -60 dB
    rounding decides. */
constexpr double toleranceDb = 0.01;
constexpr double lowestComparedDb = -60.0;

enum class Updates
{
    offline,
    throughTheWorkers
};

class ResponseTest : public testing::TestWithParam<std::tuple<int, Updates>>
{
protected:
    void SetUp() override
    {
        const auto& [index, updates] = GetParam();
        reference = cases().at (static_cast<std::size_t> (index));

        if (updates == Updates::offline)
            rig.renderOffline();

        rig.prepare (reference["rate"], 512, reference["channels"]);
        for (const auto& id : reference["setOrder"])
        {
            rig.set (id.get<std::string>(), reference["params"][id.get<std::string>()]);

            while (! rig.processor.bandEngine().isIdle())
                std::this_thread::yield();
        }

        // No block has been processed yet, so the block FIFO's share is missing.
        EXPECT_EQ (rig.reportedLatency(), reference["reportedAtFirstPrepare"]);
        rig.settle();
    }

    /** The impulse response from one input to both outputs. The impulse is small, so that single precision's own
        rounding, which falls with it, stays out of the figures. */
    [[nodiscard]] PluginRig::Signal responseTo (const PluginRig::Signal& input)
    {
        auto output = rig.run (input, 512);
        rig.runSilence (length, 512);
        return output;
    }

    void compare (const char* name, const std::vector<double>& response)
    {
        const auto& frequencies = reference["frequenciesHz"];
        const auto& expected = reference["responseDb"][name];

        for (std::size_t index = 0; index < frequencies.size(); ++index)
        {
            const auto wanted = levelOf (expected[index]);

            if (! (wanted > lowestComparedDb))
                continue;

            EXPECT_NEAR (signals::magnitudeDb (response, frequencies[index], reference["rate"]), wanted, toleranceDb)
                << name << " at " << frequencies[index] << " Hz";
        }
    }

    static constexpr int length = 16384;
    Json reference;
    PluginRig rig;
};

std::vector<double> combine (const std::vector<float>& a, const std::vector<float>& b, double factorB)
{
    std::vector<double> result (a.size());

    for (std::size_t index = 0; index < a.size(); ++index)
        result[index] = 0.5 * (a[index] + factorB * b[index]);

    return result;
}

TEST_P (ResponseTest, meetsTheIndependentFiguresEverywhereAboveSixtyDecibelsDown)
{
    const auto fromLeft = responseTo (signals::impulse (2, length, 0));
    const auto fromRight = responseTo (signals::impulse (2, length, 1));

    compare ("L_to_L", { fromLeft[0].begin(), fromLeft[0].end() });
    compare ("R_to_L", { fromRight[0].begin(), fromRight[0].end() });

    auto midLeft = combine (fromLeft[0], fromRight[0], 1.0);
    const auto midRight = combine (fromLeft[1], fromRight[1], 1.0);
    auto sideLeft = combine (fromLeft[0], fromRight[0], -1.0);
    const auto sideRight = combine (fromLeft[1], fromRight[1], -1.0);

    for (std::size_t index = 0; index < midLeft.size(); ++index)
    {
        midLeft[index] += midRight[index];
        sideLeft[index] -= sideRight[index];
    }

    compare ("mid_to_mid", midLeft);
    compare ("side_to_side", sideLeft);
}

TEST_P (ResponseTest, peaksWhereTheLatencySaysAndAsHighAsComputed)
{
    const auto response = responseTo (signals::impulse (2, length, 0))[0];
    const auto peak = std::max_element (
        response.begin(), response.end(), [] (float a, float b) { return std::abs (a) < std::abs (b); });

    EXPECT_EQ (peak - response.begin(), reference["impulsePeak"]["index"]);
    EXPECT_NEAR (*peak, reference["impulsePeak"]["value"].get<double>(), 1.0e-4);

    rig.processor.updateLatency (true);
    EXPECT_EQ (rig.reportedLatency(), reference["reportedOnceFifoEngaged"]);
}

std::string nameOf (const std::tuple<int, Updates>& parameters)
{
    const auto name = cases().at (static_cast<std::size_t> (std::get<0> (parameters)))["name"].get<std::string>();
    return name + (std::get<1> (parameters) == Updates::offline ? "_offline" : "_live");
}

INSTANTIATE_TEST_SUITE_P (Cases,
                          ResponseTest,
                          testing::Combine (testing::Range (0, 8),
                                            testing::Values (Updates::offline, Updates::throughTheWorkers)),
                          [] (const auto& tested) { return nameOf (tested.param); });
} // namespace
