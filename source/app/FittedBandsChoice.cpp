#include "app/FittedBandsChoice.h"

#include "core/parameters/ParameterTable.h"
#include "targets/fit/BandFit.h"

#include <algorithm>

namespace
{
constexpr float freeRiseDb = 3.0f;
} // namespace

FittedBandsChoice FittedBandsChoice::of (const TargetDistance& distance,
                                         double sampleRate,
                                         const EqualiserSettings& settings,
                                         float amountPercent)
{
    const auto fitted = fitBands ({ .lufs = distance.lufs,
                                    .bands = distance.bands,
                                    .adjustments = distance.adjustments,
                                    .amountPercent = amountPercent,
                                    .sampleRate = sampleRate,
                                    .mode = settings.mode,
                                    .phase = settings.phase });

    FittedBandsChoice choice;
    std::ranges::transform (fitted.bands, std::back_inserter (choice.bands), bandOptionOf);

    // A quiet recording is turned down for a real jump alone: further down, its meters would hear even less of it.
    const auto free = distance.lufs < Listener::quietLufs ? freeRiseDb : 0.0f;
    const auto rise = fitted.loudnessChangeDb;
    choice.outputGainDb = inStepsOf (ParameterIds::outputGain, rise > 0.0f ? std::min (free - rise, 0.0f) : -rise);
    return choice;
}
