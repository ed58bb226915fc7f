#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** Looks at the place where a program is about to write, so that no output destroys what is not its own. */
namespace OutputPlace
{
/** What the output is. It replaces a file of its own kind, or an empty one, and no other. */
enum class Kind
{
    sound,
    picture
};

/** What a symbolic link stands for, also where nothing is there yet; everything else as it is. */
[[nodiscard]] juce::File behindLinks (juce::File file);

/** Whether both are the same file of the system, whatever their names: by links, hard links, other ways of writing. */
[[nodiscard]] bool isSameFile (const juce::File& one, const juce::File& other);

/** Fails with a sentence where nothing can be written, or where something stands that must not be replaced: a folder, a
    device, a pipe, a file of another kind, or one of `spared`. A symbolic link is followed. */
[[nodiscard]] juce::Result check (const juce::File& place, Kind kind, const std::vector<juce::File>& spared = {});
} // namespace OutputPlace
