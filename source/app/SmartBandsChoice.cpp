#include "app/SmartBandsChoice.h"

#include "core/model/InterfaceState.h"
#include "core/parameters/ParameterTable.h"
#include "targets/DisplayCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

TargetDistance TargetDistance::of (const Listener::Reading& reading, const MeasurementTarget& target)
{
    TargetDistance distance;
    distance.lufs = reading.lufs;
    distance.bands = reading.bands;
    distance.adjustments = target.adjustmentsFor (reading.lufs, reading.bands);

    auto sum = 0.0f;
    auto count = 0.0f;

    for (const auto adjustment : distance.adjustments)
        if (std::isfinite (adjustment))
        {
            sum += adjustment * adjustment;
            ++count;
        }

    distance.rms = count > 0.0f ? std::sqrt (sum / count) : std::numeric_limits<float>::quiet_NaN();
    return distance;
}

std::vector<BandOption> chooseSmartBands (const TargetDistance& distance, FilterMode mode)
{
    auto gainTargets = distance.adjustments;
    std::ranges::replace_if (
        gainTargets, [] (float value) { return ! std::isfinite (value); }, 0.0f);

    // The rows of the room as it first opens: the window's height has a say in which rows there are.
    const InterfaceState room;
    const auto frequencies = DisplayCurve::frequencies (room.roomHeight);
    const auto found = SmartBands::findSmartBands (DisplayCurve::valuesAt (frequencies, gainTargets), frequencies);
    std::vector<BandOption> bands;

    for (const auto& setting : SmartBands::settingsFor (
             found, mode == FilterMode::master ? SmartBands::Limits::master : SmartBands::Limits::mix))
        bands.push_back (bandOptionOf (setting));

    return bands;
}

BandOption bandOptionOf (const SmartBands::Setting& setting)
{
    using Kind = Settings::Parameter;

    BandOption band;
    band.frequencyHz = inStepsOf (ParameterIds::ofBand (0, Kind::frequency), static_cast<float> (setting.frequency));
    band.gainDb = inStepsOf (ParameterIds::ofBand (0, Kind::gain), setting.gain);
    band.q = inStepsOf (ParameterIds::ofBand (0, Kind::q), setting.q);
    band.highShelf = setting.shelf;
    return band;
}

float inStepsOf (const juce::String& parameterId, float value)
{
    for (const auto& row : ParameterTable::rows())
        if (row.id == parameterId)
            return std::clamp (
                row.minimum + row.step * std::round ((value - row.minimum) / row.step), row.minimum, row.maximum);

    return value;
}
