#pragma once

#include "core/audio/LiveSpectrum.h"
#include "core/model/PluginModel.h"
#include "dsp/threads/ThreadSignal.h"
#include "gui/heat/HeatPeaks.h"
#include "gui/heat/HeatRows.h"
#include "gui/heat/StripPicture.h"

#include <juce_events/juce_events.h>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

/** The glow at the room's sides: the input's peaks over frequency, drawn on a thread of its own.

    The window wakes it, once a tick at most. A frame copies the spectrum under its lock, lets the peaks rise and fall,
    and draws only what has changed. The worker touches no component and waits for nobody; the word that there is
    something to repaint reaches the message thread by itself. */
class HeatStrips final : private juce::AsyncUpdater
{
public:
    /** @param spectrum, model outlive this object
        @param onDrawn called on the message thread after a frame that changed the strips */
    HeatStrips (LiveSpectrum& spectrum, const PluginModel& model, std::function<void()> onDrawn);

    /** Waits for a frame under way. Nothing is called any more. */
    ~HeatStrips() override;

    HeatStrips (const HeatStrips&) = delete;
    HeatStrips& operator= (const HeatStrips&) = delete;

    /** Starts the thread. What was heard before is left out. */
    void start();

    /** Waits for a frame under way and ends the thread for good. */
    void stop();

    /** What decides whether a tick of the window has a frame drawn. */
    struct Situation
    {
        bool heatMapWanted = false;
        bool windowShowing = false;
        bool spectrumFresh = false;
        bool black = true;
        bool repaintForced = false;
    };

    [[nodiscard]] static bool needsFrame (const Situation& situation) noexcept;

    /** One tick of the window: has a frame drawn where one is needed. Message thread.
        @param windowShowing without it no sound is taken any more, and the strips go out */
    void tick (bool windowShowing, bool repaintForced);

    /** Takes the height of the room in pixels. Message thread. */
    void resize (int height) { picture.resize (height); }

    void paint (juce::Graphics& graphics, juce::Rectangle<int> area) { picture.paint (graphics, area); }

    /** Whether nothing glows. Any thread. */
    [[nodiscard]] bool isBlack() const noexcept { return black.load (std::memory_order_relaxed); }

    /** Has a frame drawn, and waits for it. For pictures and tests, on a started thread. */
    void drawNow (bool windowShowing);

    /** One frame, as the thread makes it. For tests, while there is no thread.
        @returns whether the strips have changed */
    bool frame();

private:
    void run();
    void handleAsyncUpdate() override;
    void listen();

    LiveSpectrum& spectrum;
    const PluginModel& model;
    const std::function<void()> onDrawn;
    StripPicture picture;
    std::atomic<bool> listening { true };
    std::atomic<bool> black { true };

    // The worker's own.
    LiveSpectrum::Magnitudes magnitudes {};
    HeatPeaks peaks;
    HeatRows rows;
    std::vector<std::uint8_t> alphas;
    std::vector<std::uint8_t> drawnAlphas;
    unsigned drawnGeneration = 0;

    ThreadSignal signal;
    std::thread thread; ///< last: it uses all of the above
};
