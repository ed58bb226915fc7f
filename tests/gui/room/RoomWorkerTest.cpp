#include "gui/room/RoomWorker.h"

#include "gui/room/RoomGeometryOf.h"
#include "support/PluginRig.h"
#include "targets/DisplayCurve.h"

#include <gtest/gtest.h>

namespace
{
constexpr int width = 630;
constexpr int height = 622;
constexpr int transitionFrames = 12;
constexpr int pulseFrames = 50;
} // namespace

/** A worker whose ticks the test makes. */
class RoomWorkerTest : public testing::Test
{
protected:
    RoomWorkerTest()
    {
        rig.prepare (48000.0, 512);
        rig.waitForWorkers();
        state.roomWidth = width;
        state.roomHeight = height;
        target.resize (static_cast<int> (RoomGeometry::depth), height, 1.0f);
        response.resize (static_cast<int> (RoomGeometry::depth), height, 1.0f);
        std::ignore = worker.tick();
    }

    /** Puts a target of one value on every row, as a refresh does. */
    void setTarget (double valueDb)
    {
        const std::scoped_lock guard (state.rowsLock);
        state.curveFrequencies = DisplayCurve::frequencies (height);
        state.targetCurve.assign (state.curveFrequencies.size(), valueDb);
    }

    void setResponse (float valueDb)
    {
        {
            const std::scoped_lock guard (model.responseLock);
            model.responseCurveDb.fill (valueDb);
        }

        model.responseCurveChanged = true;
    }

    void setPlaying (bool playing)
    {
        // A host is believed once its position has moved.
        for (const juce::int64 time : { 0, 512 })
        {
            juce::AudioPlayHead::PositionInfo position;
            position.setIsPlaying (playing);
            position.setTimeInSamples (time);
            model.transport.update (position, false);
        }
    }

    /** Ticks until one changes nothing. */
    int ticksUntilRest()
    {
        for (int ticks = 0; ticks < 1000; ++ticks)
            if (const auto change = worker.tick(); ! change.walls && ! change.layout)
                return ticks;

        return -1;
    }

    /** Light in a channel of a few pixels around a place. */
    int lightAt (WallPictures& pictures, float x, float y, int (*channel) (juce::Colour))
    {
        juce::Image image (juce::Image::RGB, width, height, true, juce::SoftwareImageType());
        juce::Graphics graphics (image);
        pictures.paint (graphics, image.getBounds());
        auto sum = 0;

        for (int dy = -6; dy <= 6; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                sum += channel (image.getPixelAt (juce::roundToInt (x) + dx, juce::roundToInt (y) + dy));

        return sum;
    }

    static int red (juce::Colour colour) { return colour.getRed(); }
    static int green (juce::Colour colour) { return colour.getGreen(); }
    static int blue (juce::Colour colour) { return colour.getBlue(); }

    PluginRig rig;
    PluginModel& model = rig.processor.model;
    InterfaceState& state = model.interfaceState;
    WallPictures target;
    WallPictures response;
    RoomWorker worker { rig.processor, target, response, [] (RoomWorker::Change) {}, [] {} };
};

TEST_F (RoomWorkerTest, waitsUntilBothWallsHaveTheirPictures)
{
    WallPictures sized;
    WallPictures notYet;
    sized.resize (static_cast<int> (RoomGeometry::depth), height, 1.0f);
    RoomWorker early (
        rig.processor, sized, notYet, [] (RoomWorker::Change) {}, [] {});
    setResponse (3.0f);
    EXPECT_FALSE (early.tick().walls);
    notYet.resize (static_cast<int> (RoomGeometry::depth), height, 1.0f);
    EXPECT_TRUE (early.tick().walls);
}

TEST_F (RoomWorkerTest, nothingIsDrawnWhileNothingChanges)
{
    EXPECT_EQ (ticksUntilRest(), 0);

    for (int tick = 0; tick < 200; ++tick)
    {
        const auto change = worker.tick();
        EXPECT_FALSE (change.walls || change.layout);
    }
}

TEST_F (RoomWorkerTest, aNewResponseIsDrawnOnceAtItsDepth)
{
    setResponse (6.0f);
    EXPECT_EQ (ticksUntilRest(), 1);
    const auto room = roomGeometryOf (model);
    EXPECT_GT (lightAt (response, 30.0f, room.wallRow (2000.0f, 6.0f), blue), 100);
    EXPECT_GT (lightAt (response, 600.0f, room.wallRow (2000.0f, 6.0f), blue), 100);
    EXPECT_EQ (lightAt (response, 60.0f, room.wallRow (2000.0f, 0.0f), blue), 0);
}

TEST_F (RoomWorkerTest, theResponseIsYellowWhileTheGainsAreScaled)
{
    setResponse (6.0f);
    std::ignore = worker.tick();
    const auto y = roomGeometryOf (model).wallRow (2000.0f, 6.0f);
    EXPECT_GT (lightAt (response, 30.0f, y, blue), 0);
    rig.set ("paramGainScale", 150.0f);
    rig.waitForWorkers();
    setResponse (6.0f);
    EXPECT_TRUE (worker.tick().walls);
    EXPECT_EQ (lightAt (response, 30.0f, y, blue), 0);
    EXPECT_GT (lightAt (response, 30.0f, y, green), 100);
}

TEST_F (RoomWorkerTest, aMeasuredTargetMovesThereInTwelveFramesAndRests)
{
    setTarget (0.0);
    model.setTargetsReady (true, false);
    ticksUntilRest();
    setTarget (6.0);
    EXPECT_EQ (ticksUntilRest(), transitionFrames);
    const auto room = roomGeometryOf (model);
    EXPECT_GT (lightAt (target, 30.0f, room.wallRow (2000.0f, 6.0f), green), 100);
    EXPECT_EQ (lightAt (target, 60.0f, room.wallRow (2000.0f, 0.0f), green), 0);
}

TEST_F (RoomWorkerTest, aRestartShowsTheTargetAtOnce)
{
    setTarget (0.0);
    model.setTargetsReady (true, false);
    ticksUntilRest();
    setTarget (6.0);
    worker.restart();
    EXPECT_EQ (ticksUntilRest(), 1);
    EXPECT_GT (lightAt (target, 30.0f, roomGeometryOf (model).wallRow (2000.0f, 6.0f), green), 100);
}

TEST_F (RoomWorkerTest, aTargetThatIsNotMeasuredIsNotShown)
{
    setTarget (6.0);
    ticksUntilRest();
    EXPECT_EQ (lightAt (target, 30.0f, roomGeometryOf (model).wallRow (2000.0f, 6.0f), green), 0);
}

TEST_F (RoomWorkerTest, itPulsesInRedWhileTheTransportRunsAndEndsClean)
{
    setTarget (6.0);
    setPlaying (true);

    for (int frame = 0; frame < pulseFrames / 8; ++frame)
        EXPECT_TRUE (worker.tick().walls);

    const auto y = roomGeometryOf (model).wallRow (2000.0f, 0.0f);
    EXPECT_GT (lightAt (target, 60.0f, y, red), 100);
    setPlaying (false);
    EXPECT_EQ (ticksUntilRest(), 1);
    EXPECT_EQ (lightAt (target, 60.0f, y, red), 0);
}

TEST_F (RoomWorkerTest, thePulseEndsWhenTheTargetIsMeasured)
{
    setTarget (6.0);
    setPlaying (true);
    EXPECT_TRUE (worker.tick().walls);
    model.setTargetsReady (true, false);
    EXPECT_GE (ticksUntilRest(), 1);
}

TEST_F (RoomWorkerTest, noTargetsLeavesTheWallsEmpty)
{
    setTarget (6.0);
    model.setTargetsReady (true, false);
    ticksUntilRest();
    rig.set ("paramCurrentZVQPreset", 1.0f);
    EXPECT_EQ (ticksUntilRest(), 1);
    EXPECT_EQ (lightAt (target, 30.0f, roomGeometryOf (model).wallRow (2000.0f, 6.0f), green), 0);
    setPlaying (true);
    EXPECT_FALSE (worker.tick().walls);
}

TEST_F (RoomWorkerTest, aChosenScaleIsReachedInTenSteps)
{
    model.targetScaleDb = 2.0f;
    state.scaleAnimating = true;

    for (int tick = 0; tick < 10; ++tick)
    {
        EXPECT_FALSE (state.rebaseDrag);
        const auto change = worker.tick();
        EXPECT_TRUE (change.layout && change.walls);
    }

    EXPECT_EQ (model.displayScaleDb, 2.0f);
    EXPECT_FALSE (state.scaleAnimating);
    EXPECT_TRUE (state.rebaseDrag);
    EXPECT_EQ (ticksUntilRest(), 0);
}

TEST_F (RoomWorkerTest, itRestsWhileTheAnalysisWindowIsOpen)
{
    setResponse (6.0f);
    state.analysisOpen = true;
    EXPECT_EQ (ticksUntilRest(), 0);
    state.analysisOpen = false;
    EXPECT_EQ (ticksUntilRest(), 1);
}

TEST_F (RoomWorkerTest, anotherSizeIsDrawnAnew)
{
    state.roomHeight = 400;
    target.resize (static_cast<int> (RoomGeometry::depth), 400, 1.0f);
    response.resize (static_cast<int> (RoomGeometry::depth), 400, 1.0f);
    EXPECT_EQ (ticksUntilRest(), 1);
}

TEST_F (RoomWorkerTest, withoutASampleRateThereIsNoResponse)
{
    model.sampleRate = 0.0;
    setResponse (6.0f);
    EXPECT_EQ (ticksUntilRest(), 0);
}
