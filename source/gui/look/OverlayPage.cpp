#include "gui/look/OverlayPage.h"

#include "gui/look/Fonts.h"
#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/PanelShape.h"

namespace
{
constexpr float titleHeight = 16.0f;
constexpr float textHeight = 15.0f;
const juce::Rectangle<int> closeBounds { OverlayPage::pageWidth - 105, 420, 77, 34 };
} // namespace

OverlayPage::OverlayPage (const juce::String& title, int titleWidth, juce::String closingWord)
    : word (std::move (closingWord))
{
    setSize (pageWidth, pageHeight);
    setTitle (title);
    addText (titleLabel, title, { 30, 40, titleWidth, 20 });
    titleLabel.setFont (Fonts::bold (titleHeight));
    using Icons::Role;
    closeButton.setImages (Icons::svg (Role::close), Icons::svg (Role::closeOver), Icons::svg (Role::closeDown));
    closeButton.setBounds (closeBounds);
    closeButton.addListener (this);
    addAndMakeVisible (closeButton);
}

void OverlayPage::addText (juce::Label& label, const juce::String& text, juce::Rectangle<int> bounds)
{
    label.setFont (Fonts::regular (textHeight));
    label.setText (text, juce::dontSendNotification);
    label.setColour (juce::Label::textColourId, juce::Colour (Palette::menuText));
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

    PanelShape::drawPage (g, ground);
}

void OverlayPage::buttonClicked (juce::Button* button)
{
    if (button == &closeButton)
        sendActionMessage (word);
}
