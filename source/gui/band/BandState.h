#pragma once

#include "gui/band/BandLayout.h"

/** What a band is at the moment, as its control shows it. Message thread. */
struct BandState
{
    explicit BandState (int index) noexcept : band (index) {}

    const int band;

    /** 0 until they are set: the band has no place yet. */
    int frequencyHz = 0;
    float q = 0.0f;

    float gainDb = 0.0f;

    /** The gain as depth in the room: 0 at +scaleDb, 1 at -scaleDb. */
    float depth = 0.5f;

    float midSide = 0.5f;
    bool highShelf = false;

    /** The band is high enough to offer a shelf. */
    bool upperHalf = false;

    bool solo = false;
    bool bypassed = false;

    /** The whole plug-in is bypassed; another band is solo. */
    bool mainBypassed = false;
    bool dimmed = false;

    BandEdges edges;
    BandLayout layout;

    /** A band that is not heard does not answer to the mouse either. */
    [[nodiscard]] bool usable() const noexcept { return ! bypassed && ! mainBypassed && ! dimmed; }
};
