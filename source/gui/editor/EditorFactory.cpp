#include "gui/editor/EditorFactory.h"

#include "gui/editor/PluginEditor.h"

juce::AudioProcessorEditor* makeEditor (VelmoraAudioProcessor& processor)
{
    return new VelmoraAudioProcessorEditor (processor);
}
