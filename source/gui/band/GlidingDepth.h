#pragma once

#include "dsp/filters/FIRFilter.h"

#include <optional>

/** The depth of a band under a hand: the average of the last four positions.

    Three events after the hand has come to rest the average would still lag behind it, so whoever owns a glide calls
    rest() at each tick without an event, until it returns nothing. Message thread. */
class GlidingDepth
{
public:
    GlidingDepth();

    /** The band was put somewhere without a hand. */
    void reset (float depth) noexcept;

    /** Takes a position of the hand and returns the average. */
    float moveTo (float depth) noexcept;

    /** The average a step nearer to the hand's last position, or nothing once it has arrived. */
    std::optional<float> rest() noexcept;

    [[nodiscard]] bool arrived() const noexcept { return stepsLeft == 0; }

private:
    static constexpr int tapCount = 4;

    orvik::FIRFilter<tapCount> smoother;
    float target = 0.0f;
    int stepsLeft = 0;
};
