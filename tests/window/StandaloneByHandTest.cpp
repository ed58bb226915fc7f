#include "hosts/Vst2Host.h"
#include "window/TestScreen.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{
/** Where the editor begins in the program's window: below the title and the word about the muted input. */
constexpr int editorX = 4;
constexpr int editorY = 60;

/** Bytes of the framework's text form: a length, a point, and six bits for each character, the lowest first. */
std::vector<char> decode (const std::string& text)
{
    static const std::string alphabet = ".ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+";
    const auto point = text.find ('.');

    if (point == std::string::npos)
        return {};

    std::vector<char> bytes (std::stoul (text.substr (0, point)));
    std::size_t bit = 0;

    for (auto place = point + 1; place < text.size(); ++place)
        for (auto value = alphabet.find (text[place]), shift = std::size_t { 0 }; shift < 6; ++shift, ++bit)
            if (bit / 8 < bytes.size() && (value >> shift & 1) != 0)
                bytes[bit / 8] = static_cast<char> (bytes[bit / 8] | 1 << bit % 8);

    return bytes;
}

/** The program with a window, at home in a folder of its own. */
class StandaloneByHandTest : public testing::Test
{
protected:
    StandaloneByHandTest()
    {
        std::filesystem::create_directories (home);
        child = fork();

        if (child == 0)
        {
            prctl (PR_SET_PDEATHSIG, SIGTERM);
            setenv ("HOME", home.c_str(), 1);
            execl (program, program, nullptr);
            _exit (127);
        }

        if (! eventually ([this] { return (window = screen.findShown ("SOLVANE")) != 0; }))
            throw std::runtime_error ("the program shows no window");
    }

    ~StandaloneByHandTest() override
    {
        if (child > 0)
        {
            kill (child, SIGKILL);
            waitpid (child, nullptr, 0);
        }

        std::error_code ignored;
        std::filesystem::remove_all (home, ignored);
    }

    template <typename Condition>
    bool eventually (const Condition& holds)
    {
        const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds (30);

        while (! holds())
        {
            if (std::chrono::steady_clock::now() > latest)
                return false;

            std::this_thread::sleep_for (std::chrono::milliseconds (10));
        }

        return true;
    }

    void moveTo (int x, int y)
    {
        const auto place = screen.placeOf (window);
        screen.point (place.x + editorX + x, place.y + editorY + y);
    }

    void click()
    {
        // The window manager has a look at each press first: one that is let go at once comes too late.
        screen.press (1);
        (void) screen.look (window);
        screen.release (1);
        (void) screen.look (window);
    }

    /** Looks until nothing of the band has moved for longer than two clicks of a double click may lie apart. */
    void waitForRest()
    {
        constexpr std::chrono::milliseconds longEnough { 600 };
        auto last = screen.look (window);
        auto since = std::chrono::steady_clock::now();
        eventually (
            [&]
            {
                auto next = screen.look (window);

                if (next != last)
                    since = std::chrono::steady_clock::now();

                last = std::move (next);
                return std::chrono::steady_clock::now() - since > longEnough;
            });
    }

    [[nodiscard]] std::uint32_t pixel (int x, int y) { return screen.look (window).at (editorX + x, editorY + y); }

    /** Whether the program has ended by itself, and well. */
    [[nodiscard]] bool hasEnded()
    {
        auto status = 0;

        if (waitpid (child, &status, WNOHANG) != child)
            return false;

        child = -1;
        return WIFEXITED (status) && WEXITSTATUS (status) == 0;
    }

    [[nodiscard]] std::vector<char> savedState() const
    {
        std::ifstream file (home / ".config/SOLVANE.settings");
        const std::string text { std::istreambuf_iterator<char> (file), {} };
        const std::string before = "name=\"filterState\" val=\"";
        const auto start = text.find (before);

        if (start == std::string::npos)
            return {};

        const auto first = start + before.size();
        return decode (text.substr (first, text.find ('"', first) - first));
    }

    static constexpr auto program = SOLVANE_DIST "/standalone/SOLVANE";
    const std::filesystem::path home = std::filesystem::path (std::getenv ("HOME")) / "standalone-by-hand";
    TestScreen screen;
    pid_t child = -1;
    XWindow window = 0;
};

TEST_F (StandaloneByHandTest, keepsTheBandThatAHandHasHungAndDragged)
{
    constexpr std::uint32_t line = 0x008b79;

    // Beside the wall: on the band's line at 0 dB, and on its body where it ends before 3 dB of cut.
    constexpr int column = 155;
    constexpr int lineRow = 297;
    constexpr int besideX = 93;
    constexpr int bodyRow = 342;

    // The mark at the wall that follows the pointer says that the window listens.
    moveTo (340, 310);
    ASSERT_TRUE (eventually (
        [&]
        {
            moveTo (340, 300);
            return pixel (36, 287) == line;
        }));

    const auto wall = pixel (besideX, bodyRow);

    // As into any window that lies behind: the first click is the window manager's.
    moveTo (30, 600);
    click();
    waitForRest();
    moveTo (340, 300);
    click();
    click();
    moveTo (640, 600);
    ASSERT_TRUE (eventually ([&] { return pixel (column, lineRow) == line; })) << "a double click hangs a band";

    moveTo (column, bodyRow);
    screen.press (1);

    for (auto row = bodyRow; row <= bodyRow + 20; row += 5)
        moveTo (column, row);

    ASSERT_TRUE (eventually ([&] { return pixel (besideX, bodyRow) == wall; })) << "the band goes away from the user";
    waitForRest();
    screen.release (1);

    screen.askToClose (window);
    ASSERT_TRUE (eventually ([this] { return hasEnded(); }));

    const auto state = savedState();
    ASSERT_FALSE (state.empty());
    Vst2Host host (SOLVANE_DIST "/vst/SOLVANE.so");
    host.setChunk (state);
    EXPECT_GT (host.parameter (host.findParameter ("Band 1 Active")), 0.5f);
    EXPECT_EQ (std::stod (host.parameterText (host.findParameter ("Band 1 Frequency"))), 3910.0);
    EXPECT_NEAR (std::stod (host.parameterText (host.findParameter ("Band 1 Gain"))), -3.2, 0.001);
}
} // namespace
