#pragma once

#include "core/model/PluginModel.h"
#include "core/presets/Presets.h"
#include "core/session/IReferenceTracks.h"
#include "core/session/SessionXml.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <functional>
#include <mutex>
#include <vector>

/** What a host keeps of an instance, and the two stores of the A/B comparison, which are part of it.

    The block is XML text in the framework's binary wrapping: the parameter tree, then the reference tracks, one element
    of settings, and the stores. Reading is total: whatever does not parse is ignored or takes its default, and the
    notification is sent all the same. Some of it is written and never read, or written as a decimal and read as a whole
    number; sessions of users hang on that, so it stays.

    Calls may come from any thread but the audio thread. A mutex guards stores and flags; the parameter tree has
    a lock of its own. */
class SessionState
{
public:
    /** @param tracks  outlives this object
        @param adopted told when parameters and USER SETTING stand as a block, or the other side of the comparison, has
                       them, and nobody else was told yet; on the thread that did it */
    SessionState (PluginModel& model,
                  juce::AudioProcessorValueTreeState& parameters,
                  Presets::Library& presets,
                  IReferenceTracks& tracks,
                  std::function<void()> adopted);

    /** What this writes can always be read again: if need be, without the tracks. */
    void write (juce::MemoryBlock& destination);

    /** Takes a block over; at its end the current band gains become the base of the gain scale. Its tracks are left out
        if what is saved could not be read again with them: a session that is loaded over and over doubles them. */
    void read (const void* data, int size);

    /** True while a block, or the other side of the comparison, replaces the parameters. Any thread. */
    [[nodiscard]] bool isRestoring() const noexcept { return restoring.load (std::memory_order_acquire) > 0; }

    //==================================================================================================================
    // A/B comparison. Store 0 is A.

    /** Keeps the current settings on the side that is left, and takes over the other side's.
        @param toggleOn the switch's state after the click: leaves A for B */
    void compareSwitch (bool toggleOn);

    /** Puts the current settings into both stores. */
    void compareCopy();

    /** Gives both stores the current settings if either has none yet, as when an editor opens. */
    void fillMissingStores();

    [[nodiscard]] bool comparisonASelected() const noexcept { return selectedA.load (std::memory_order_relaxed); }
    [[nodiscard]] bool comparisonUsed() const noexcept { return used.load (std::memory_order_relaxed); }
    [[nodiscard]] bool hasStore (int index) const;

private:
    /** Raises the mark for the length of a restore. */
    class ScopedRestoring;

    using Requests = std::vector<ReferenceTrackRequest>;

    void writeBlock (const juce::ValueTree& state, const Requests& requests, juce::MemoryBlock& destination) const;

    /** What is kept beside the parameters, in its order. */
    [[nodiscard]] SessionXml::Elements makeElementsBeside (const Requests& requests) const;
    [[nodiscard]] static std::unique_ptr<juce::XmlElement> makeTrackElement (const ReferenceTrackRequest& track);
    [[nodiscard]] std::unique_ptr<juce::XmlElement> makeSettingsElement() const;
    void readSettingsElement (const juce::XmlElement& element);
    [[nodiscard]] static ReferenceTrackRequest trackIn (const juce::XmlElement& element);

    /** Asks for tracks, unless what is saved with them could not be read again. */
    void restoreTracks (Requests requests);
    void readStores (const juce::XmlElement& root);

    /** Under the session's lock. */
    void fillStores (const juce::ValueTree& current);
    void replaceParameters (const juce::ValueTree& tree);
    void storeBandGains() noexcept;

    PluginModel& model;
    juce::AudioProcessorValueTreeState& parameters;
    Presets::Library& presets;
    IReferenceTracks& tracks;
    const std::function<void()> adopted;

    /** Kept by itself, since another thread may be replacing the tree that is asked. */
    const juce::Identifier treeType;

    mutable std::mutex sessionLock;
    std::array<juce::ValueTree, 2> parameterStores;
    std::atomic<bool> selectedA { true };
    std::atomic<bool> used { false };
    std::atomic<int> restoring { 0 }; ///< how many threads are at it
};
