#pragma once

#include "core/model/PluginModel.h"
#include "gui/look/SVGCheckbox.h"

#include <juce_events/juce_events.h>
#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <functional>

/** A page of six switches that act at once. It shows what holds whenever it opens, and says "SETTINGS-CLOSE" when it is
    closed by its button, for the settings file to be written. Message thread. */
class SettingsWindow final : public juce::Component, public juce::ActionBroadcaster, private juce::Button::Listener
{
public:
    static constexpr int switchCount = 6;
    static constexpr auto closed = "SETTINGS-CLOSE";

    explicit SettingsWindow (PluginModel& model);

    /** A switch has been switched, and what it stands for written. */
    std::function<void()> onSwitched;

    void paint (juce::Graphics& g) override;
    void resized() override;
    void moved() override;
    void visibilityChanged() override;

private:
    void buttonClicked (juce::Button* button) override;
    void readSwitches();
    void prepareLabel (juce::Label& label, const juce::String& text, const juce::Font& font);

    PluginModel& model;
    juce::Label title;
    std::array<juce::Label, switchCount> labels;
    std::array<orvik::SVGCheckbox, switchCount> switches;
    orvik::SVGButton closeButton { "Close" };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SettingsWindow)
};
