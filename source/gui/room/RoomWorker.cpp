#include "gui/room/RoomWorker.h"

#include "gui/room/RoomGeometryOf.h"
#include "gui/room/ScaleAnimation.h"
#include "gui/room/WallPainter.h"
#include "targets/DisplayCurve.h"

namespace
{
constexpr int tickMs = InterfaceState::roomTimerMs;
constexpr int transitionFrames = 500 / tickMs;
constexpr int pulseFrames = 2000 / tickMs;

/** Percent: the gains stand as they were set. */
constexpr float unscaled = 100.0f;

const juce::Colour targetColour = juce::Colours::limegreen;
const juce::Colour pulseColour = juce::Colours::red;
const juce::Colour responseColour = juce::Colours::white;
const juce::Colour scaledResponseColour = juce::Colours::yellow;
} // namespace

RoomWorker::RoomWorker (VelmoraAudioProcessor& processorToUse,
                        WallPictures& target,
                        WallPictures& responseToUse,
                        std::function<void (Change)> changedToUse,
                        std::function<void()> everyTickToUse)
    : processor (processorToUse),
      model (processorToUse.model),
      targetPictures (target),
      responsePictures (responseToUse),
      changed (std::move (changedToUse)),
      everyTick (std::move (everyTickToUse)),
      transition (transitionFrames, pulseFrames),
      timer ([this] { run(); })
{
}

void RoomWorker::start()
{
    timer.start (std::chrono::milliseconds (tickMs));
}

void RoomWorker::stop()
{
    timer.stop();
}

void RoomWorker::run()
{
    everyTick();

    if (const auto change = tick(); change.walls || change.layout)
        changed (change);

    ++ticks;
}

RoomWorker::Change RoomWorker::tick()
{
    Change change;

    if (model.interfaceState.analysisOpen)
        return change;

    change.layout = moveScale();

    // Nothing to draw into before the room has a size; it may come between two looks, and have both drawn anew.
    const auto targetCanvas = targetPictures.canvas();
    const auto responseCanvas = responsePictures.canvas();

    if (targetCanvas.pair.left.isNull() || responseCanvas.pair.left.isNull())
        return change;

    const auto restarted = restartWanted.exchange (false);
    const auto targetDrawn = drawTarget (targetCanvas, restarted);
    const auto responseDrawn = drawResponse (responseCanvas, restarted);
    change.walls = targetDrawn || responseDrawn;
    return change;
}

bool RoomWorker::moveScale()
{
    auto& animating = model.interfaceState.scaleAnimating;

    if (! animating)
        return false;

    const auto next = ScaleAnimation::nextScale (model.displayScaleDb, model.targetScaleDb);
    model.displayScaleDb = next;

    if (next == model.targetScaleDb)
    {
        model.interfaceState.rebaseDrag = true;
        animating = false;

        // Chosen again just now.
        if (model.displayScaleDb != model.targetScaleDb)
            animating = true;
    }

    return true;
}

void RoomWorker::copyRows()
{
    auto& state = model.interfaceState;
    const std::scoped_lock guard (state.rowsLock);

    targetRows = state.targetCurve;
    frequencies = state.curveFrequencies;
}

bool RoomWorker::drawTarget (const WallPictures::Canvas& canvas, bool restarted)
{
    const TargetView view { .generation = canvas.generation,
                            .scaleDb = model.displayScaleDb,
                            .hasTarget = processor.presets.currentPreset().id != Presets::noTargetsId,
                            .visible = model.targetsReady() };
    copyRows();

    restarted = restarted || transition.size() != targetRows.size();

    if (restarted)
        transition.restart (targetRows);

    auto needed = restarted || view != shownTarget;

    if (view.hasTarget && view.visible)
        needed = transition.advance (targetRows) || needed;

    if (view.hasTarget && ! view.visible && model.transport.isPlayingOrAlwaysRunning())
    {
        transition.advancePulse();
        needed = true;
    }
    else
    {
        needed = transition.pulseAlpha() > 0.0f || needed;
        transition.stopPulse();
    }

    if (! needed)
        return false;

    paintTarget (canvas, view);
    shownTarget = view;
    return true;
}

void RoomWorker::paintTarget (const WallPictures::Canvas& canvas, const TargetView& view)
{
    auto room = roomGeometryOf (model);
    room.height = static_cast<float> (canvas.roomHeight);
    room.scaleDb = view.scaleDb;
    WallPainter painter (canvas.pair);
    const auto count = view.hasTarget ? std::min (frequencies.size(), transition.size()) : 0;

    for (std::size_t i = 0; i < count; ++i)
    {
        const auto dot = view.visible
                             ? WallDots::ofValue (room, frequencies[i], transition.value (i), canvas.displayScale)
                             : WallDots::ofPulse (room, frequencies[i], transition.pulseAlpha(), canvas.displayScale);

        if (dot)
            painter.draw (*dot, view.visible ? targetColour : pulseColour);
    }

    painter.mirror();
    targetPictures.publish (canvas);
}

bool RoomWorker::drawResponse (const WallPictures::Canvas& canvas, bool restarted)
{
    const ResponseView view { .generation = canvas.generation,
                              .scaleDb = model.displayScaleDb,
                              .sampleRate = model.sampleRate,
                              .scaled = model.gainScalePercent() != unscaled };

    if (view.sampleRate == 0.0)
        return false;

    if (const auto curveChanged = model.responseCurveChanged.exchange (false);
        ! curveChanged && ! restarted && view == shownResponse)
        return false;

    {
        const std::scoped_lock guard (model.responseLock);
        response = model.responseCurveDb;
    }

    if (responseHeight != canvas.roomHeight)
    {
        responseHeight = canvas.roomHeight;
        responseFrequencies = DisplayCurve::frequencies (responseHeight);
    }

    auto room = roomGeometryOf (model);
    room.height = static_cast<float> (canvas.roomHeight);
    room.scaleDb = view.scaleDb;
    WallPainter painter (canvas.pair);

    for (const auto frequency : responseFrequencies)
        if (const auto dot = WallDots::ofResponse (room, frequency, response, view.sampleRate, canvas.displayScale))
            painter.draw (*dot, view.scaled ? scaledResponseColour : responseColour);

    painter.mirror();
    responsePictures.publish (canvas);
    shownResponse = view;
    return true;
}
