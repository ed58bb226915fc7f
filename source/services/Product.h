#pragma once

#include <juce_core/juce_core.h>

/** What this build calls itself. */
namespace Product
{
/** Such as "1.0.8". */
[[nodiscard]] juce::String version();

/** The day on which it was compiled, such as "Jul 25 2022". */
[[nodiscard]] juce::String buildDate();

/** Who made it, when, and how it may be used. */
[[nodiscard]] juce::String rights (const juce::String& buildDate);
} // namespace Product
