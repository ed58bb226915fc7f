#pragma once

#include <juce_core/juce_core.h>

#include <vector>

/** A region of a reference track, in samples at the session's rate. */
struct TrackLoop
{
    int startSamples = 0;
    int endSamples = 0;

    /** Whether the region is in use. */
    bool active = false;

    /** Made when the record is; never saved. */
    juce::int64 id = 0;

    /** Milliseconds since the epoch, but never twice the same: for tracks and for regions. Any thread. */
    [[nodiscard]] static juce::int64 makeId();
};

/** A reference track that a session asks for. */
struct ReferenceTrackRequest
{
    juce::String filePath;
    juce::String displayName;
    std::vector<TrackLoop> loops;

    /** Whether it is the current track. Saved, and not read: the track that is loaded last becomes the current one. */
    bool selected = false;
};
