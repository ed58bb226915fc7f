#include "targets/fit/FitGuard.h"

#include "targets/fit/FitGrid.h"
#include "targets/fit/FitPowers.h"
#include "targets/fit/FitPrediction.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr double pointsPerOctave = 48.0;

/** Where the limit is 0, what filters ripple is allowed. */
constexpr double rippleDb = 0.3;

/** The range of the output gain. */
constexpr double largestMakeUpDb = 12.0;
} // namespace

FitGuard::FitGuard (const FitTask& task)
    : frequencies (fitGrid (pointsPerOctave)),
      spectrum (task.lufs, task.bands, task.sampleRate, frequencies),
      goal (task, frequencies),
      response (task.sampleRate, task.mode, task.phase, frequencies)
{
}

bool FitGuard::admits (const std::vector<FitBand>& bands) const
{
    const FitPrediction prediction (spectrum, FitPowers (response, bands).values);
    const auto makeUp = goal.makeUpDb (prediction.overall);

    for (std::size_t index = 0; index < frequencies.size(); ++index)
    {
        const auto [lower, higher] = std::minmax (prediction.response[index], prediction.response[index] + makeUp);

        if (lower < goal.floor() || higher > goal.ceiling (index) + (goal.isSilent (index) ? rippleDb : 0.0))
            return false;
    }

    return std::abs (makeUp) <= largestMakeUpDb && response.canBeMade (bands);
}

double FitGuard::makeUpDb (const std::vector<FitBand>& bands) const
{
    return goal.makeUpDb (FitPrediction (spectrum, FitPowers (response, bands).values).overall);
}
