#include "gui/band/SolvaneControlPanel.h"

#include "gui/band/BandRoom.h"
#include "gui/band/BandText.h"
#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

#include <cmath>

namespace
{
constexpr float outlineThickness = 1.0f;
constexpr float overlapHeight = 16.0f;
constexpr int readoutHeight = 20;

// The flat panel holds a flatter read-out, so that its outline stays whole.
constexpr int overlapReadoutHeight = 13;

/** The long texts of mid and side have a hundred pixels. */
constexpr float shortTextHeight = 14.0f;
constexpr float overlapTextHeight = 13.0f;
constexpr float longTextHeight = 10.5f;

constexpr float crossThickness = 2.0f;
constexpr int crossInset = 2;
constexpr float mutedAlpha = 0.7f;
constexpr float disabledAlpha = 0.25f;

/** Distances of the parts from the panel's middle, for a short and for a long text in the read-out. */
struct Offsets
{
    int readoutLeft;
    int bypassLeft;
    int soloRight;
    int filterTypeLeft;
    int closeRight;
};

constexpr Offsets shortText { 30, 52, 38, 72, 62 };
constexpr Offsets longText { 50, 70, 54, 90, 78 };

void setIcon (orvik::SVGButton& button, Icons::Role role)
{
    button.setImages (Icons::svg (role));
}
} // namespace

SolvaneControlPanel::SolvaneControlPanel (Shape panelShape) : shape (panelShape)
{
    setSize (BandRoom::panelWidth, BandRoom::panelHeight);
    setVisible (false);

    readout.setName ("readout");
    readout.setTitle ("Amount");
    readout.setTooltip (Tips::text (Tips::bandReadout));
    readout.setJustificationType (juce::Justification::centred);
    readout.setBorderSize ({});
    readout.setMouseCursor (juce::MouseCursor::PointingHandCursor);
    readout.setColour (juce::Label::textColourId, juce::Colour (Palette::text));
    readout.setColour (juce::Label::textWhenEditingColourId, juce::Colour (Palette::text));
    readout.setColour (juce::Label::backgroundWhenEditingColourId, juce::Colour (Palette::bandPanel));
    readout.setColour (juce::Label::outlineWhenEditingColourId, juce::Colours::transparentBlack);
    readout.setColour (juce::TextEditor::focusedOutlineColourId, juce::Colours::transparentBlack);
    setEditable (true);
    addAndMakeVisible (readout);

    setIcon (bypassButton, Icons::Role::bandActive);
    setIcon (soloButton, Icons::Role::soloOff);
    setIcon (filterTypeButton, Icons::Role::bell);
    bypassButton.setTooltip (Tips::text (Tips::bandBypass));
    soloButton.setTooltip (Tips::text (Tips::bandSolo));
    filterTypeButton.setTooltip (Tips::text (Tips::bandShelf));
    bypassButton.setTitle ("Bypass band");
    soloButton.setTitle ("Solo band");
    filterTypeButton.setTitle ("Bell or high shelf");

    for (auto* button : { &bypassButton, &soloButton, &filterTypeButton })
    {
        button->setMouseCursor (juce::MouseCursor::PointingHandCursor);
        // The keyboard reaches what they do through the band itself.
        button->setWantsKeyboardFocus (false);
        button->addListener (this);
        addAndMakeVisible (*button);
    }

    setShelfEnabled (false);
}

SolvaneControlPanel::~SolvaneControlPanel()
{
    for (auto* button : { &bypassButton, &soloButton, &filterTypeButton })
        button->removeListener (this);
}

//======================================================================================================================
void SolvaneControlPanel::setBand (int band,
                                   const juce::String& title,
                                   float gainDb,
                                   juce::Colour bandColour,
                                   bool enableHighShelf)
{
    setComponentID (juce::String (band));
    setTitle (title + " panel");
    showText (BandText::ofGain (gainDb), false);
    setColour (bandColour);
    setShelfEnabled (enableHighShelf);
}

void SolvaneControlPanel::setOwner (IPanelOwner* newOwner)
{
    owner = newOwner;
}

void SolvaneControlPanel::setSolo (bool state)
{
    if (std::exchange (soloIcon, state) != state)
        setIcon (soloButton, state ? Icons::Role::soloOn : Icons::Role::soloOff);
}

void SolvaneControlPanel::setBypass (bool state)
{
    if (std::exchange (bypassIcon, state) != state)
        setIcon (bypassButton, state ? Icons::Role::bandBypassed : Icons::Role::bandActive);
}

void SolvaneControlPanel::setHighShelf (bool state)
{
    if (std::exchange (shelfIcon, state) != state)
        setIcon (filterTypeButton, state ? Icons::Role::shelf : Icons::Role::bell);
}

void SolvaneControlPanel::setShelfEnabled (bool state)
{
    filterTypeButton.setEnabled (state);
    filterTypeButton.setAlphas (state ? 1.0f : disabledAlpha, 1.0f);
    filterTypeButton.setToggled (false);
}

void SolvaneControlPanel::setColour (juce::Colour newColour)
{
    if (std::exchange (colour, newColour) != newColour)
        repaint();
}

void SolvaneControlPanel::showText (const juce::String& text, bool wideText)
{
    if (! isTyping() && ! textHeld)
        readout.setText (text, juce::dontSendNotification);

    if (std::exchange (wide, wideText) != wideText)
    {
        resized();
        repaint();
    }
}

void SolvaneControlPanel::setEditable (bool state)
{
    readout.setEditable (state, false, false);

    // The tabulator walks from band to band; a label that takes the focus would open for typing on the way.
    readout.setWantsKeyboardFocus (false);
}

void SolvaneControlPanel::openEditor()
{
    showAtOnce (true);
    readout.showEditor();
}

void SolvaneControlPanel::closeEditor()
{
    readout.hideEditor (true);
}

//======================================================================================================================
void SolvaneControlPanel::setShown (bool state)
{
    shown = state;

    if (shown && ! isVisible())
    {
        applyFade();
        setVisible (true);
    }
}

void SolvaneControlPanel::showAtOnce (bool state)
{
    shown = state;
    fadeStep = state ? fadeSteps : 0;
    applyFade();
    setVisible (state);
}

bool SolvaneControlPanel::tick()
{
    if (settled())
        return false;

    fadeStep += shown ? 1 : -1;
    applyFade();

    if (fadeStep == 0)
        setVisible (false);

    return true;
}

void SolvaneControlPanel::applyFade()
{
    setAlpha (static_cast<float> (fadeStep) / fadeSteps);
    repaint();
}

//======================================================================================================================
void SolvaneControlPanel::resized()
{
    const auto& offsets = wide ? longText : shortText;
    const auto middle = getWidth() / 2;
    const auto centre = getHeight() / 2;
    const auto height = shape == Shape::own ? readoutHeight : overlapReadoutHeight;

    const auto shortHeight = shape == Shape::own ? shortTextHeight : overlapTextHeight;
    readout.setFont (juce::Font (wide ? longTextHeight : shortHeight));
    readout.setBounds (middle - offsets.readoutLeft, centre - height / 2, 2 * offsets.readoutLeft, height);
    bypassButton.setBounds (middle - offsets.bypassLeft, centre - 7, 14, 14);
    soloButton.setBounds (middle + offsets.soloRight, centre - 8, 14, 14);
    filterTypeButton.setBounds (middle - offsets.filterTypeLeft, centre - 3, 16, 12);
}

juce::Rectangle<int> SolvaneControlPanel::closeArea() const noexcept
{
    const auto& offsets = wide ? longText : shortText;
    return { offsets.closeRight + getWidth() / 2, getHeight() / 2 - 6, 12, 12 };
}

void SolvaneControlPanel::paint (juce::Graphics& g)
{
    const auto fade = static_cast<float> (fadeStep) / fadeSteps;
    const auto whole = getLocalBounds().toFloat();
    const auto height = (shape == Shape::own ? whole.getHeight() : overlapHeight) * fade;
    const auto corner = shape == Shape::own ? 16.0f : 8.0f;
    const auto body = whole.withSizeKeepingCentre (whole.getWidth(), height).reduced (outlineThickness / 2.0f);

    g.setColour (juce::Colour (Palette::bandPanel));
    g.fillRoundedRectangle (body, corner);
    g.setColour (colour);
    g.drawRoundedRectangle (body, corner, outlineThickness);

    const auto cross = closeArea().reduced (crossInset).toFloat();
    g.setColour (juce::Colour (Palette::icon).withAlpha (overClose ? 1.0f : mutedAlpha));
    g.drawLine ({ cross.getTopLeft(), cross.getBottomRight() }, crossThickness);
    g.drawLine ({ cross.getBottomLeft(), cross.getTopRight() }, crossThickness);
}

//======================================================================================================================
void SolvaneControlPanel::setOverClose (bool state)
{
    if (std::exchange (overClose, state) == state)
        return;

    setMouseCursor (state ? juce::MouseCursor::PointingHandCursor : juce::MouseCursor::NormalCursor);
    repaint (closeArea());
}

void SolvaneControlPanel::mouseMove (const juce::MouseEvent& event)
{
    setOverClose (closeArea().contains (event.getPosition()));
}

void SolvaneControlPanel::mouseExit (const juce::MouseEvent&)
{
    setOverClose (false);
}

void SolvaneControlPanel::mouseUp (const juce::MouseEvent& event)
{
    if (owner != nullptr && closeArea().contains (event.getPosition())
        && closeArea().contains (event.getMouseDownPosition()))
        owner->panelCloseClicked();
}

juce::String SolvaneControlPanel::getTooltip()
{
    return overClose ? Tips::text (Tips::bandDelete) : juce::String();
}

void SolvaneControlPanel::buttonClicked (juce::Button* button)
{
    if (owner == nullptr)
        return;

    if (button == &soloButton)
        owner->panelSoloClicked();
    else if (button == &bypassButton)
        owner->panelBypassClicked();
    else
        owner->panelShelfClicked();
}
