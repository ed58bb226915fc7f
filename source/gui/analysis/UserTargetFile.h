#pragma once

#include "core/presets/Presets.h"
#include "core/references/ReferenceTrack.h"

#include <memory>
#include <vector>

/** USER SETTING in a file, of the kind that the command line writes and reads. Message thread. */
namespace UserTargetFile
{
using Tracks = std::vector<std::shared_ptr<ReferenceTrack>>;

/** What has come of it, for the user to read. */
struct Outcome
{
    bool succeeded = false;
    juce::String sentence;
};

/** Whether USER SETTING is what the last analysis of these tracks has given, with the ranges that they have now. */
[[nodiscard]] bool isMadeOf (const Tracks& tracks, const Presets::Library& presets);

/** Writes the file as a whole or not at all, and with it the tracks if the target is made of them. Replaces a target
    and nothing else. */
[[nodiscard]] Outcome save (const juce::File& file, const Presets::Library& presets, const Tracks& tracks);

/** Takes the file's numbers for USER SETTING; what is no target changes nothing. */
[[nodiscard]] Outcome load (const juce::File& file, Presets::Library& presets);
} // namespace UserTargetFile
