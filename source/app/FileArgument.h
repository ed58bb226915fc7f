#pragma once

#include <juce_core/juce_core.h>

#include <string>

/** The file of a path as the shell gave it: a tilde that is left in there is a letter like any other, and `..` behind a
    symbolic link leads to where the system would go. A link at the end is not followed. Throws CommandError for an
   empty path and for one that is not UTF-8. */
[[nodiscard]] juce::File fileFor (const std::string& path);
