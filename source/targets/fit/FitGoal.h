#pragma once

#include "targets/fit/FitTask.h"

#include <cstddef>
#include <span>
#include <vector>

/** What a fit is to reach: how far each meter and each frequency should move, and how far none may. Decibels.
 * Immutable.
 */
class FitGoal
{
public:
    /** @param frequenciesHz rising */
    FitGoal (const FitTask& task, std::span<const double> frequenciesHz);

    /** Whether a band's adjustment is asked for. The top band's is not: its reading follows from the three below it. */
    [[nodiscard]] bool counts (std::size_t band) const noexcept;
    [[nodiscard]] double adjustment (std::size_t band) const noexcept;

    /** The largest one that counts, without its sign. */
    [[nodiscard]] double largestAdjustment() const noexcept;

    /** The curve through the adjustments, as the room draws it; level beyond its ends. */
    [[nodiscard]] const std::vector<double>& curve() const noexcept { return wanted; }

    /** No response may lie beyond these: 3 dB outside of what is wanted anywhere, or less; above 0 where there is
       nothing to lift; and 24 dB down, where others could not lift it again. */
    [[nodiscard]] double ceiling (std::size_t index) const noexcept { return ceilings[index]; }
    [[nodiscard]] double floor() const noexcept { return lowest; }

    /** How much louder or softer a recording may become without the output gain that makes up for it: up to 3 dB louder
        where it is so quiet that it would be heard even less when turned down, and up to 3 dB softer where another one
        has nothing in a band, and would come with its hiss when turned up. Else 0. */
    [[nodiscard]] double keptRiseDb() const noexcept { return keptRise; }
    [[nodiscard]] double keptDropDb() const noexcept { return keptDrop; }

    /** That output gain in dB. */
    [[nodiscard]] double makeUpDb (double loudnessChangeDb) const noexcept;

    /** Near a band without a reading. */
    [[nodiscard]] bool isSilent (std::size_t index) const noexcept { return silent[index]; }

private:
    void setLimits (std::span<const double> frequenciesHz);
    void findSilence (const FitTask::Levels& bands, std::span<const double> frequenciesHz);

    FitTask::Levels asked;
    std::vector<double> wanted;
    std::vector<double> ceilings;
    std::vector<bool> silent;
    double lowest = 0.0;
    double keptRise = 0.0;
    double keptDrop = 0.0;
};
