#include "gui/look/SVGCheckbox.h"

namespace orvik
{
SVGCheckbox::SVGCheckbox (const juce::String& name) : SVGButton (name)
{
    setClickingTogglesState (true);
}

void SVGCheckbox::setImages (const juce::String& offSvg,
                             const juce::String& offDownSvg,
                             const juce::String& onSvg,
                             const juce::String& onDownSvg)
{
    onImage = parse (onSvg);
    onDownImage = parse (onDownSvg);

    for (auto* image : { onImage.get(), onDownImage.get() })
        adopt (image);

    SVGButton::setImages (offSvg, {}, offDownSvg);
}

const juce::Drawable* SVGCheckbox::imageFor (bool over, bool down) const
{
    if (! getToggleState())
        return SVGButton::imageFor (over, down);

    return down && onDownImage != nullptr ? onDownImage.get() : onImage.get();
}

bool SVGCheckbox::replaceColour (juce::Colour from, juce::Colour to)
{
    auto replaced = SVGButton::replaceColour (from, to);

    for (auto* image : { onImage.get(), onDownImage.get() })
        if (image != nullptr)
            replaced = image->replaceColour (from, to) || replaced;

    return replaced;
}
} // namespace orvik
