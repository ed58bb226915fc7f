#pragma once

#include "gui/band/BandLayout.h"

/** How a band looks at the moment. */
struct BandLook
{
    /** The band's own colour, or the grey of one that is not heard. */
    juce::Colour colour;

    /** 0 at the front plane, 1 at the back wall. */
    float depth = 0.5f;

    /** Share of the way from invisible to bright, 0.7 at rest. */
    float fade = 0.7f;

    /** Where the band acts between mid and side; without it the band is whole. */
    bool midSideShown = false;
    float midSide = 0.5f;

    bool highShelf = false;

    /** The mouse is over the line; Ctrl is held over the band; the band is in focus; the mouse is over an edge. */
    bool lineHot = false;
    bool ctrlHover = false;
    bool handlesShown = false;
    bool handlesHot = false;

    /** Of a band that is out of scale: only its dots are drawn, and the mouse is over one. */
    bool dots = false;
    bool overDot = false;
};

/** The x and the width of a band's painted parts at a place between mid and side: one part up to the middle, two
    beyond. `second` is empty where there is one. */
struct MidSideParts
{
    juce::Range<float> first;
    juce::Range<float> second;
};

[[nodiscard]] MidSideParts midSideParts (float width, float midSide) noexcept;

/** How strongly a band's body is filled, within 0 and 1. */
[[nodiscard]] float bodyAlpha (float depth, float fade) noexcept;

/** Draws a band into its bounds. */
void paintBand (juce::Graphics& g, const BandLayout& layout, const BandEdges& edges, const BandLook& look);
