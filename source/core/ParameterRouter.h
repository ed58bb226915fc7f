#pragma once

#include "core/audio/BandEngine.h"
#include "core/model/PluginModel.h"
#include "dsp/threads/ChangeCount.h"

#include <array>
#include <atomic>
#include <functional>
#include <string>
#include <vector>

/** Turns a parameter's change into what it means: path flags, solo, preset, main bypass, latency, and updates for the
    BlockProcessors.

    Changes come on whichever thread makes them: message thread, a host's automation thread, or the audio thread.
   Nothing here allocates or blocks beyond a queue's mutex and the notify lock. */
class ParameterRouter final : public juce::AudioProcessorValueTreeState::Listener
{
public:
    /** What the router cannot decide itself. */
    struct Callbacks
    {
        /** `paramMode` or `paramPhase` changed: the latency has to be worked out again. */
        std::function<void()> filterLengthsChanged;

        /** `paramCurrentZVQPreset` changed; the value truncated. */
        std::function<void (int presetId)> presetChosen;
    };

    ParameterRouter (PluginModel& model, BandEngine& engine, Callbacks callbacks);

    /** Listens to every parameter that has an effect here, all but `paramOutputGainDb` and the bands' active switches.
     */
    void addListeners (juce::AudioProcessorValueTreeState& tree);

    /** Stops listening: per band frequency, gain, Q, solo, bypass, high shelf, mid/side; then the global parameters. */
    void removeListeners (juce::AudioProcessorValueTreeState& tree);

    /** Before the first prepare nothing is applied. */
    void parameterChanged (const juce::String& id, float value) override;

    /** Which paths run, from the active bands' mid/side values. */
    void updatePathFlags() noexcept;

    /** Takes over what was set while nothing listened: preset, main bypass, solo, path flags. */
    void readCurrentParameters();

    /** Sends the main bypass to the filters of all active bands. */
    void applyMainBypass();

    /** Forgets from which gains the sound was made, when a session replaces them all. */
    void forgetHeardGains() noexcept;

    /** Sends the ten updates that bring any mode to the current settings, where its curves are of no more use: each
        band's gain, with the gain scale where that is not 100, or its bypass while the main bypass is on. Any thread;
        real-time safe. */
    void sendCurrentSettings();

private:
    struct Route
    {
        juce::String id;
        std::string name;
        Settings::Parameter kind;
        int band;
    };

    int readCurrentSettings (BandEngine::Updates& updates) const noexcept;
    [[nodiscard]] const Route* findRoute (const juce::String& id) const noexcept;
    void bandChanged (const Route& route, float value);
    void midSideChanged (const Route& route, float value);
    void soloChanged (const Route& route, float value) noexcept;
    void applyGainScale (float scalePercent);
    [[nodiscard]] float gainScaleBase (int band) const noexcept;

    void noteHeardGain (int band, float gainDb) noexcept
    {
        heardGains[static_cast<std::size_t> (band)].store (gainDb, std::memory_order_relaxed);
    }

    /** Whether Master lets every active band through at a gain scale. */
    [[nodiscard]] bool isWithinMasterLimit (float scalePercent) const noexcept;

    PluginModel& model;
    BandEngine& engine;
    const Callbacks callbacks;
    std::vector<Route> routes;
    std::atomic<bool> gainScaleInProgress { false };

    /** The gain in dB, without the scale, from which each band's sound was last made: the parameter's, or that of the
        session where the gain scale worked from it. Not a number where none was since a session came. */
    std::array<std::atomic<float>, bandCount> heardGains;

    ChangeCount pathChanges;
    ChangeCount soloChanges;
};
