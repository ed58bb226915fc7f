#include "window/DisplayServer.h"

#include <gtest/gtest.h>

#include <juce_events/juce_events.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <unistd.h>

int main (int argumentCount, char** arguments)
{
    const auto home = std::filesystem::path (SOLVANE_TEST_HOME) / ("hosted-" + std::to_string (getpid()));
    std::filesystem::create_directories (home);
    setenv ("HOME", home.c_str(), 1);
    testing::InitGoogleTest (&argumentCount, arguments);

    std::optional<DisplayServer> server;
    std::optional<juce::ScopedJuceInitialiser_GUI> framework;

    if (! testing::GTEST_FLAG (list_tests))
    {
        server.emplace (1600, 1400);
        framework.emplace();
    }

    const auto result = RUN_ALL_TESTS();
    framework.reset();
    std::filesystem::remove_all (home);
    return result;
}
