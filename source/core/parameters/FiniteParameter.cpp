#include "core/parameters/FiniteParameter.h"

#include <cmath>

FiniteParameter::FiniteParameter (const juce::ParameterID& id,
                                  const juce::String& displayName,
                                  const juce::NormalisableRange<float>& range,
                                  float defaultValue,
                                  const Attributes& attributes)
    : RangedAudioParameter (id,
                            displayName,
                            attributes.getAudioParameterFloatAttributes().getAudioProcessorParameterWithIDAttributes()),
      parameter (id, displayName, range, defaultValue, attributes)
{
}

void FiniteParameter::setValue (float normalised)
{
    static_cast<juce::AudioProcessorParameter&> (parameter).setValue (std::isfinite (normalised) ? normalised
                                                                                                 : getDefaultValue());
}
