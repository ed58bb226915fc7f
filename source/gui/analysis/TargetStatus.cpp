#include "gui/analysis/TargetStatus.h"

#include <algorithm>

juce::String TargetStatus::text (const Situation& situation, const juce::String& lead)
{
    if (! situation.targetSetByUser)
        return {};

    auto text = lead;

    if (situation.noTargetChosen)
        text << " Select the USER SETTING preset to use.";

    return text << (situation.tracksLoaded ? "\nClick CREATE TARGETS to re-analyse."
                                           : "\nAdd reference tracks to create new targets.");
}

juce::String TargetStatus::unmeasuredText (const TargetProgress& progress)
{
    if (! progress.complete || progress.unmeasured.empty())
        return {};

    if (static_cast<int> (progress.unmeasured.size()) == progress.trackCount)
        return "Nothing could be measured: a track needs more than a second of sound.";

    juce::StringArray names;

    for (const auto& name : progress.unmeasured)
        names.add (name);

    return "Targets are set without " + names.joinIntoString (", ") + ", where nothing could be measured.";
}

juce::String TargetStatus::progressText (const TargetProgress& progress)
{
    const auto current = std::min (progress.finished + 1, progress.trackCount);
    return "Analysing tracks " + juce::String (current) + " of " + juce::String (progress.trackCount) + ". "
           + juce::String (progress.percent) + "% complete.";
}
