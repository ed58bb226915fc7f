#include "window/DisplayServer.h"
#include "window/FileDrop.h"
#include "window/HungBand.h"
#include "window/MixFile.h"
#include "window/PluginWindow.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

// Pictures of the built plug-in's window in its states: screenshots FOLDER. Made with pointer and parameters, on a
// display of its own.

namespace
{
constexpr int screenWidth = 1600;
constexpr int screenHeight = 1400;

struct State
{
    const char* name;
    std::function<void (PluginWindow&)> reach;
};

const HungBand voice { 2400.0, 4.0 };

/** Places within the window by its size: the room ends 25 pixels from either side, 42 from above and 48 from below. */
int middleX (PluginWindow& window)
{
    return window.size().width / 2;
}

/** The row of the voice's line. */
int voiceLineY (PluginWindow& window)
{
    constexpr double heightOfRoom = 0.5127;
    return 42 + static_cast<int> (std::lround (heightOfRoom * (window.size().height - 90)));
}

/** The scale of 4 dB, second of four cells on the floor, by hand; with a band that is beyond it. */
void chooseTooSmallAScale (PluginWindow& window)
{
    hang (window, 1, { 900.0, 7.0 });
    hang (window, 2, { 3000.0, -2.0 });
    window.idleFor (std::chrono::milliseconds (300));

    const auto roomWidth = window.size().width - 50;
    const auto cellWidth = roomWidth / 30 * 2 / 4;
    window.click (middleX (window) - cellWidth / 2, window.size().height - 60);
    window.moveAway();
}

/** A drag in Master that goes on beyond what Master can do. */
void crossTheLimitsOfMaster (PluginWindow& window)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    hang (window, 1, { 2400.0, 3.0 });
    window.idleFor (std::chrono::milliseconds (300));

    // Above the band's line, left of its panel.
    const auto x = window.size().width / 4;
    const auto y = window.size().height / 2 - 30;
    window.drag (x, y, x, y - 60);
    window.moveAway();
}

/** The pointer over a button of the top row, so many pixels from the window's right edge, until what it opens is open.
 */
void pointAtButton (PluginWindow& window, int fromRight)
{
    constexpr int buttonY = 20;
    window.moveTo (window.size().width - fromRight, buttonY);
    window.idleFor (std::chrono::milliseconds (300));
}

void clickButton (PluginWindow& window, int fromRight)
{
    pointAtButton (window, fromRight);
    window.click (window.size().width - fromRight, 20);
}

constexpr int gainScaleFromRight = 225;
constexpr int burgerFromRight = 152;
constexpr int outputGainFromRight = 115;
constexpr int settingsFromRight = 81;
constexpr int helpFromRight = 21;

/** The analysis window begins 425 pixels above the plug-in window's end, 42 lower than that, and 5 from the left. */
constexpr int analysisLeft = 5;

int analysisTop (PluginWindow& window)
{
    return window.size().height - 425 + 42;
}

void openAnalysis (PluginWindow& window)
{
    window.click (15, window.size().height - 27);
    window.idleFor (std::chrono::milliseconds (600));
    window.moveAway();
}

/** Three tracks, with two ranges on the one that plays. */
void playOneOfThree (PluginWindow& window)
{
    const MixFile first ("First mix.wav", 30.0);
    const MixFile second ("Summer rain.wav", 40.0);
    const MixFile third ("Third mix.wav", 20.0);
    openAnalysis (window);
    const auto top = analysisTop (window);
    const auto width = window.size().width;
    const auto waveX = analysisLeft + 33;
    const auto waveWidth = width - 60;
    const auto waveY = top + 110;

    for (const auto* file : { &first, &second, &third })
    {
        FileDrop::drop (window, width / 2, waveY, { file->path.string() });
        window.idleFor (std::chrono::milliseconds (1200));
    }

    window.click (width / 2 - 20, top + 210);
    window.idleFor (std::chrono::milliseconds (500));
    window.drag (waveX + waveWidth / 10, waveY, waveX + waveWidth * 3 / 10, waveY);
    window.drag (waveX + waveWidth * 6 / 10, waveY, waveX + waveWidth * 8 / 10, waveY);
    window.click (waveX + waveWidth * 4 / 10, top + 177);
    window.moveAway();
}

const std::vector<State> states {
    { "empty", [] (PluginWindow&) {} },
    { "one-band", [] (PluginWindow& window) { hang (window, 1, voice); } },
    { "ten-bands", hangTen },
    { "hover",
      [] (PluginWindow& window)
      {
          hang (window, 1, voice);
          window.idleFor (std::chrono::milliseconds (200));
          window.moveTo (window.size().width / 4, voiceLineY (window));
      } },
    { "focus",
      [] (PluginWindow& window)
      {
          hang (window, 1, voice);
          window.idleFor (std::chrono::milliseconds (200));
          window.moveTo (window.size().width / 4, window.size().height / 2 - 30);
      } },
    { "solo",
      [] (PluginWindow& window)
      {
          hangTen (window);
          window.setNormalised ("Band 5 Solo", 1.0f);
      } },
    { "bypass",
      [] (PluginWindow& window)
      {
          hangTen (window);
          window.setNormalised ("ZVQ Bypass", 1.0f);
      } },
    { "shelf",
      [] (PluginWindow& window) {
          hang (window, 1, { 8000.0, 3.0, 1.0, true });
      } },
    { "mid",
      [] (PluginWindow& window) {
          hang (window, 1, { 2400.0, 4.0, 1.0, false, 0.2 });
      } },
    { "side",
      [] (PluginWindow& window) {
          hang (window, 1, { 2400.0, 4.0, 1.0, false, 0.8 });
      } },
    { "out-of-scale", chooseTooSmallAScale },
    { "master-message", crossTheLimitsOfMaster },
    { "gain-scale",
      [] (PluginWindow& window)
      {
          hangTen (window);
          window.setNormalised ("Gain Scale", 0.75f);
      } },
    { "menu", [] (PluginWindow& window) { pointAtButton (window, burgerFromRight); } },
    { "menu-bands",
      [] (PluginWindow& window)
      {
          hangTen (window);
          pointAtButton (window, burgerFromRight);
      } },
    { "output-gain-panel",
      [] (PluginWindow& window)
      {
          hang (window, 1, voice);
          pointAtButton (window, outputGainFromRight);
      } },
    { "gain-scale-panel",
      [] (PluginWindow& window)
      {
          hangTen (window);
          window.setNormalised ("Gain Scale", 0.75f);
          pointAtButton (window, gainScaleFromRight);
      } },
    { "settings", [] (PluginWindow& window) { clickButton (window, settingsFromRight); } },
    { "help", [] (PluginWindow& window) { clickButton (window, helpFromRight); } },
    { "analysis-empty", openAnalysis },
    { "analysis", playOneOfThree },
};

struct Size
{
    const char* name;
    int width;
    int height;
};

constexpr Size sizes[] { { "small", 570, 606 }, { "normal", 680, 712 }, { "large", 1400, 1200 } };

void take (const State& state, const Size& size, const std::filesystem::path& folder)
{
    PluginWindow window;
    window.setNormalised ("Mix/Master Mode", 1.0f);

    // So quiet that the scales glow only faintly.
    window.setNoisePeak (0.003f);

    if (window.size() != TestScreen::Size { size.width, size.height })
        window.resize (size.width, size.height);

    window.idleFor (std::chrono::milliseconds (300));
    state.reach (window);
    window.idleFor (std::chrono::milliseconds (1500));

    const auto path = folder / (std::string (state.name) + "-" + size.name + ".png");

    if (! window.look().save (path))
        throw std::runtime_error ("cannot write " + path.string());

    std::cout << path.string() << std::endl;
}
} // namespace

int main (int argumentCount, char** arguments)
{
    if (argumentCount != 2)
    {
        std::cerr << "Usage: screenshots FOLDER\n";
        return 2;
    }

    try
    {
        const std::filesystem::path folder = arguments[1];
        std::filesystem::create_directories (folder);

        const auto home = std::filesystem::temp_directory_path() / ("solvane-screenshots-" + std::to_string (getpid()));
        std::filesystem::create_directories (home);
        setenv ("HOME", home.c_str(), 1);

        {
            const DisplayServer server (screenWidth, screenHeight);

            for (const auto& size : sizes)
                for (const auto& state : states)
                    take (state, size, folder);
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
