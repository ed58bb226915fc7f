#pragma once

#include "dsp/design/BandCurves.h"
#include "dsp/design/LeastSquaresFir.h"
#include "dsp/design/MinimumPhase.h"
#include "dsp/design/TapSets.h"

#include <array>
#include <memory>

/** Turns the summed curves of one mode into its tap sets.

    `prepare` fetches what designs of a rate need; after it nothing allocates or locks. A design that fails leaves the
    taps that it was to replace. One thread at a time. */
class TapDesigner
{
public:
    TapDesigner();

    /** Makes the designs of both filter modes at this rate ready. The first object in the process that needs a length
        factorises it, which takes some milliseconds. Allocates and locks. @param sampleRate of the host, in Hz */
    void prepare (double sampleRate);

    /** Sets the length of every set but the solo taps, whose length never changes, and zeroes them. Real-time safe. */
    void configureLengths (const FirLengths& newLengths) noexcept;

    /** Makes the filters of the normal path pass their input: after half their length, or at once in minimum phase. The
        solo taps stay. Real-time safe. */
    void resetTaps() noexcept;

    /** Designs the normal path's taps from the high and the low curve. Both filters for the high bands are designed
        whatever the phase; without high bands only the current phase's one becomes an impulse. Allocates nothing. */
    void makeTaps (const BandCurves& curves, const DesignSettings& settings) noexcept;

    /** Designs the solo taps from the solo curve. Allocates nothing. */
    void makeSoloTaps (const BandCurves& curves) noexcept;

    [[nodiscard]] const TapSets& tapSets() const noexcept { return sets; }
    [[nodiscard]] const FirLengths& lengths() const noexcept { return firLengths; }

private:
    using Design = std::shared_ptr<const LeastSquaresFir>;

    [[nodiscard]] const LeastSquaresFir* designFor (int tapCount) const noexcept;
    void makeHighTaps (std::span<const double> curve) noexcept;
    void makeMinimumTaps (bool highPresent) noexcept;

    template <int capacity>
    void fit (TapSet<capacity>& set, std::span<const double> curve) noexcept;

    FirLengths firLengths;
    TapSets sets;
    MinimumPhase minimumPhase;

    // Low and high, and the minimum-phase source, in either filter mode; then solo.
    static constexpr std::size_t designCount = 7;
    std::array<Design, designCount> designs;
};
