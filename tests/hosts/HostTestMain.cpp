#include "hosts/ChunkHelper.h"
#include "hosts/TrackSession.h"

#include <gtest/gtest.h>

#include <juce_events/juce_events.h>

#include <cstdlib>
#include <filesystem>

int main (int argumentCount, char** arguments)
{
    // Nothing here needs a window, and a plug-in must start without one. What is in the user's own folders stays out.
    unsetenv ("DISPLAY");
    std::filesystem::create_directories (SOLVANE_TEST_HOME);
    setenv ("HOME", SOLVANE_TEST_HOME, 1);

    testing::InitGoogleTest (&argumentCount, arguments);

    // One for the whole process: the framework's message manager does not come back once it has gone.
    const juce::ScopedJuceInitialiser_GUI framework;

    if (ChunkHelper::isAskedFor (argumentCount, arguments))
        return ChunkHelper::run (arguments);

    if (TrackSession::isAskedFor (argumentCount, arguments))
        return TrackSession::run (arguments);

    return RUN_ALL_TESTS();
}
