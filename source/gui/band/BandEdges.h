#pragma once

/** Where a band begins and ends, in hertz. The edges lie geometrically even about the centre, within the room. */
struct BandEdges
{
    int upperHz = 0;
    int lowerHz = 0;

    friend bool operator== (const BandEdges&, const BandEdges&) = default;
};

/** Centre frequency over bandwidth, as far as the drawing is concerned: a fixed polynomial in Q. */
[[nodiscard]] float bandwidthRatio (float q) noexcept;

/** The Q whose bandwidthRatio() this is; not limited. Below 0 there is none: the result is not a number. */
[[nodiscard]] double qOfBandwidthRatio (float ratio) noexcept;

/** The edges of a band.
    @param frequencyHz above 0
    @param highShelf the band reaches the ceiling */
[[nodiscard]] BandEdges bandEdges (int frequencyHz, float q, bool highShelf) noexcept;
