#include "window/PluginWindow.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace
{
// Numbers of the interface's calls.
constexpr int editorRectangle = 13;
constexpr int editorOpen = 14;
constexpr int editorClose = 15;
constexpr int editorIdle = 19;

constexpr int windowX = 40;
constexpr int windowY = 30;
constexpr int blockSize = 512;
constexpr int pixelsPerStep = 4;

/** From the window's corner into the handle that resizes it. */
constexpr int cornerInset = 5;

/** As the interface has it: top, left, bottom, right. */
struct EditorRectangle
{
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};

std::string keyNameOf (char character)
{
    switch (character)
    {
        case '.':
            return "period";
        case ',':
            return "comma";
        case '-':
            return "minus";
        case '+':
            return "KP_Add";
        case ' ':
            return "space";
        default:
            return { character };
    }
}
} // namespace

PluginWindow::PluginWindow (double sampleRate, bool inAFrame)
    : managed (inAFrame), plugin (std::string (SOLVANE_DIST) + "/vst/SOLVANE.so")
{
    plugin.setSizeHandler ([this] (int width, int height) { display.resizeWindow (parent, width, height); });
    open();

    if (sampleRate > 0.0)
    {
        plugin.prepare (sampleRate, blockSize);
        audio = std::thread ([this, sampleRate] { runAudio (sampleRate); });
    }
}

PluginWindow::~PluginWindow()
{
    close();
    ending = true;

    if (audio.joinable())
        audio.join();
}

void PluginWindow::open()
{
    EditorRectangle* rectangle = nullptr;
    plugin.dispatch (editorRectangle, 0, 0, &rectangle);

    if (rectangle == nullptr)
        throw std::runtime_error ("the plug-in says no size");

    parent = display.makeWindow (
        windowX, windowY, rectangle->right - rectangle->left, rectangle->bottom - rectangle->top, managed);
    moveAway();
    plugin.dispatch (editorOpen, 0, 0, reinterpret_cast<void*> (parent));

    if (! eventually ([this] { return display.childOf (parent) != 0 && display.isShown (display.childOf (parent)); }))
        throw std::runtime_error ("the plug-in shows no window");
}

void PluginWindow::idle()
{
    plugin.dispatch (editorIdle);
}

void PluginWindow::idleFor (std::chrono::milliseconds time)
{
    eventually ([] { return false; }, time);
}

void PluginWindow::close()
{
    if (! isOpen())
        return;

    plugin.dispatch (editorClose);
    display.destroyWindow (std::exchange (parent, 0));
}

TestScreen::Size PluginWindow::size()
{
    return display.sizeOf (display.childOf (parent));
}

void PluginWindow::resize (int width, int height)
{
    const auto before = size();
    const auto cornerX = before.width - cornerInset;
    const auto cornerY = before.height - cornerInset;
    drag (cornerX, cornerY, cornerX + width - before.width, cornerY + height - before.height);
    eventually ([&] { return size() == TestScreen::Size { width, height }; });
}

Picture PluginWindow::look()
{
    return display.look (parent);
}

Picture PluginWindow::lookAtRest()
{
    auto last = look();
    auto equal = 0;
    eventually (
        [&]
        {
            auto next = look();
            equal = next == last ? equal + 1 : 0;
            last = std::move (next);
            return equal > 20;
        });
    return last;
}

void PluginWindow::moveTo (int x, int y)
{
    const auto place = display.placeOf (parent);
    display.point (place.x + x, place.y + y);
    idle();
}

void PluginWindow::moveAway()
{
    display.point (1, 1);
}

void PluginWindow::press (int x, int y)
{
    moveTo (x, y);
    display.press (1);
    idle();
}

void PluginWindow::release()
{
    display.release (1);
    idle();
}

void PluginWindow::click (int x, int y)
{
    press (x, y);
    release();
}

void PluginWindow::doubleClick (int x, int y)
{
    click (x, y);
    click (x, y);
}

void PluginWindow::dragAndHold (int fromX, int fromY, int toX, int toY)
{
    press (fromX, fromY);
    const auto steps = std::max (1, static_cast<int> (std::hypot (toX - fromX, toY - fromY)) / pixelsPerStep);

    for (int step = 1; step <= steps; ++step)
        moveTo (fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps);
}

void PluginWindow::drag (int fromX, int fromY, int toX, int toY)
{
    dragAndHold (fromX, fromY, toX, toY);
    release();
}

void PluginWindow::wheel (int x, int y, int notches)
{
    moveTo (x, y);
    const auto button = notches > 0 ? 4u : 5u;

    for (int notch = 0; notch < std::abs (notches); ++notch)
    {
        display.press (button);
        display.release (button);
        idle();
    }
}

void PluginWindow::type (const std::string& text)
{
    for (const auto character : text)
    {
        const auto capital = std::isupper (static_cast<unsigned char> (character)) != 0;

        if (capital)
            keyDown ("Shift_L");

        key (keyNameOf (character));

        if (capital)
            keyUp ("Shift_L");
    }
}

void PluginWindow::key (const std::string& name)
{
    display.keyDown (name);
    display.keyUp (name);
    idle();
}

std::string PluginWindow::text (const std::string& parameterName)
{
    return plugin.parameterText (indexOf (parameterName));
}

double PluginWindow::figure (const std::string& parameterName)
{
    return std::stod (text (parameterName));
}

float PluginWindow::normalised (const std::string& parameterName)
{
    return plugin.parameter (indexOf (parameterName));
}

void PluginWindow::setNormalised (const std::string& parameterName, float value)
{
    plugin.setParameter (indexOf (parameterName), value);
}

void PluginWindow::runAudio (double sampleRate)
{
    std::vector<float> left (blockSize);
    std::vector<float> right (blockSize);
    std::uint32_t noise = 1;
    const auto blockTime = std::chrono::duration<double> (blockSize / sampleRate);
    auto next = std::chrono::steady_clock::now();

    while (! ending)
    {
        const auto amplitude = noisePeak / static_cast<float> (std::numeric_limits<std::int32_t>::max());

        for (std::size_t frame = 0; frame < left.size(); ++frame)
        {
            noise = noise * 1664525u + 1013904223u;
            left[frame] = static_cast<float> (static_cast<std::int32_t> (noise)) * amplitude;
            right[frame] = left[frame];
        }

        const float* const inputs[] { left.data(), right.data() };
        float* const outputs[] { left.data(), right.data() };
        plugin.process (inputs, outputs, 2, blockSize);

        next += std::chrono::duration_cast<std::chrono::steady_clock::duration> (blockTime);
        std::this_thread::sleep_until (next);
    }
}

int PluginWindow::indexOf (const std::string& parameterName) const
{
    const auto index = plugin.findParameter (parameterName);

    if (index < 0)
        throw std::runtime_error ("no parameter " + parameterName);

    return index;
}
