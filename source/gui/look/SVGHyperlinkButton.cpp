#include "gui/look/SVGHyperlinkButton.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"

#include <algorithm>

namespace orvik
{
namespace
{
constexpr float textHeight = 14.0f;
} // namespace

SVGHyperlinkButton::SVGHyperlinkButton (const juce::String& name, juce::URL address)
    : SVGButton (name),
      openAddress ([] (const juce::URL& target) { target.launchInDefaultBrowser(); }),
      url (std::move (address))
{
    setButtonText (name);
    setMouseCursor (juce::MouseCursor::PointingHandCursor);
}

void SVGHyperlinkButton::paintButton (juce::Graphics& g, bool over, bool down)
{
    SVGButton::paintButton (g, over, down);

    if (imageFor (over, down) != nullptr)
        return;

    auto font = Fonts::regular (textHeight);
    font.setUnderline (over);
    g.setFont (font);
    g.setColour (juce::Colour (Palette::text).withMultipliedAlpha (down ? 0.7f : 1.0f));

    // What reaches beyond its parent is clicked there no more, but its text stays where it can be read.
    auto area = getLocalBounds();

    if (const auto* parent = getParentComponent())
        area.setRight (std::min (area.getRight(), parent->getWidth() - getX()));

    g.drawText (getButtonText(), area, juce::Justification::centredLeft);
}

void SVGHyperlinkButton::clicked()
{
    if (url.isWellFormed())
        openAddress (url);
}
} // namespace orvik
