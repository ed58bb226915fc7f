#include "pictures/GoldenPicture.h"
#include "window/DisplayServer.h"

#include <juce_events/juce_events.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>
#include <unistd.h>

namespace
{
/** Larger than the largest window of any test, in pixels of the display. */
constexpr int screenWidth = 2000;
constexpr int screenHeight = 1600;
} // namespace

// solvane_picture_tests [--update]: with it, the golden pictures become what the window looks like now.
int main (int argumentCount, char** arguments)
{
    const auto home = std::filesystem::path (SOLVANE_TEST_HOME) / ("pictures-" + std::to_string (getpid()));
    std::filesystem::create_directories (home);
    setenv ("HOME", home.c_str(), 1);
    testing::InitGoogleTest (&argumentCount, arguments);

    if (argumentCount > 1 && arguments[1] == std::string_view ("--update"))
    {
        GoldenPicture::beginUpdate();

        if (testing::GTEST_FLAG (filter) == "*")
            testing::GTEST_FLAG (filter) = "*EditorPicturesTest*";
    }

    auto result = 0;

    if (testing::GTEST_FLAG (list_tests))
    {
        result = RUN_ALL_TESTS();
    }
    else
    {
        const DisplayServer server (screenWidth, screenHeight);
        const juce::ScopedJuceInitialiser_GUI framework;
        result = RUN_ALL_TESTS();
    }

    std::filesystem::remove_all (home);
    return result;
}
