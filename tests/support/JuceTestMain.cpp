#include <gtest/gtest.h>

#include <juce_events/juce_events.h>

int main (int argumentCount, char** arguments)
{
    testing::InitGoogleTest (&argumentCount, arguments);

    // One for the whole process: the framework's message manager does not come back once it has gone.
    const juce::ScopedJuceInitialiser_GUI framework;
    return RUN_ALL_TESTS();
}
