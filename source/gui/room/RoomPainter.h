#pragma once

#include "gui/room/RoomGeometry.h"

#include <juce_graphics/juce_graphics.h>

/** A band as it is marked on the walls. */
struct BandView
{
    int band = 0;
    float frequencyHz = 0.0f;
    float gainDb = 0.0f;

    /** Its edges in hertz. */
    float upperHz = 0.0f;
    float lowerHz = 0.0f;

    juce::Colour colour;
    bool solo = false;

    /** Without a sound of its own: bypassed by itself or with the whole plug-in, or beside a solo. */
    bool silent = false;
    bool outOfScale = false;
};

/** Draws what lies on the walls between the background and the bands. Any thread; keeps nothing. */
namespace RoomPainter
{
/** A line for each decibel. */
void drawGrid (juce::Graphics& graphics, const RoomGeometry& room);

/** The two marks of a band, unless it is soloed or out of scale.
    @param master the marks stay within what Master applies */
void drawMarker (juce::Graphics& graphics, const RoomGeometry& room, const BandView& band, bool master);

/** Dashed lines from the front of the room to the marks of a band; for a soloed one, along its edges. */
void drawFocus (juce::Graphics& graphics, const RoomGeometry& room, const BandView& band, bool master);
} // namespace RoomPainter
