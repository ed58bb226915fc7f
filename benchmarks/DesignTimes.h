#pragma once

#include "dsp/design/BandDesign.h"

/** How long a worker takes for one message of a band's parameter: the band's curve, the sum, new taps. */
struct DesignTimes
{
    double medianMilliseconds;
    double slowMilliseconds; ///< the 99th percentile

    /** Measures the stereo filters with ten bands, one of which moves. */
    [[nodiscard]] static DesignTimes measure (double sampleRate, FilterMode mode, FilterPhase phase);
};
