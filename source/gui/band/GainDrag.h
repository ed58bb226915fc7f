#pragma once

#include "gui/band/GlidingDepth.h"

/** A drag of a band's body through the depth of the room. Rows are counted in the room, which stands still while the
    band moves under the hand. */
class GainDrag
{
public:
    /** The hand takes hold. Also called when the room's scale has changed under it.
        @param depth where the band is, 0 at the front plane and 1 at the back wall */
    void begin (float depth, int row) noexcept;

    /** Where the band goes with the hand; not limited. */
    float dragTo (int row) noexcept;

    /** The same for a resting hand, once for each tick; nothing once the band has arrived. */
    std::optional<float> rest() noexcept { return glide.rest(); }

    /** The band was put somewhere else meanwhile: the hand goes on from there. */
    void bandMoved (float depth) noexcept;

private:
    GlidingDepth glide;
    float startDepth = 0.5f;
    int startRow = 0;
    int lastRow = 0;
};
