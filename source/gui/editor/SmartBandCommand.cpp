#include "gui/editor/SmartBandCommand.h"

#include "gui/editor/EditorMessages.h"

SmartBandCommand::SmartBandCommand (PluginModel& pluginModel, Solvane& bandsRoom, Overlays& shown)
    : model (pluginModel), room (bandsRoom), overlays (shown)
{
}

void SmartBandCommand::run()
{
    if (! model.smartBandsReady())
        return overlays.showMessage (EditorMessages::analysisNotSet());

    for (int band = 0; band < bandCount; ++band)
        room.deleteBand (band, false);

    const auto found = search();
    const auto limits = model.filterMode() == FilterMode::master ? SmartBands::Limits::master : SmartBands::Limits::mix;

    for (const auto& setting : SmartBands::settingsFor (found, limits))
        hang (setting);

    if (found.empty())
        overlays.showMessage (EditorMessages::noSmartBands());
    else
        overlays.hideMenu();
}

std::vector<SmartBand> SmartBandCommand::search() const
{
    // Only this thread writes what it reads here.
    const auto& state = model.interfaceState;
    return SmartBands::findSmartBands (state.targetCurve, state.curveFrequencies);
}

void SmartBandCommand::hang (const SmartBands::Setting& setting)
{
    using Kind = Settings::Parameter;
    const auto band = room.addBand (static_cast<float> (setting.frequency), -1, false);

    if (band < 0)
        return;

    model.setParameterValue (ParameterIds::ofBand (band, Kind::q), setting.q);
    model.setParameterValue (ParameterIds::ofBand (band, Kind::gain), setting.gain);

    if (setting.shelf)
        model.setParameterValue (ParameterIds::ofBand (band, Kind::highShelf), 1.0f);

    // From here the gain scale starts.
    model.storedBandGains[static_cast<std::size_t> (band)] = setting.gain;
}
