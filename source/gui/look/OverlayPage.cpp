#include "gui/look/OverlayPage.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"

namespace
{
constexpr float radius = 4.0f;
constexpr float textHeight = 15.0f;
const juce::Rectangle<int> closeBounds { OverlayPage::pageWidth - 105, 420, 77, 34 };
} // namespace

OverlayPage::OverlayPage (const juce::String& title, int titleWidth, juce::String closingWord)
    : word (std::move (closingWord))
{
    setSize (pageWidth, pageHeight);
    setTitle (title);
    addText (titleLabel, title, { 30, 40, titleWidth, 20 });
    titleLabel.setFont (Fonts::bold (textHeight));
    closeButton.setBounds (closeBounds);
    closeButton.addListener (this);
    addAndMakeVisible (closeButton);
}

void OverlayPage::addText (juce::Label& label, const juce::String& text, juce::Rectangle<int> bounds)
{
    label.setFont (Fonts::regular (textHeight));
    label.setText (text, juce::dontSendNotification);
    label.setColour (juce::Label::textColourId, juce::Colour (Palette::text));
    label.setBorderSize ({});
    label.setInterceptsMouseClicks (false, false);
    label.setBounds (bounds);
    addAndMakeVisible (label);
}

void OverlayPage::paint (juce::Graphics& g)
{
    auto ground = getLocalBounds();

    if (const auto* parent = getParentComponent())
        ground = ground.getIntersection (parent->getLocalBounds().translated (-getX(), -getY()));

    // Half a pixel inwards, so that the frame fills whole pixels.
    const auto frame = ground.toFloat().reduced (0.5f);
    g.setColour (juce::Colour (Palette::sliderPanel));
    g.fillRoundedRectangle (frame, radius);
    g.setColour (juce::Colour (Palette::panelOutline));
    g.drawRoundedRectangle (frame, radius, 1.0f);
}

void OverlayPage::buttonClicked (juce::Button* button)
{
    if (button == &closeButton)
        sendActionMessage (word);
}

void OverlayPage::CloseButton::paintButton (juce::Graphics& g, bool over, bool down)
{
    const auto frame = getLocalBounds().toFloat().reduced (0.5f);
    g.setColour (juce::Colour (down ? Palette::buttonDown : over ? Palette::sliderTrack : Palette::barLight));
    g.fillRoundedRectangle (frame, radius);
    g.setColour (juce::Colour (over ? Palette::secondaryLabel : Palette::panelOutline));
    g.drawRoundedRectangle (frame, radius, 1.0f);
    g.setColour (juce::Colour (down ? Palette::barDark : Palette::text));
    g.setFont (Fonts::regular (textHeight));
    g.drawText (getName(), getLocalBounds(), juce::Justification::centred);
    drawFocusRing (g);
}
