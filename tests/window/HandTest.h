#pragma once

#include "window/HungBand.h"
#include "window/PluginWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

/** An open window in mode Mix, with a pointer that has not clicked yet. Columns and rows are pixels of the room. */
class HandTest : public testing::Test
{
protected:
    explicit HandTest (bool managed = false);

    /** Lets go of what a failed test still holds. */
    ~HandTest() override;

    /** Hangs a band and waits until its line shows in the room. */
    void hangAndSee (int number, const HungBand& band);

    /** Hangs band 2 behind band 1, at 1200 and 1000 Hz, the latter with 6 dB, and comes to the line of the hidden one
        with Ctrl held down. */
    void reachBehindWithCtrl();

    /** Where that line runs over the body of the band in front. */
    static constexpr int hiddenLine = 403;

    /** Whether a band's line, in the band's own colour, crosses the room at a row, or beside it. */
    [[nodiscard]] bool showsLine (int number, int row);

    /** Whether a pixel of the window has a colour, or nearly. */
    [[nodiscard]] bool showsColour (int x, int y, std::uint32_t colour);

    /** Whether the panel of a band in the middle stands in full across its line at a row. */
    [[nodiscard]] bool showsPanel (int row);

    /** Whether a message lies over the room. */
    [[nodiscard]] bool showsMessage();

    /** Presses, goes to another row in steps of whole pixels, one event each and none of them waited for, and holds.
        @param changes  how many changes of the parameter to wait for
        @returns the figures of these changes as the host was told them */
    std::vector<double>
    stroke (const std::string& parameterName, int column, int fromRow, int toRow, int events, std::size_t changes);

    /** What the host was told since the last call. */
    struct Told
    {
        int begins = 0;
        int ends = 0;
        std::vector<double> changes;
    };

    [[nodiscard]] Told told (const std::string& parameterName);

    // Places of the room instead of the window.
    void press (int column, int row) { window.press (roomX + column, roomY + row); }
    void moveTo (int column, int row) { window.moveTo (roomX + column, roomY + row); }
    void click (int column, int row) { window.click (roomX + column, roomY + row); }
    void doubleClick (int column, int row) { window.doubleClick (roomX + column, roomY + row); }
    void wheel (int column, int row, int notches) { window.wheel (roomX + column, roomY + row, notches); }

    /** Lets go, and waits until nothing moves any more. */
    void letGo();

    /** Whether a parameter's figure comes to a value. */
    [[nodiscard]] bool comesTo (const std::string& parameterName, double figure, double tolerance = 0.001);

    /** Idles until a fifth of a second goes by without a word to the host. */
    void waitForRest();

    void idleFor (int milliseconds) { window.idleFor (std::chrono::milliseconds (milliseconds)); }

    /** The body of a band's panel. */
    static constexpr std::uint32_t bandPanel = 0x202020;

    static constexpr int roomX = 25;
    static constexpr int roomY = 42;

    PluginWindow window;
};
