#include "core/PluginProcessor.h"

#include "core/MessageThreadPause.h"
#include "dsp/rate/ReducedRate.h"

#include <utility>

namespace
{
constexpr int timerIntervalMilliseconds = 50;
constexpr int defaultWindowWidth = 680;
constexpr int defaultWindowHeight = 712;

/** Below every working rate, so that the callback leaves the audio alone. */
constexpr double rateForUnknownRate = 1000.0;
} // namespace

VelmoraAudioProcessor::VelmoraAudioProcessor (const HostDescription& description,
                                              EditorFactory editorFactoryToUse,
                                              SettingsFile settingsFileToUse)
    // Without this the framework makes both buses disabled, and a host that asks before it sets a layout sees none.
    : AudioProcessor (BusesProperties()
                          .withInput ("Input", juce::AudioChannelSet::stereo(), true)
                          .withOutput ("Output", juce::AudioChannelSet::stereo(), true)),
      SettingsUtilities ("solvane-settings.dat", "Brevlen"),
      host (description),
      hostDescription (description),
      editorFactory (std::move (editorFactoryToUse)),
      settingsFileUse (settingsFileToUse),
      engine (model, [this] { return isOfflineRender(); }),
      router (model, engine, { [this] { updateLatency (false); }, [this] (int id) { choosePreset (id); } }),
      analysis (model, target, [this] { return loudnessMeters().inputLoudness(); }),
      audioCallback (model,
                     engine,
                     analysis,
                     referenceTracks.audition,
                     host,
                     hostDescription,
                     [this] { return isOfflineRender(); }),
      latencyReport ([this] { setLatencySamples (latencyToReport()); })
{
    noteMessageThread();

    // Not every wrapper keeps its message thread away from an instance that comes or goes.
    const MessageThreadPause pause (wrapperType != wrapperType_Undefined);

    if (settingsFileUse == SettingsFile::use)
        loadSettings();
    else
        setDefaultSettings();

    parameters = std::make_unique<juce::AudioProcessorValueTreeState> (*this, nullptr);
    ParameterTable::addAll (*parameters);
    model.attachParameters (*parameters);
    router.addListeners (*parameters);
    mainBypassToken = model.channels.add ([this] { router.applyMainBypass(); }, Channels::mainBypass);
    parameters->state = juce::ValueTree ("ZVQ_Processor");
    session = std::make_unique<SessionState> (
        model, *parameters, presets, referenceTracks, [this] { adoptReplacedParameters(); });

    choosePreset (Presets::balancedMasterId);
    engine.startWorkers();
    analysis.startThreads();
    model.setMainBypass (false);
    startTimer (timerIntervalMilliseconds);
}

VelmoraAudioProcessor::~VelmoraAudioProcessor()
{
    const MessageThreadPause pause (wrapperType != wrapperType_Undefined);
    stopTimer();

    if (settingsFileUse == SettingsFile::use)
        saveSettings();

    analysis.requestStop();
    engine.requestStop();
    engine.joinWorkers();
    analysis.joinThreads();
    router.removeListeners (*parameters);
    model.channels.remove (mainBypassToken);

    // The framework's own timer calls the parameters: they go before the message thread may call again.
    session.reset();
    parameters.reset();
}

bool VelmoraAudioProcessor::isBusesLayoutSupported (const BusesLayout& layout) const
{
    const auto input = layout.getMainInputChannelSet();
    return input == layout.getMainOutputChannelSet()
           && (input == juce::AudioChannelSet::mono() || input == juce::AudioChannelSet::stereo());
}

void VelmoraAudioProcessor::prepareToPlay (double sampleRate, int maxBlock)
{
    noteMessageThread();

    const auto hostRate = sampleRate;

    if (host.hostIsWavelab && sampleRate == 0.0)
        sampleRate = rateForUnknownRate;

    const auto channels = getTotalNumInputChannels();
    const auto rateChanged = sampleRate != model.sampleRate;
    const auto layoutChanged = channels != model.numChannels;
    model.numChannels = channels;
    model.isStereo = channels == 2;
    model.maxBlockSize = maxBlock;
    model.sampleRate = sampleRate;

    if (const auto factor = decimationFactorFor (sampleRate))
        model.decimationFactor = *factor;

    // The short minimum-phase filters end at 96 kHz, so linear phase is forced above. Before the filters take their
    // lengths, or the first blocks would rebuild them once more.
    if (sampleRate == 176400.0 || sampleRate == 192000.0)
        model.setParameterValue (ParameterIds::phase, 1.0f);

    if (rateChanged)
        engine.prepare (sampleRate);

    const auto rebuilt = engine.rebuildPending();
    updateLatency (true);
    audioCallback.prepare();
    analysis.prepare();
    model.setTargetsReady (false, false);
    model.setSmartBandsReady (false, false);

    // A host may restore a session before it tells its rate; its tracks are asked for now. A rate that stands for an
    // unknown one is none to load them at.
    referenceTracks.setSession (hostRate, decimationFactorFor (hostRate));

    if (sampleRate == 0.0)
        return;

    // Whatever was set while no rate was known, what a mono layout ignored, and every curve drawn for another rate,
    // reaches the filters now. New lengths alone change nothing that is heard.
    if (rateChanged)
        router.readCurrentParameters();
    else if (layoutChanged)
        router.updatePathFlags();

    if (rateChanged || layoutChanged)
        router.sendCurrentSettings();
    else if (rebuilt)
        engine.repeatDrawings();
}

void VelmoraAudioProcessor::processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    audioCallback.process (buffer, getTotalNumInputChannels(), getTotalNumOutputChannels(), getPlayHead());
}

void VelmoraAudioProcessor::processBlockBypassed (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    audioCallback.processBypassed (buffer, getTotalNumInputChannels(), getTotalNumOutputChannels());
}

juce::AudioProcessorParameter* VelmoraAudioProcessor::getBypassParameter() const
{
    return host.hostIsProTools ? nullptr : parameters->getParameter (ParameterIds::bypass);
}

juce::AudioProcessorEditor* VelmoraAudioProcessor::createEditor()
{
    if (! hasEditor())
        return nullptr;

    session->fillMissingStores();
    return editorFactory (*this);
}

void VelmoraAudioProcessor::updateLatency (bool force)
{
    refreshLatency (force, DelayLines::clear);
}

void VelmoraAudioProcessor::refreshLatency (bool force, DelayLines lines)
{
    const auto currentLatency = [this]
    { return baseLatencyFor (model.sampleRate, model.filterMode(), model.filterPhase()); };
    std::optional<int> latency;

    // Again if another thread changed mode or phase meanwhile, so that the last of them leaves the right figure: each
    // passes on what it has worked out itself, and ends only when that still holds.
    do
    {
        latency = currentLatency();
        const auto base = latency.value_or (model.baseLatency);
        model.baseLatency = base;
        audioCallback.updateLatency (base, lines == DelayLines::clear);
    } while (latency != currentLatency());

    if (! force && host.hostIsCubase)
        return;

    latencyReport.request();

    // Telling the host posts a message, which allocates, and any thread but the message thread may be one on which
    // audio runs, so there it waits for the timer. A host that prepares reads the figure right afterwards.
    if (force || messageThread == std::this_thread::get_id())
        latencyReport.tell();
}

int VelmoraAudioProcessor::latencyToReport() const noexcept
{
    const auto base = baseLatencyFor (model.sampleRate, model.filterMode(), model.filterPhase());
    return base.value_or (model.baseLatency) + (model.fifosEngaged ? model.decimationFactor.load() : 0);
}

void VelmoraAudioProcessor::noteMessageThread()
{
    // Which thread it is can change during a plug-in's life, and the framework takes a lock to answer, so the answer is
    // kept; the timer brings it up to date.
    if (juce::MessageManager::existsAndIsCurrentThread())
        messageThread = std::this_thread::get_id();
}

void VelmoraAudioProcessor::getStateInformation (juce::MemoryBlock& destination)
{
    session->write (destination);
}

void VelmoraAudioProcessor::setStateInformation (const void* data, int size)
{
    session->read (data, size);

    // A host may read the figure right after it has set the state, and not again.
    latencyReport.tell();
}

void VelmoraAudioProcessor::adoptReplacedParameters()
{
    // USER SETTING may have new numbers although the choice is the same.
    choosePreset (static_cast<int> (model.presetNumber()));

    router.forgetHeardGains();

    // They came one after the other and not in an order that solo and paths can follow: the band that ends its solo may
    // come behind the one that begins it.
    if (model.sampleRate > 0.0)
    {
        router.readCurrentParameters();
        router.sendCurrentSettings();
    }
}

void VelmoraAudioProcessor::writeSettings (juce::XmlElement& settingsElement)
{
    const auto write = [&settingsElement] (const char* name, bool value)
    { settingsElement.setAttribute (name, value ? 1 : 0); };

    write ("ShowToolTips", model.showToolTips);
    write ("ShowNotifications", model.showNotifications);
    write ("ReverseMousewheel", model.reverseMousewheel);
    write ("AlwaysShowBand", model.alwaysShowBand);
    write ("ShowHeatmap", model.showHeatmap());
    write ("Minimised", model.minimised());
    settingsElement.setAttribute ("DefaultWidth", model.windowWidth.load());
    settingsElement.setAttribute ("DefaultHeight", model.windowHeight.load());
}

void VelmoraAudioProcessor::readSettings (const juce::XmlElement& settingsElement)
{
    model.showToolTips = settingsElement.getBoolAttribute ("ShowToolTips", false);
    model.showNotifications = settingsElement.getBoolAttribute ("ShowNotifications", true);
    model.reverseMousewheel = settingsElement.getBoolAttribute ("ReverseMousewheel", false);
    model.alwaysShowBand = settingsElement.getBoolAttribute ("AlwaysShowBand", false);

    // A file that lacks it turns the heat map off, no file at all turns it on: users without a file see it.
    model.setShowHeatmap (settingsElement.getBoolAttribute ("ShowHeatmap", false));
    model.setMinimised (settingsElement.getBoolAttribute ("Minimised", false), true);
    model.windowWidth = settingsElement.getIntAttribute ("DefaultWidth", defaultWindowWidth);
    model.windowHeight = settingsElement.getIntAttribute ("DefaultHeight", defaultWindowHeight);
}

void VelmoraAudioProcessor::setDefaultSettings()
{
    model.showToolTips = false;
    model.showNotifications = true;
    model.setShowHeatmap (true);
}

void VelmoraAudioProcessor::choosePreset (int id)
{
    presets.select (id);
    presetChoices.raise();
    presetChoices.untilSettled (
        [this]
        {
            const auto numbers = presets.numbersOf (presets.currentPreset());
            target.set (numbers.lufs,
                        std::span (numbers.values.data(), static_cast<std::size_t> (numbers.count)),
                        numbers.topBand);
        });
}

void VelmoraAudioProcessor::applyCurrentPreset()
{
    choosePreset (presets.currentPreset().id);
}

void VelmoraAudioProcessor::adoptUserTarget()
{
    model.targetSetByUser = true;
    model.setTargetsReady (false, false);
    model.setSmartBandsReady (false, false);
    resetAnalysis();
    applyCurrentPreset();
}

void VelmoraAudioProcessor::resetAnalysis()
{
    loudnessMeters().requestReset();
    analysis.resetAnalysis();
}

bool VelmoraAudioProcessor::isOfflineRender() const noexcept
{
    if (host.reportsOfflineRendering)
        return isNonRealtime();

    return model.threadPriority < model.maxThreadPriority;
}

void VelmoraAudioProcessor::timerCallback()
{
    noteMessageThread();

    // Blocks go through the FIFOs by now, and the delay that prepare told lacks their share. The audio that is under
    // way keeps its delay lines.
    if (model.fifosEngaged && ! std::exchange (fifoShareReported, true))
        refreshLatency (false, DelayLines::keepUnlessChanged);

    latencyReport.tell();
    engine.maintainQueues();
}
