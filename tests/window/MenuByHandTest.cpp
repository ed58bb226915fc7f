#include "window/HandTest.h"

#include <array>

// The menu below the burger button, in a window of 680 by 712.

namespace
{
constexpr int burgerX = 680 - 168 + 16;
constexpr int burgerY = 13 + 7;

// Below the menu, where nothing reacts but the room.
constexpr int roomColumn = 100;
constexpr int roomRow = 560;

/** Left edges of the panel in the window: with the row of numbers, and without. The host plays, so either has a button
    that resets the targets. */
constexpr int wideLeft = 5 + 670 - 353;
constexpr int left = 5 + 670 - 272;
constexpr int top = 42;
constexpr int wideHeight = 165;
constexpr int height = 145;

class MenuByHandTest : public HandTest
{
protected:
    [[nodiscard]] bool showsMenu (int panelLeft)
    {
        constexpr std::uint32_t panel = 0x111416;
        const auto bottom = top + (panelLeft == wideLeft ? wideHeight : height);
        return showsColour (panelLeft + 6, top + 40, panel) && showsColour (panelLeft + 6, bottom - 7, panel)
               && ! showsColour (panelLeft + 6, bottom + 2, panel);
    }

    void openByHover (int panelLeft)
    {
        moveTo (roomColumn, roomRow);
        window.moveTo (burgerX, burgerY);
        ASSERT_TRUE (window.eventually ([&] { return showsMenu (panelLeft); }));
    }

    [[nodiscard]] std::vector<int> activeBands()
    {
        std::vector<int> found;

        for (int band = 1; band <= 10; ++band)
            if (window.isOn ("Band " + std::to_string (band) + " Active"))
                found.push_back (band);

        return found;
    }
};

TEST_F (MenuByHandTest, opensByHoverAndClosesWhenTheMouseComesIntoTheRoom)
{
    openByHover (wideLeft);
    moveTo (roomColumn, roomRow);
    EXPECT_TRUE (window.eventually ([this] { return ! showsMenu (wideLeft); }));
    window.click (burgerX, burgerY);
    EXPECT_TRUE (window.eventually ([this] { return showsMenu (wideLeft); }));
}

TEST_F (MenuByHandTest, fiveAddsFiveBandsAndDeleteTakesThemAway)
{
    openByHover (wideLeft);
    window.click (wideLeft + 17 + 4 * 28 + 12, top + 130 + 12);
    ASSERT_TRUE (window.eventually ([this] { return activeBands().size() == 5; }));
    EXPECT_THAT (activeBands(), testing::ElementsAre (1, 2, 3, 4, 5));
    constexpr std::array frequencies { 1000.0, 3000.0, 5000.0, 10000.0, 15000.0 };

    for (std::size_t i = 0; i < frequencies.size(); ++i)
    {
        const auto name = "Band " + std::to_string (i + 1);
        EXPECT_TRUE (window.eventually ([&] { return window.figure (name + " Frequency") == frequencies[i]; }));
        EXPECT_EQ (window.isOn (name + " High Shelf"), i == 4) << name;
    }

    EXPECT_TRUE (window.eventually ([this] { return ! showsMenu (wideLeft); }));
    openByHover (left);
    window.click (left + 17 + 98, top + 105 + 15);
    EXPECT_TRUE (window.eventually ([this] { return activeBands().empty(); }));
    EXPECT_TRUE (window.eventually ([this] { return ! showsMenu (left); }));
}

TEST_F (MenuByHandTest, togglesSwitchPhaseAndModeAsGestures)
{
    struct Toggle
    {
        const char* parameter;
        int x;
    };

    openByHover (wideLeft);

    for (const auto& toggle : { Toggle { "Linear/Minimum Phase", 17 + 45 }, Toggle { "Mix/Master Mode", 125 + 45 } })
    {
        const auto before = window.isOn (toggle.parameter);

        for (const auto wanted : { ! before, before })
        {
            window.host().takeEdits();
            window.click (wideLeft + toggle.x, top + 35 + 15);
            EXPECT_TRUE (window.eventually ([&] { return window.isOn (toggle.parameter) == wanted; }))
                << toggle.parameter;
            idleFor (450);
            const auto heard = told (toggle.parameter);
            EXPECT_EQ (heard.begins, 1) << toggle.parameter;
            EXPECT_EQ (heard.ends, 1) << toggle.parameter;
            EXPECT_EQ (heard.changes.size(), 1u) << toggle.parameter;
        }
    }

    EXPECT_TRUE (showsMenu (wideLeft)) << "it stays open";
}
} // namespace
