#pragma once

#include "core/model/PluginModel.h"
#include "gui/look/OverlayPage.h"
#include "gui/look/SVGCheckbox.h"

#include <array>
#include <functional>

/** A page of six switches that act at once. It shows what holds whenever it opens, and says "SETTINGS-CLOSE" when it is
    closed by its button, for the settings file to be written. Message thread. */
class SettingsWindow final : public OverlayPage
{
public:
    static constexpr int switchCount = 6;
    static constexpr auto closed = "SETTINGS-CLOSE";

    explicit SettingsWindow (PluginModel& model);

    /** A switch has been switched, and what it stands for written. */
    std::function<void()> onSwitched;

    void moved() override;
    void visibilityChanged() override;
    void buttonClicked (juce::Button* button) override;

private:
    void readSwitches();

    PluginModel& model;
    std::array<juce::Label, switchCount> labels;
    std::array<orvik::SVGCheckbox, switchCount> switches;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SettingsWindow)
};
