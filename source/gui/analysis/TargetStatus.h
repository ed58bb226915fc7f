#pragma once

#include "core/references/TargetCreation.h"

/** What the analysis window says about targets. */
namespace TargetStatus
{
struct Situation
{
    bool targetSetByUser = false;
    bool tracksLoaded = false;

    /** NO TARGETS is the chosen preset. */
    bool noTargetChosen = false;

    bool operator== (const Situation&) const = default;
};

/** What there is and what can be done next; two lines, or nothing before a target was ever set.
    @param lead a sentence in place of "Targets are set." */
[[nodiscard]] juce::String text (const Situation& situation, const juce::String& lead = "Targets are set.");

/** The sentence that names the tracks which a finished run has left out; nothing where it used them all. */
[[nodiscard]] juce::String unmeasuredText (const TargetProgress& progress);

/** What is said while tracks are measured. */
[[nodiscard]] juce::String progressText (const TargetProgress& progress);
} // namespace TargetStatus
