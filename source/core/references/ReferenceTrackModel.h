#pragma once

#include "core/presets/Presets.h"
#include "core/references/ReferenceTrack.h"
#include "core/references/TargetCreation.h"
#include "core/references/TrackAudition.h"
#include "core/references/TrackFile.h"
#include "core/references/TrackLoadQueue.h"
#include "core/session/IReferenceTracks.h"
#include "targets/TargetSet.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/** Owns the reference tracks: loads them on a thread of its own, keeps them while no editor is open, and lets them be
    heard.

    What happens is told in action messages, which reach listeners on the message thread whichever thread sent them;
    what stands behind the colon is the argument. Nothing but these texts links messages and tracks. A message may come
    late: an id that no track has any more means nothing. */
class ReferenceTrackModel final : public juce::ActionBroadcaster, public IReferenceTracks
{
public:
    using TrackPtr = std::shared_ptr<ReferenceTrack>;

    /** More are not loaded, and nothing is said. */
    static constexpr int trackLimit = 20;

    struct Messages
    {
        /** A load was asked for before the host has told its rate; the request is lost. */
        static constexpr auto noSessionRate = "SESSION_SAMPLERATE_NOT_SET_BY_DAW:";
        static constexpr auto fileNotFound = "FILE_NOT_FOUND:";                     ///< stem
        static constexpr auto fileNotFoundEnd = "FILE_NOT_FOUND_END";               ///< never sent
        static constexpr auto loading = "TRACK_LOADING:";                           ///< stem
        static constexpr auto initialLoadComplete = "TRACK_INITIAL_LOAD_COMPLETE:"; ///< id
        static constexpr auto processingComplete = "TRACK_PROCESSING_COMPLETE:";    ///< id; never sent
        static constexpr auto waveformComplete = "TRACK_WAVEFORM_COMPLETE:";        ///< id
        static constexpr auto terminated = "TRACK_PROCESSING_TERMINATED:";
    };

    /** Starts the queue's thread. Both outlive this object. */
    ReferenceTrackModel (Presets::Library& presets, TargetSet& target);

    /** Breaks off a load, also while its file is still being looked through. Audio stopped, no target being made. */
    ~ReferenceTrackModel() override;

    ReferenceTrackModel (const ReferenceTrackModel&) = delete;
    ReferenceTrackModel& operator= (const ReferenceTrackModel&) = delete;

    //==================================================================================================================
    // Session

    /** Takes the session's rate for the loads to come, and asks for the tracks that a session wanted before there was
        one. Tracks that are there already keep the rate that they were loaded at.
        @param rate       in Hz; 0 if the host does not say
        @param decimation of the low bands, or nothing to leave it as it is */
    void setSession (double rate, std::optional<int> decimation);

    [[nodiscard]] double sessionSampleRate() const noexcept { return sessionRate; }

    [[nodiscard]] std::vector<ReferenceTrackRequest> sessionTracks() const override;
    void restore (std::vector<ReferenceTrackRequest> requests) override;
    void forgetKeptRequests() override;

    //==================================================================================================================
    // Tracks

    /** Asks for a track. One that has a name is not loaded if a track has that name already. Any thread but the audio
        thread. */
    void enqueue (ReferenceTrackRequest request);

    /** Whether a request waits or is being served. Any thread but the audio thread. */
    [[nodiscard]] bool isLoading() const { return loadQueue.isBusy(); }

    /** All tracks in order of arrival, those that are being loaded too. Any thread but the audio thread. */
    [[nodiscard]] std::vector<TrackPtr> tracks() const;

    /** Null where no track has this id. Any thread but the audio thread. */
    [[nodiscard]] TrackPtr findTrack (juce::int64 id) const;

    /** Null where there is none. Any thread but the audio thread. */
    [[nodiscard]] TrackPtr selectedTrack() const;

    /** Does nothing where no track has this id. Message thread. */
    void selectTrack (juce::int64 id);

    /** Ends the selected track's load if need be, takes it out, selects the last one of the others, waits until the
        audio thread has left it, and calls onTrackRemoved. Message thread; takes as long as a block of a load. */
    void removeSelectedTrack();

    /** Called with the id of a removed track, on the thread that removed it. Set and cleared on the message thread. */
    std::function<void (juce::int64)> onTrackRemoved;

    //==================================================================================================================
    // Drawing and listening

    /** Width of the outline in pixels, and pixels for each sample of the track that is shown. */
    std::atomic<int> waveformWidth { 640 };
    std::atomic<float> pixelsPerSample { 1.0f };

    /** Builds a track's outline for the current width. Any thread but the audio thread. */
    void rebuildOutline (ReferenceTrack& track) const;

    TrackAudition audition;

    //==================================================================================================================
    // Target

    /** Makes a target of all tracks that are loaded, and returns when it stands. A thread of its own, one call at a
        time. Does nothing without tracks, but for the report of 100.
        @param progress see TargetCreation */
    void createTargets (const TargetCreation::Progress& progress);

    [[nodiscard]] TargetProgress targetProgress() const { return creation.progress(); }

private:
    class ScopedService;

    void addTrack (const ReferenceTrackRequest& request);

    /** With tracksLock held. */
    void push (ReferenceTrackRequest request);
    struct Session
    {
        double rate = 0.0;
        int decimation = 1;
    };

    [[nodiscard]] Session session() const;
    [[nodiscard]] bool isWanted (const ReferenceTrackRequest& request) const;
    [[nodiscard]] bool append (const TrackPtr& track);
    void load (ReferenceTrack& track, juce::AudioFormatReader& reader);
    void say (const char* message, const juce::String& argument = {});

    Presets::Library& presets;
    TargetSet& target;
    TrackFile files;
    TargetCreation creation;

    /** What all loads pass through. The queue thread's. */
    juce::AudioBuffer<float> scratch;

    std::atomic<bool> closing { false };

    mutable std::mutex tracksLock;

    /** Both are written under tracksLock, so that a load never takes the one of an old session and the other of a new
        one. The rate may be looked at without. */
    std::atomic<double> sessionRate { 0.0 };
    int decimation = 1;

    std::condition_variable trackGone;
    std::vector<TrackPtr> list;

    /** The track that the queue thread is at. Guarded by tracksLock. */
    const ReferenceTrack* inLoad = nullptr;

    /** Asked for and not yet served, and what waits for the first session rate. Guarded by tracksLock. */
    std::deque<ReferenceTrackRequest> unserved;
    std::vector<ReferenceTrackRequest> kept;

    /** Last: its thread uses all of them. */
    TrackLoadQueue loadQueue;
};
