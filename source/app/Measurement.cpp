#include "app/Measurement.h"

#include <algorithm>
#include <cmath>
#include <limits>

MeasurementTarget MeasurementTarget::of (const Presets::Library& library, const Presets::Preset& preset)
{
    const auto numbers = library.numbersOf (preset);
    MeasurementTarget target;
    target.id = preset.id;
    target.name = preset.name.toStdString();
    target.title = (library.groupName (preset) + "/" + preset.name).toStdString();
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

    for (std::size_t band = 0; band < result.size(); ++band)
    {
        const auto adjustment = (values[band] - measured[band]) - difference;
        result[band] = std::isfinite (adjustment) ? adjustment : std::numeric_limits<float>::quiet_NaN();
    }

    return result;
}
