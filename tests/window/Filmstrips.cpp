#include "window/DisplayServer.h"
#include "window/HungBand.h"
#include "window/PictureStrip.h"
#include "window/PluginWindow.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

// Strips of frames of what moves in the built plug-in's window: filmstrips FOLDER. A real pointer moves it, on a
// display of its own.

namespace
{
constexpr int screenWidth = 1600;
constexpr int screenHeight = 1400;

/** The smallest window, so that eight frames stand in two rows. */
constexpr int width = 570;
constexpr int height = 606;
constexpr int frameCount = 8;
constexpr int framesPerRow = 4;

const HungBand voice { 2400.0, -6.0 };

void open (PluginWindow& window)
{
    // The scales at the room's sides would glow.
    window.setSilent (true);
    // Without a target nothing pulses while it waits to be measured.
    constexpr float presetCount = 131.0f;
    window.setNormalised ("Current Preset", 1.0f / presetCount);
    window.setNormalised ("Mix/Master Mode", 1.0f);
    window.resize (width, height);
    window.idleFor (std::chrono::milliseconds (300));
}

/** Idles for some time and adds each picture that differs from the one before. */
void film (PluginWindow& window, std::chrono::milliseconds time, std::vector<Picture>& frames)
{
    window.eventually (
        [&]
        {
            if (auto next = window.look(); next != frames.back())
                frames.push_back (std::move (next));

            return false;
        },
        time);
}

/** A hand takes a band by its body and pulls it from a cut to a boost. */
std::vector<Picture> filmDrag()
{
    constexpr int x = 160;
    constexpr int fromY = 340;
    constexpr int stepY = -13;

    PluginWindow window;
    open (window);
    hang (window, 1, voice);
    window.idleFor (std::chrono::milliseconds (300));
    window.press (x, fromY);
    std::vector<Picture> frames { window.lookAtRest() };

    for (int step = 1; step < frameCount; ++step)
    {
        // In small steps, as a hand moves.
        for (int pixel = 1; pixel <= -stepY; ++pixel)
            window.moveTo (x, fromY + (step - 1) * stepY - pixel);

        frames.push_back (window.lookAtRest());
    }

    window.release();
    return frames;
}

/** A click on the scale of 4 dB, where 12 dB were shown. */
std::vector<Picture> filmScale()
{
    constexpr int secondCellX = 281;
    constexpr int cellsY = 546;

    PluginWindow window;
    open (window);
    hang (window, 1, { 700.0, -2.0 });
    hang (window, 2, { 2400.0, 3.0, 1.5 });
    hang (window, 3, { 9000.0, 1.5, 1.5 });
    window.idleFor (std::chrono::milliseconds (500));
    std::vector<Picture> frames { window.lookAtRest() };
    window.click (secondCellX, cellsY);
    film (window, std::chrono::milliseconds (1500), frames);
    return PictureStrip::spread (frames, frameCount);
}

void save (const std::vector<Picture>& frames, const std::filesystem::path& path)
{
    std::vector<Picture> halves;

    for (const auto& frame : frames)
        halves.push_back (PictureStrip::halved (frame));

    if (! PictureStrip::of (halves, framesPerRow).save (path.string()))
        throw std::runtime_error ("cannot write " + path.string());

    std::cout << path.string() << std::endl;
}
} // namespace

int main (int argumentCount, char** arguments)
{
    if (argumentCount != 2)
    {
        std::cerr << "Usage: filmstrips FOLDER\n";
        return 2;
    }

    try
    {
        const std::filesystem::path folder = arguments[1];
        std::filesystem::create_directories (folder);

        const auto home = std::filesystem::temp_directory_path() / ("solvane-filmstrips-" + std::to_string (getpid()));
        std::filesystem::create_directories (home);
        setenv ("HOME", home.c_str(), 1);

        {
            const DisplayServer server (screenWidth, screenHeight);
            save (filmDrag(), folder / "drag-strip.png");
            save (filmScale(), folder / "scale-strip.png");
        }

        std::filesystem::remove_all (home);
        return 0;
    }
    catch (const std::exception& problem)
    {
        std::cerr << problem.what() << "\n";
        return 1;
    }
}
