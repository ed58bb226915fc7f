#pragma once

#include "support/BinaryXml.h"
#include "support/PluginRig.h"

#include <memory>
#include <string>

/** Saving and loading of the blocks that a host keeps. */
namespace sessions
{
inline juce::MemoryBlock save (VelmoraAudioProcessor& processor)
{
    juce::MemoryBlock block;
    processor.getStateInformation (block);
    return block;
}

inline void load (VelmoraAudioProcessor& processor, const juce::MemoryBlock& block)
{
    processor.setStateInformation (block.getData(), static_cast<int> (block.getSize()));
}

inline void loadText (VelmoraAudioProcessor& processor, std::string_view text)
{
    load (processor, wrapText (text));
}

/** A block of these elements, with no parameters. */
inline void loadElements (VelmoraAudioProcessor& processor, const std::string& elements)
{
    loadText (processor, "<FOREIGN>" + elements + "</FOREIGN>");
}

/** The numbers of USER SETTING. */
inline Presets::Numbers userSetting (const VelmoraAudioProcessor& processor)
{
    return processor.presets.numbersOf (*processor.presets.findPresetById (Presets::userSettingId));
}

/** Plain values of all 86 parameters, in their order. */
inline std::vector<float> parameterValues (VelmoraAudioProcessor& processor)
{
    std::vector<float> values;

    for (const auto& row : ParameterTable::rows())
        values.push_back (processor.getAPVTS().getRawParameterValue (row.id)->load());

    return values;
}

/** Puts something other than the default everywhere in a session. Before or after prepare. */
inline void fillSession (PluginRig& rig)
{
    using Kind = Settings::Parameter;
    auto& processor = rig.processor;
    auto& state = processor.sessionState();

    loadElements (processor,
                  "<reference-track display-name=\"First &amp; best\" file-path=\"/music/a &quot;song&quot;.wav\">"
                  "<loop start-samples=\"100\" end-samples=\"2000\" active=\"1\"/>"
                  "<loop start-samples=\"3000\" end-samples=\"4000\" active=\"0\"/></reference-track>"
                  "<reference-track display-name=\"\" file-path=\"C:\\music\\&#252;ber.flac\"/>");

    rig.setBand (0, 400.0f, 3.0f, 1.2f);
    rig.setBand (1, 1200.0f, -2.5f, 0.7f);
    rig.setBand (4, 8000.0f, 6.0f, 2.0f);
    rig.set (1, Kind::midSide, 0.25f);
    rig.set (4, Kind::highShelf, 1.0f);
    state.compareCopy();
    rig.set (0, Kind::gain, -6.0f);
    rig.set (0, Kind::midSide, 1.0f);
    rig.set (2, Kind::active, 1.0f);
    rig.set (2, Kind::bypass, 1.0f);
    rig.set (2, Kind::gain, 9.0f);
    rig.set (ParameterIds::mode, 1.0f);
    rig.set (ParameterIds::phase, 0.0f);
    rig.set (ParameterIds::outputGain, -1.5f);
    rig.set (ParameterIds::gainScale, 80.0f);
    rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::userSettingId));
    state.compareSwitch (true);
    rig.set (3, Kind::active, 1.0f);
    rig.set (3, Kind::gain, 1.5f);
    rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::userSettingId));

    const std::array<float, Presets::bandValueCount> levels { -20.5f, -21.25f, -22.0f, -23.125f, -24.0f,
                                                              -25.0f, -26.1f,  -28.7f, -33.3f,   -38.9f };
    processor.presets.setUserSetting (-9.75f, levels);
    processor.model.windowWidth = 801;
    processor.model.windowHeight = 702;
    processor.model.targetSetByUser = true;
    processor.model.targetScaleDb = 6.0f;
    processor.model.maxThreadPriority = 7;
}
} // namespace sessions
