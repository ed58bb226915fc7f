#include "app/Measurement.h"

#include "app/TimeRange.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace
{
/** What the meters' stores hold. */
constexpr double storedSeconds = 300.0;

/** After so much sound the meters' gates run for the first time. */
constexpr double firstReadingSeconds = 1.0;

std::string secondsText (double seconds)
{
    std::ostringstream text;
    text.precision (2);
    text << std::fixed << seconds << " s";
    return text.str();
}
} // namespace

std::vector<std::string> Measurement::notes() const
{
    auto sentences = inputNotes;
    const auto measured = rangeEnd - rangeStart;

    if (measured > storedSeconds)
        sentences.push_back ("what counts of " + file + " is its last five minutes, from "
                             + TimeRange::textOf (rangeEnd - storedSeconds)
                             + " on; where passages there lie 10 dB below the rest, some older sound counts in their "
                               "place. --range START-END measures a part.");

    if (! std::isfinite (lufs))
        sentences.push_back (measured <= firstReadingSeconds
                                 ? "a reading needs more than a second of sound, and of " + file + " there are "
                                       + secondsText (measured) + "."
                                 : "nothing in " + file + " is louder than -70 LUFS, so there is no reading.");

    return sentences;
}

Measurement::Levels Measurement::raised (Levels levels, float decibels)
{
    for (auto& level : levels)
        level += decibels;

    return levels;
}

MeasurementTarget MeasurementTarget::of (const Presets::Library& library, const Presets::Preset& preset)
{
    const auto numbers = library.numbersOf (preset);
    MeasurementTarget target;
    target.id = preset.id;
    target.name = preset.name.toStdString();
    target.title = (library.groupName (preset) + "/" + preset.name).toStdString();
    target.exists = preset.id != Presets::noTargetsId && preset.id != Presets::userSettingId;
    target.lufs = numbers.lufs;
    target.values = numbers.values;

    if (numbers.topBand.has_value())
        target.values.back() = *numbers.topBand;

    return target;
}

Measurement::Levels MeasurementTarget::adjustmentsFor (float measuredLufs, const Measurement::Levels& measured) const
{
    const auto difference = lufs - measuredLufs;
    Measurement::Levels result;

    if (! exists)
    {
        result.fill (std::numeric_limits<float>::quiet_NaN());
        return result;
    }

    for (std::size_t band = 0; band < result.size(); ++band)
    {
        const auto adjustment = (values[band] - measured[band]) - difference;
        result[band] = std::isfinite (adjustment) ? adjustment : std::numeric_limits<float>::quiet_NaN();
    }

    return result;
}
