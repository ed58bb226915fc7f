#pragma once

#include "targets/fit/FilterResponse.h"
#include "targets/fit/FitGoal.h"
#include "targets/fit/FitPrediction.h"
#include "targets/fit/HeardSpectrum.h"

#include <optional>
#include <vector>

/** Looks at finished bands closer than the search did, which is held by penalties and a coarse grid alone. Immutable;
    allocates. */
class FitGuard
{
public:
    explicit FitGuard (const FitTask& task);

    /** Whether the response keeps the goal's limits everywhere, with an output gain that makes up for its loudness and
        without, changes the loudness by no more than that gain could make up for, and can be made in the task's phase.
     */
    [[nodiscard]] bool admits (const std::vector<FitBand>& bands) const;

    /** The output gain in dB that makes up for the bands' loudness. */
    [[nodiscard]] double makeUpDb (const std::vector<FitBand>& bands) const;

private:
    /** Through the filters as they will run; nothing where they cannot be made. */
    [[nodiscard]] std::optional<FitPrediction> predictionOf (const std::vector<FitBand>& bands) const;

    const std::vector<double> frequencies;
    const HeardSpectrum spectrum;
    const FitGoal goal;
    const FilterResponse response;
};
