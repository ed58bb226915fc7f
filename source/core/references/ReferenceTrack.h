#pragma once

#include "core/references/TrackOutline.h"
#include "core/session/ReferenceTrackRequest.h"
#include "targets/TrackAnalysis.h"

#include <juce_core/juce_core.h>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/** A finished mix of the user's, wholly in memory at the session's rate.

    Whoever holds it keeps it alive. The thread that loads it fills the samples; they never move, and `loaded`, stored
    last, hands them to everybody else. Name, ranges and outline have a lock of their own. */
class ReferenceTrack
{
public:
    using Outline = std::vector<OutlinePoint>;

    /** What the file and the session say about a track that is about to be loaded. */
    struct Description
    {
        juce::int64 id = 0;
        juce::String filePath;
        juce::String displayName;

        /** Of the file, at its own rate. */
        juce::int64 lengthInSamples = 0;

        /** The samples that are to come, at the session's rate. */
        int capacity = 0;

        TrackRates rates;
        bool isStereo = false;
        std::vector<TrackLoop> loops;
    };

    /** Takes the memory for all samples; throws std::bad_alloc where there is none. */
    explicit ReferenceTrack (Description description);

    ReferenceTrack (const ReferenceTrack&) = delete;
    ReferenceTrack& operator= (const ReferenceTrack&) = delete;

    //==================================================================================================================
    /** Its identity in every message. */
    const juce::int64 id;
    const juce::String filePath;

    /** The file's name without directory and extension, in upper case. */
    const juce::String displayName;
    const juce::int64 lengthInSamples;

    /** Of the file, and of the session at the time of the load. */
    const TrackRates rates;

    /** True only if the file has exactly two channels. */
    const bool isStereo;

    std::atomic<int> numSamples { 0 };

    /** In samples at the session's rate. Written by the audio callback and by the user's actions. */
    std::atomic<int> playPosition { 0 };

    /** The load has ended, also when it was stopped. Stored with release. */
    std::atomic<bool> loaded { false };
    std::atomic<bool> abort { false };

    /** Percent of the track that the analysis has been through, 0 to 100. */
    std::atomic<float> progress { 0.0f };

    //==================================================================================================================
    /** What the user has named it. Any thread but the audio thread. */
    [[nodiscard]] juce::String name() const;
    void setName (const juce::String& newName);

    /** The ranges that the analysis keeps to, in the order in which they were made. Any thread but the audio thread. */
    [[nodiscard]] std::vector<TrackLoop> loops() const;
    void setLoops (std::vector<TrackLoop> newLoops);

    /** The points that were built last; never null. Any thread but the audio thread. */
    [[nodiscard]] std::shared_ptr<const Outline> outline() const;

    /** Builds the outline anew, once the track is loaded; before that it does nothing. Any thread but the audio thread.
        @param columns        one for every third pixel
        @param pixelsPerSample for the edges of the ranges */
    void rebuildOutline (int columns, float pixelsPerSample);

    //==================================================================================================================
    /** Appends samples: the loading thread alone. What is beyond the capacity is left out. */
    void append (const float* left, const float* right, int count);

    /** Ends the load. The loading thread alone.
        @param trackLevels as TrackLevels::finish() gives them */
    void finishLoading (std::vector<float> trackLevels);

    /** The samples, once `loaded` was seen with acquire; `right` is null for mono. Real-time safe. */
    [[nodiscard]] TrackSamples samples() const noexcept;

    //==================================================================================================================
    /** Measures the track, or its ranges. One analysis at a time; a thread of its own.
        @param tick called after every 40000 samples, with progress renewed */
    void analyse (const std::function<void()>& tick);

    /** What the last analysis gave. Any thread but the audio thread. */
    [[nodiscard]] TrackReading reading() const;

    /** Whether there was an analysis, and the last one measured the ranges that the track has now. Any thread but the
        audio thread. */
    [[nodiscard]] bool isMeasuredAsMarked() const;

private:
    /** Zeroed by the system page by page, so that memory is taken as the load goes on. */
    using Samples = juce::HeapBlock<float, true>;

    const int capacity;
    Samples left;
    Samples right;

    /** Written before `loaded` is stored. */
    std::vector<float> levels;

    mutable std::mutex lock;
    juce::String nameOfUser;
    std::vector<TrackLoop> ranges;
    std::shared_ptr<const Outline> points;
    TrackReading lastReading;

    /** What it is a reading of. */
    std::optional<std::vector<TrackRange>> measuredParts;
};
