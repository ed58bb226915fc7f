#include "targets/TopBand.h"
#include "support/Fixture.h"
#include "targets/MakimaCurve.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace
{
TEST (TopBandTest, equalsIndependentFigures)
{
    const auto fixture = readFixture ("top_band.json");
    ASSERT_EQ (fixture["examples"].size(), 5u);

    for (const auto& example : fixture["examples"])
    {
        const auto values = example["values"].get<std::array<double, 3>>();
        auto result = example["previous"].get<float>();
        makeTopBandValue (values, &result);
        EXPECT_NEAR (result, example["result"].get<double>(), 0.001) << example["values"];

        const auto knots = fixture["knotsHz"].get<std::array<double, 3>>();
        const MakimaCurve curve (knots, values);

        for (std::size_t i = 0; i < 3; ++i)
        {
            const auto slope = numberOf (example["knotSlopesDbPerHz"][i]);

            if (std::isnan (slope))
                EXPECT_TRUE (std::isnan (curve.knotSlopes()[i])) << example["values"];
            else
                EXPECT_NEAR (curve.knotSlopes()[i], slope, 1e-9) << example["values"];
        }
    }
}

TEST (TopBandTest, givesTheTenthValueOfBalancedMaster)
{
    auto result = 0.0f;
    makeTopBandValue ({ -23.77, -26.18, -34.33 }, &result);
    EXPECT_NEAR (result, -39.70, 0.005);
}

TEST (TopBandTest, equalLevelsKeepWhatWasThere)
{
    auto result = -41.25f;
    makeTopBandValue ({ -20.0, -20.0, -20.0 }, &result);
    EXPECT_EQ (result, -41.25f);
}

TEST (TopBandTest, aLevelThatIsNotFiniteKeepsWhatWasThere)
{
    for (const auto bad : { std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity() })
        for (std::size_t place = 0; place < 3; ++place)
        {
            std::array levels { -24.0, -26.2, -34.3 };
            levels[place] = bad;
            auto result = -41.25f;
            makeTopBandValue (levels, &result);
            EXPECT_EQ (result, -41.25f);
        }
}

TEST (RememberedTopBandTest, givesWhatTheCurveGivesWhateverCameBefore)
{
    constexpr auto nan = std::numeric_limits<double>::quiet_NaN();
    const std::array<std::array<double, 3>, 9> inOrder { { { -24.0, -26.2, -34.3 },
                                                           { -24.0, -26.2, -34.3 },
                                                           { -20.0, -20.0, -20.0 },
                                                           { -20.0, -20.0, -20.0 },
                                                           { -24.0, -26.2, -34.3 },
                                                           { nan, -26.2, -34.3 },
                                                           { nan, -26.2, -34.3 },
                                                           { -24.0, -26.2, -34.2 },
                                                           { -24.0, -26.2, -34.3 } } };
    RememberedTopBand remembered;

    for (const auto& levels : inOrder)
        for (const auto previous : { -41.25f, -60.0f })
        {
            auto expected = previous;
            makeTopBandValue (levels, &expected);
            auto result = previous;
            remembered.makeTopBandValue (levels, &result);
            EXPECT_EQ (result, expected);
        }
}
} // namespace
