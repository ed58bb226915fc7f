#pragma once

#include "core/model/HostTraits.h"
#include "core/model/InterfaceState.h"
#include "core/model/NotificationChannels.h"
#include "core/model/Transport.h"
#include "core/parameters/ParameterTable.h"
#include "core/parameters/Settings.h"
#include "dsp/design/BandDesign.h"
#include "dsp/path/BlockProcessor.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>

/** State that processor, workers and editor share. It computes nothing beyond the mapping of a control to a value.

    Fields that more than one thread touches are atomics in relaxed order: each stands for itself, and whoever reads one
    tolerates that it changes at the next block. */
class PluginModel final : public IDesignSource
{
public:
    static constexpr int responsePointCount = 1024;

    PluginModel();

    /** Takes the raw pointers. Once, before any other thread runs. */
    void attachParameters (juce::AudioProcessorValueTreeState& tree);

    //==================================================================================================================
    // Parameters

    /** The plain value behind a band's parameter. Any thread, real-time safe. */
    [[nodiscard]] float getBandValue (int band, Settings::Parameter kind) const noexcept;

    /** Plain values of the global parameters. Any thread, real-time safe. */
    [[nodiscard]] FilterMode filterMode() const noexcept;
    [[nodiscard]] FilterPhase filterPhase() const noexcept;
    [[nodiscard]] float gainScalePercent() const noexcept;
    [[nodiscard]] float outputGainDb() const noexcept;
    [[nodiscard]] float presetNumber() const noexcept;
    [[nodiscard]] bool bypassParameterOn() const noexcept;

    /** Writes a plain value into a parameter and tells its listeners, if the normalised value differs. Not a gesture.
        A value that is not finite stands for the default; an unknown id does nothing. */
    void setParameterValue (const juce::String& id, float plainValue);

    /** Maps a room control to a band's parameter.
        @param kind 1 turns depth (0 the front plane, 1 the back wall) into gain, 2 turns 0..1 into Q, 7 to 9 pass a
                    plain mid/side value, Q and gain; the other kinds of Settings::Parameter pass a plain value. */
    void setBandValueFromControl (int band, float controlValue, int kind);

    /** A Q mapped from 0.5..5 to 0..1, clamped. */
    [[nodiscard]] static float normaliseQ (float q) noexcept;

    void readDesignSettings (DesignSettings& settings) const noexcept override;

    //==================================================================================================================
    // Channels

    NotificationChannels channels;

    void setCanUseMasterMode (bool value);
    void setMainBypass (bool value);
    void setShowHeatmap (bool value);
    void setIntegratedLUFSAnalysisChanged (bool value, bool notify);
    void setStateInformationSet (bool value, bool notify);
    void setMinimised (bool value, bool notify);
    void setSmartBandsReady (bool value, bool notify);
    void setTargetsReady (bool value, bool notify);
    void setCreateOverlapControls (bool value, bool notify);

    [[nodiscard]] bool canUseMasterMode() const noexcept { return canUseMasterModeValue.load (relaxed); }
    [[nodiscard]] bool mainBypass() const noexcept { return mainBypassValue.load (relaxed); }
    [[nodiscard]] bool showHeatmap() const noexcept { return showHeatmapValue.load (relaxed); }
    [[nodiscard]] bool integratedLUFSAnalysisChanged() const noexcept { return analysisChangedValue.load (relaxed); }
    [[nodiscard]] bool stateInformationSet() const noexcept { return stateInformationSetValue.load (relaxed); }
    [[nodiscard]] bool minimised() const noexcept { return minimisedValue.load (relaxed); }
    [[nodiscard]] bool smartBandsReady() const noexcept { return smartBandsReadyValue.load (relaxed); }
    [[nodiscard]] bool targetsReady() const noexcept { return targetsReadyValue.load (relaxed); }
    [[nodiscard]] bool createOverlapControls() const noexcept { return createOverlapControlsValue.load (relaxed); }

    /** Walks the ten bands, used or not: the first whose |gain| is above 4 dB or whose Q is above 1.5 makes
        "canUseMasterMode" false, otherwise it becomes true. Fires the channel. */
    void checkMasterLimits();

    //==================================================================================================================
    // Stream: written by prepare and by the audio thread

    std::atomic<double> sampleRate { 0.0 };
    std::atomic<int> maxBlockSize { 0 };
    std::atomic<int> currentBlockSize { 0 };
    std::atomic<int> samplesToProcess { 0 };
    std::atomic<int> numChannels { 0 };
    std::atomic<int> decimationFactor { 1 };
    std::atomic<int> baseLatency { 0 };
    std::atomic<bool> isStereo { false };
    std::atomic<bool> fifosEngaged { false };
    std::atomic<bool> audioCallbackSeen { false };
    std::atomic<int> threadPriority { 0 };
    std::atomic<int> maxThreadPriority { 0 };
    Transport transport;

    //==================================================================================================================
    // Paths: written by the parameter listener

    /** Which paths run. Both in one, or a block could see neither while they change places. */
    struct Paths
    {
        bool stereo = true;
        bool midSide = false;
    };

    /** What is soloed: a band, or, with a value between on and off, none of them. */
    struct Solo
    {
        bool active = false;
        int band = -1;
    };

    static_assert (std::atomic<Paths>::is_always_lock_free && std::atomic<Solo>::is_always_lock_free);
    std::atomic<Paths> paths { Paths {} };
    std::atomic<Solo> solo { Solo {} };

    [[nodiscard]] bool stereoPathActive() const noexcept { return paths.load (relaxed).stereo; }
    [[nodiscard]] bool midSidePathActive() const noexcept { return paths.load (relaxed).midSide; }
    [[nodiscard]] bool soloActive() const noexcept { return solo.load (relaxed).active; }
    [[nodiscard]] int soloBand() const noexcept { return solo.load (relaxed).band; }

    /** Gains from which the gain scale works after a session was loaded, in dB. */
    std::array<std::atomic<float>, bandCount> storedBandGains {};

    //==================================================================================================================
    // Room

    /** Where the output control's pointer stands: the gain that the level match suggests, linear, within 12 dB. Written
        by the audio thread. */
    std::atomic<float> levelMatchPointer { 1.0f };

    /** Scale of the room in dB: as it was chosen, and as it is drawn while it changes. */
    std::atomic<float> targetScaleDb { 12.0f };
    std::atomic<float> displayScaleDb { 12.0f };

    /** Size of the editor's window in pixels. */
    std::atomic<int> windowWidth { 680 };
    std::atomic<int> windowHeight { 712 };

    /** USER SETTING holds a target of the user's. */
    std::atomic<bool> targetSetByUser { false };

    /** The response of all bands in dB on a linear grid from 0 Hz to the Nyquist frequency; under responseLock, which
        is held for a copy only. */
    std::array<float, responsePointCount> responseCurveDb {};
    std::mutex responseLock;
    std::atomic<bool> responseCurveChanged { false };

    //==================================================================================================================
    // Preferences

    std::atomic<bool> showToolTips { false };
    std::atomic<bool> showNotifications { true };
    std::atomic<bool> reverseMousewheel { false };
    std::atomic<bool> alwaysShowBand { false };

    /** Cleared while an editor is open. */
    std::atomic<bool> editorClosed { true };

    InterfaceState interfaceState;

    /** What the interface draws with; the interface makes it when a window first opens, and it outlives the window, as
        its fonts are dear to load. Message thread only. */
    std::unique_ptr<juce::LookAndFeel> lookAndFeel;

private:
    static constexpr auto relaxed = std::memory_order_relaxed;

    void setAndFire (std::atomic<bool>& stored, bool value, const char* channel, bool notify = true);

    juce::AudioProcessorValueTreeState* parameters = nullptr;
    std::array<std::array<const std::atomic<float>*, Settings::bandParameterKindCount>, bandCount> bandValues {};
    const std::atomic<float>* bypassValue = nullptr;
    const std::atomic<float>* phaseValue = nullptr;
    const std::atomic<float>* modeValue = nullptr;
    const std::atomic<float>* presetValue = nullptr;
    const std::atomic<float>* outputGainValue = nullptr;
    const std::atomic<float>* gainScaleValue = nullptr;

    std::atomic<bool> canUseMasterModeValue { true };
    std::atomic<bool> mainBypassValue { false };
    std::atomic<bool> showHeatmapValue { false };
    std::atomic<bool> analysisChangedValue { false };
    std::atomic<bool> stateInformationSetValue { false };
    std::atomic<bool> minimisedValue { false };
    std::atomic<bool> smartBandsReadyValue { false };
    std::atomic<bool> targetsReadyValue { false };
    std::atomic<bool> createOverlapControlsValue { false };
};
