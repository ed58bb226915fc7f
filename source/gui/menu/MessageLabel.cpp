#include "gui/menu/MessageLabel.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/PanelShape.h"
#include "gui/menu/BurgerMenuLayout.h"

#include <algorithm>

namespace
{
constexpr int lineHeight = 20;
constexpr int leastHeight = 40;
constexpr float fontHeight = 15.0f;

juce::TextLayout layOut (const juce::String& text)
{
    juce::AttributedString attributed;
    attributed.append (text, Fonts::regular (fontHeight), juce::Colour (Palette::message));

    // Lines of the font's height and these pixels between them.
    attributed.setLineSpacing (3.0f);

    juce::TextLayout layout;
    layout.createLayout (attributed, static_cast<float> (BurgerMenuLayout::buttonWidth));
    return layout;
}
} // namespace

MessageLabel::MessageLabel()
{
    setColour (textColourId, juce::Colour (Palette::message));
    setFont (Fonts::regular (fontHeight));
    setInterceptsMouseClicks (false, false);

    // The first line may begin above the label, when the text is centred in the panel.
    setPaintingIsUnclipped (true);
}

int MessageLabel::heightFor (const juce::String& text)
{
    return std::max (leastHeight, layOut (text).getNumLines() * lineHeight);
}

void MessageLabel::paint (juce::Graphics& g)
{
    const auto layout = layOut (getText());
    const auto panelHeight = static_cast<float> (getBottom());
    const auto top = (panelHeight + PanelShape::tipHeight - layout.getHeight()) * 0.5f - static_cast<float> (getY());
    layout.draw (g, { 0.0f, top, static_cast<float> (getWidth()), layout.getHeight() });
}
