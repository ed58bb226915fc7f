#include "targets/fit/FitGoal.h"

#include "targets/DisplayCurve.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double toleranceDb = 3.0;
constexpr double deepestDb = -24.0;

/** More lifts hiss and rumble and not music; less of it at the ends of the range, where most recordings have least. */
constexpr double highestDb = 20.0;
constexpr double highestAtTheEndsDb = 15.0;
constexpr double lowEndHz = 400.0;
constexpr double highEndHz = 10000.0;

constexpr double keptChangeDb = 3.0;

/** To either side of a silent band's centre, as a ratio. */
constexpr double silentReach = 1.3;

/** The last one is no reading of its own. */
constexpr std::size_t readBandCount = analysisBandCount - 1;
} // namespace

FitGoal::FitGoal (const FitTask& task, std::span<const double> frequenciesHz) : asked (task.adjustments)
{
    for (auto& adjustment : asked)
        adjustment *= 0.01f * task.amountPercent;

    findSilence (task.bands, frequenciesHz);
    setLimits (frequenciesHz);

    const auto hasSilence =
        ! std::all_of (task.bands.begin(), task.bands.end() - 1, [] (float level) { return std::isfinite (level); });
    const auto isQuiet = task.lufs < quietLufs;
    keptRise = isQuiet ? keptChangeDb : 0.0;
    keptDrop = hasSilence && ! isQuiet ? keptChangeDb : 0.0;

    auto finite = asked;
    std::ranges::replace_if (
        finite, [] (float value) { return ! std::isfinite (value); }, 0.0f);
    std::vector<double> places;

    for (const auto hz : frequenciesHz)
        places.push_back (
            std::clamp (hz, static_cast<double> (DisplayCurve::lowHz), static_cast<double> (DisplayCurve::highHz)));

    wanted = DisplayCurve::valuesAt (places, finite);

    // Between its knots the curve swings on where it turns, and asks for more than anybody.
    for (std::size_t index = 0; index < wanted.size(); ++index)
        wanted[index] = std::clamp (wanted[index], lowest, std::max (ceilings[index], lowest));
}

void FitGoal::setLimits (std::span<const double> frequenciesHz)
{
    auto highest = 0.0;

    for (std::size_t band = 0; band < readBandCount; ++band)
        if (counts (band))
        {
            highest = std::max (highest, adjustment (band));
            lowest = std::min (lowest, adjustment (band));
        }

    highest = std::min (highest + toleranceDb, highestDb);
    lowest = std::max (lowest - toleranceDb, deepestDb);

    for (std::size_t index = 0; index < frequenciesHz.size(); ++index)
    {
        const auto atTheEnds = frequenciesHz[index] < lowEndHz || frequenciesHz[index] > highEndHz;
        ceilings.push_back (silent[index] ? 0.0 : atTheEnds ? std::min (highest, highestAtTheEndsDb) : highest);
    }
}

void FitGoal::findSilence (const FitTask::Levels& bands, std::span<const double> frequenciesHz)
{
    silent.assign (frequenciesHz.size(), false);

    for (std::size_t band = 0; band < readBandCount; ++band)
        if (! std::isfinite (bands[band]))
            for (std::size_t index = 0; index < frequenciesHz.size(); ++index)
            {
                const auto ratio = frequenciesHz[index] / static_cast<double> (analysisCentresHz[band]);
                const auto above = band + 1 == readBandCount || ratio < silentReach;
                silent[index] = silent[index] || (ratio > 1.0 / silentReach && above);
            }
}

double FitGoal::makeUpDb (double loudnessChangeDb) const noexcept
{
    return std::clamp (loudnessChangeDb, -keptDrop, keptRise) - loudnessChangeDb;
}

bool FitGoal::counts (std::size_t band) const noexcept
{
    return band < readBandCount && std::isfinite (asked[band]);
}

double FitGoal::adjustment (std::size_t band) const noexcept
{
    return static_cast<double> (asked[band]);
}

double FitGoal::largestAdjustment() const noexcept
{
    auto largest = 0.0;

    for (std::size_t band = 0; band < readBandCount; ++band)
        if (counts (band))
            largest = std::max (largest, std::abs (adjustment (band)));

    return largest;
}
