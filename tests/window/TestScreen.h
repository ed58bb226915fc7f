#pragma once

#include <cstdint>
#include <string>
#include <vector>

using XDisplay = struct _XDisplay;
using XWindow = unsigned long;

/** A rectangle of what the screen shows. */
struct Picture
{
    int width = 0;
    int height = 0;

    /** Row by row from the top, 0xRRGGBB. */
    std::vector<std::uint32_t> pixels;

    [[nodiscard]] std::uint32_t at (int x, int y) const
    {
        return pixels.at (static_cast<std::size_t> (y) * static_cast<std::size_t> (width)
                          + static_cast<std::size_t> (x));
    }

    bool operator== (const Picture&) const = default;

    /** Writes a PNG. @returns false if it cannot */
    bool save (const std::string& path) const;
};

/** A connection to the display that DISPLAY names, with a pointer and a keyboard that other programs take for real
   ones.

    One thread. A display that cannot be opened throws std::runtime_error. */
class TestScreen
{
public:
    TestScreen();
    ~TestScreen();

    TestScreen (const TestScreen&) = delete;
    TestScreen& operator= (const TestScreen&) = delete;

    [[nodiscard]] XDisplay* display() const noexcept { return connection; }

    /** Places a plain window of another program's, as a host gives one to a plug-in; shown when this returns. */
    [[nodiscard]] XWindow makeWindow (int x, int y, int width, int height, bool managed = false);
    void resizeWindow (XWindow window, int width, int height);
    void destroyWindow (XWindow window);

    /** The first child of a window, or 0: what a plug-in has put into it. */
    [[nodiscard]] XWindow childOf (XWindow window);

    /** Whether a window and all around it are shown. */
    [[nodiscard]] bool isShown (XWindow window);

    /** A shown window of any program by its title, or 0. */
    [[nodiscard]] XWindow findShown (const std::string& title);

    /** What a window manager's cross says to a window. */
    void askToClose (XWindow window);

    /** Where a window's top left corner stands on the screen. */
    struct Place
    {
        int x;
        int y;
    };

    [[nodiscard]] Place placeOf (XWindow window);

    struct Size
    {
        int width;
        int height;

        bool operator== (const Size&) const = default;
    };

    [[nodiscard]] Size sizeOf (XWindow window);

    /** What is seen of a window. */
    [[nodiscard]] Picture look (XWindow window);

    //==================================================================================================================
    /** Moves the pointer to a place of the screen. */
    void point (int x, int y);

    /** @param button  1 left, 2 middle, 3 right, 4 and 5 the wheel up and down */
    void press (unsigned button);
    void release (unsigned button);

    /** A key by its name, such as "Return", "Tab", "a", "Control_L". */
    void keyDown (const std::string& name);
    void keyUp (const std::string& name);

    /** Everything above has reached the server. */
    void finish();

private:
    [[nodiscard]] XWindow findShownIn (XWindow parent, const std::string& title);

    XDisplay* connection;
};
