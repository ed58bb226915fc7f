#include "app/AskedResponse.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace
{
/** A curve between its points, which reach from 0 Hz to half its rate; 1 beyond them. */
double valueAt (std::span<const double> curve, double frequencyHz, double rate)
{
    const auto position = frequencyHz / (0.5 * rate) * static_cast<double> (curve.size() - 1);
    const auto index = static_cast<std::size_t> (position);

    if (index + 1 >= curve.size())
        return 1.0;

    const auto fraction = position - static_cast<double> (index);
    return curve[index] + fraction * (curve[index + 1] - curve[index]);
}

BlockProcessorMode pathOf (HeardResponse::Signal signal)
{
    return signal == HeardResponse::Signal::middle ? BlockProcessorMode::mid : BlockProcessorMode::side;
}
} // namespace

double AskedResponse::at (HeardResponse::Signal signal, double frequencyHz) const
{
    const auto& model = processor.model;
    const auto stereo = model.stereoPathActive() ? pathAt (BlockProcessorMode::stereo, frequencyHz) : 1.0;

    if (! model.isStereo || ! model.midSidePathActive())
        return stereo;

    // Where both paths run, the stereo one adds what it changes.
    return stereo + pathAt (pathOf (signal), frequencyHz) - 1.0;
}

bool AskedResponse::acts (int band, HeardResponse::Signal signal) const
{
    const auto& model = processor.model;

    if (model.getBandValue (band, Settings::Parameter::gain) == 0.0f
        || model.getBandValue (band, Settings::Parameter::bypass) == 1.0f)
        return false;

    const auto gainIn = [&] (BlockProcessorMode mode)
    { return processor.bandEngine().block (mode).bandCurves().bandShape (band).gainDb; };

    return (model.stereoPathActive() && gainIn (BlockProcessorMode::stereo) != 0.0f)
           || (model.isStereo && model.midSidePathActive() && gainIn (pathOf (signal)) != 0.0f);
}

double AskedResponse::pathAt (BlockProcessorMode mode, double frequencyHz) const
{
    const auto& curves = processor.bandEngine().block (mode).bandCurves();
    const auto rate = processor.model.sampleRate.load();
    const auto present = curves.bandPresence();

    return (present.high ? valueAt (curves.highCurve(), frequencyHz, rate) : 1.0)
           * (present.low ? valueAt (curves.lowCurve(), frequencyHz, rate / processor.model.decimationFactor) : 1.0);
}
