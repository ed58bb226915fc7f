#include "window/HandTest.h"
#include "window/Preferences.h"

#include <set>

// The glow at the room's sides, by what is heard.

namespace
{
constexpr std::uint32_t ground = 0x222222;
constexpr std::uint32_t heat = 0xff8c00;

/** Columns of both strips beside their figures, and a row between two of them. */
constexpr int leftStrip = 7;
constexpr int rightStrip = 673;
constexpr int row = 522;

class HeatByHandTest : public HandTest
{
protected:
    bool showsOnBothSides (std::uint32_t colour)
    {
        return showsColour (leftStrip, row, colour) && showsColour (rightStrip, row, colour);
    }
};

TEST_F (HeatByHandTest, stripsGlowWithSoundAndFadeWithoutIt)
{
    ASSERT_TRUE (window.eventually ([this] { return showsOnBothSides (heat); }));
    window.setSilent (true);
    std::set<std::uint32_t> shades;
    EXPECT_TRUE (window.eventually (
        [&]
        {
            const auto picture = window.look();
            shades.insert (picture.at (leftStrip, row));
            EXPECT_EQ (picture.at (leftStrip, row), picture.at (rightStrip, row));
            return picture.at (leftStrip, row) == ground;
        },
        std::chrono::seconds (5)));
    EXPECT_GT (shades.size(), 5u) << "it fades, and does not just go out";
    idleFor (1000);
    EXPECT_TRUE (showsOnBothSides (ground));

    window.setSilent (false);
    EXPECT_TRUE (window.eventually ([this] { return showsOnBothSides (heat); }));
}

TEST_F (HeatByHandTest, stripsGlowInAWindowThatWasClosedMeanwhile)
{
    ASSERT_TRUE (window.eventually ([this] { return showsOnBothSides (heat); }));

    for (int turn = 0; turn < 20; ++turn)
    {
        window.close();
        window.open();
    }

    EXPECT_TRUE (window.eventually ([this] { return showsOnBothSides (heat); }));
}

class WithoutHeatMapTest : Preferences, public HandTest
{
protected:
    WithoutHeatMapTest() : Preferences ("ShowHeatmap=\"0\"") {}
};

TEST_F (WithoutHeatMapTest, stripsStayDark)
{
    for (int look = 0; look < 20; ++look)
    {
        idleFor (50);
        EXPECT_TRUE (showsColour (leftStrip, row, ground));
        EXPECT_TRUE (showsColour (rightStrip, row, ground));
    }
}
} // namespace
