#include "hosts/TrackSession.h"

#include "support/BinaryXml.h"

#include <iostream>
#include <thread>

namespace
{
constexpr auto switchName = "--restore-tracks";
constexpr int argumentTotal = 6;
constexpr auto componentTag = "IComponent";
constexpr auto rate = 48000.0;
constexpr int blockSize = 512;

/** A track that no plug-in can have: it goes once all that was asked for before it has been served. */
constexpr auto lastRequest = "<reference-track file-path=\"/nowhere/at all.wav\" display-name=\"LAST\"/>";

juce::MemoryBlock blockIn (const std::vector<char>& state)
{
    juce::MemoryBlock block;

    if (const auto xml = juce::AudioProcessor::getXmlFromBinary (state.data(), static_cast<int> (state.size())))
        if (const auto* component = xml->getChildByName (componentTag))
            block.fromBase64Encoding (component->getAllSubText());

    return block;
}

bool hasLastRequest (const std::vector<char>& state)
{
    for (const auto& track : TrackSession::tracksIn (state))
        if (track.find ("/nowhere/at all.wav") != std::string::npos)
            return true;

    return false;
}
} // namespace

std::vector<char> TrackSession::stateOf (const std::vector<std::string>& trackElements)
{
    std::string text = "<SESSION>";

    for (const auto& element : trackElements)
        text += element;

    juce::XmlElement root ("VST3PluginState");
    root.createNewChildElement (componentTag)->addTextElement (wrapText (text + "</SESSION>").toBase64Encoding());
    const auto block = wrapXml (root);
    return { block.begin(), block.end() };
}

std::vector<std::string> TrackSession::tracksIn (const std::vector<char>& state)
{
    std::vector<std::string> tracks;

    if (const auto root = parseBlock (blockIn (state)))
        for (const auto* track : root->getChildWithTagNameIterator ("reference-track"))
            tracks.push_back (
                track->toString (juce::XmlElement::TextFormat().singleLine().withoutHeader()).toStdString());

    return tracks;
}

std::vector<char> TrackSession::stateOnceLoaded (HostedPlugin& plugin, const std::vector<std::vector<char>>& states)
{
    for (const auto& state : states)
        plugin.setState (state);

    plugin.setState (stateOf ({ lastRequest }));
    plugin.prepare (rate, blockSize);

    for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds (60);
         std::chrono::steady_clock::now() < end;)
    {
        if (auto state = plugin.state(); ! hasLastRequest (state))
            return state;

        std::this_thread::yield();
    }

    return {};
}

std::vector<char> TrackSession::throughAnotherProcess (const std::vector<char>& state, Order order, int times)
{
    const juce::TemporaryFile in, out;
    in.getFile().replaceWithData (state.data(), state.size());
    juce::ChildProcess process;
    const juce::StringArray command {
        juce::File::getSpecialLocation (juce::File::currentExecutableFile).getFullPathName(),
        switchName,
        order == Order::prepareFirst ? "prepare" : "restore",
        juce::String (times),
        in.getFile().getFullPathName(),
        out.getFile().getFullPathName()
    };

    if (! process.start (command) || ! process.waitForProcessToFinish (120000) || process.getExitCode() != 0)
        return {};

    juce::MemoryBlock block;
    out.getFile().loadFileAsData (block);
    return { block.begin(), block.end() };
}

bool TrackSession::isAskedFor (int argumentCount, char** arguments)
{
    return argumentCount == argumentTotal && std::string (arguments[1]) == switchName;
}

int TrackSession::run (char** arguments)
{
    juce::MemoryBlock block;
    juce::File (arguments[4]).loadFileAsData (block);
    const std::vector<char> state (block.begin(), block.end());
    const auto plugin = HostedPlugin::open (PluginFormat::vst3);

    if (std::string (arguments[2]) == "prepare")
        plugin->prepare (rate, blockSize);

    const auto times = static_cast<std::size_t> (std::stoi (arguments[3]));
    const auto result = stateOnceLoaded (*plugin, std::vector (times, state));

    if (result.empty())
    {
        std::cerr << "the tracks were not loaded in time\n";
        return 1;
    }

    return juce::File (arguments[5]).replaceWithData (result.data(), result.size()) ? 0 : 1;
}
