#include "app/CommandError.h"
#include "app/CommandLine.h"
#include "app/Interrupt.h"

#include <juce_events/juce_events.h>

#include <iostream>

int main (int argumentCount, char** arguments)
{
    Interrupt::install();
    const juce::ScopedJuceInitialiser_GUI framework;

    try
    {
        return static_cast<int> (runCommandLine (argumentCount, arguments, "SOLVANE " SOLVANE_VERSION));
    }
    catch (const CommandError& error)
    {
        std::cerr << "solvane: " << error.what() << '\n';
        return static_cast<int> (error.code());
    }
    catch (const std::exception& error)
    {
        std::cerr << "solvane: " << error.what() << '\n';
        return static_cast<int> (ExitCode::failure);
    }
}
