#pragma once

#include "app/BandOption.h"
#include "app/Listener.h"
#include "app/Measurement.h"
#include "core/model/PluginModel.h"
#include "targets/SmartBands.h"

#include <vector>

/** What is heard of a recording beside a target. */
struct TargetDistance
{
    float lufs = 0.0f;
    Measurement::Levels bands {};
    Measurement::Levels adjustments {};

    /** The root of the adjustments' mean square in dB, over the bands that have one; not finite where none has. */
    float rms = 0.0f;

    [[nodiscard]] static TargetDistance of (const Listener::Reading& reading, const MeasurementTarget& target);
};

/** The bands that would bring a recording near a target, as the window's command chooses them, in the steps of their
    parameters. */
[[nodiscard]] std::vector<BandOption> chooseSmartBands (const TargetDistance& distance, FilterMode mode);

/** A band of a choice, in the steps of its parameters. */
[[nodiscard]] BandOption bandOptionOf (const SmartBands::Setting& setting);

/** The nearest value that a parameter can hold. */
[[nodiscard]] float inStepsOf (const juce::String& parameterId, float value);
