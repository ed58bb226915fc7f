#include "hosts/ChunkHelper.h"

#include <iostream>
#include <string>

namespace
{
constexpr auto switchName = "--save-state";
constexpr int argumentTotal = 4;
constexpr int longestRunMilliseconds = 60000;

constexpr PluginFormat allFormats[] { PluginFormat::vst2, PluginFormat::vst3, PluginFormat::lv2 };
} // namespace

void ChunkHelper::applySettings (HostedPlugin& plugin)
{
    plugin.setAndProcess ("Linear/Minimum Phase", 0.0f);
    plugin.setAndProcess ("Mix/Master Mode", 1.0f);
    plugin.setAndProcess ("Output Gain", 0.4f);

    // Before the gains: after a state has been loaded, as one format does at every start, it scales the gains as
    // loaded.
    plugin.setAndProcess ("Gain Scale", 0.35f);

    for (const auto* band : { "Band 1 ", "Band 10 " })
    {
        const std::string name (band);
        plugin.setAndProcess (name + "Active", 1.0f);
        plugin.setAndProcess (name + "Frequency", 0.7f);
        plugin.setAndProcess (name + "Q", 0.2f);
        plugin.setAndProcess (name + "High Shelf", 1.0f);
        plugin.setAndProcess (name + "Mid/Side", 0.25f);
        plugin.setAndProcess (name + "Gain", 0.6f);
    }
}

std::vector<char> ChunkHelper::stateFromAnotherProcess (PluginFormat format)
{
    const juce::TemporaryFile file;
    juce::ChildProcess process;
    const juce::StringArray command {
        juce::File::getSpecialLocation (juce::File::currentExecutableFile).getFullPathName(),
        switchName,
        nameOf (format),
        file.getFile().getFullPathName()
    };

    if (! process.start (command) || ! process.waitForProcessToFinish (longestRunMilliseconds)
        || process.getExitCode() != 0)
        return {};

    juce::MemoryBlock block;
    file.getFile().loadFileAsData (block);
    return { block.begin(), block.end() };
}

bool ChunkHelper::isAskedFor (int argumentCount, char** arguments)
{
    return argumentCount == argumentTotal && std::string (arguments[1]) == switchName;
}

int ChunkHelper::run (char** arguments)
{
    for (const auto format : allFormats)
    {
        if (nameOf (format) != arguments[2])
            continue;

        const auto plugin = HostedPlugin::open (format);
        plugin->prepare (48000.0, 512);
        juce::AudioBuffer<float> buffer (2, 512);
        buffer.clear();
        plugin->process (buffer);
        applySettings (*plugin);
        plugin->process (buffer);

        const auto state = plugin->state();
        return juce::File (arguments[3]).replaceWithData (state.data(), state.size()) ? 0 : 1;
    }

    std::cerr << "no format " << arguments[2] << "\n";
    return 1;
}
