#include "app/FittedBandsChoice.h"

#include "core/parameters/ParameterTable.h"
#include "targets/fit/BandFit.h"

#include <algorithm>

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
    choice.outputGainDb = inStepsOf (ParameterIds::outputGain, fitted.outputGainDb);
    return choice;
}
