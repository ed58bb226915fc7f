#include "gui/menu/BurgerMenu.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/PanelShape.h"

#include <algorithm>

namespace
{
constexpr int left = 17;
constexpr int labelWidth = 196;
constexpr int messageTop = 15;
constexpr int lineHeight = 20;
constexpr int leastMessageHeight = 40;
constexpr float messageFontHeight = 15.0f;

/** Below the middle of the burger button. */
constexpr float tipX = 125.0f;

juce::TextLayout layOutMessage (const juce::String& text)
{
    juce::AttributedString attributed;
    attributed.append (text, Fonts::regular (messageFontHeight), juce::Colour (Palette::message));

    // Lines of the font's height and these pixels between them.
    attributed.setLineSpacing (3.0f);

    juce::TextLayout layout;
    layout.createLayout (attributed, static_cast<float> (labelWidth));
    return layout;
}
} // namespace

BurgerMenu::MessageLabel::MessageLabel()
{
    setColour (textColourId, juce::Colour (Palette::message));
    setFont (Fonts::regular (messageFontHeight));
    setInterceptsMouseClicks (false, false);

    // The first line may begin above the label, when the text is centred in the panel.
    setPaintingIsUnclipped (true);
}

void BurgerMenu::MessageLabel::paint (juce::Graphics& g)
{
    const auto layout = layOutMessage (getText());
    const auto panelHeight = static_cast<float> (getBottom());
    const auto top = (panelHeight + PanelShape::tipHeight - layout.getHeight()) * 0.5f - static_cast<float> (getY());
    layout.draw (g, { 0.0f, top, static_cast<float> (getWidth()), layout.getHeight() });
}

BurgerMenu::BurgerMenu()
{
    setTitle ("Messages");
    addChildComponent (messageLabel);
}

int BurgerMenu::messageHeightFor (const juce::String& text)
{
    return std::max (leastMessageHeight, layOutMessage (text).getNumLines() * lineHeight);
}

void BurgerMenu::showMessage (State kind, const juce::String& text)
{
    currentState = kind;
    messageText = text;
    messageHeight = messageHeightFor (text);
    messageLabel.setText (text, juce::dontSendNotification);

    if (const auto* parent = getParentComponent())
        layOut (parent->getWidth());
}

void BurgerMenu::layOut (int parentWidth)
{
    auto y = 0;
    messageLabel.setVisible (currentState == State::message);

    if (currentState == State::message)
    {
        y = messageTop;
        messageLabel.setBounds (left, y, labelWidth, messageHeight);
        y += messageHeight;
    }

    setBounds (parentWidth - distanceFromRight, 0, panelWidth, y);
    repaint();
}

void BurgerMenu::paint (juce::Graphics& g)
{
    PanelShape::draw (g, getLocalBounds(), tipX);
}
