#pragma once

#include "core/model/PluginModel.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>

/** Shows where a double click would hang a new band: a line around the room at the depth of 0 dB. The mouse passes
    through it. */
class AddBandMarker final : public juce::Component
{
public:
    explicit AddBandMarker (const PluginModel& model);

    /** Shows the line at a frequency in hertz. */
    void show (float frequencyHz, juce::Colour colour);

    void paint (juce::Graphics& graphics) override;

private:
    using Lines = std::array<juce::Line<float>, 3>;

    /** From the front along the left wall, across, and back along the right wall. */
    [[nodiscard]] Lines lines() const;
    void repaintLines();

    const PluginModel& model;
    float frequency = 0.0f;
    juce::Colour colour;
};
