#include "core/model/PluginModel.h"

#include <algorithm>
#include <cmath>

using Kind = Settings::Parameter;

PluginModel::PluginModel() = default;

void PluginModel::attachParameters (juce::AudioProcessorValueTreeState& tree)
{
    parameters = &tree;

    for (int band = 0; band < bandCount; ++band)
        for (int kind = 0; kind < Settings::bandParameterKindCount; ++kind)
            bandValues[static_cast<std::size_t> (band)][static_cast<std::size_t> (kind)] =
                tree.getRawParameterValue (ParameterIds::ofBand (band, static_cast<Kind> (kind)));

    bypassValue = tree.getRawParameterValue (ParameterIds::bypass);
    phaseValue = tree.getRawParameterValue (ParameterIds::phase);
    modeValue = tree.getRawParameterValue (ParameterIds::mode);
    presetValue = tree.getRawParameterValue (ParameterIds::currentPreset);
    outputGainValue = tree.getRawParameterValue (ParameterIds::outputGain);
    gainScaleValue = tree.getRawParameterValue (ParameterIds::gainScale);
}

float PluginModel::getBandValue (int band, Kind kind) const noexcept
{
    return bandValues[static_cast<std::size_t> (band)][static_cast<std::size_t> (kind)]->load (relaxed);
}

FilterMode PluginModel::filterMode() const noexcept
{
    return modeValue->load (relaxed) == 1.0f ? FilterMode::mix : FilterMode::master;
}

FilterPhase PluginModel::filterPhase() const noexcept
{
    return phaseValue->load (relaxed) == 1.0f ? FilterPhase::linear : FilterPhase::minimum;
}

float PluginModel::gainScalePercent() const noexcept
{
    return gainScaleValue->load (relaxed);
}

float PluginModel::outputGainDb() const noexcept
{
    return outputGainValue->load (relaxed);
}

float PluginModel::presetNumber() const noexcept
{
    return presetValue->load (relaxed);
}

bool PluginModel::bypassParameterOn() const noexcept
{
    return bypassValue->load (relaxed) != 0.0f;
}

void PluginModel::setParameterValue (const juce::String& id, float plainValue)
{
    auto* parameter = parameters->getParameter (id);

    if (parameter == nullptr)
        return;

    const auto normalised =
        std::isfinite (plainValue) ? parameter->convertTo0to1 (plainValue) : parameter->getDefaultValue();

    if (normalised != parameter->getValue())
    {
        parameter->setValue (normalised);
        parameter->sendValueChangedMessageToListeners (normalised);
    }
}

void PluginModel::setBandValueFromControl (int band, float controlValue, int kind)
{
    const auto write = [&] (Kind target, float value)
    { setParameterValue (ParameterIds::ofBand (band, target), value); };

    switch (kind)
    {
        case 1:
        {
            const auto scale = displayScaleDb.load (relaxed);
            write (Kind::gain, (scale + scale) * (1.0f - controlValue) - scale);
            break;
        }
        case 2:
            write (Kind::q, controlValue * (Settings::highestQ - Settings::lowestQ) + Settings::lowestQ);
            break;
        case 7:
            write (Kind::midSide, controlValue);
            break;
        case 8:
            write (Kind::q, controlValue);
            break;
        case 9:
            write (Kind::gain, controlValue);
            break;
        default:
            write (static_cast<Kind> (kind), controlValue);
            break;
    }
}

float PluginModel::normaliseQ (float q) noexcept
{
    return (std::clamp (q, Settings::lowestQ, Settings::highestQ) - Settings::lowestQ)
           / (Settings::highestQ - Settings::lowestQ);
}

void PluginModel::readDesignSettings (DesignSettings& settings) const noexcept
{
    for (int band = 0; band < bandCount; ++band)
        settings.bands[static_cast<std::size_t> (band)] = { .frequencyHz = getBandValue (band, Kind::frequency),
                                                            .gainDb = getBandValue (band, Kind::gain),
                                                            .q = getBandValue (band, Kind::q),
                                                            .solo = getBandValue (band, Kind::solo),
                                                            .bypass = getBandValue (band, Kind::bypass),
                                                            .active = getBandValue (band, Kind::active),
                                                            .highShelf = getBandValue (band, Kind::highShelf),
                                                            .midSide = getBandValue (band, Kind::midSide) };

    settings.gainScalePercent = gainScalePercent();
    settings.filterMode = filterMode();
    settings.filterPhase = filterPhase();
    settings.sampleRate = sampleRate.load (relaxed);
    settings.decimationFactor = decimationFactor.load (relaxed);
    settings.soloActive = soloActive();
    settings.mainBypass = mainBypass();
}

void PluginModel::setAndFire (std::atomic<bool>& stored, bool value, const char* channel, bool notify)
{
    stored.store (value, relaxed);

    if (notify)
        channels.fire (channel);
}

void PluginModel::setCanUseMasterMode (bool value)
{
    setAndFire (canUseMasterModeValue, value, Channels::canUseMasterMode);
}

void PluginModel::setMainBypass (bool value)
{
    setAndFire (mainBypassValue, value, Channels::mainBypass);
}

void PluginModel::setShowHeatmap (bool value)
{
    setAndFire (showHeatmapValue, value, Channels::showHeatmap);
}

void PluginModel::setIntegratedLUFSAnalysisChanged (bool value, bool notify)
{
    setAndFire (analysisChangedValue, value, Channels::integratedLUFSAnalysisChanged, notify);
}

void PluginModel::setStateInformationSet (bool value, bool notify)
{
    setAndFire (stateInformationSetValue, value, Channels::stateInformationSet, notify);
}

void PluginModel::setMinimised (bool value, bool notify)
{
    setAndFire (minimisedValue, value, Channels::minimised, notify);
}

void PluginModel::setSmartBandsReady (bool value, bool notify)
{
    setAndFire (smartBandsReadyValue, value, Channels::smartBandsReady, notify);
}

void PluginModel::setTargetsReady (bool value, bool notify)
{
    setAndFire (targetsReadyValue, value, Channels::targetsReady, notify);
}

void PluginModel::setCreateOverlapControls (bool value, bool notify)
{
    setAndFire (createOverlapControlsValue, value, Channels::createOverlapControls, notify);
}

void PluginModel::checkMasterLimits()
{
    DesignSettings settings;
    readDesignSettings (settings);
    setCanUseMasterMode (::checkMasterLimits (settings.bands));
}
