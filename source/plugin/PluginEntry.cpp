#include "core/PluginProcessor.h"
#include "gui/editor/EditorFactory.h"

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return new VelmoraAudioProcessor (HostDescription::ofThisProcess(), makeEditor);
}
