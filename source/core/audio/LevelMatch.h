#pragma once

#include "dsp/filters/Butterworth2ndOrder.h"

#include <atomic>

/** The gain that would bring the output to the loudness of the input. A suggestion that is drawn; the audio never
    changes by it. One writer, the audio thread; any reader. */
class LevelMatch
{
public:
    LevelMatch() noexcept;

    /** One step, once for each block whatever its length. Loudness in LUFS; real-time safe. */
    void update (float inputLoudness, float outputLoudness) noexcept;

    /** The gain as it is now, linear; 1 where there is none that makes sense. */
    [[nodiscard]] float gain() const noexcept { return levelMatchGain.load (std::memory_order_relaxed); }

    /** The smoothed gain in dB. */
    [[nodiscard]] float decibels() const noexcept { return levelMatchDb.load (std::memory_order_relaxed); }

    /** Where the output control's pointer stands: the smoothed gain, linear, within 12 dB. */
    [[nodiscard]] float pointerGain() const noexcept { return pointer.load (std::memory_order_relaxed); }

private:
    orvik::Butterworth2ndOrder<float> levelMatchSmoother;
    std::atomic<float> levelMatchGain { 1.0f };
    std::atomic<float> levelMatchDb { 0.0f };
    std::atomic<float> pointer { 1.0f };
};
