#pragma once

#include <juce_core/juce_core.h>

/** What the header of a chunked sound file (WAV, RF64, W64, AIFF, CAF) says about the size of its samples. The sound
    file library takes what is there and keeps silent about what is missing. */
struct PromisedSize
{
    enum class Verdict
    {
        /** All of it is there, or the header does not say, as where the file came out of a pipe. */
        kept,

        /** The file ends before its header says so. */
        broken,

        /** The header says that there are no samples. */
        nothing
    };

    /** Looks at the chunks; a file of another kind is `kept`. Moves the stream. */
    [[nodiscard]] static Verdict look (juce::InputStream& stream);
};
