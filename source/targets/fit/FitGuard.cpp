#include "targets/fit/FitGuard.h"

#include "targets/fit/FitGrid.h"
#include "targets/fit/FitPowers.h"

#include <algorithm>
#include <cmath>
#include <functional>

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

std::optional<FitPrediction> FitGuard::predictionOf (const std::vector<FitBand>& bands) const
{
    const auto high = response.highPowers (bands);

    if (! high.has_value())
        return std::nullopt;

    auto lowBands = bands;
    std::erase_if (lowBands, [] (const FitBand& band) { return ! band.isLow(); });
    auto powers = FitPowers (response, lowBands).values;
    std::ranges::transform (powers, *high, powers.begin(), std::multiplies());
    return FitPrediction (spectrum, powers);
}

bool FitGuard::admits (const std::vector<FitBand>& bands) const
{
    const auto found = predictionOf (bands);

    if (! found.has_value())
        return false;

    const auto& prediction = *found;
    const auto makeUp = goal.makeUpDb (prediction.overall);

    for (std::size_t index = 0; index < frequencies.size(); ++index)
    {
        const auto [lower, higher] = std::minmax ({ prediction.response[index], prediction.response[index] + makeUp });

        if (lower < goal.floor() || higher > goal.ceiling (index) + (goal.isSilent (index) ? rippleDb : 0.0))
            return false;
    }

    return std::abs (makeUp) <= largestMakeUpDb;
}

double FitGuard::makeUpDb (const std::vector<FitBand>& bands) const
{
    const auto prediction = predictionOf (bands);
    return prediction.has_value() ? goal.makeUpDb (prediction->overall) : 0.0;
}
