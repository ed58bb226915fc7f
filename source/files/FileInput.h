#pragma once

#include "files/Descriptor.h"

#include <juce_core/juce_core.h>

#include <functional>

/** Reads a regular file of the system, also one whose name the framework could not spell, or that has none. One
    thread. */
class FileInput final : public juce::InputStream
{
public:
    /** Asked before each reading: what a library makes of a whole file can thus be broken off. */
    using MayGoOn = std::function<bool()>;

    /** The file's size counts as it is now. @param mayGoOn once it says no, nothing more is given */
    explicit FileInput (Descriptor fileToRead, MayGoOn mayGoOn = {});

    juce::int64 getTotalLength() override { return length; }

    /** Also where nothing more is given: some decoders ask for more until they hear this. */
    bool isExhausted() override { return position >= length || endedEarly || (mayGoOn && ! mayGoOn()); }
    juce::int64 getPosition() override { return position; }
    bool setPosition (juce::int64 newPosition) override;

    /** As much as there is; less only at the end, where the system fails, or where it may not go on. */
    int read (void* destination, int byteCount) override;

private:
    const Descriptor file;
    const MayGoOn mayGoOn;
    const juce::int64 length;
    juce::int64 position = 0;
    bool endedEarly = false;
};
