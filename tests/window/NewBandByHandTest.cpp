#include "window/PluginWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

namespace
{
struct DoubleClick
{
    const char* what;
    TestScreen::Size window;
    int x;
    int y;
    double frequencyHz;
    bool shelf;
};

void PrintTo (const DoubleClick& tested, std::ostream* stream)
{
    *stream << tested.what;
}

class NewBandByHandTest : public testing::TestWithParam<DoubleClick>
{
};

TEST_P (NewBandByHandTest, hangsWhereTheDoubleClickWas)
{
    PluginWindow window;

    if (window.size() != GetParam().window)
        window.resize (GetParam().window.width, GetParam().window.height);

    ASSERT_EQ (window.size(), GetParam().window);
    window.idleFor (std::chrono::milliseconds (100));

    window.doubleClick (GetParam().x, GetParam().y);
    ASSERT_TRUE (window.eventually ([&] { return window.isOn ("Band 1 Active"); }));
    EXPECT_TRUE (window.eventually ([&] { return window.figure ("Band 1 Frequency") == GetParam().frequencyHz; }))
        << window.text ("Band 1 Frequency");
    EXPECT_EQ (window.figure ("Band 1 Gain"), 0.0);
    EXPECT_EQ (window.figure ("Band 1 Q"), 1.0);
    EXPECT_EQ (window.isOn ("Band 1 High Shelf"), GetParam().shelf);
    EXPECT_FALSE (window.isOn ("Band 2 Active"));
}

constexpr TestScreen::Size openingSize { 680, 712 };

INSTANTIATE_TEST_SUITE_P (Places,
                          NewBandByHandTest,
                          testing::Values (DoubleClick { "middle", openingSize, 340, 300, 3910.0, false },
                                           DoubleClick { "shelf", openingSize, 100, 150, 13470.0, true },
                                           DoubleClick { "bottomEdge", openingSize, 100, 640, 320.0, false },
                                           DoubleClick { "largeLow", { 1400, 1200 }, 300, 1000, 470.0, false }),
                          [] (const auto& tested) { return std::string (tested.param.what); });

/** One band in the middle of the room, hung there by a double click. */
class BandByHandTest : public testing::Test
{
protected:
    BandByHandTest()
    {
        window.idleFor (std::chrono::milliseconds (100));
        window.doubleClick (340, 300);

        if (! window.eventually ([this] { return window.isOn ("Band 1 Active"); }))
            throw std::runtime_error ("a double click hung no band");

        window.setNormalised ("Mix/Master Mode", 1.0f);

        // Two clicks at another place soon after would be a third and a fourth of the same hand.
        window.moveAway();
        window.idleFor (std::chrono::milliseconds (600));
    }

    PluginWindow window;
};

// 150 pixels are the whole range of 24 dB; a hand that rests finds the band under it.
TEST_F (BandByHandTest, bodyIsDraggedForGain)
{
    window.dragAndHold (150, 330, 150, 370);
    EXPECT_TRUE (window.eventually ([&] { return std::abs (window.figure ("Band 1 Gain") + 6.4) < 0.051; }))
        << window.text ("Band 1 Gain");
    window.release();
    window.idleFor (std::chrono::milliseconds (200));
    EXPECT_NEAR (window.figure ("Band 1 Gain"), -6.4, 0.051) << "letting go moves nothing";
    EXPECT_EQ (window.figure ("Band 1 Frequency"), 3910.0);
}

TEST_F (BandByHandTest, lineIsDraggedForFrequency)
{
    // The line of 3910 Hz at 0 dB lies on row 258 of the room, which begins 42 pixels below the window's edge.
    window.dragAndHold (120, 42 + 258, 120, 42 + 200);
    EXPECT_TRUE (window.eventually ([&] { return window.figure ("Band 1 Frequency") > 6000.0; }))
        << window.text ("Band 1 Frequency");
    window.release();
    EXPECT_EQ (window.figure ("Band 1 Gain"), 0.0);
}

TEST_F (BandByHandTest, tellsTheHostWhereAGestureBeginsAndEnds)
{
    constexpr int beginEdit = 43;
    constexpr int endEdit = 44;
    const auto begunBefore = window.host().callCount (beginEdit);
    const auto endedBefore = window.host().callCount (endEdit);

    window.drag (150, 330, 150, 350);
    window.idleFor (std::chrono::milliseconds (300));
    EXPECT_GT (window.host().callCount (beginEdit), begunBefore);
    EXPECT_EQ (window.host().callCount (beginEdit) - begunBefore, window.host().callCount (endEdit) - endedBefore);
}

TEST_F (BandByHandTest, wheelTurnsTheGain)
{
    window.wheel (150, 330, 1);
    EXPECT_TRUE (window.eventually ([&] { return window.figure ("Band 1 Gain") != 0.0; }));
}

TEST_F (BandByHandTest, windowClosesAndOpensInTheMiddleOfADrag)
{
    window.dragAndHold (150, 330, 150, 340);
    window.close();
    window.screen().release (1);
    window.open();
    window.idleFor (std::chrono::milliseconds (100));
    EXPECT_TRUE (window.isOn ("Band 1 Active"));

    // The button was let go outside; the window learns that when the pointer comes back.
    window.moveTo (150, 320);
    window.idleFor (std::chrono::milliseconds (100));
    window.drag (150, 330, 150, 370);
    EXPECT_TRUE (window.eventually ([&] { return window.figure ("Band 1 Gain") < -5.0; }))
        << window.text ("Band 1 Gain");
}
} // namespace
