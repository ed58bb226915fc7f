#pragma once

#include <juce_graphics/juce_graphics.h>

#include <cstdint>
#include <mutex>
#include <span>

/** The picture of a heat strip, which stands at both sides of the room: drawn by a worker while the window is painted.

    Three images, as the walls' pictures have them: the worker draws into the back one, which nobody else sees;
   publish() lets it change places with the waiting one; paint() copies that into the front one and draws from there. So
   every image that has once been painted stays with the thread that paints, where a renderer on the graphics card may
   hang listeners onto it.

    stripLock is held for a swap or a copy. Software images, cleared to transparent. */
class StripPicture
{
public:
    static constexpr int width = 20;

    struct Canvas
    {
        juce::Image image;
        unsigned generation = 0;
    };

    /** Makes empty images of this height in pixels. Message thread. */
    void resize (int height);

    /** The back image, null before the first resize. Worker. */
    [[nodiscard]] Canvas canvas();

    /** Fills a canvas with rows of two pixels from its foot, each by its alpha. Worker. */
    static void draw (Canvas& canvas, std::span<const std::uint8_t> alphas);

    /** Shows what was drawn, unless the size has changed meanwhile. Worker. */
    void publish (const Canvas& drawn);

    /** Draws the strip over the left and the right edge of an area. The thread that paints. */
    void paint (juce::Graphics& graphics, juce::Rectangle<int> area);

private:
    std::mutex stripLock;
    juce::Image front;
    juce::Image waiting;
    Canvas back;
    bool fresh = false;
};
