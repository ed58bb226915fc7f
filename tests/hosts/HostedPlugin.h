#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

/** The formats that are loaded as libraries, from the folder that holds the finished product. */
enum class PluginFormat
{
    vst2,
    vst3,
    lv2
};

[[nodiscard]] std::string nameOf (PluginFormat format);

/** The library itself. */
[[nodiscard]] std::string libraryPathOf (PluginFormat format);

/** One instance of the finished plug-in, as its host sees it, alike for every format. Message thread, but for
   process(). A plug-in that cannot be loaded throws std::runtime_error. */
class HostedPlugin
{
public:
    /** @param offline what the plug-in hears about rendering: offline updates act at once, on the calling thread */
    [[nodiscard]] static std::unique_ptr<HostedPlugin> open (PluginFormat format, bool offline = true);

    virtual ~HostedPlugin() = default;

    /** Asks for as many channels in as out, up to eight; false if the format or the plug-in refuses. Before prepare().
     */
    virtual bool setChannelCount (int count) = 0;
    virtual void prepare (double sampleRate, int maxBlock) = 0;

    /** One block, in place, of any length. */
    virtual void process (juce::AudioBuffer<float>& buffer) = 0;

    /** The delay that the plug-in reports, in samples, once it had time to say so. */
    [[nodiscard]] virtual int reportedLatency() = 0;

    /** Lets the plug-in tell what it wants to tell, until it reports this latency; false if it does not in time. */
    [[nodiscard]] bool waitForLatency (int expected, std::chrono::milliseconds longest = std::chrono::seconds (20));

    [[nodiscard]] virtual int parameterCount() const = 0;
    [[nodiscard]] virtual std::string parameterName (int index) const = 0;
    [[nodiscard]] virtual std::string parameterText (int index) const = 0;
    [[nodiscard]] virtual float parameter (int index) const = 0;
    virtual void setParameter (int index, float normalised) = 0;

    /** Sets the parameter of this name; a name that is not there throws std::runtime_error. */
    void setParameter (const std::string& name, float normalised);

    /** The same, with a silent block of its own: some formats sort what travels together, and what a change does may
        hang on those before it. */
    void setAndProcess (const std::string& name, float normalised);

    /** What this format's hosts take for a plain value: most see the parameter's own 0..1, some a straight line from
        its lowest to its highest value. */
    [[nodiscard]] virtual float normalise (const juce::RangedAudioParameter& parameter, float plainValue) const
    {
        return parameter.convertTo0to1 (plainValue);
    }

    [[nodiscard]] virtual std::vector<char> state() = 0;
    virtual void setState (const std::vector<char>& bytes) = 0;

    /** Opens the plug-in's window in one of ours, on the display that the framework has. Closed by closeWindow(), or
        with this object. */
    virtual void openWindow() = 0;
    virtual void closeWindow() = 0;

    /** Our window's number on the display; 0 while none is open. */
    [[nodiscard]] virtual unsigned long windowNumber() = 0;

    /** What the format's hosts do for an open window while they are idle. */
    virtual void idleWindow() {}

    /** The index of the parameter of this name; a name that is not there throws std::runtime_error. */
    [[nodiscard]] int parameterIndex (const std::string& name) const;
};
