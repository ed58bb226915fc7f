#pragma once

#include <juce_core/juce_core.h>

/** What stands in a band's read-out, and what a text typed there means. */
namespace BandText
{
/** "+3.0dB", "-2.5dB", "0.0dB". */
[[nodiscard]] juce::String ofGain (float gainDb);

/** "3910Hz". */
[[nodiscard]] juce::String ofFrequency (int frequencyHz);

/** "1.0Q". */
[[nodiscard]] juce::String ofQ (float q);

/** A typed number, with a decimal point or comma; a unit behind it is ignored, but one that begins with "k" counts as a
    thousand. What is not a number gives 0; the result is finite. */
[[nodiscard]] double toNumber (const juce::String& text);
} // namespace BandText
