#include "window/HandTest.h"
#include "window/Preferences.h"

#include <fstream>
#include <iterator>

// The settings page, in a window of 680 by 712: 600 by 510 in the middle of the room.

namespace
{
constexpr int pageX = 5 + 670 / 2 - 300;
constexpr int pageY = 42 + 622 / 2 - 255;
constexpr int settingsX = 680 - 96 + 15;
constexpr int settingsY = 4 + 15;
constexpr int switchX = pageX + 600 - 240 + 29;
constexpr int closeX = pageX + 600 - 105 + 38;
constexpr int closeY = pageY + 420 + 17;

/** Goes after the window, which writes its settings once more when it goes. */
struct OwnPreferences
{
    Preferences preferences;
};

class SettingsByHandTest : private OwnPreferences, public HandTest
{
protected:
    /** The whole settings file as text; empty where there is none. */
    [[nodiscard]] static std::string file()
    {
        std::ifstream stream (std::string (std::getenv ("HOME")) + "/.config/Brevlen/solvane-settings.dat",
                              std::ios::binary);
        return { std::istreambuf_iterator<char> (stream), {} };
    }

    [[nodiscard]] bool showsPage()
    {
        constexpr std::uint32_t page = 0x111416;
        return showsColour (pageX + 15, pageY + 200, page) && showsColour (pageX + 585, pageY + 400, page);
    }

    void openPage()
    {
        window.click (settingsX, settingsY);
        ASSERT_TRUE (window.eventually ([this] { return showsPage(); }));
        idleFor (450);
    }

    void flip (int y)
    {
        window.click (switchX, pageY + y + 10);
        idleFor (450);
    }

    void closePage()
    {
        window.click (closeX, closeY);
        ASSERT_TRUE (window.eventually ([this] { return ! showsPage(); }));
    }
};

TEST_F (SettingsByHandTest, aSwitchIsInTheFileOnceThePageIsClosed)
{
    openPage();
    flip (110);
    flip (150);
    closePage();
    EXPECT_TRUE (window.eventually ([] { return file().find ("ReverseMousewheel=\"1\"") != std::string::npos; }))
        << file();
    EXPECT_NE (file().find ("AlwaysShowBand=\"1\""), std::string::npos);
    EXPECT_NE (file().find ("ShowToolTips=\"0\""), std::string::npos);
}

TEST_F (SettingsByHandTest, theReversedWheelTurnsTheOtherWay)
{
    constexpr int body = 300;
    hangAndSee (1, { 3910.0 });
    wheel (150, body, 1);
    ASSERT_TRUE (window.eventually ([this] { return window.figure ("Band 1 Gain") != 0.0; }));
    waitForRest();
    const auto before = window.figure ("Band 1 Gain");
    hang (window, 1, { 3910.0 });

    openPage();
    flip (110);
    closePage();
    wheel (150, body, 1);
    EXPECT_TRUE (window.eventually ([this] { return window.figure ("Band 1 Gain") != 0.0; }));
    waitForRest();
    EXPECT_LT (window.figure ("Band 1 Gain") * before, 0.0);
}

TEST_F (SettingsByHandTest, theLeastHeightIsTakenAtOnce)
{
    openPage();
    flip (270);
    EXPECT_TRUE (window.eventually ([this] { return window.size().height == 606; }));
}
} // namespace
