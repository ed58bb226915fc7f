#include "app/CommandError.h"
#include "app/CommandLine.h"
#include "app/Interrupt.h"
#include "app/Printable.h"
#include "app/StandardStreams.h"

#include <juce_events/juce_events.h>

#include <iostream>

int main (int argumentCount, char** arguments)
{
    StandardStreams::openClosed();
    Interrupt::install();
    const juce::ScopedJuceInitialiser_GUI framework;

    try
    {
        return static_cast<int> (runCommandLine (argumentCount, arguments, "SOLVANE " SOLVANE_VERSION));
    }
    catch (const CommandError& error)
    {
        std::cerr << "solvane: " << printable (error.what()) << '\n';
        return static_cast<int> (error.code());
    }
    catch (const std::exception& error)
    {
        std::cerr << "solvane: " << printable (error.what()) << '\n';
        return static_cast<int> (ExitCode::failure);
    }
}
