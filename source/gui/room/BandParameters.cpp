#include "gui/room/BandParameters.h"

using Kind = Settings::Parameter;

void BandParameters::hang (PluginModel& model, int band, float frequencyHz)
{
    model.setParameterValue (ParameterIds::ofBand (band, Kind::active), 1.0f);
    model.setParameterValue (ParameterIds::ofBand (band, Kind::frequency), frequencyHz);
}

void BandParameters::reset (PluginModel& model, int band)
{
    constexpr float plainQ = 1.0f;
    constexpr float stereo = 0.5f;

    const auto write = [&] (Kind kind, float value)
    { model.setParameterValue (ParameterIds::ofBand (band, kind), value); };

    write (Kind::gain, 0.0f);
    write (Kind::q, plainQ);
    write (Kind::bypass, 0.0f);
    write (Kind::solo, 0.0f);
    write (Kind::active, 0.0f);
    write (Kind::highShelf, 0.0f);
    write (Kind::midSide, stereo);

    // Or the gain scale would start the next band of this number from the gain of this one.
    model.storedBandGains[static_cast<std::size_t> (band)] = 0.0f;
}
