#pragma once

#include "core/LatencyReport.h"
#include "core/ParameterRouter.h"
#include "core/audio/AudioCallback.h"
#include "core/audio/BandEngine.h"
#include "core/audio/LiveAnalysis.h"
#include "core/model/HostTraits.h"
#include "core/model/PluginModel.h"
#include "core/presets/Presets.h"
#include "core/references/ReferenceTrackModel.h"
#include "core/session/SessionState.h"
#include "core/session/SettingsUtilities.h"
#include "dsp/threads/ChangeCount.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>
#include <memory>
#include <thread>

/** The plug-in as the framework sees it. Owns everything that outlives the editor, and delegates. */
class VelmoraAudioProcessor final : public juce::AudioProcessor, public SettingsUtilities, private juce::Timer
{
public:
    /** Makes an editor for a processor. The interface's layer supplies it, so that the processor knows no component. */
    using EditorFactory = std::function<juce::AudioProcessorEditor*(VelmoraAudioProcessor&)>;

    /** Whether the user's settings file is read and written. */
    enum class SettingsFile
    {
        use,
        leaveAlone
    };

    /** @param host what to take the host for; a test puts its own in place
        @param editorFactory makes the editor; a program without a window gives none
        @param settingsFile a program that only borrows the processor leaves the user's preferences alone */
    explicit VelmoraAudioProcessor (const HostDescription& host = HostDescription::ofThisProcess(),
                                    EditorFactory editorFactory = {},
                                    SettingsFile settingsFile = SettingsFile::use);
    ~VelmoraAudioProcessor() override;

    //==================================================================================================================
    const juce::String getName() const override { return "SOLVANE"; }

    /** Mono to mono and stereo to stereo; a host that asks for more would wire channels that nobody serves. */
    bool isBusesLayoutSupported (const BusesLayout& layout) const override;

    void prepareToPlay (double sampleRate, int maxBlock) override;

    /** Does nothing: buffers stay until the next prepare. */
    void releaseResources() override {}

    void processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;
    void processBlockBypassed (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi) override;
    using juce::AudioProcessor::processBlock;
    using juce::AudioProcessor::processBlockBypassed;

    double getTailLengthSeconds() const override { return 0.0; }
    bool acceptsMidi() const override { return false; }
    bool producesMidi() const override { return false; }
    bool supportsMPE() const override { return false; }
    bool isMidiEffect() const override { return false; }

    /** The bypass parameter; null in Pro Tools, which then calls processBlockBypassed. */
    juce::AudioProcessorParameter* getBypassParameter() const override;

    juce::AudioProcessorEditor* createEditor() override;
    bool hasEditor() const override { return editorFactory != nullptr; }

    int getNumPrograms() override { return 1; }
    int getCurrentProgram() override { return 0; }
    void setCurrentProgram (int) override {}
    const juce::String getProgramName (int) override { return {}; }
    void changeProgramName (int, const juce::String&) override {}

    void getStateInformation (juce::MemoryBlock& destination) override;
    void setStateInformation (const void* data, int size) override;

    //==================================================================================================================
    void writeSettings (juce::XmlElement& settingsElement) override;
    void readSettings (const juce::XmlElement& settingsElement) override;
    void setDefaultSettings() override;

    //==================================================================================================================
    [[nodiscard]] SessionState& sessionState() noexcept { return *session; }
    [[nodiscard]] juce::AudioProcessorValueTreeState& getAPVTS() noexcept { return *parameters; }

    /** Works out the latency, tells the host, and sizes the delay lines, which are cleared. Any thread; real-time safe
        without force, where any thread but the message thread leaves the telling to the timer.
        @param force tells even a host for which a change of latency is kept for the next prepare (Cubase), and has told
                     on return */
    void updateLatency (bool force);

    /** Whether the current block is rendered offline: as the host says, or, where that is not to be trusted, when the
        audio thread's priority lies below the highest seen. Any thread; real-time safe. */
    [[nodiscard]] bool isOfflineRender() const noexcept;

    [[nodiscard]] BandEngine& bandEngine() noexcept { return engine; }
    [[nodiscard]] LiveAnalysis& liveAnalysis() noexcept { return analysis; }
    [[nodiscard]] LoudnessMeters& loudnessMeters() noexcept { return audioCallback.loudnessMeters(); }
    [[nodiscard]] const LevelMatch& levelMatch() const noexcept { return audioCallback.levelMatch(); }

    /** Takes the chosen preset's numbers anew, as when USER SETTING has got others. Any thread but the audio thread. */
    void applyCurrentPreset();

    /** Takes it that USER SETTING holds another target of the user's: forgets what was measured, and takes the chosen
        preset's numbers anew. Any thread but the audio thread. */
    void adoptUserTarget();

    /** Forgets everything that was measured. Any thread but the audio thread. */
    void resetAnalysis();

    PluginModel model;
    Presets::Library presets;
    TargetSet target;
    ReferenceTrackModel referenceTracks { presets, target };

private:
    void timerCallback() override;
    void adoptReplacedParameters();
    void choosePreset (int id);
    enum class DelayLines
    {
        clear,
        keepUnlessChanged
    };

    void refreshLatency (bool force, DelayLines lines);
    void noteMessageThread();
    [[nodiscard]] int latencyToReport() const noexcept;

    const HostTraits host;
    const HostDescription hostDescription;
    const EditorFactory editorFactory;
    const SettingsFile settingsFileUse;
    BandEngine engine;
    ParameterRouter router;
    LiveAnalysis analysis;
    AudioCallback audioCallback;
    std::unique_ptr<juce::AudioProcessorValueTreeState> parameters;
    std::unique_ptr<SessionState> session;
    LatencyReport latencyReport;
    std::atomic<std::thread::id> messageThread;
    bool fifoShareReported = false;
    int mainBypassToken = 0;
    ChangeCount presetChoices;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (VelmoraAudioProcessor)
};
