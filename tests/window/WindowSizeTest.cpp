#include "window/HandTest.h"
#include "window/Preferences.h"

namespace
{
using Size = TestScreen::Size;

class WindowSizeTest : Preferences, public HandTest
{
};

TEST_F (WindowSizeTest, staysWhenTheWindowClosesAndOpens)
{
    window.resize (800, 900);
    ASSERT_EQ (window.size(), (Size { 800, 900 }));
    window.close();
    window.open();
    EXPECT_EQ (window.size(), (Size { 800, 900 }));
}

TEST_F (WindowSizeTest, goesIntoTheSessionAndComesBackWithIt)
{
    window.resize (720, 800);
    ASSERT_EQ (window.size(), (Size { 720, 800 }));
    const auto session = window.host().chunk();
    window.resize (900, 1000);
    ASSERT_EQ (window.size(), (Size { 900, 1000 }));
    window.close();
    window.host().setChunk (session);
    window.open();
    EXPECT_EQ (window.size(), (Size { 720, 800 }));
}

TEST_F (WindowSizeTest, isWhereTheNextInstanceBegins)
{
    {
        PluginWindow other;
        other.resize (760, 860);
        ASSERT_EQ (other.size(), (Size { 760, 860 }));
    }

    PluginWindow next;
    EXPECT_EQ (next.size(), (Size { 760, 860 }));
}

TEST_F (WindowSizeTest, hasALeast)
{
    window.drag (675, 707, 395, 295);
    EXPECT_TRUE (window.eventually ([this] { return window.size() == Size { 570, 606 }; }, std::chrono::seconds (5)));

    // 200 rows below the top of a room of 516.
    doubleClick (20, 200);
    EXPECT_TRUE (comesTo ("Band 1 Frequency", 4640.0)) << window.text ("Band 1 Frequency");
}

TEST_F (WindowSizeTest, changesUnderABandThatIsHeld)
{
    hangAndSee (1, { 3910.0 });
    press (120, 300);
    moveTo (120, 320);
    window.close();
    window.screen().release (1);
    window.open();
    window.resize (680, 900);
    ASSERT_EQ (window.size(), (Size { 680, 900 }));
    const auto before = window.figure ("Band 1 Gain");
    window.moveTo (145, 500);
    idleFor (200);
    EXPECT_EQ (window.figure ("Band 1 Gain"), before) << "nobody holds the band in the new window";
}
} // namespace
