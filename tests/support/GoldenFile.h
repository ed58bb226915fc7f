#pragma once

#include <juce_core/juce_core.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

/** Bytes that were written once and stay for ever: what an earlier version saved has to be read by every later one.

    A test binary that runs with SOLVANE_WRITE_GOLDEN=1 in its environment writes the files that are missing, from what
    this version saves; files that are there are never touched. */
inline juce::MemoryBlock goldenFile (const std::string& name, const juce::MemoryBlock& asSavedNow = {})
{
    const juce::File file (juce::String (SOLVANE_FIXTURES "/") + name);

    if (! file.existsAsFile() && std::getenv ("SOLVANE_WRITE_GOLDEN") != nullptr && ! asSavedNow.isEmpty())
        file.replaceWithData (asSavedNow.getData(), asSavedNow.getSize());

    juce::MemoryBlock bytes;

    if (! file.loadFileAsData (bytes))
        throw std::runtime_error ("no golden file " + name);

    return bytes;
}
