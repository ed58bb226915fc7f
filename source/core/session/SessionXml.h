#pragma once

#include <juce_data_structures/juce_data_structures.h>

#include <memory>
#include <vector>

/** Reading and writing XML that comes from anywhere. */
namespace SessionXml
{
/** Whether a block is in the framework's binary wrapping and its text passes XmlGuard. */
[[nodiscard]] bool mayBeParsed (const void* data, int size) noexcept;

/** Parses a block; null for one that may not be parsed, and for one that the parser does not understand. */
[[nodiscard]] std::unique_ptr<juce::XmlElement> parse (const void* data, int size);

/** Reads a number that setDecimal wrote: 0 where there is none, and infinite where it is too large for a float. */
[[nodiscard]] float getDecimal (const juce::XmlElement& element, const juce::String& name);

/** Writes a number with enough digits that the same float comes back; what is not finite as nan, inf or -inf. */
void setDecimal (juce::XmlElement& element, const juce::String& name, float value);

using Elements = std::vector<std::unique_ptr<juce::XmlElement>>;

/** Appends many children in time that grows with their number alone. */
void appendChildren (juce::XmlElement& parent, Elements children);

/** What of a tree is our parameters': a copy with each of them at most once, the last that the tree has, and without
    values that are not finite, so that their parameters get their defaults. It has a bounded size, whoever made the
    tree. */
[[nodiscard]] juce::ValueTree parametersIn (const juce::ValueTree& tree);

/** What follows the last separator of either kind, since a session may come from another system. */
[[nodiscard]] juce::String fileNameOf (const juce::String& path);
} // namespace SessionXml
