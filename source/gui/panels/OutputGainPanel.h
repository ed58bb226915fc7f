#pragma once

#include "gui/panels/SliderPanel.h"

/** The panel below the output button: the gain behind everything, in dB, with a pointer at the gain that would make the
    output as loud as the input. The pointer moves while the panel is open. */
class OutputGainPanel final : public SliderPanel, private juce::Timer
{
public:
    explicit OutputGainPanel (VelmoraAudioProcessor& processor);

    /** Repaints the slider where the pointer has moved far enough to be seen. */
    void timerCallback() override;

    void visibilityChanged() override;
    [[nodiscard]] bool followsLevelMatch() const { return isTimerRunning(); }

private:
    /** Where the pointer stands on the slider now, in pixels. */
    [[nodiscard]] float pointerPlace() const;

    const PluginModel& model;
    float shownPlace = 0.0f;
};
