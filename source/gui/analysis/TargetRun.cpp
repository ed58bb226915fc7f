#include "gui/analysis/TargetRun.h"

TargetRun::TargetRun (ReferenceTrackModel& tracks) : model (tracks) {}

TargetRun::~TargetRun()
{
    wait();
}

void TargetRun::start()
{
    if (std::exchange (underWay, true))
        return;

    // One report at a time waits to be heard: it says what holds by then.
    const auto report = [weak = juce::WeakReference<TargetRun> (this),
                         started = ++run,
                         waiting = std::make_shared<std::atomic<bool>> (false)] (int)
    {
        if (waiting->exchange (true))
            return;

        juce::MessageManager::callAsync (
            [weak, started, waiting]
            {
                *waiting = false;

                if (auto* target = weak.get())
                    target->serve (started);
            });
    };

    analysisFuture = std::async (std::launch::async, [&tracks = model, report] { tracks.createTargets (report); });
}

void TargetRun::serve (int servedRun)
{
    if (! underWay || servedRun != run)
        return;

    const auto progress = model.targetProgress();

    if (! progress.complete)
    {
        if (onProgress)
            onProgress (progress);

        return;
    }

    wait();

    if (onFinished)
        onFinished (progress);
}

void TargetRun::wait()
{
    underWay = false;

    if (analysisFuture.valid())
        analysisFuture.get();
}
