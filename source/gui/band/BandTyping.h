#pragma once

#include "gui/band/BandHand.h"
#include "gui/band/BandReadout.h"

/** What a text that is typed into a band's read-out does. Message thread. */
class BandTyping
{
public:
    /** All outlive this object. */
    BandTyping (const BandState& state,
                IBandSurroundings& surroundings,
                const BandCallbacks& callbacks,
                BandHand& writer);

    /** A text editor has opened over the read-out, which shows this. */
    void begin (ReadoutQuantity shown, juce::TextEditor& editor);

    /** A text was entered: it is for the quantity that begin() named. */
    void take (const juce::String& text);

    /** A gain by its number: limited, and opening the room's scale first where it lies beyond. */
    void setGain (double gainDb);

private:
    const BandState& band;
    IBandSurroundings& room;
    const BandCallbacks& callbacks;
    BandHand& hand;
    ReadoutQuantity quantity = ReadoutQuantity::gain;
};
