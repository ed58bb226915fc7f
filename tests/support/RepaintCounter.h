#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Counts how often a component asks to be painted. */
class RepaintCounter final : public juce::CachedComponentImage
{
public:
    RepaintCounter (juce::Component& componentToWatch, int& countToRaise)
        : component (componentToWatch), count (countToRaise)
    {
    }

    void paint (juce::Graphics& graphics) override { component.paintEntireComponent (graphics, false); }
    bool invalidateAll() override { return note(); }
    bool invalidate (const juce::Rectangle<int>&) override { return note(); }
    void releaseResources() override {}

private:
    bool note()
    {
        ++count;
        return true;
    }

    juce::Component& component;
    int& count;
};
