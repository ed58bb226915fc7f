#pragma once

#include "dsp/meters/SpectrumAnalyser.h"

#include <array>
#include <atomic>
#include <mutex>
#include <span>

/** The last spectrum, on its way from the spectrum thread to the editor. Any thread but the audio thread; the lock is
    held for a copy only. */
class LiveSpectrum
{
public:
    using Magnitudes = std::array<float, SpectrumAnalyser::binCount>;

    /** Takes a spectrum, unless the last one is to stay: also if that was said while this one was worked out.
        @returns whether it was taken */
    bool publish (const Magnitudes& fresh);

    /** Copies the last spectrum.
        @returns whether it is new since the last call */
    bool copy (std::span<float, SpectrumAnalyser::binCount> destination);

    /** Whether there is one that copy() has not given away yet. Takes no lock. */
    [[nodiscard]] bool hasFresh() const noexcept { return isFresh.load (std::memory_order_relaxed); }

    /** Fills the spectrum with 0. Once it is frozen nothing comes behind that. */
    void clear();

    /** While set, the spectrum stays as it is. */
    std::atomic<bool> frozen { false };

private:
    std::mutex lock;
    Magnitudes magnitudes {};
    std::atomic<bool> isFresh { false };
};
