#pragma once

#include "gui/band/GainLimits.h"
#include "gui/band/GlidingDepth.h"

/** The wheel over a band. Each notch adds to where the notch before wanted to go, so that fast turning loses nothing;
    after half a second without a notch the wheel starts from where the band is. Times are milliseconds. */
class GainWheel
{
public:
    /** Takes a notch.
        @param bandDepth where the band is now
        @param delta     the wheel's movement, positive towards the back wall
        @return the band's new depth, within 0 and 1 */
    float turn (float bandDepth, float delta, double timeMs, const GainLimits& limits) noexcept;

    /** The next step of the way to the last notch, once for each tick; nothing once the band has arrived. */
    std::optional<float> rest (const GainLimits& limits) noexcept;

    /** The band was put somewhere else: the next notch starts from there. */
    void bandMoved() noexcept;

private:
    GlidingDepth glide;
    float wantedDepth = 0.5f;
    double lastTurnMs = 0.0;
    bool turning = false;
};
