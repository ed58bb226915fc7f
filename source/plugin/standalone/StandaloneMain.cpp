// The Standalone's way in. The framework's own opens its window whatever it was asked, and dies where there is no
// display.

#include "plugin/standalone/StandaloneLook.h"

#include <juce_events/juce_events.h>

#include <iostream>
#include <string_view>

juce::JUCEApplicationBase* juce_CreateApplication();

namespace
{
constexpr auto usage = "Usage: SOLVANE [--help | --version]\n"
                       "Opens the equaliser in a window of its own, between the sound card's inputs and outputs.\n"
                       "The program solvane works on sound files, without a window.\n";

constexpr auto noDisplay = "SOLVANE needs a display, and none could be opened: start it in a desktop session, or set "
                           "DISPLAY. The program solvane works without one.\n";

/** Whether a window could be opened. The system's library is looked up as the framework does it, when it is needed. */
bool displayCanBeOpened()
{
    juce::DynamicLibrary system;

    if (! system.open ("libX11.so.6"))
        return false;

    using Open = void* (*) (const char*);
    using Close = int (*) (void*);
    const auto open = reinterpret_cast<Open> (system.getFunction ("XOpenDisplay"));
    const auto close = reinterpret_cast<Close> (system.getFunction ("XCloseDisplay"));

    if (open == nullptr || close == nullptr)
        return false;

    auto* display = open (nullptr);

    if (display == nullptr)
        return false;

    close (display);
    return true;
}
} // namespace

int main (int argumentCount, char** arguments)
{
    for (int index = 1; index < argumentCount; ++index)
    {
        const std::string_view argument (arguments[index]);

        if (argument == "--help" || argument == "-h")
        {
            std::cout << usage;
            return 0;
        }

        if (argument == "--version")
        {
            std::cout << "SOLVANE " SOLVANE_VERSION "\n";
            return 0;
        }

        std::cerr << "SOLVANE does not know '" << argument << "'.\n" << usage;
        return 1;
    }

    if (! displayCanBeOpened())
    {
        std::cerr << noDisplay;
        return 1;
    }

    juce::JUCEApplicationBase::createInstance = []
    {
        new StandaloneLook(); // NOLINT: the framework deletes it
        return juce_CreateApplication();
    };
    return juce::JUCEApplicationBase::main (argumentCount, const_cast<const char**> (arguments));
}
