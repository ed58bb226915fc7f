#include "gui/editor/EditorFactory.h"

juce::AudioProcessorEditor* makeEditor (VelmoraAudioProcessor& processor)
{
    return new juce::GenericAudioProcessorEditor (processor);
}
