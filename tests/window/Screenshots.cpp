#include "window/DisplayServer.h"
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

struct Band
{
    double frequencyHz;
    double gainDb;
    double q = 1.0;
    bool shelf = false;
    double midSide = 0.5;
};

void hang (PluginWindow& window, int number, const Band& band)
{
    const auto prefix = "Band " + std::to_string (number) + " ";
    const auto normalised = [] (double value, double low, double high, double skew)
    { return static_cast<float> (std::pow ((value - low) / (high - low), skew)); };

    window.setNormalised (prefix + "Frequency", normalised (band.frequencyHz, 320.0, 20000.0, 0.3));
    window.setNormalised (prefix + "Q", normalised (band.q, 0.5, 5.0, 1.0));
    window.setNormalised (prefix + "High Shelf", band.shelf ? 1.0f : 0.0f);
    window.setNormalised (prefix + "Mid/Side", static_cast<float> (band.midSide));
    window.setNormalised (prefix + "Active", 1.0f);
    window.setNormalised (prefix + "Gain", normalised (band.gainDb, -12.0, 12.0, 1.0));
}

void hangTen (PluginWindow& window)
{
    const std::vector<Band> bands {
        { 400.0, -3.0 },  { 640.0, 2.0 },  { 1000.0, -4.0, 2.0 }, { 1500.0, 1.5 },       { 2400.0, 5.0, 1.5 },
        { 3600.0, -2.5 }, { 5000.0, 3.5 }, { 7200.0, -6.0, 2.5 }, { 10000.0, 4.0, 1.5 }, { 14000.0, 6.0, 1.0, true }
    };

    for (std::size_t index = 0; index < bands.size(); ++index)
        hang (window, static_cast<int> (index) + 1, bands[index]);
}

struct State
{
    const char* name;
    std::function<void (PluginWindow&)> reach;
};

const Band voice { 2400.0, 4.0 };

const std::vector<State> states {
    { "empty", [] (PluginWindow&) {} },
    { "one-band", [] (PluginWindow& window) { hang (window, 1, voice); } },
    { "ten-bands", hangTen },
    { "hover",
      [] (PluginWindow& window)
      {
          hang (window, 1, voice);
          window.idleFor (std::chrono::milliseconds (200));
          window.moveTo (150, 400);
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
    { "gain-scale",
      [] (PluginWindow& window)
      {
          hangTen (window);
          window.setNormalised ("Gain Scale", 0.75f);
      } },
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
