#include "app/EqualiserSettings.h"

#include <algorithm>

void EqualiserSettings::applyTo (PluginModel& model) const
{
    using Kind = Settings::Parameter;

    model.setParameterValue (ParameterIds::mode, static_cast<float> (mode));
    model.setParameterValue (ParameterIds::phase, static_cast<float> (phase));

    for (int index = 0; index < static_cast<int> (bands.size()); ++index)
    {
        const auto& band = bands[static_cast<std::size_t> (index)];
        const auto set = [&] (Kind kind, float value)
        { model.setParameterValue (ParameterIds::ofBand (index, kind), value); };

        set (Kind::active, band.active ? 1.0f : 0.0f);
        set (Kind::frequency, band.frequencyHz);
        set (Kind::q, band.q);
        set (Kind::highShelf, band.highShelf ? 1.0f : 0.0f);
        set (Kind::midSide, band.midSide);
        set (Kind::gain, band.gainDb);
        set (Kind::bypass, band.bypass ? 1.0f : 0.0f);
        set (Kind::solo, band.solo ? 1.0f : 0.0f);
    }

    model.setParameterValue (ParameterIds::gainScale, gainScalePercent);
    model.setParameterValue (ParameterIds::outputGain, outputGainDb);
}

EqualiserSettings EqualiserSettings::of (const PluginModel& model)
{
    using Kind = Settings::Parameter;

    EqualiserSettings settings;
    settings.mode = model.filterMode();
    settings.phase = model.filterPhase();
    settings.gainScalePercent = model.gainScalePercent();
    settings.outputGainDb = model.outputGainDb();
    settings.bypassed = model.bypassParameterOn();

    for (int index = 0; index < bandCount; ++index)
    {
        const auto value = [&] (Kind kind) { return model.getBandValue (index, kind); };
        BandOption band;
        band.active = value (Kind::active) == 1.0f;
        band.frequencyHz = value (Kind::frequency);
        band.gainDb = value (Kind::gain);
        band.q = value (Kind::q);
        band.highShelf = value (Kind::highShelf) != 0.0f;
        band.midSide = value (Kind::midSide);
        band.solo = value (Kind::solo) == 1.0f;
        band.bypass = value (Kind::bypass) == 1.0f;
        settings.bands.push_back (band);
    }

    return settings;
}

bool EqualiserSettings::hasSolo() const noexcept
{
    return std::any_of (bands.begin(), bands.end(), [] (const BandOption& band) { return band.solo; });
}
