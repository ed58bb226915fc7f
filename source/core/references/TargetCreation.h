#pragma once

#include "core/presets/Presets.h"
#include "core/references/ReferenceTrack.h"
#include "targets/TargetSet.h"

#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <vector>

/** How far the making of a target is, for those who show it. */
struct TargetProgress
{
    int finished = 0;
    int trackCount = 0;

    /** The mean of the tracks' percentages, without its fraction. */
    int percent = 0;

    /** All is measured and the target is set. */
    bool complete = false;

    /** Names of the tracks in which nothing could be measured. */
    std::vector<juce::String> unmeasured;
};

/** Makes a target of reference tracks: measures them all at the same time, a thread for each, and writes the means to
    USER SETTING and to the target in use.

    Tracks in which nothing could be measured do not count, nor one for whose measurement the memory was lacking. Where
   nothing could be measured in any of them the target is minus infinity throughout, which the comparison with the
   running audio takes for no difference. */
class TargetCreation
{
public:
    using Progress = std::function<void (int percent)>;

    /** Runs on the calling thread until the target is set; one call at a time.
        @param progress called from the analysing threads with the percentage of one track, and with 100 from this one
                        at the end */
    void run (std::vector<std::shared_ptr<ReferenceTrack>> tracks,
              const Progress& progress,
              Presets::Library& presets,
              TargetSet& target);

    /** Of the run that was started last. Any thread but the audio thread. */
    [[nodiscard]] TargetProgress progress() const;

private:
    void measure (const Progress& progress);
    void measureTrack (ReferenceTrack& track, const Progress& progress);
    void setTarget (Presets::Library& presets, TargetSet& target);

    /** With the lock held. */
    [[nodiscard]] int meanPercent() const;

    mutable std::mutex lock;

    /** Of a run that is under way. Whoever removes a track later gets its memory back. */
    std::vector<std::shared_ptr<ReferenceTrack>> measured;
    int trackCount = 0;
    int finished = 0;
    int lastPercent = 0;
    bool complete = false;
    std::vector<juce::String> unmeasured;
};
