#include "dsp/design/TapDesigner.h"

TapDesigner::TapDesigner()
{
    sets.solo.setCount (soloTapCount);
}

void TapDesigner::prepare (double sampleRate)
{
    const auto mix = firLengthsFor (sampleRate, FilterMode::mix);
    const auto master = firLengthsFor (sampleRate, FilterMode::master);

    // The old ones are let go after the new ones are held, so that a length that both rates share is not made again.
    const auto old = designs;
    const std::array tapCounts { mix.linearHighTapCount,
                                 mix.lowTapCount,
                                 mix.minimumSourceTapCount,
                                 master.linearHighTapCount,
                                 master.lowTapCount,
                                 master.minimumSourceTapCount,
                                 soloTapCount };
    static_assert (tapCounts.size() == designCount);

    for (std::size_t index = 0; index < designCount; ++index)
        designs[index] = LeastSquaresFir::forTapCount (tapCounts[index]);
}

void TapDesigner::configureLengths (const FirLengths& newLengths) noexcept
{
    firLengths = newLengths;
    sets.linearHigh.setCount (firLengths.linearHighTapCount);
    sets.low.setCount (firLengths.lowTapCount);
    sets.minimum.setCount (firLengths.minimumTapCount);

    const auto sourceCount = firLengths.minimumSourceTapCount;
    sets.minimumSource.setCount (sourceCount > 0 ? LeastSquaresFir::symmetricTapCount (sourceCount) : 0);
}

void TapDesigner::resetTaps() noexcept
{
    sets.low.setCentredImpulse();
    sets.linearHigh.setCentredImpulse();
    sets.minimum.setImpulse (0);
}

void TapDesigner::makeTaps (const BandCurves& curves, const DesignSettings& settings) noexcept
{
    const auto presence = curves.bandPresence();
    const auto phase = effectivePhase (settings.sampleRate, settings.filterPhase);

    if (presence.high)
        makeHighTaps (curves.highCurve());
    else if (phase == FilterPhase::linear)
        sets.linearHigh.setCentredImpulse();
    else
        sets.minimumSource.setImpulse (0);

    if (presence.low)
        fit (sets.low, curves.lowCurve());
    else
        sets.low.setCentredImpulse();

    if (phase == FilterPhase::minimum)
        makeMinimumTaps (presence.high);
}

void TapDesigner::makeSoloTaps (const BandCurves& curves) noexcept
{
    fit (sets.solo, curves.soloCurve());
}

void TapDesigner::makeHighTaps (std::span<const double> curve) noexcept
{
    if (sets.minimumSource.count() > 0)
        fit (sets.minimumSource, curve);

    fit (sets.linearHigh, curve);
}

void TapDesigner::makeMinimumTaps (bool highPresent) noexcept
{
    if (! highPresent)
        sets.minimum.setImpulse (0);
    else
        // A refused result leaves the last accepted taps in place.
        static_cast<void> (minimumPhase.toMinimumPhase (sets.minimumSource.taps(), sets.minimum.taps()));
}

template <int capacity>
void TapDesigner::fit (TapSet<capacity>& set, std::span<const double> curve) noexcept
{
    // A failed fit leaves the last taps in place.
    if (const auto* design = designFor (set.count()))
        static_cast<void> (design->designSymmetricFir (curve, set.taps()));
}

const LeastSquaresFir* TapDesigner::designFor (int tapCount) const noexcept
{
    for (const auto& design : designs)
        if (design != nullptr && design->tapCount() == tapCount)
            return design.get();

    return nullptr;
}
