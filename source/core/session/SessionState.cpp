#include "core/session/SessionState.h"

#include "core/session/SessionXml.h"

#include <algorithm>
#include <cmath>

namespace
{
namespace Tags
{
constexpr auto track = "reference-track";
constexpr auto loop = "loop";
constexpr auto settings = "settings";
constexpr std::array stores { "parameterStoreA", "parameterStoreB" };
} // namespace Tags

constexpr int defaultScaleDb = 12;

/** A store of a foreign type is kept, and never entered. */
constexpr int longestStoreType = 64;

juce::String levelName (std::size_t band)
{
    return "lufs-" + juce::String (static_cast<int> (band));
}
} // namespace

//======================================================================================================================
class SessionState::ScopedRestoring
{
public:
    explicit ScopedRestoring (SessionState& stateToMark) : state (stateToMark) { ++state.restoring; }
    ~ScopedRestoring() { --state.restoring; }

    ScopedRestoring (const ScopedRestoring&) = delete;
    ScopedRestoring& operator= (const ScopedRestoring&) = delete;

private:
    SessionState& state;
};

SessionState::SessionState (PluginModel& modelToUse,
                            juce::AudioProcessorValueTreeState& parametersToUse,
                            Presets::Library& presetsToUse,
                            IReferenceTracks& tracksToUse,
                            std::function<void()> adoptedToUse)
    : model (modelToUse),
      parameters (parametersToUse),
      presets (presetsToUse),
      tracks (tracksToUse),
      adopted (std::move (adoptedToUse)),
      treeType (parameters.state.getType())
{
}

//======================================================================================================================
void SessionState::write (juce::MemoryBlock& destination)
{
    const auto state = parameters.copyState();
    writeBlock (state, tracks.sessionTracks(), destination);

    // Stores that were filled since may be too much beside the tracks, and a block that nobody can read loses all.
    if (! SessionXml::mayBeParsed (destination.getData(), static_cast<int> (destination.getSize())))
        writeBlock (state, {}, destination);
}

void SessionState::writeBlock (const juce::ValueTree& state,
                               const Requests& requests,
                               juce::MemoryBlock& destination) const
{
    const auto root = state.createXml();

    if (root == nullptr)
        return;

    SessionXml::appendChildren (*root, makeElementsBeside (requests));
    juce::AudioProcessor::copyXmlToBinary (*root, destination);
}

SessionXml::Elements SessionState::makeElementsBeside (const Requests& requests) const
{
    const std::scoped_lock lock (sessionLock);
    SessionXml::Elements elements;

    for (const auto& request : requests)
        elements.push_back (makeTrackElement (request));

    elements.push_back (makeSettingsElement());

    for (std::size_t store = 0; store < parameterStores.size(); ++store)
        if (parameterStores[store].isValid())
        {
            elements.push_back (std::make_unique<juce::XmlElement> (Tags::stores[store]));
            elements.back()->addChildElement (parameterStores[store].createXml().release());
        }

    return elements;
}

std::unique_ptr<juce::XmlElement> SessionState::makeTrackElement (const ReferenceTrackRequest& track)
{
    auto element = std::make_unique<juce::XmlElement> (Tags::track);
    element->setAttribute ("file-name", SessionXml::fileNameOf (track.filePath));
    element->setAttribute ("display-name", track.displayName);
    element->setAttribute ("file-path", track.filePath);
    element->setAttribute ("selected", track.selected ? 1 : 0);

    SessionXml::Elements loops;

    for (const auto& loop : track.loops)
    {
        auto& child = loops.emplace_back (std::make_unique<juce::XmlElement> (Tags::loop));
        child->setAttribute ("start-samples", loop.startSamples);
        child->setAttribute ("end-samples", loop.endSamples);
        child->setAttribute ("active", loop.active ? 1 : 0);
    }

    SessionXml::appendChildren (*element, std::move (loops));
    return element;
}

std::unique_ptr<juce::XmlElement> SessionState::makeSettingsElement() const
{
    auto element = std::make_unique<juce::XmlElement> (Tags::settings);
    const auto numbers = presets.numbersOf (*presets.findPresetById (Presets::userSettingId));

    SessionXml::setDecimal (*element, "lufs-overall", numbers.lufs);

    for (std::size_t band = 0; band < numbers.values.size(); ++band)
        SessionXml::setDecimal (*element, levelName (band), numbers.values[band]);

    element->setAttribute ("width", model.windowWidth.load());
    element->setAttribute ("height", model.windowHeight.load());
    element->setAttribute ("target-set-user", model.targetSetByUser ? 1 : 0);
    SessionXml::setDecimal (*element, "db-scale", model.targetScaleDb);
    element->setAttribute ("comparison-A-selected", selectedA ? 1 : 0);
    element->setAttribute ("max-thread-priority", model.maxThreadPriority.load());
    return element;
}

//======================================================================================================================
void SessionState::read (const void* data, int size)
{
    model.setStateInformationSet (false, false);

    if (const auto root = SessionXml::parse (data, size))
    {
        Requests requests;

        for (const auto* child : root->getChildWithTagNameIterator (Tags::track))
            requests.push_back (trackIn (*child));

        {
            const std::scoped_lock lock (sessionLock);

            const juce::XmlElement* lastSettings = nullptr;

            for (const auto* child : root->getChildWithTagNameIterator (Tags::settings))
                lastSettings = child;

            if (lastSettings != nullptr)
                readSettingsElement (*lastSettings);

            readStores (*root);
        }

        if (root->getTagName() == treeType.toString())
            replaceParameters (juce::ValueTree::fromXml (*root));

        restoreTracks (std::move (requests));
        adopted();
    }

    storeBandGains();
    model.setStateInformationSet (true, true);
}

void SessionState::readSettingsElement (const juce::XmlElement& element)
{
    const auto lufs = SessionXml::getDecimal (element, "lufs-overall");
    std::array<float, Presets::bandValueCount> values;

    for (std::size_t band = 0; band < values.size(); ++band)
        values[band] = SessionXml::getDecimal (element, levelName (band));

    presets.setUserSetting (lufs, values);

    model.windowWidth = element.getIntAttribute ("width", 0);
    model.windowHeight = element.getIntAttribute ("height", 0);
    model.targetSetByUser = element.getBoolAttribute ("target-set-user", false) && ! std::isnan (lufs);

    // Written as a decimal and read as a whole number: a fraction is lost.
    const auto scale = element.getIntAttribute ("db-scale", defaultScaleDb);
    model.targetScaleDb = static_cast<float> (scale > 0 ? scale : defaultScaleDb);
    model.displayScaleDb = model.targetScaleDb.load();

    // Missing means B, although a new instance starts with A.
    selectedA = element.getBoolAttribute ("comparison-A-selected", false);
    model.maxThreadPriority = element.getIntAttribute ("max-thread-priority", 0);
}

ReferenceTrackRequest SessionState::trackIn (const juce::XmlElement& element)
{
    ReferenceTrackRequest track {
        element.getStringAttribute ("file-path"), element.getStringAttribute ("display-name"), {}, false
    };

    for (const auto* child : element.getChildWithTagNameIterator (Tags::loop))
        track.loops.push_back ({ child->getIntAttribute ("start-samples", 0),
                                 child->getIntAttribute ("end-samples", 0),
                                 child->getBoolAttribute ("active", false),
                                 TrackLoop::makeId() });

    return track;
}

void SessionState::restoreTracks (Requests requests)
{
    if (requests.empty())
        return;

    auto all = tracks.sessionTracks();
    all.insert (all.end(), requests.begin(), requests.end());
    juce::MemoryBlock written;
    writeBlock (parameters.copyState(), all, written);

    if (SessionXml::mayBeParsed (written.getData(), static_cast<int> (written.getSize())))
        tracks.restore (std::move (requests));
}

void SessionState::readStores (const juce::XmlElement& root)
{
    for (std::size_t store = 0; store < parameterStores.size(); ++store)
        for (const auto* child : root.getChildWithTagNameIterator (Tags::stores[store]))
        {
            const auto* tree = child->getFirstChildElement();
            const auto isKept = tree != nullptr && tree->getTagName().length() <= longestStoreType;
            parameterStores[store] =
                isKept ? SessionXml::parametersIn (juce::ValueTree::fromXml (*tree)) : juce::ValueTree();
        }
}

void SessionState::replaceParameters (const juce::ValueTree& tree)
{
    // The tree keeps what it is given, so that is a copy of its own. Nobody's lock is held meanwhile: hosts answer a
    // change of parameters with calls of theirs.
    const ScopedRestoring mark (*this);
    parameters.replaceState (SessionXml::parametersIn (tree));
}

void SessionState::storeBandGains() noexcept
{
    for (int band = 0; band < bandCount; ++band)
        model.storedBandGains[static_cast<std::size_t> (band)] = model.getBandValue (band, Settings::Parameter::gain);
}

//======================================================================================================================
void SessionState::compareSwitch (bool toggleOn)
{
    used = true;
    const auto left = parameters.copyState();
    juce::ValueTree entered;

    {
        const std::scoped_lock lock (sessionLock);
        parameterStores[toggleOn ? 0 : 1] = left;
        entered = parameterStores[toggleOn ? 1 : 0].createCopy();
    }

    model.setStateInformationSet (false, false);

    if (entered.hasType (treeType))
    {
        replaceParameters (entered);
        adopted();
    }

    storeBandGains();
    model.setStateInformationSet (true, false);
    selectedA = ! toggleOn;
}

void SessionState::compareCopy()
{
    const auto current = parameters.copyState();
    const std::scoped_lock lock (sessionLock);
    fillStores (current);
}

void SessionState::fillMissingStores()
{
    const auto current = parameters.copyState();
    const std::scoped_lock lock (sessionLock);

    // A session may have brought both meanwhile.
    if (! parameterStores[0].isValid() || ! parameterStores[1].isValid())
        fillStores (current);
}

void SessionState::fillStores (const juce::ValueTree& current)
{
    for (auto& store : parameterStores)
        store = current.createCopy();
}

bool SessionState::hasStore (int index) const
{
    const std::scoped_lock lock (sessionLock);
    return parameterStores[static_cast<std::size_t> (index)].isValid();
}
