#include "hosts/HostedPlugin.h"

#include "hosts/SharedLibrary.h"
#include "hosts/Vst2Host.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

namespace juce
{
// Dispatches one message; the framework's own plug-in threads are driven by it.
bool dispatchNextMessageOnSystemQueue (bool returnIfNoPendingMessages);
} // namespace juce

namespace
{
constexpr auto pauseBetweenMessages = std::chrono::milliseconds (1);
constexpr auto lv2Uri = "https://www.solvane.example/lv2/solvane";

unsigned long numberOf (const juce::Component* window)
{
    return window != nullptr ? reinterpret_cast<unsigned long> (window->getWindowHandle()) : 0;
}

class ClassicPlugin final : public HostedPlugin
{
public:
    explicit ClassicPlugin (bool offline) : host (libraryPathOf (PluginFormat::vst2)) { host.setOffline (offline); }
    ~ClassicPlugin() override { ClassicPlugin::closeWindow(); }

    bool setChannelCount (int count) override { return host.setChannelCount (count); }
    void prepare (double sampleRate, int maxBlock) override { host.prepare (sampleRate, maxBlock); }

    void process (juce::AudioBuffer<float>& buffer) override
    {
        host.process (buffer.getArrayOfReadPointers(),
                      buffer.getArrayOfWritePointers(),
                      buffer.getNumChannels(),
                      buffer.getNumSamples());
    }

    int reportedLatency() override { return host.latency(); }
    int parameterCount() const override { return host.parameterCount(); }
    std::string parameterName (int index) const override { return host.parameterName (index); }
    std::string parameterText (int index) const override { return host.parameterText (index); }
    float parameter (int index) const override { return host.parameter (index); }
    void setParameter (int index, float normalised) override { host.setParameter (index, normalised); }
    std::vector<char> state() override { return host.chunk(); }
    void setState (const std::vector<char>& bytes) override { host.setChunk (bytes); }

    void openWindow() override
    {
        constexpr int editorOpen = 14;
        window = std::make_unique<juce::Component>();
        window->setSize (700, 800);
        window->addToDesktop (0);
        window->setVisible (true);
        host.dispatch (editorOpen, 0, 0, window->getWindowHandle());
    }

    void closeWindow() override
    {
        constexpr int editorClose = 15;

        if (window != nullptr)
            host.dispatch (editorClose);

        window.reset();
    }

    unsigned long windowNumber() override { return numberOf (window.get()); }

    void idleWindow() override
    {
        constexpr int editorIdle = 19;
        host.dispatch (editorIdle);
    }

private:
    Vst2Host host;
    std::unique_ptr<juce::Component> window;
};

/** A plug-in behind the framework's hosting classes. */
class FrameworkPlugin : public HostedPlugin
{
public:
    FrameworkPlugin (std::unique_ptr<juce::AudioPluginFormat> formatToUse, const juce::String& identifier, bool offline)
        : format (std::move (formatToUse))
    {
        juce::OwnedArray<juce::PluginDescription> found;
        format->findAllTypesForFile (found, identifier);

        if (found.size() != 1)
            throw std::runtime_error ("not one plug-in in " + identifier.toStdString());

        juce::String error;
        plugin = format->createInstanceFromDescription (*found.getFirst(), 44100.0, 512, error);

        if (plugin == nullptr)
            throw std::runtime_error (error.toStdString());

        plugin->setNonRealtime (offline);
    }

    ~FrameworkPlugin() override
    {
        FrameworkPlugin::closeWindow();
        plugin->releaseResources();
        plugin = nullptr;
    }

    bool setChannelCount (int count) override
    {
        const auto set = juce::AudioChannelSet::canonicalChannelSet (count);
        juce::AudioProcessor::BusesLayout layout;
        layout.inputBuses.add (set);
        layout.outputBuses.add (set);
        return plugin->setBusesLayout (layout) && plugin->getTotalNumInputChannels() == count;
    }

    void prepare (double sampleRate, int maxBlock) override
    {
        plugin->releaseResources();
        plugin->setRateAndBufferSizeDetails (sampleRate, maxBlock);
        plugin->prepareToPlay (sampleRate, maxBlock);
    }

    void process (juce::AudioBuffer<float>& buffer) override
    {
        juce::MidiBuffer noMidi;
        plugin->processBlock (buffer, noMidi);
    }

    int reportedLatency() override { return plugin->getLatencySamples(); }
    int parameterCount() const override { return plugin->getParameters().size(); }
    std::string parameterName (int index) const override { return at (index).getName (128).toStdString(); }
    std::string parameterText (int index) const override { return at (index).getCurrentValueAsText().toStdString(); }
    float parameter (int index) const override { return at (index).getValue(); }
    void setParameter (int index, float normalised) override { at (index).setValue (normalised); }

    std::vector<char> state() override
    {
        juce::MemoryBlock block;
        plugin->getStateInformation (block);
        return { block.begin(), block.end() };
    }

    void setState (const std::vector<char>& bytes) override
    {
        plugin->setStateInformation (bytes.data(), static_cast<int> (bytes.size()));
    }

    void openWindow() override
    {
        editor.reset (plugin->createEditorIfNeeded());

        if (editor == nullptr)
            throw std::runtime_error ("the plug-in has no window");

        editor->addToDesktop (0);
        editor->setVisible (true);
    }

    void closeWindow() override { editor.reset(); }
    unsigned long windowNumber() override { return numberOf (editor.get()); }

private:
    [[nodiscard]] juce::AudioProcessorParameter& at (int index) const { return *plugin->getParameters()[index]; }

    std::unique_ptr<juce::AudioPluginFormat> format;
    std::unique_ptr<juce::AudioPluginInstance> plugin;
    std::unique_ptr<juce::AudioProcessorEditor> editor; ///< goes before the plug-in
};

class Lv2Plugin final : public FrameworkPlugin
{
public:
    using FrameworkPlugin::FrameworkPlugin;

    float normalise (const juce::RangedAudioParameter& parameter, float plainValue) const override
    {
        const auto& range = parameter.getNormalisableRange();
        return (plainValue - range.start) / (range.end - range.start);
    }
};

std::unique_ptr<HostedPlugin> openLv2 (bool offline)
{
    auto format = std::make_unique<juce::LV2PluginFormat>();
    const juce::FileSearchPath folder (SOLVANE_DIST "/lv2");
    std::ignore = format->searchPathsForPlugins (folder, false, false);
    auto plugin = std::make_unique<Lv2Plugin> (std::move (format), lv2Uri, offline);

    // The format's world also holds what is installed on the machine.
    if (! SharedLibrary::isLoaded (libraryPathOf (PluginFormat::lv2)))
        throw std::runtime_error ("another SOLVANE is installed and was loaded in place of ours");

    return plugin;
}
} // namespace

std::string nameOf (PluginFormat format)
{
    switch (format)
    {
        case PluginFormat::vst2:
            return "vst2";
        case PluginFormat::vst3:
            return "vst3";
        case PluginFormat::lv2:
            return "lv2";
    }

    return "unknown";
}

std::string libraryPathOf (PluginFormat format)
{
    switch (format)
    {
        case PluginFormat::vst2:
            return SOLVANE_DIST "/vst/SOLVANE.so";
        case PluginFormat::vst3:
            return SOLVANE_DIST "/vst3/SOLVANE.vst3/Contents/" SOLVANE_VST3_ARCHITECTURE "/SOLVANE.so";
        case PluginFormat::lv2:
            return SOLVANE_DIST "/lv2/SOLVANE.lv2/libSOLVANE.so";
    }

    return {};
}

std::unique_ptr<HostedPlugin> HostedPlugin::open (PluginFormat format, bool offline)
{
    switch (format)
    {
        case PluginFormat::vst2:
            return std::make_unique<ClassicPlugin> (offline);
        case PluginFormat::vst3:
            return std::make_unique<FrameworkPlugin> (
                std::make_unique<juce::VST3PluginFormat>(), SOLVANE_DIST "/vst3/SOLVANE.vst3", offline);
        case PluginFormat::lv2:
            return openLv2 (offline);
    }

    return nullptr;
}

bool HostedPlugin::waitForLatency (int expected, std::chrono::milliseconds longest)
{
    const auto end = std::chrono::steady_clock::now() + longest;

    while (reportedLatency() != expected)
    {
        if (std::chrono::steady_clock::now() > end)
            return false;

        if (! juce::dispatchNextMessageOnSystemQueue (true))
            std::this_thread::sleep_for (pauseBetweenMessages);
    }

    return true;
}

int HostedPlugin::parameterIndex (const std::string& name) const
{
    for (int index = 0; index < parameterCount(); ++index)
        if (parameterName (index) == name)
            return index;

    throw std::runtime_error ("no parameter " + name);
}

void HostedPlugin::setParameter (const std::string& name, float normalised)
{
    setParameter (parameterIndex (name), normalised);
}

void HostedPlugin::setAndProcess (const std::string& name, float normalised)
{
    setParameter (name, normalised);
    juce::AudioBuffer<float> silence (2, 64);
    silence.clear();
    process (silence);
}
