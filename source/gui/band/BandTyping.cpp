#include "gui/band/BandTyping.h"

#include "gui/band/BandText.h"
#include "gui/band/TypedGain.h"

#include <cmath>
#include <utility>

BandTyping::BandTyping (const BandState& state,
                        IBandSurroundings& surroundings,
                        const BandCallbacks& bound,
                        BandHand& writer)
    : band (state), room (surroundings), callbacks (bound), hand (writer)
{
}

void BandTyping::begin (ReadoutQuantity shown, juce::TextEditor& editor)
{
    constexpr int longestText = 16;
    quantity = shown == ReadoutQuantity::midSide ? ReadoutQuantity::gain : shown;
    editor.setJustification (juce::Justification::centred);
    editor.setInputRestrictions (longestText);
    editor.setText (BandReadout::editableTextOf (band, quantity), false);
    editor.selectAll();
}

void BandTyping::take (const juce::String& text)
{
    const auto number = BandText::toNumber (text);
    const auto typed = std::exchange (quantity, ReadoutQuantity::gain);

    if (! band.usable())
        return;

    if (typed == ReadoutQuantity::q)
        hand.setQ (static_cast<float> (number));
    else if (typed == ReadoutQuantity::frequency)
        hand.setFrequency (static_cast<float> (std::trunc (number)));
    else if (! band.solo)
        setGain (number);
}

void BandTyping::setGain (double gainDb)
{
    const auto limits = room.gainLimits();
    const auto typed = typedGain (gainDb, limits);

    // While the scale is on its way a depth would mean another gain by the time it arrives.
    if (typed.widensScale || room.scaleAnimating())
        room.setTypedGain (typed.gainDb);

    if (typed.widensScale)
        callbacks.onCollapse (-1, false);

    hand.setGain (depthOfGain (typed.gainDb, limits.scaleDb));
}
