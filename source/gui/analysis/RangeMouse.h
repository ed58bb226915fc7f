#pragma once

#include "core/session/ReferenceTrackRequest.h"

#include <cstddef>
#include <optional>
#include <vector>

/** What the mouse does to the ranges of a track: makes them, moves their edges, takes them away. Knows no component.

    A range is held by its index and looked up at each event, since the list may have become another meanwhile. */
class RangeMouse
{
public:
    using Ranges = std::vector<TrackLoop>;

    /** How the track lies on the screen. */
    struct Scale
    {
        float pixelsPerSample = 1.0f;
        int numSamples = 0;

        /** The sample below a pixel, cut to whole numbers; 0 where nothing can be told. */
        [[nodiscard]] int sampleAt (double x) const noexcept;
    };

    enum class Cursor
    {
        add,
        remove,
        move
    };

    /** A range that is shorter when the hand lets go of it was not meant. */
    static constexpr int shortestRange = 1024;

    /** So many pixels to one side, and not more, are no drag. */
    static constexpr int dragThreshold = 2;

    /** The first range over a sample, or within one sample of it. */
    [[nodiscard]] static std::optional<std::size_t> rangeAt (const Ranges& ranges, int sample) noexcept;

    [[nodiscard]] static Cursor cursorAt (float x, bool alt, const Scale& scale, const Ranges& ranges) noexcept;

    /** A press begins a range or takes hold of one; with Alt it takes one away, or all of them. @returns whether the
        ranges have changed */
    bool press (float x, bool alt, const Scale& scale, Ranges& ranges);

    /** Moves the edge that lies on the pointer's side of the range's middle. @returns as above */
    bool drag (float pressedX, float x, const Scale& scale, Ranges& ranges);

    /** Puts the ends of the dragged range in order, or takes it away if it is too short. @returns as above */
    bool release (Ranges& ranges);

    /** Forgets what the hand holds. */
    void letGo() noexcept { *this = {}; }

private:
    bool creating = false;
    bool moved = false;
    std::optional<std::size_t> active;
};
