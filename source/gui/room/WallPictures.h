#pragma once

#include <juce_graphics/juce_graphics.h>

#include <mutex>

/** Pictures of one curve on the two side walls, drawn by a worker while the room is painted.

    Three pairs: the worker draws into the back pair, which nobody else sees; publish() lets it change places with the
    waiting pair; paint() copies that into the front pair, which it draws from. The copy costs tens of microseconds, and
    keeps every picture that has once been painted on the thread that paints: a renderer on the graphics card hangs
    listeners onto such pictures, which no other thread may call.

    The lock is held for a swap or a copy. Software images, cleared to transparent. */
class WallPictures
{
public:
    struct Pair
    {
        juce::Image left;
        juce::Image right;
    };

    /** What to draw into, and for which size it was made. */
    struct Canvas
    {
        Pair pair;
        float displayScale = 1.0f;
        int roomHeight = 0;
        unsigned generation = 0;
    };

    /** Makes empty pictures for a wall of this many pixels at a display's scale. Message thread. */
    void resize (int wallWidth, int roomHeight, float displayScale);

    /** The back pair; its images are null before the first resize. Worker. */
    [[nodiscard]] Canvas canvas();

    /** Shows what was drawn, unless the size has changed meanwhile. Worker. */
    void publish (const Canvas& drawn);

    /** Draws the walls that were last published, over the left and the right edge of the area. The thread that paints.
     */
    void paint (juce::Graphics& graphics, juce::Rectangle<int> area);

private:
    static void copy (const juce::Image& from, juce::Image& to);

    std::mutex imageLock;
    Pair front;
    Pair waiting;
    Canvas back;
    bool fresh = false;
};
