#include "window/HandTest.h"

#include <algorithm>
#include <optional>

// The panels below two buttons of the top row, each with a slider.

namespace
{
constexpr std::uint32_t ground = 0x111416;
constexpr std::uint32_t levelMatchGreen = 0x21d22c;

/** A panel by places of the window. */
struct Panel
{
    const char* parameter;
    int buttonX;
    int buttonY;

    /** Where nothing but its ground is. */
    int groundX;
    int groundY;

    /** The ends of the slider's track, and the row of its middle. */
    int trackLeft;
    int trackRight;
    int trackY;

    /** Where the value stands that is so many parts of the whole range above its lowest. */
    [[nodiscard]] int columnOf (double part) const
    {
        return trackLeft + static_cast<int> (part * (trackRight - trackLeft) + 0.5);
    }
};

const Panel output { "Output Gain", 565, 27, 620, 60, 447, 649, 92 };
const Panel scale { "Gain Scale", 455, 21, 345, 60, 344, 546, 82 };

class PanelsByHandTest : public HandTest
{
protected:
    bool isOpen (const Panel& panel) { return showsColour (panel.groundX, panel.groundY, ground); }

    /** Comes to the button and goes down into the panel. */
    void open (const Panel& panel)
    {
        window.moveTo (panel.buttonX, panel.buttonY);
        ASSERT_TRUE (window.eventually ([&] { return isOpen (panel); }));

        for (auto y = panel.buttonY; y <= panel.trackY; y += 4)
            window.moveTo (panel.buttonX, y);

        window.host().takeEdits();
    }

    bool closes (const Panel& panel)
    {
        return window.eventually ([&] { return ! isOpen (panel); }, std::chrono::seconds (5));
    }

    /** The column of the level-match pointer, or nothing. */
    std::optional<int> pointerColumn()
    {
        const auto picture = window.look();
        std::optional<int> first;
        auto last = 0;

        for (int x = output.trackLeft - 6; x <= output.trackRight + 6; ++x)
            for (int y = output.trackY; y < output.trackY + 12; ++y)
                if (picture.at (x, y) == levelMatchGreen)
                {
                    first = first.value_or (x);
                    last = x;
                }

        return first ? std::optional ((*first + last) / 2) : std::nullopt;
    }
};

TEST_F (PanelsByHandTest, aWindowThatClosesUnderTheHandEndsItsGesture)
{
    open (scale);
    window.dragAndHold (scale.columnOf (0.5), scale.trackY, scale.columnOf (0.7), scale.trackY);
    ASSERT_TRUE (window.eventually ([&] { return window.figure (scale.parameter) > 120.0; }));
    window.close();
    const auto heard = told (scale.parameter);
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
}

TEST_F (PanelsByHandTest, buttonUnderThePointerOpensItsPanelAndClosesTheOther)
{
    EXPECT_FALSE (isOpen (output));
    window.moveTo (output.buttonX, output.buttonY);
    EXPECT_TRUE (window.eventually ([this] { return isOpen (output); }));
    window.moveTo (scale.buttonX, scale.buttonY);
    EXPECT_TRUE (window.eventually ([this] { return isOpen (scale) && ! isOpen (output); }));
}

TEST_F (PanelsByHandTest, panelStaysOnTheWayDownAndWhileThePointerIsOnIt)
{
    for (const auto& panel : { output, scale })
    {
        open (panel);
        idleFor (600);
        EXPECT_TRUE (isOpen (panel)) << panel.parameter << ", on the slider";
        window.moveTo (panel.groundX, panel.groundY);
        idleFor (600);
        EXPECT_TRUE (isOpen (panel)) << panel.parameter << ", beside it";
    }
}

TEST_F (PanelsByHandTest, panelClosesWhenThePointerGoesToTheRoomOrOutOfTheWindow)
{
    for (const auto& panel : { output, scale })
    {
        open (panel);
        window.moveTo (200, 400);
        EXPECT_TRUE (closes (panel)) << panel.parameter << ", to the room";

        open (panel);
        window.moveAway();
        EXPECT_TRUE (closes (panel)) << panel.parameter << ", away from its slider";

        open (panel);
        window.moveTo (panel.groundX, panel.groundY);
        window.moveAway();
        EXPECT_TRUE (closes (panel)) << panel.parameter << ", away from its ground";
    }
}

TEST_F (PanelsByHandTest, dragOfTheOutputGainReachesTheHostAsOneGesture)
{
    open (output);
    window.dragAndHold (output.columnOf (0.5), output.trackY, output.columnOf (0.25), output.trackY);
    window.release();
    EXPECT_TRUE (comesTo (output.parameter, -6.0, 0.1)) << window.text (output.parameter);
    idleFor (150);
    const auto heard = told (output.parameter);
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
    EXPECT_GT (heard.changes.size(), 3u) << "the host hears the way as well";
    EXPECT_NEAR (heard.changes.back(), -6.0, 0.1);
}

TEST_F (PanelsByHandTest, dragThatLeavesThePanelKeepsItAndItsValue)
{
    open (output);
    window.dragAndHold (output.columnOf (0.5), output.trackY, output.columnOf (0.75), 400);
    EXPECT_TRUE (comesTo (output.parameter, 6.0, 0.1)) << window.text (output.parameter);
    idleFor (600);
    EXPECT_TRUE (isOpen (output));
    window.release();
    EXPECT_TRUE (closes (output));
    const auto heard = told (output.parameter);
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
    EXPECT_NEAR (window.figure (output.parameter), 6.0, 0.1);
}

TEST_F (PanelsByHandTest, gainScaleIsDraggedInPercent)
{
    open (scale);
    window.drag (scale.columnOf (0.5), scale.trackY, scale.columnOf (0.75), scale.trackY);
    EXPECT_TRUE (comesTo (scale.parameter, 150.0, 1.0)) << window.text (scale.parameter);
}

TEST_F (PanelsByHandTest, doubleClickBringsBackTheDefault)
{
    struct Default
    {
        Panel panel;
        double figure;
    };

    for (const auto& tested : { Default { output, 0.0 }, Default { scale, 100.0 } })
    {
        open (tested.panel);
        window.click (tested.panel.columnOf (0.9), tested.panel.trackY);
        ASSERT_TRUE (window.eventually ([&] { return window.normalised (tested.panel.parameter) > 0.85f; }));
        idleFor (600);
        window.host().takeEdits();
        window.doubleClick (tested.panel.columnOf (0.9), tested.panel.trackY);
        EXPECT_TRUE (comesTo (tested.panel.parameter, tested.figure)) << window.text (tested.panel.parameter);
        idleFor (150);
        const auto heard = told (tested.panel.parameter);
        EXPECT_EQ (heard.begins, heard.ends);
        EXPECT_GT (heard.begins, 0);
    }
}

TEST_F (PanelsByHandTest, wheelOverTheSliderTurnsItsValueAlone)
{
    hangAndSee (1, { 16000.0, 0.0, 0.5 });
    open (output);
    window.wheel (output.columnOf (0.5), output.trackY, 1);
    EXPECT_TRUE (window.eventually ([this] { return window.figure (output.parameter) > 0.1; }));
    EXPECT_EQ (window.figure ("Band 1 Gain"), 0.0);
}

TEST_F (PanelsByHandTest, clicksOnAPanelDoNotReachTheRoom)
{
    open (output);
    window.doubleClick (output.groundX, output.groundY);
    idleFor (300);
    EXPECT_FALSE (window.isOn ("Band 1 Active"));
    EXPECT_TRUE (isOpen (output));
    EXPECT_EQ (window.figure (output.parameter), 0.0);
}

TEST_F (PanelsByHandTest, automationMovesTheOpenSlider)
{
    constexpr std::uint32_t thumb = 0xc8c8c8;
    open (output);
    window.moveTo (output.groundX, output.groundY);
    window.setNormalised (output.parameter, 0.25f);
    EXPECT_TRUE (window.eventually ([this] { return showsColour (output.columnOf (0.25), output.trackY, thumb); }));
}

TEST_F (PanelsByHandTest, levelMatchPointerFollowsTheSoundWhileThePanelIsOpen)
{
    hang (window, 1, { 4000.0, 12.0, 0.5 });
    open (output);
    window.moveTo (output.groundX, output.groundY);
    ASSERT_TRUE (window.eventually ([this] { return pointerColumn().has_value(); }));

    // The band makes noise louder by several dB: the gain that makes up for it lies to the left of the middle.
    EXPECT_TRUE (window.eventually ([this] { return pointerColumn().value_or (1000) < output.columnOf (0.42); }));
    hang (window, 1, { 4000.0, -12.0, 0.5 });
    EXPECT_TRUE (window.eventually ([this] { return pointerColumn().value_or (0) > output.columnOf (0.55); }));
}
} // namespace
