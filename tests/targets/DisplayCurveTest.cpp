#include "targets/DisplayCurve.h"

#include "support/Fixture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

TEST (DisplayCurveTest, rowsHaveTheFrequenciesOfTheIndependentComputation)
{
    const auto fixture = readFixture ("display_curve.json");
    const auto expected = fixture["frequenciesHz"].get<std::vector<double>>();
    const auto actual = DisplayCurve::frequencies (fixture["roomHeight"]);
    ASSERT_EQ (actual.size(), expected.size());

    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR (actual[i], expected[i], expected[i] * 1e-6);
}

TEST (DisplayCurveTest, aRoomOfTheOpeningSizeHasThatManyRows)
{
    const auto fixture = readFixture ("room.json");

    for (const auto& item : fixture["cases"])
        if (item["id"] == "rows-default")
        {
            const int height = item["inputs"]["room"][1];
            const auto actual = DisplayCurve::frequencies (height);
            const auto& expected = item["expected"];
            ASSERT_EQ (actual.size(), expected["count"].get<std::size_t>());
            EXPECT_NEAR (actual[0], expected["first"][1].get<double>(), 0.01);
            EXPECT_NEAR (actual[1], expected["second"][1].get<double>(), 0.01);
            EXPECT_NEAR (actual.back(), expected["last"][1].get<double>(), 0.01);
            EXPECT_EQ (expected["first"][0], height - 2);
            EXPECT_EQ (expected["last"][0],
                       height - 2 - DisplayCurve::rowStep * (static_cast<int> (actual.size()) - 1));
            return;
        }

    FAIL() << "no case of the opening size";
}

TEST (DisplayCurveTest, everyStartedGroupOfFourRowsHasAPoint)
{
    for (int height = 1; height < 50; ++height)
        EXPECT_EQ (DisplayCurve::frequencies (height).size(), static_cast<std::size_t> (std::ceil (height * 0.25)));

    EXPECT_TRUE (DisplayCurve::frequencies (0).empty());
    EXPECT_TRUE (DisplayCurve::frequencies (-3).empty());
}

TEST (DisplayCurveTest, curvesAreThoseOfTheIndependentComputation)
{
    const auto fixture = readFixture ("display_curve.json");
    const auto frequencies = DisplayCurve::frequencies (fixture["roomHeight"]);
    ASSERT_EQ (fixture["examples"].size(), 3u);

    for (const auto& example : fixture["examples"])
    {
        const auto targets = example["gainTarget"].get<std::array<float, analysisBandCount>>();
        const auto expected = example["curveDb"].get<std::vector<double>>();
        const auto actual = DisplayCurve::valuesAt (frequencies, targets);
        ASSERT_EQ (actual.size(), expected.size());

        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR (actual[i], expected[i], 1e-4) << example["name"] << " at " << frequencies[i] << " Hz";
    }
}

TEST (DisplayCurveTest, undefinedStretchesAreZeroAndTheOthersStay)
{
    // Equal values leave the slopes of the knots between them undefined; the far end of the curve has its own.
    const std::array<float, analysisBandCount> targets { 3, 3, 3, 3, 3, 3, 1, 5, -2, 4 };
    const auto frequencies = DisplayCurve::frequencies (622);
    const auto values = DisplayCurve::valuesAt (frequencies, targets);

    for (std::size_t i = 0; i < values.size(); ++i)
    {
        EXPECT_TRUE (std::isfinite (values[i]));

        if (frequencies[i] < 2000.0)
        {
            EXPECT_EQ (values[i], 0.0) << frequencies[i];
        }
    }

    EXPECT_NEAR (values.back(), 4.0, 1.0);
}

TEST (DisplayCurveTest, valuesAreRoundedToSinglePrecision)
{
    const std::array<float, analysisBandCount> targets { 0.5f, 2, 5, 2, -1, -4, -1, 1, 0.5f, 0 };

    for (const auto value : DisplayCurve::valuesAt (DisplayCurve::frequencies (610), targets))
        EXPECT_EQ (value, static_cast<double> (static_cast<float> (value)));
}
