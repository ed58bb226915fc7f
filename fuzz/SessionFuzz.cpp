#include "core/PluginProcessor.h"
#include "core/session/SessionXml.h"

#include <juce_events/juce_events.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <tuple>

// Loads what the fuzzer makes up as a session block, and as preferences where it reads as such. Input that does not
// start with the mark of the framework's wrapping is taken for the text within, so that the fuzzer need not learn to
// keep a length up to date.

namespace
{
constexpr char mark[] { 'V', 'C', '2', '!' };

juce::MemoryBlock blockOf (const std::uint8_t* data, std::size_t size)
{
    if (size >= sizeof (mark) && std::memcmp (data, mark, sizeof (mark)) == 0)
        return { data, size };

    juce::MemoryOutputStream stream;
    stream.write (mark, sizeof (mark));
    stream.writeInt (static_cast<int> (size));
    stream.write (data, size);
    stream.writeByte (0);
    return stream.getMemoryBlock();
}

/** Lives to the end of the process, like its threads. */
VelmoraAudioProcessor& sharedProcessor()
{
    // Ended with the process, it would come after the framework's own statics, which it frees.
    static const auto& framework = *new juce::ScopedJuceInitialiser_GUI();
    std::ignore = framework;
    static auto& processor =
        *new VelmoraAudioProcessor ({ juce::PluginHostType::UnknownHost, "/opt/host", []() noexcept { return 0; } },
                                    {},
                                    VelmoraAudioProcessor::SettingsFile::leaveAlone);
    return processor;
}

void require (bool condition, const char* what)
{
    if (! condition)
    {
        std::fprintf (stderr, "%s\n", what);
        std::abort();
    }
}

void requireParametersInRange (VelmoraAudioProcessor& processor)
{
    for (const auto& row : ParameterTable::rows())
    {
        const auto value = processor.getAPVTS().getRawParameterValue (row.id)->load();
        require (value >= row.minimum && value <= row.maximum, "a parameter left its range");
    }
}

void loadAsSettings (VelmoraAudioProcessor& processor, const juce::MemoryBlock& block)
{
    const auto root = SessionXml::parse (block.getData(), static_cast<int> (block.getSize()));

    if (root != nullptr)
        for (const auto* child : root->getChildWithTagNameIterator ("general-settings"))
            processor.readSettings (*child);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput (const std::uint8_t* data, std::size_t size)
{
    auto& processor = sharedProcessor();
    const auto block = blockOf (data, size);
    processor.setStateInformation (block.getData(), static_cast<int> (block.getSize()));
    require (processor.model.stateInformationSet(), "a load did not end");
    requireParametersInRange (processor);
    loadAsSettings (processor, block);

    // What a host gets now must be something that it can bring back.
    juce::MemoryBlock saved;
    processor.getStateInformation (saved);
    require (SessionXml::parse (saved.getData(), static_cast<int> (saved.getSize())) != nullptr,
             "what was saved cannot be read");

    processor.sessionState().compareSwitch (size % 2 == 0);
    requireParametersInRange (processor);
    processor.sessionState().removeReferenceTracks();
    return 0;
}
