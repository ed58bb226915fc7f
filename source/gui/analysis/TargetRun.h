#pragma once

#include "core/references/ReferenceTrackModel.h"

#include <atomic>
#include <future>
#include <memory>

/** Makes a target of the model's tracks on a thread of its own, and tells the message thread how far it is.

    The thread only posts, so that whoever waits for it on the message thread waits for the measuring alone. */
class TargetRun
{
public:
    /** @param model outlives this object */
    explicit TargetRun (ReferenceTrackModel& model);

    /** Waits for a run that is under way. */
    ~TargetRun();

    TargetRun (const TargetRun&) = delete;
    TargetRun& operator= (const TargetRun&) = delete;

    std::function<void (const TargetProgress&)> onProgress;

    /** Called once for each run, when its target is set. */
    std::function<void (const TargetProgress&)> onFinished;

    /** Begins a run, unless one is under way. */
    void start();

    /** A run has begun, and onFinished has not been called for it. */
    [[nodiscard]] bool isUnderWay() const noexcept { return underWay; }

    /** Waits for the run that is under way, for which onFinished is not called any more. */
    void wait();

private:
    void serve (int servedRun);

    ReferenceTrackModel& model;
    std::future<void> analysisFuture;
    bool underWay = false;

    /** Whose reports count: one of the run before may still be on its way. */
    int run = 0;

    JUCE_DECLARE_WEAK_REFERENCEABLE (TargetRun)
};
