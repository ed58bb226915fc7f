#include "app/SessionFile.h"

#include "app/CommandError.h"
#include "app/InputFile.h"
#include "core/PluginProcessor.h"
#include "core/session/SessionXml.h"

std::unique_ptr<juce::XmlElement> SessionFile::load (const std::string& path, juce::MemoryBlock& block)
{
    const auto bytes = InputFile::read (path);
    block.replaceAll (bytes.data(), bytes.size());
    auto root = SessionXml::parse (block.getData(), static_cast<int> (block.getSize()));

    if (root == nullptr || ! root->hasTagName ("ZVQ_Processor"))
        throw CommandError (ExitCode::unreadableInput, "'" + path + "' is not a session block of SOLVANE.");

    return root;
}

EqualiserSettings SessionFile::equaliserSettings (const std::string& path)
{
    juce::MemoryBlock block;
    std::ignore = load (path, block);

    // Read by the plug-in itself, so that the program hears in a session what a host does.
    VelmoraAudioProcessor processor (HostDescription {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone);
    processor.setStateInformation (block.getData(), static_cast<int> (block.getSize()));
    return EqualiserSettings::of (processor.model);
}
