#pragma once

#include <juce_core/juce_core.h>

#include <optional>

/** The sound of an MP3 file without what stands around it.

    The framework's reader guesses the length of a file that does not state it, gives up at a tag between two frames
   that is longer than its search, and takes what it has by then for the whole. So the headers are walked here first, as
    ISO/IEC 11172-3 describes them: what is handed on is a row of frames, and how many there are is known. */
struct Mp3Frames
{
    /** All frames that hold sound, one behind the other. */
    juce::MemoryBlock frames;

    /** Samples in each channel of all of them. */
    juce::int64 sampleCount = 0;

    /** False where the file's own count says that there were more, or where other bytes than tags lie between frames.
     */
    bool isWhole = true;

    /** Looks through a file's content; nothing where there is no frame of MPEG audio layer III. */
    [[nodiscard]] static std::optional<Mp3Frames> find (const juce::MemoryBlock& content);

    /** The length of an ID3v2 tag that a text begins with, 0 where it begins with none.
        @param start at least `tagHeaderLength` bytes */
    [[nodiscard]] static juce::int64 tagLength (const unsigned char* start) noexcept;
    static constexpr int tagHeaderLength = 10;
};
