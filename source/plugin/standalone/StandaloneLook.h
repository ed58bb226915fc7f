#pragma once

#include "gui/look/Fonts.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The look of what stands around the plug-in's window when it runs by itself: title bar, options, sound card dialog.
    Makes itself the framework's default, and goes with the framework. Message thread. */
class StandaloneLook final : public juce::LookAndFeel_V4, private juce::DeletedAtShutdown
{
public:
    StandaloneLook();
    ~StandaloneLook() override;

private:
    [[nodiscard]] static ColourScheme scheme();

    Typefaces typefaces;
};
