#pragma once

#include "core/PluginProcessor.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <optional>

/** A panel that drops down from a button of the top row, with one slider in it: a title, the slider, and below it the
    value with its unit.

    The slider is bound to a parameter: a drag is one gesture to the host, a double click brings back the default.
   Message thread. */
class SliderPanel : public juce::Component, public juce::SettableTooltipClient
{
public:
    /** Ends the gesture of a hand that still holds the slider. */
    ~SliderPanel() override;

    void paint (juce::Graphics& g) override;
    void resized() override;

    juce::Slider slider { juce::Slider::LinearHorizontal, juce::Slider::NoTextBox };

    /** The value as it is shown. */
    [[nodiscard]] juce::String valueText() const { return valueLabel.getText(); }

protected:
    /** What a panel is, beside its slider. Places in pixels of the panel. */
    struct Design
    {
        const char* title;
        const char* sliderName;
        const char* parameterId;
        int sliderTop;
        int valueTop;

        /** Below the middle of the panel's button. */
        float tipX;
    };

    SliderPanel (VelmoraAudioProcessor& processor, const Design& design);

private:
    void showValue();

    const Design design;
    juce::RangedAudioParameter& parameter;
    bool held = false;
    juce::Label titleLabel;
    juce::Label valueLabel;
    std::optional<juce::AudioProcessorValueTreeState::SliderAttachment> attachment; ///< last: it writes to the slider

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SliderPanel)
};
