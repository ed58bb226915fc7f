#pragma once

#include "hosts/Vst2Host.h"
#include "window/TestScreen.h"

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

/** The built plug-in in a foreign window, with audio running, driven as a hand does it: all places are pixels of the
    plug-in's window, all events go through the display, and parameters are read back through the host's interface. */
class PluginWindow
{
public:
    /** Opens the window.
        @param sampleRate  in Hz; 0 leaves the audio off
        @param managed     the window manager frames the window, and gives it the keyboard by a click */
    explicit PluginWindow (double sampleRate = 48000.0, bool managed = false);
    ~PluginWindow();

    PluginWindow (const PluginWindow&) = delete;
    PluginWindow& operator= (const PluginWindow&) = delete;

    /** While the window is open the plug-in's events are handled on the host's thread, whenever the host is idle: looks
        again and again until something holds. @returns whether it held before `longest` was over */
    template <typename Condition>
    bool eventually (const Condition& holds, std::chrono::milliseconds longest = std::chrono::seconds (20))
    {
        const auto latest = std::chrono::steady_clock::now() + longest;

        for (;;)
        {
            idle();

            if (holds())
                return true;

            if (std::chrono::steady_clock::now() > latest)
                return false;

            std::this_thread::sleep_for (std::chrono::milliseconds (1));
        }
    }

    /** The host's idle call, which lets the plug-in handle what waits. */
    void idle();

    /** Idles for some time of the clock. */
    void idleFor (std::chrono::milliseconds time);

    [[nodiscard]] Vst2Host& host() noexcept { return plugin; }
    [[nodiscard]] TestScreen& screen() noexcept { return display; }

    /** The window that was given to the plug-in; 0 while it has none. */
    [[nodiscard]] XWindow handle() const noexcept { return parent; }

    /** As a host does: asks for the size, makes a window, gives it to the plug-in. */
    void open();
    void close();
    [[nodiscard]] bool isOpen() const noexcept { return parent != 0; }

    /** The size that the plug-in asks for while it is open. */
    [[nodiscard]] TestScreen::Size size();

    /** Drags the window's corner until the plug-in has this size, or as near to it as it goes. */
    void resize (int width, int height);

    [[nodiscard]] Picture look();

    /** Looks until two pictures in a row are the same: what moves has come to rest. */
    Picture lookAtRest();

    //==================================================================================================================
    void moveTo (int x, int y);

    /** Far from everything that reacts: out of the window. */
    void moveAway();

    void press (int x, int y);
    void release();
    void click (int x, int y);
    void doubleClick (int x, int y);

    /** Presses, goes in steps of a few pixels, and lets go. */
    void drag (int fromX, int fromY, int toX, int toY);

    /** The same without letting go. */
    void dragAndHold (int fromX, int fromY, int toX, int toY);

    /** @param notches  above 0: away from the user */
    void wheel (int x, int y, int notches);

    /** Letters, small and capital, digits and ".,-+ " on the keyboard. */
    void type (const std::string& text);
    void key (const std::string& name);
    void keyDown (const std::string& name) { display.keyDown (name); }
    void keyUp (const std::string& name) { display.keyUp (name); }

    //==================================================================================================================
    /** The text of a parameter by its name, such as "+6.0dB"; throws for a name that nobody has. */
    [[nodiscard]] std::string text (const std::string& parameterName);

    /** The plain figure at the start of that text. */
    [[nodiscard]] double figure (const std::string& parameterName);

    /** Whether a switch of the plug-in is on. */
    [[nodiscard]] bool isOn (const std::string& parameterName) { return normalised (parameterName) > 0.5f; }

    /** Lets the audio go on with nothing to be heard in it. */
    void setSilent (bool shouldBeSilent) { noisePeak = shouldBeSilent ? 0.0f : usualNoisePeak; }

    /** How loud it is at most, linear. */
    void setNoisePeak (float peak) { noisePeak = peak; }

    [[nodiscard]] float normalised (const std::string& parameterName);
    void setNormalised (const std::string& parameterName, float value);

private:
    static constexpr float usualNoisePeak = 0.2f;

    void runAudio (double sampleRate);
    [[nodiscard]] int indexOf (const std::string& parameterName) const;

    const bool managed;
    Vst2Host plugin;
    TestScreen display;
    XWindow parent = 0;
    std::atomic<bool> ending { false };
    std::atomic<float> noisePeak { usualNoisePeak };
    std::thread audio;
};
