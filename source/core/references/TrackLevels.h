#pragma once

#include <vector>

/** The source of a track's outline: about 4096 levels over its whole length, taken while it is loaded. One thread. */
class TrackLevels
{
public:
    /** How many levels a track gives, but for a rest. */
    static constexpr int usualCount = 4096;

    /** @param expectedLength of the track in samples at the session's rate, with its fraction */
    explicit TrackLevels (double expectedLength);

    /** Takes what a step of the load has brought. The sums run on from step to step.

        Each level is the mean of both channels' root mean squares over a window; their sums hold one sample more than
        they are divided by. What is left over at the very end gives a level of its own where the track is exactly as
        long as it was expected to be, unless it is a single sample. */
    void take (const float* left, const float* right, int count);

    /** The levels, so that the largest is 0.8; all 0 for silence. Nothing comes afterwards. */
    [[nodiscard]] std::vector<float> finish();

    /** Samples between two levels, less one. */
    [[nodiscard]] int windowLength() const noexcept { return window; }

private:
    void appendLevel();

    const double expectedLength;
    const int window;
    long long taken = 0;
    float leftSum = 0.0f;
    float rightSum = 0.0f;
    int count = 0;
    std::vector<float> levels;
};
