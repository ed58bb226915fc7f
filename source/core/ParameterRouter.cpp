#include "core/ParameterRouter.h"

#include <algorithm>
#include <cmath>
#include <limits>

using Kind = Settings::Parameter;

namespace
{
constexpr std::array listenedKinds { Kind::frequency, Kind::gain,      Kind::q,      Kind::solo,
                                     Kind::bypass,    Kind::highShelf, Kind::midSide };

constexpr std::array listenedGlobals { ParameterIds::bypass,
                                       ParameterIds::currentPreset,
                                       ParameterIds::phase,
                                       ParameterIds::mode,
                                       ParameterIds::gainScale };

std::array<std::string, bandCount> namesOf (Kind kind)
{
    std::array<std::string, bandCount> names;

    for (int band = 0; band < bandCount; ++band)
        names[static_cast<std::size_t> (band)] = ParameterIds::ofBand (band, kind).toStdString();

    return names;
}

const auto gainNames = namesOf (Kind::gain);
const auto bypassNames = namesOf (Kind::bypass);

BandUpdate sameForAllModes (const std::string& name, float value, bool gainScaleApplied = false)
{
    return { &name, { value, value, value, value }, BandEngine::modeCount, gainScaleApplied };
}

bool isActive (const PluginModel& model, int band) noexcept
{
    return model.getBandValue (band, Kind::active) == 1.0f;
}

/** A scaled gain as the filters may have it in the current mode. */
float withinFilterLimits (float gainDb, FilterMode mode) noexcept
{
    if (mode == FilterMode::master)
        gainDb = std::clamp (gainDb, -Settings::masterGainLimitDb, Settings::masterGainLimitDb);

    return std::clamp (gainDb, -Settings::bandGainLimitDb, Settings::bandGainLimitDb);
}
} // namespace

ParameterRouter::ParameterRouter (PluginModel& modelToUse, BandEngine& engineToUse, Callbacks callbacksToUse)
    : model (modelToUse), engine (engineToUse), callbacks (std::move (callbacksToUse))
{
    for (int band = 0; band < bandCount; ++band)
        for (const auto kind : listenedKinds)
        {
            const auto id = ParameterIds::ofBand (band, kind);
            routes.push_back ({ id, id.toStdString(), kind, band });
        }

    forgetHeardGains();
}

void ParameterRouter::addListeners (juce::AudioProcessorValueTreeState& tree)
{
    for (const auto* id : listenedGlobals)
        tree.addParameterListener (id, this);

    for (const auto& route : routes)
        tree.addParameterListener (route.id, this);
}

void ParameterRouter::removeListeners (juce::AudioProcessorValueTreeState& tree)
{
    for (const auto& route : routes)
        tree.removeParameterListener (route.id, this);

    for (const auto* id : listenedGlobals)
        tree.removeParameterListener (id, this);
}

const ParameterRouter::Route* ParameterRouter::findRoute (const juce::String& id) const noexcept
{
    const auto found =
        std::find_if (routes.begin(), routes.end(), [&id] (const Route& route) { return route.id == id; });
    return found != routes.end() ? &*found : nullptr;
}

void ParameterRouter::parameterChanged (const juce::String& id, float value)
{
    if (model.sampleRate == 0.0)
        return;

    if (id == ParameterIds::gainScale)
        applyGainScale (value);
    else if (id == ParameterIds::currentPreset)
        callbacks.presetChosen (static_cast<int> (value));
    else if (id == ParameterIds::bypass)
        model.setMainBypass (value != 0.0f);
    else if (id == ParameterIds::phase || id == ParameterIds::mode)
    {
        callbacks.filterLengthsChanged();

        // The rebuild draws the first band again: after a change of mode as that mode has its gain.
        if (id == ParameterIds::mode)
        {
            const auto gain = model.getBandValue (0, Kind::gain);
            noteHeardGain (0, gain);
            engine.note (sameForAllModes (gainNames[0], gain));
            model.checkMasterLimits();
        }

        engine.markForRebuild();
    }
    else if (const auto* route = findRoute (id))
        bandChanged (*route, value);
}

void ParameterRouter::bandChanged (const Route& route, float value)
{
    if (route.kind == Kind::midSide)
    {
        if (model.isStereo)
            midSideChanged (route, value);

        return;
    }

    if (route.kind == Kind::gain)
        updatePathFlags();

    if (route.kind == Kind::solo)
        soloChanged (route, value);
    else
        noteHeardGain (route.band, model.getBandValue (route.band, Kind::gain));

    engine.dispatch (sameForAllModes (route.name, value));

    // While a band was soloed the other bands' messages drew their solo curves, so their normal curves are old.
    if (route.kind == Kind::solo && ! model.soloActive())
        engine.repeatDrawings();
}

void ParameterRouter::soloChanged (const Route& route, float value) noexcept
{
    model.solo = { value != 0.0f, value == 1.0f ? route.band : -1 };
    soloChanges.raise();
}

void ParameterRouter::midSideChanged (const Route& route, float value)
{
    updatePathFlags();

    // Three modes, none for the display: its curve does not depend on the mid/side value.
    engine.dispatchAsRead (
        [&] (BandEngine::Updates& updates)
        {
            const auto base =
                gainScaleInProgress ? gainScaleBase (route.band) : model.getBandValue (route.band, Kind::gain);
            noteHeardGain (route.band, base);
            const auto gain = model.gainScalePercent() / 100.0f * base;
            const auto isStereoBand = value == 0.5f;
            const auto stereo = isStereoBand ? gain : 0.0f;
            const auto midSide = isStereoBand ? 0.0f : gain;
            updates[0] = {
                &gainNames[static_cast<std::size_t> (route.band)], { stereo, midSide, midSide, 0.0f }, 3, true
            };
            return 1;
        });
}

void ParameterRouter::updatePathFlags() noexcept
{
    pathChanges.raise();
    pathChanges.untilSettled (
        [this]
        {
            auto stereo = false;
            auto midSide = false;

            for (int band = 0; band < bandCount; ++band)
                if (isActive (model, band))
                    (model.getBandValue (band, Kind::midSide) == 0.5f ? stereo : midSide) = true;

            model.paths = { stereo || ! midSide, midSide };
        });
}

float ParameterRouter::gainScaleBase (int band) const noexcept
{
    return model.stateInformationSet()
               ? model.storedBandGains[static_cast<std::size_t> (band)].load (std::memory_order_relaxed)
               : model.getBandValue (band, Kind::gain);
}

void ParameterRouter::applyGainScale (float scalePercent)
{
    model.channels.waitForRunningNotification();
    gainScaleInProgress = true;

    // Tested before the clamps: a band that Master would cut short refuses Master.
    const auto canUseMaster = isWithinMasterLimit (scalePercent);
    engine.dispatchAsRead (
        [&] (BandEngine::Updates& updates)
        {
            std::size_t count = 0;

            for (int band = 0; band < bandCount; ++band)
            {
                if (! isActive (model, band))
                    continue;

                const auto base = gainScaleBase (band);
                noteHeardGain (band, base);
                updates[count++] =
                    sameForAllModes (gainNames[static_cast<std::size_t> (band)],
                                     withinFilterLimits (base * scalePercent / 100.0f, model.filterMode()),
                                     true);
            }

            return static_cast<int> (count);
        });

    gainScaleInProgress = false;
    model.setCanUseMasterMode (canUseMaster);
}

void ParameterRouter::applyMainBypass()
{
    engine.dispatchAsRead (
        [this] (BandEngine::Updates& updates)
        {
            std::size_t count = 0;

            for (int band = 0; band < bandCount; ++band)
                if (isActive (model, band))
                {
                    noteHeardGain (band, model.getBandValue (band, Kind::gain));
                    updates[count++] = sameForAllModes (bypassNames[static_cast<std::size_t> (band)],
                                                        model.mainBypass() ? 1.0f : 0.0f);
                }

            return static_cast<int> (count);
        });
}

void ParameterRouter::readCurrentParameters()
{
    callbacks.presetChosen (static_cast<int> (model.presetNumber()));

    if (model.mainBypass() != model.bypassParameterOn())
        model.setMainBypass (model.bypassParameterOn());

    soloChanges.untilSettled (
        [this]
        {
            auto soloed = -1;

            for (int band = bandCount; --band >= 0;)
                if (model.getBandValue (band, Kind::solo) == 1.0f)
                    soloed = band;

            model.solo = { soloed >= 0, soloed };
        });

    updatePathFlags();

    // The gains that follow are scaled, so no check follows them.
    if (const auto scale = model.gainScalePercent(); scale != 100.0f)
        model.setCanUseMasterMode (isWithinMasterLimit (scale));
}

bool ParameterRouter::isWithinMasterLimit (float scalePercent) const noexcept
{
    for (int band = 0; band < bandCount; ++band)
        if (isActive (model, band)
            && std::abs (gainScaleBase (band) * scalePercent / 100.0f) > Settings::masterGainLimitDb)
            return false;

    return true;
}

void ParameterRouter::forgetHeardGains() noexcept
{
    for (auto& gain : heardGains)
        gain.store (std::numeric_limits<float>::quiet_NaN(), std::memory_order_relaxed);
}

void ParameterRouter::sendCurrentSettings()
{
    engine.dispatchAsRead ([this] (BandEngine::Updates& updates) { return readCurrentSettings (updates); });
}

int ParameterRouter::readCurrentSettings (BandEngine::Updates& updates) const noexcept
{
    const auto scalePercent = model.gainScalePercent();

    for (int band = 0; band < bandCount; ++band)
    {
        const auto index = static_cast<std::size_t> (band);
        const auto gain = model.getBandValue (band, Kind::gain);
        const auto heard = heardGains[index].load (std::memory_order_relaxed);
        const auto scaled = scalePercent != 100.0f;
        const auto base = ! std::isnan (heard) ? heard : scaled ? gainScaleBase (band) : gain;

        if (model.mainBypass() && isActive (model, band))
            updates[index] = sameForAllModes (bypassNames[index], 1.0f);
        else if (scaled || base != gain)
            updates[index] = sameForAllModes (
                gainNames[index], withinFilterLimits (base * scalePercent / 100.0f, model.filterMode()), true);
        else
            updates[index] = sameForAllModes (gainNames[index], gain);
    }

    return bandCount;
}
