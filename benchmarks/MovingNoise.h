#pragma once

#include <cstddef>
#include <vector>

/** Noise whose level moves five times a second, so that the meters' gates have something to decide. The same seed gives
    the same samples, all below full scale. */
[[nodiscard]] std::vector<float> movingNoise (unsigned seed, std::size_t count, double sampleRate);
