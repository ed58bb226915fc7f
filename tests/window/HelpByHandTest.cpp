#include "window/HandTest.h"

// The page with the version and the links, over the room.

namespace
{
constexpr std::uint32_t page = 0x111416;
constexpr int helpX = 659;
constexpr int helpY = 19;
constexpr int closeX = 573;
constexpr int closeY = 535;

class HelpByHandTest : public HandTest
{
protected:
    [[nodiscard]] bool showsPage() { return showsColour (400, 450, page); }
};

TEST_F (HelpByHandTest, opensByItsButtonAndClosesByItsOwn)
{
    ASSERT_FALSE (showsPage());
    window.click (helpX, helpY);
    EXPECT_TRUE (window.eventually ([this] { return showsPage(); }));
    window.click (closeX, closeY);
    EXPECT_TRUE (window.eventually ([this] { return ! showsPage(); }));
}

TEST_F (HelpByHandTest, aSecondClickOnItsButtonClosesItToo)
{
    window.click (helpX, helpY);
    ASSERT_TRUE (window.eventually ([this] { return showsPage(); }));
    idleFor (450);
    window.click (helpX, helpY);
    EXPECT_TRUE (window.eventually ([this] { return ! showsPage(); }));
}

TEST_F (HelpByHandTest, theRoomBehindItHearsNothing)
{
    window.click (helpX, helpY);
    ASSERT_TRUE (window.eventually ([this] { return showsPage(); }));
    window.doubleClick (300, 400);
    waitForRest();
    EXPECT_FALSE (window.isOn ("Band 1 Active"));
    EXPECT_TRUE (showsPage());
}
} // namespace
