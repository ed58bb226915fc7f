#pragma once

#include "app/EqualiserSettings.h"

#include <juce_data_structures/juce_data_structures.h>

#include <memory>
#include <string>

/** A session block as a host stored it, in a file. */
namespace SessionFile
{
/** Reads the bytes into `block`, and what they hold. Throws CommandError where that is no session of ours. */
[[nodiscard]] std::unique_ptr<juce::XmlElement> load (const std::string& path, juce::MemoryBlock& block);

/** What a session sets of the sound: the settings of all ten bands, the used and the unused, and the global ones but
    the bypass. Throws CommandError. */
[[nodiscard]] EqualiserSettings equaliserSettings (const std::string& path);
} // namespace SessionFile
