#include "services/Product.h"

juce::String Product::version()
{
    return SOLVANE_VERSION;
}

juce::String Product::buildDate()
{
    return __DATE__;
}

juce::String Product::rights (const juce::String& buildDate)
{
    const auto year = buildDate.fromLastOccurrenceOf (" ", false, false);
    return juce::String::charToString (0xA9) + " " + year
           + " Brevlen. Free software under the GNU GPL, version 3 or later.";
}
