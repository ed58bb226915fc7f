#pragma once

#include "core/references/ReferenceTrack.h"

#include <atomic>

/** Plays the selected reference track in place of the host's audio: unprocessed, at the file's level, never mixed with
    what the host gave.

    The audio thread takes no lock. It marks that it is at work before it looks which track is selected, so that whoever
    has selected another one can wait until nobody reads the old one any more. */
class TrackAudition
{
public:
    /** Whether the user has pressed play. Any thread. */
    std::atomic<bool> isPlaying { false };

    /** Any thread but the audio thread. Null selects none. */
    void select (ReferenceTrack* track) noexcept { selected = track; }

    [[nodiscard]] ReferenceTrack* selectedTrack() const noexcept { return selected; }

    /** Returns when no block that began before reads a track any more: at most one block. Any thread but the audio
        thread. */
    void waitUntilUnused() const noexcept;

    /** One block in place, if a track is to be heard and is loaded: false leaves the block to the equaliser. At the
        track's end one block keeps the host's samples, and the track begins anew. A mono track leaves the right channel
        of a stereo bus to the host; a stereo track goes to a mono bus as its mean. Audio thread; real-time safe. */
    [[nodiscard]] bool play (float* const* channels, int channelCount, int sampleCount) noexcept;

private:
    std::atomic<ReferenceTrack*> selected { nullptr };
    std::atomic<bool> inUse { false };
};
