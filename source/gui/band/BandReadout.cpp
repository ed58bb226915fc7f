#include "gui/band/BandReadout.h"

#include "core/parameters/ParameterTable.h"
#include "gui/band/BandText.h"

juce::String BandReadout::textOf (const BandState& band, ReadoutQuantity quantity)
{
    return band.solo ? juce::String (soloed) : editableTextOf (band, quantity);
}

juce::String BandReadout::editableTextOf (const BandState& band, ReadoutQuantity quantity)
{
    switch (quantity)
    {
        case ReadoutQuantity::frequency:
            return BandText::ofFrequency (band.frequencyHz);
        case ReadoutQuantity::q:
            return BandText::ofQ (band.q);
        case ReadoutQuantity::midSide:
            return ParameterTable::textOf (ParameterText::midSide, band.midSide);
        case ReadoutQuantity::gain:
            break;
    }

    return BandText::ofGain (band.gainDb);
}
