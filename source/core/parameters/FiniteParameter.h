#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

/** A parameter that takes a host's value that is no number, or infinite, for its default. In everything else it is the
    framework's parameter, to which it hands all questions. */
class FiniteParameter final : public juce::RangedAudioParameter
{
public:
    using Attributes = juce::AudioProcessorValueTreeStateParameterAttributes;

    FiniteParameter (const juce::ParameterID& id,
                     const juce::String& displayName,
                     const juce::NormalisableRange<float>& range,
                     float defaultValue,
                     const Attributes& attributes);

    /** Any thread; real-time safe. */
    void setValue (float normalised) override;

    [[nodiscard]] float getValue() const override { return inner().getValue(); }
    [[nodiscard]] float getDefaultValue() const override { return inner().getDefaultValue(); }
    [[nodiscard]] int getNumSteps() const override { return inner().getNumSteps(); }
    [[nodiscard]] bool isDiscrete() const override { return inner().isDiscrete(); }
    [[nodiscard]] bool isBoolean() const override { return inner().isBoolean(); }

    [[nodiscard]] juce::String getText (float normalised, int maximumLength) const override
    {
        return inner().getText (normalised, maximumLength);
    }

    [[nodiscard]] float getValueForText (const juce::String& text) const override
    {
        return inner().getValueForText (text);
    }

    [[nodiscard]] const juce::NormalisableRange<float>& getNormalisableRange() const override
    {
        return parameter.getNormalisableRange();
    }

private:
    // The framework's own class keeps its answers private and hands them out through its base.
    [[nodiscard]] const juce::AudioProcessorParameter& inner() const noexcept { return parameter; }

    juce::AudioProcessorValueTreeState::Parameter parameter;
};
