#pragma once

#include <juce_core/juce_core.h>

/** What the header of a chunked sound file (WAV, RF64, W64, AIFF, CAF) says about the size of its samples. The sound
    file library takes what is there and keeps silent about what is missing. */
struct PromisedSize
{
    enum class Verdict
    {
        /** All of it is there, or the header does not say. */
        kept,

        /** More is promised than there is, in one of the figures that stand for an unknown size, as where the file came
            out of a pipe. */
        open,

        /** The file ends before its header says so. */
        broken,

        /** The header says that there are no samples. */
        nothing
    };

    Verdict verdict = Verdict::kept;

    /** Bytes of samples that the header speaks of, and that there are, where the verdict is `open`. */
    juce::int64 promisedBytes = 0;
    juce::int64 presentBytes = 0;

    /** Looks at the chunks; a file of another kind is `kept`. Moves the stream. */
    [[nodiscard]] static PromisedSize look (juce::InputStream& stream);
};
