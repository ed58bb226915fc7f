#pragma once

#include "core/references/ReferenceTrack.h"

#include <juce_graphics/juce_graphics.h>

/** Draws the outline of a track: squares of two pixels, one fill for each colour, over a grid that is drawn once.

    Paints on whatever thread holds the message lock. */
class OutlineDrawing
{
public:
    /** @param waveformWidth in pixels; there is a column for every third one */
    void resize (int waveformWidth);

    void paintGrid (juce::Graphics& g);
    static void paintOutline (juce::Graphics& g, const ReferenceTrack::Outline& outline);

private:
    void drawGrid (float wantedScale);

    int columns = 0;
    juce::Image gridImage;

    /** Pixels of the grid's image for one of the window's. */
    float gridScale = 0.0f;
};
