#pragma once

/** One band as a mode draws it: what an update and the parameters of its moment have come to. Kept, it draws the same
    curve again whatever has become of the parameters. */
struct BandDrawing
{
    /** In dB; holds the gain scale, the filter mode's limits and both kinds of bypass, and is not yet shared out
       between the modes. */
    float gainDb = 0.0f;

    float frequencyHz = 320.0f;
    float q = 1.0f;
    float midSide = 0.5f;
    bool highShelf = false;

    /** The band's solo switch was down while nothing was soloed: left and right get the gain of a soloed band. */
    bool soloGain = false;

    bool operator== (const BandDrawing&) const = default;
};
