#include "window/DisplayServer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <unistd.h>

namespace
{
/** Larger than the largest window of any test. */
constexpr int screenWidth = 1600;
constexpr int screenHeight = 1400;
} // namespace

int main (int argumentCount, char** arguments)
{
    // The size of a window that one test leaves behind must not be where another begins.
    const auto home = std::filesystem::path (SOLVANE_TEST_HOME) / ("window-" + std::to_string (getpid()));
    std::filesystem::create_directories (home);
    setenv ("HOME", home.c_str(), 1);
    testing::InitGoogleTest (&argumentCount, arguments);

    std::optional<DisplayServer> server;

    if (! testing::GTEST_FLAG (list_tests))
        server.emplace (screenWidth, screenHeight);

    const auto result = RUN_ALL_TESTS();
    std::filesystem::remove_all (home);
    return result;
}
