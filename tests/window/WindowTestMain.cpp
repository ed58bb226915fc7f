#include "window/DisplayServer.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>

namespace
{
/** Larger than the largest window of any test. */
constexpr int screenWidth = 1600;
constexpr int screenHeight = 1400;
} // namespace

int main (int argumentCount, char** arguments)
{
    std::filesystem::create_directories (SOLVANE_TEST_HOME);
    setenv ("HOME", SOLVANE_TEST_HOME, 1);
    testing::InitGoogleTest (&argumentCount, arguments);

    std::optional<DisplayServer> server;

    if (! testing::GTEST_FLAG (list_tests))
        server.emplace (screenWidth, screenHeight);

    return RUN_ALL_TESTS();
}
