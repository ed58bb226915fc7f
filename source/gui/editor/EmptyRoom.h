#pragma once

#include "core/PluginProcessor.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Stands in the room's place: black, without bands. It counts what it is asked for. */
class EmptyRoom : public juce::Component
{
public:
    explicit EmptyRoom (VelmoraAudioProcessor&) {}
    std::function<void (float, bool, juce::Colour)> onHover;
    std::function<void()> onBandsOutOfScale;
    void rebuildControls() { ++rebuilds; }
    void collapseControls() { ++collapses; }
    void resetForStateChange() { ++resets; }
    void rebuildTarget() { ++targets; }
    void setMouseEnabled (bool enabled) { mouseEnabled = enabled; }
    void paint (juce::Graphics& g) override { g.fillAll (juce::Colours::black); }

    int rebuilds = 0, collapses = 0, resets = 0, targets = 0;
    bool mouseEnabled = true;
};
