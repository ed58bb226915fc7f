#pragma once

#include "core/PluginProcessor.h"
#include "gui/room/ProcessTimer.h"
#include "gui/room/TargetTransition.h"
#include "gui/room/WallPictures.h"

#include <atomic>
#include <functional>
#include <vector>

/** Draws the curves on the walls and moves the scale, 25 times a second on a thread of its own, and only what changes.

    It touches no component: what it has done it tells through a function. It reads the processor's shared state, and
    takes imageLock, rowsLock and responseLock for a copy each. It never waits for the message thread. */
class RoomWorker
{
public:
    /** What a tick has done. */
    struct Change
    {
        bool walls = false;  ///< a curve was drawn anew
        bool layout = false; ///< the scale has moved: everything that stands at a gain stands elsewhere
    };

    /** @param changed   called on the worker's thread after a tick that changed something
        @param everyTick called on the worker's thread before each tick */
    RoomWorker (VelmoraAudioProcessor& processor,
                WallPictures& target,
                WallPictures& response,
                std::function<void (Change)> changed,
                std::function<void()> everyTick);

    void start();

    /** Waits for a tick under way. */
    void stop();

    /** Has both curves drawn at the next tick, the target without a transition. Any thread. */
    void restart() noexcept { restartWanted = true; }

    /** How many ticks the thread has made. Any thread. */
    [[nodiscard]] int tickCount() const noexcept { return ticks; }

    /** One tick, as the thread makes it. For tests, while the worker is stopped. */
    Change tick();

private:
    /** What a picture of the target shows beside its values. */
    struct TargetView
    {
        unsigned generation = 0;
        float scaleDb = 0.0f;
        bool hasTarget = false;
        bool visible = false;

        bool operator== (const TargetView&) const = default;
    };

    /** What a picture of the response was drawn for. */
    struct ResponseView
    {
        unsigned generation = 0;
        float scaleDb = 0.0f;
        double sampleRate = 0.0;
        bool scaled = false;

        bool operator== (const ResponseView&) const = default;
    };

    void run();
    [[nodiscard]] bool moveScale();
    [[nodiscard]] bool drawTarget (const WallPictures::Canvas& canvas, bool restarted);
    void paintTarget (const WallPictures::Canvas& canvas, const TargetView& view);
    [[nodiscard]] bool drawResponse (const WallPictures::Canvas& canvas, bool restarted);
    void copyRows();

    VelmoraAudioProcessor& processor;
    PluginModel& model;
    WallPictures& targetPictures;
    WallPictures& responsePictures;
    const std::function<void (Change)> changed;
    const std::function<void()> everyTick;
    std::atomic<int> ticks { 0 };
    std::atomic<bool> restartWanted { true };

    // The worker's own.
    TargetTransition transition;
    TargetView shownTarget;
    ResponseView shownResponse;
    std::vector<double> targetRows;
    std::vector<double> frequencies;
    std::vector<double> responseFrequencies;
    int responseHeight = 0;
    std::array<float, PluginModel::responsePointCount> response {};

    orvik::ProcessTimer timer; ///< last: its thread uses all of the above
};
