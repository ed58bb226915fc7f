// What the window costs, on a display of its own and with ten bands: frames of the walls, paintings, openings, and how
// still it is while nothing changes. Times are medians; CPU times of the thread that works, but for the openings.
#include "Measurement.h"
#include "gui/editor/PluginEditor.h"
#include "gui/room/RoomWorker.h"
#include "support/Messages.h"
#include "support/PluginRig.h"
#include "support/RepaintCounter.h"
#include "targets/DisplayCurve.h"
#include "window/DisplayServer.h"

#include <juce_opengl/juce_opengl.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace
{
using Clock = std::chrono::steady_clock;
using Kind = Settings::Parameter;
using namespace std::chrono_literals;

constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;
constexpr int width = 680;
constexpr int height = 712;
constexpr int roomWidth = width - 50;
constexpr int roomHeight = height - 90;

double milliseconds (Clock::duration time)
{
    return std::chrono::duration<double, std::milli> (time).count();
}

template <typename Work>
double medianMilliseconds (int times, Work&& work)
{
    std::vector<double> values;

    for (int time = 0; time < times; ++time)
    {
        const auto before = Measurement::threadSeconds();
        work();
        values.push_back ((Measurement::threadSeconds() - before) * 1.0e3);
    }

    return Measurement::median (std::move (values));
}

void serveFor (Clock::duration time)
{
    for (const auto end = Clock::now() + time; Clock::now() < end;)
        if (! juce::dispatchNextMessageOnSystemQueue (true))
            std::this_thread::sleep_for (1ms);
}

void row (const char* what, double value, const char* unit, const char* limit)
{
    std::printf ("  %-66s %9.2f %-12s %s\n", what, value, unit, limit);
    std::fflush (stdout);
}

void hangTenBands (PluginRig& rig)
{
    rig.set ("paramMode", 1.0f);

    for (int band = 0; band < bandCount; ++band)
        rig.setBand (
            band, 400.0f * std::pow (1.45f, static_cast<float> (band)), static_cast<float> (band * 5 % 17 - 8), 2.0f);

    rig.waitForWorkers();
}

/** Blocks as a host sends them, at the pace of the sound card. */
class RunningAudio
{
public:
    explicit RunningAudio (PluginRig& host, float noiseAmplitude = 0.2f)
        : rig (host), amplitude (noiseAmplitude), thread ([this] { run(); })
    {
    }

    ~RunningAudio()
    {
        ended = true;
        thread.join();
    }

    RunningAudio (const RunningAudio&) = delete;
    RunningAudio& operator= (const RunningAudio&) = delete;

private:
    void run()
    {
        const auto noise = signals::noise (2, noiseBlocks * blockSize, 7u, amplitude);
        juce::AudioBuffer<float> block (2, blockSize);
        auto place = 0;

        for (auto next = Clock::now(); ! ended; std::this_thread::sleep_until (next))
        {
            next += std::chrono::microseconds (static_cast<int> (1.0e6 * blockSize / sampleRate));

            for (int channel = 0; channel < 2; ++channel)
                block.copyFrom (
                    channel, 0, noise[static_cast<std::size_t> (channel)].data() + place * blockSize, blockSize);

            place = (place + 1) % noiseBlocks;
            rig.process (block);
        }
    }

    /** A spectrum takes two blocks: one block over and over would always have the same. */
    static constexpr int noiseBlocks = 101;

    PluginRig& rig;
    const float amplitude;
    std::atomic<bool> ended { false };
    std::thread thread;
};

//======================================================================================================================
void measureWalls (PluginRig& rig)
{
    auto& state = rig.processor.model.interfaceState;
    WallPictures target, response;
    target.resize (static_cast<int> (RoomGeometry::depth), roomHeight, 1.0f);
    response.resize (static_cast<int> (RoomGeometry::depth), roomHeight, 1.0f);
    std::atomic<int> drawings { 0 };
    RoomWorker worker (
        rig.processor, target, response, [&] (RoomWorker::Change change) { drawings += change.walls ? 1 : 0; }, [] {});

    {
        const std::scoped_lock guard (state.rowsLock);
        state.curveFrequencies = DisplayCurve::frequencies (roomHeight);
        state.targetCurve.assign (state.curveFrequencies.size(), 3.0);
    }

    rig.processor.model.setTargetsReady (true, false);
    row ("a frame of the walls, both curves on both walls",
         medianMilliseconds (500,
                             [&]
                             {
                                 worker.restart();
                                 std::ignore = worker.tick();
                             }),
         "ms",
         "(3)");
    row ("a tick in which nothing has changed",
         medianMilliseconds (500, [&] { std::ignore = worker.tick(); }),
         "ms",
         "");

    // A hand drags: how many ticks later does the curve stand on the wall?
    worker.start();
    std::vector<double> waits;

    for (int step = 0; step < 40; ++step)
    {
        const auto drawingsBefore = drawings.load();
        const auto ticksBefore = worker.tickCount();
        rig.set (3, Kind::gain, static_cast<float> (step % 8));

        while (drawings == drawingsBefore)
            std::this_thread::sleep_for (1ms);

        waits.push_back (worker.tickCount() - ticksBefore);

        // The worker has told before its tick ends, and may draw once more for the same change.
        std::this_thread::sleep_for (130ms);
    }

    worker.stop();
    row ("from a change of gain to its curve, at most", Measurement::quantile (waits, 1.0), "timer ticks", "(2)");
}

void measurePainting (PluginRig& rig)
{
    VelmoraAudioProcessorEditor editor (rig.processor);
    editor.addToDesktop (0);
    auto& room = editor.main().room();
    serveFor (500ms);
    juce::Image image (juce::Image::RGB, width, height, true, juce::SoftwareImageType());

    row ("painting the room",
         medianMilliseconds (300,
                             [&]
                             {
                                 juce::Graphics graphics (image);
                                 room.paintEntireComponent (graphics, true);
                             }),
         "ms",
         "(6)");
    row ("painting the whole window",
         medianMilliseconds (300,
                             [&]
                             {
                                 juce::Graphics graphics (image);
                                 editor.paintEntireComponent (graphics, true);
                             }),
         "ms",
         "");

    serveFor (5s);
    auto repaints = 0;
    editor.setCachedComponentImage (new RepaintCounter (editor, repaints));
    repaints = 0; // beginning to count asks for one
    serveFor (4s);
    row ("repaints in the four seconds after the fifth, nothing changing", repaints, "repaints", "(0)");
    editor.setCachedComponentImage (nullptr);
}

//======================================================================================================================
void measureHeat (PluginRig& rig)
{
    LiveSpectrum spectrum;
    rig.processor.model.setShowHeatmap (true);
    HeatStrips strips (spectrum, rig.processor.model, [] {});
    strips.resize (roomHeight);
    juce::Image image (juce::Image::RGB, width - 10, roomHeight, true, juce::SoftwareImageType());
    LiveSpectrum::Magnitudes magnitudes {};
    auto turn = 0;
    auto drawn = 0;

    row ("a frame of both heat strips, drawn and painted",
         medianMilliseconds (500,
                             [&]
                             {
                                 magnitudes.fill (0.01f * static_cast<float> (++turn % 20));
                                 spectrum.publish (magnitudes);
                                 drawn += strips.frame() ? 1 : 0;
                                 juce::Graphics graphics (image);
                                 strips.paint (graphics, image.getBounds());
                             }),
         "ms",
         "(2)");

    if (drawn < 400)
        std::printf ("  the strips stood still\n");
}

/** Calls something 25 times a second. */
class Ticker final : private juce::Timer
{
public:
    explicit Ticker (std::function<void()> workToDo) : work (std::move (workToDo)) { startTimer (40); }

private:
    void timerCallback() override { work(); }

    const std::function<void()> work;
};

/** What the whole process takes of a core, on all of its threads together, while `eachTick` is called 25 times a
   second. The message thread sleeps until there is a message, as a host's does. */
double percentOfACore (Clock::duration time, std::function<void()> eachTick)
{
    const auto processSeconds = [] { return static_cast<double> (std::clock()) / CLOCKS_PER_SEC; };
    const Ticker ticker (std::move (eachTick));
    const auto begin = Clock::now();
    const auto before = processSeconds();

    while (Clock::now() < begin + time)
        juce::dispatchNextMessageOnSystemQueue (false);

    return (processSeconds() - before) / std::chrono::duration<double> (Clock::now() - begin).count() * 100.0;
}

void measureLoad (PluginRig& rig)
{
    constexpr auto time = 6s;
    rig.processor.model.setShowHeatmap (true);

    {
        // So quiet that the strips flicker in all shades.
        const RunningAudio audio (rig, 0.01f);
        serveFor (500ms);
        const auto closed = percentOfACore (time, [] {});
        VelmoraAudioProcessorEditor editor (rig.processor);
        editor.addToDesktop (0);
        serveFor (6s); // it repaints itself whole in the first four seconds
        const auto open = percentOfACore (time, [] {});
        const auto drawing = percentOfACore (time, [&] { editor.main().room().rebuildTarget(); });
        row ("the plug-in without its window, audio and analysis running", closed, "% of a core", "");
        row ("its window on top of that, strips and curves following", open - closed, "% of a core", "(25)");
        row ("the same with every curve drawn anew 25 times a second", drawing - closed, "% of a core", "(25)");
    }

    serveFor (500ms);
    const auto closed = percentOfACore (time, [] {});
    VelmoraAudioProcessorEditor editor (rig.processor);
    editor.addToDesktop (0);
    serveFor (6s);
    const auto open = percentOfACore (time, [] {});
    row ("neither window nor audio", closed, "% of a core", "");
    row ("an open window on top of that, idle", open - closed, "% of a core", "(1)");
}

//======================================================================================================================
/** The window on the graphics library's context, whoever draws for it. */
class Compositing final : private juce::OpenGLRenderer
{
public:
    explicit Compositing (juce::Component& window)
    {
        context.setRenderer (this);
        context.setComponentPaintingEnabled (true);
        context.attachTo (window);
    }

    ~Compositing() override { context.detach(); }

    [[nodiscard]] int frames() const noexcept { return frameCount; }

private:
    void newOpenGLContextCreated() override {}
    void renderOpenGL() override { ++frameCount; }
    void openGLContextClosing() override {}

    std::atomic<int> frameCount { 0 };
    juce::OpenGLContext context;
};

/** From the host's call to the first whole picture on the display. */
double open (PluginRig& rig, bool composited)
{
    const auto before = Clock::now();
    VelmoraAudioProcessorEditor editor (rig.processor);
    editor.addToDesktop (0);
    std::optional<Compositing> compositing;

    if (composited)
    {
        compositing.emplace (editor);
        PluginRig::serveMessagesUntil ([&] { return compositing->frames() > 1; });
    }
    else
    {
        PluginRig::serveMessagesUntil ([&] { return editor.isShowing() && editor.getPeer() != nullptr; });
        editor.getPeer()->performAnyPendingRepaintsNow();
    }

    const auto time = milliseconds (Clock::now() - before);
    serveFor (100ms);
    return time;
}

void measureOpening (PluginRig& rig, bool composited)
{
    const auto first = open (rig, composited);
    std::vector<double> again;

    for (int time = 0; time < 15; ++time)
        again.push_back (open (rig, composited));

    row (composited ? "opening the window, with a context" : "opening the window", first, "ms by clock", "(250)");
    row (composited ? "opening it again, with a context" : "opening it again",
         Measurement::median (again),
         "ms by clock",
         "(100)");
}

void measureFrames (PluginRig& rig)
{
    VelmoraAudioProcessorEditor editor (rig.processor);
    editor.addToDesktop (0);
    Compositing compositing (editor);
    PluginRig::serveMessagesUntil ([&] { return compositing.frames() > 2; });
    serveFor (500ms);
    std::vector<double> times;

    for (int time = 0; time < 100; ++time)
    {
        const auto frames = compositing.frames();
        const auto before = Clock::now();
        editor.repaint();
        PluginRig::serveMessagesUntil ([&] { return compositing.frames() > frames; });
        times.push_back (milliseconds (Clock::now() - before));
    }

    row ("a frame of the whole window, with a context", Measurement::median (times), "ms by clock", "");
}
} // namespace

int main()
{
    const DisplayServer display (1600, 1400);
    const juce::ScopedJuceInitialiser_GUI framework;
    PluginRig rig;
    rig.prepare (sampleRate, blockSize);
    hangTenBands (rig);
    std::optional<RunningAudio> audio (std::in_place, rig);

    std::printf ("The window with ten bands at %d x %d, audio running; in brackets what it may be:\n", width, height);
    measureOpening (rig, false);
    measureWalls (rig);
    measurePainting (rig);
    measureHeat (rig);
    audio.reset();
    measureLoad (rig);
    audio.emplace (rig);
    std::printf ("The same on a context of the graphics library, drawn by the processor:\n");
    measureOpening (rig, true);
    measureFrames (rig);
    return 0;
}
