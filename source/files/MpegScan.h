#pragma once

#include <juce_core/juce_core.h>

#include <optional>

/** A walk over the frames of an MP3 from one header to the next, without decoding: what no header tells for sure. */
struct MpegScan
{
    /** Samples of a channel that the file decodes to, without those that its encoder says it has put around them. */
    juce::int64 sampleCount = 0;

    /** Nothing when a frame is cut short, when what follows a frame is neither a frame nor a tag, or when there are
       more or fewer frames than the file says. Takes time in proportion to the file's size. Moves the stream. */
    [[nodiscard]] static std::optional<MpegScan> of (juce::InputStream& stream);
};
