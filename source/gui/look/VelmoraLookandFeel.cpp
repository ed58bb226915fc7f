#include "gui/look/VelmoraLookandFeel.h"

#include "gui/look/Palette.h"
#include "gui/look/PointerShape.h"
#include "gui/look/TransportPicture.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr float buttonTextHeight = 14.0f;
constexpr float smallButtonTextHeight = 12.0f;
constexpr float buttonRadius = 3.0f;
constexpr float disabledAlpha = 0.4f;

constexpr int trackInset = 9;
constexpr float trackHalfHeight = 4.0f;
constexpr float trackRadius = 2.0f;
constexpr float tickHalfHeight = 2.0f;
constexpr float firstTick = 13.0f;
constexpr float lastTickFromEnd = 10.0f;
constexpr float thumbWidth = 6.0f;
constexpr float thumbHeight = 16.0f;
constexpr float thumbInnerWidth = 2.0f;
constexpr float thumbInnerHeight = 10.0f;
constexpr float pointerWidth = 8.0f;
constexpr float pointerHeight = 5.0f;

constexpr float menuTextHeight = 14.0f;
constexpr int menuItemHeight = 22;
constexpr int menuSeparatorHeight = 9;
constexpr int menuBorder = 4;
constexpr int menuTextInset = 14;
constexpr int menuInset = 5;
constexpr float menuItemRadius = 3.0f;

constexpr float tipTextHeight = 14.0f;
constexpr float tipRadius = 4.0f;
constexpr float tipWidth = 320.0f;
constexpr float tipInset = 8.0f;
constexpr float tipLineSpacing = 2.0f;
constexpr int tipDistance = 16;

juce::Colour colour (Palette::Argb argb)
{
    return juce::Colour (argb);
}

bool hasScale (const juce::Slider& slider)
{
    return slider.getName() == "gain-scale" || slider.getName() == "output-gain";
}

juce::TextLayout layoutTip (const juce::String& text, const juce::Font& font, float width)
{
    juce::AttributedString attributed;
    attributed.setJustification (juce::Justification::topLeft);
    attributed.setLineSpacing (tipLineSpacing);
    attributed.append (text, font, colour (Palette::hintLabel));

    juce::TextLayout layout;
    layout.createLayout (attributed, width);
    return layout;
}
} // namespace

VelmoraLookandFeel::VelmoraLookandFeel (const std::atomic<float>& levelMatchPointer)
    : levelMatch (levelMatchPointer),
      regularFont (Fonts::regular (buttonTextHeight)),
      boldFont (Fonts::bold (buttonTextHeight))
{
    setColour (juce::Slider::backgroundColourId, colour (Palette::sliderPanel));
    setColour (juce::Slider::trackColourId, colour (Palette::sliderTrack));
    setColour (juce::Slider::thumbColourId, colour (Palette::thumb));
    setColour (juce::Label::textColourId, colour (Palette::text));
    setColour (juce::Label::textWhenEditingColourId, colour (Palette::text));
    setColour (juce::Label::backgroundWhenEditingColourId, colour (Palette::bandPanel));
    setColour (juce::Label::outlineWhenEditingColourId, colour (Palette::panelOutline));
    setColour (juce::TextButton::buttonColourId, colour (Palette::button));
    setColour (juce::TextButton::buttonOnColourId, colour (Palette::buttonOn));
    setColour (juce::TextButton::textColourOffId, colour (Palette::text));
    setColour (juce::TextButton::textColourOnId, colour (Palette::text));
    setColour (juce::TextEditor::textColourId, colour (Palette::text));
    setColour (juce::TextEditor::backgroundColourId, colour (Palette::bandPanel));
    setColour (juce::TextEditor::highlightColourId, colour (Palette::inactiveBand));
    setColour (juce::TextEditor::highlightedTextColourId, colour (Palette::text));
    setColour (juce::TextEditor::outlineColourId, colour (Palette::panelOutline));
    setColour (juce::TextEditor::focusedOutlineColourId, colour (Palette::frequencyLabel));
    setColour (juce::CaretComponent::caretColourId, colour (Palette::text));
    setColour (juce::PopupMenu::backgroundColourId, colour (Palette::menu));
    setColour (juce::PopupMenu::textColourId, colour (Palette::menuText));
    setColour (juce::PopupMenu::headerTextColourId, colour (Palette::menuTitle));
    setColour (juce::PopupMenu::highlightedBackgroundColourId, colour (Palette::menuHighlight));
    setColour (juce::PopupMenu::highlightedTextColourId, colour (Palette::menuText));
    setColour (juce::TooltipWindow::backgroundColourId, colour (Palette::bubble));
    setColour (juce::TooltipWindow::textColourId, colour (Palette::hintLabel));
    setColour (juce::TooltipWindow::outlineColourId, colour (Palette::panelOutline));
}

juce::Font VelmoraLookandFeel::regular (float height) const
{
    return regularFont.withHeight (height * regularScale);
}

juce::Font VelmoraLookandFeel::bold (float height) const
{
    return boldFont.withHeight (height * boldScale);
}

//======================================================================================================================
juce::Font VelmoraLookandFeel::getTextButtonFont (juce::TextButton& button, int)
{
    if (button.getName().contains ("bold"))
        return bold (buttonTextHeight);

    if (button.getName().contains ("small"))
        return bold (smallButtonTextHeight);

    return regular (buttonTextHeight);
}

void VelmoraLookandFeel::drawButtonText (juce::Graphics& g, juce::TextButton& button, bool, bool down)
{
    const auto on = button.getToggleState();

    // A pressed button swaps the colours of its text and its background.
    const auto textColour = down ? (on ? juce::TextButton::buttonOnColourId : juce::TextButton::buttonColourId)
                                 : (on ? juce::TextButton::textColourOnId : juce::TextButton::textColourOffId);
    g.setColour (button.findColour (textColour).withMultipliedAlpha (button.isEnabled() ? 1.0f : disabledAlpha));
    g.setFont (getTextButtonFont (button, button.getHeight()));
    g.drawText (button.getButtonText(), button.getLocalBounds(), juce::Justification::centred, false);
}

void VelmoraLookandFeel::drawButtonBackground (juce::Graphics& g,
                                               juce::Button& button,
                                               const juce::Colour&,
                                               bool over,
                                               bool down)
{
    auto fill = colour (button.getToggleState() ? Palette::buttonOn : Palette::button);

    if (down)
        fill = colour (Palette::buttonDown);

    if (! button.isEnabled())
        fill = fill.withMultipliedAlpha (disabledAlpha);

    const auto area = button.getLocalBounds().toFloat();
    g.setColour (fill);
    g.fillRoundedRectangle (area, buttonRadius);

    if (button.hasKeyboardFocus (false) || (over && ! down && button.isEnabled()))
    {
        g.setColour (colour (Palette::focusRing));
        g.drawRoundedRectangle (area.reduced (0.5f), buttonRadius, 1.0f);
    }
}

//======================================================================================================================
int VelmoraLookandFeel::getSliderThumbRadius (juce::Slider&)
{
    return trackInset;
}

juce::Slider::SliderLayout VelmoraLookandFeel::getSliderLayout (juce::Slider& slider)
{
    if (TransportPicture::isTransport (slider))
        return { TransportPicture::trackArea (slider), {} };

    return LookAndFeel_V3::getSliderLayout (slider);
}

float VelmoraLookandFeel::tickPosition (int decibels, float trackStart, float trackLength) noexcept
{
    return static_cast<float> (decibels + 12) / 24.0f * trackLength + trackStart;
}

juce::Colour VelmoraLookandFeel::tickColour (float tick, float thumb, float trackLength) noexcept
{
    const auto distance = std::min (std::abs (tick - thumb) * 8.0f / trackLength, 1.0f);
    const auto byte = [] (float value) { return static_cast<juce::uint8> (juce::roundToInt (value)); };
    return juce::Colour (255, byte ((1.0f - distance) * 93.0f + 162.0f), byte ((1.0f - distance) * 255.0f));
}

void VelmoraLookandFeel::drawLinearSliderBackground (juce::Graphics& g,
                                                     int x,
                                                     int,
                                                     int width,
                                                     int,
                                                     float position,
                                                     float,
                                                     float,
                                                     juce::Slider::SliderStyle,
                                                     juce::Slider& slider)
{
    if (TransportPicture::isTransport (slider))
        return TransportPicture::draw (g, slider, position);

    const auto half = static_cast<float> (slider.getHeight()) * 0.5f;
    const auto start = static_cast<float> (x);
    const auto length = static_cast<float> (width);
    const auto halfHeight = std::min (trackHalfHeight, half);

    g.setColour (colour (Palette::sliderTrack));
    g.fillRoundedRectangle (start, half - halfHeight, length, halfHeight * 2.0f, trackRadius);

    if (! hasScale (slider))
        return;

    for (auto decibels = -10; decibels <= 10; decibels += 2)
    {
        const auto tick = tickPosition (decibels, start, length);

        if (tick <= firstTick || tick >= static_cast<float> (slider.getWidth()) - lastTickFromEnd)
            continue;

        g.setColour (tickColour (tick, position, length));
        g.fillRect (std::round (tick - 0.5f), half - tickHalfHeight, 1.0f, tickHalfHeight * 2.0f);
    }

    if (slider.getName() == "output-gain")
        drawLevelMatchPointer (g, slider, half + halfHeight);
}

void VelmoraLookandFeel::drawLevelMatchPointer (juce::Graphics& g, juce::Slider& slider, float trackBottom) const
{
    const auto decibels = juce::Decibels::gainToDecibels (levelMatch.load (std::memory_order_relaxed));
    const auto tip = slider.getPositionOfValue (static_cast<double> (decibels));
    juce::Path triangle;
    triangle.addTriangle (tip,
                          trackBottom,
                          tip + pointerWidth * 0.5f,
                          trackBottom + pointerHeight,
                          tip - pointerWidth * 0.5f,
                          trackBottom + pointerHeight);
    g.setColour (colour (Palette::levelMatch));
    g.fillPath (triangle);
}

void VelmoraLookandFeel::drawLinearSliderThumb (juce::Graphics& g,
                                                int,
                                                int,
                                                int,
                                                int,
                                                float position,
                                                float,
                                                float,
                                                juce::Slider::SliderStyle,
                                                juce::Slider& slider)
{
    if (TransportPicture::isTransport (slider))
        return;

    const auto dragged = slider.isMouseButtonDown();
    const auto half = static_cast<float> (slider.getHeight()) * 0.5f;
    const auto height = std::min (thumbHeight, half * 2.0f);

    // On whole pixels, so that the bar does not shimmer while it moves.
    const auto centre = std::round (position);
    const auto bar = [&] (float barWidth, float barHeight) {
        return juce::Rectangle<float> (barWidth, barHeight).withCentre ({ centre, half });
    };
    const auto inner = bar (thumbInnerWidth, std::min (thumbInnerHeight, height - 4.0f));

    g.setColour (colour (dragged ? Palette::thumbDragged : Palette::thumb));
    g.fillRoundedRectangle (bar (thumbWidth, height), 1.0f);
    g.setColour (colour (dragged ? Palette::text : Palette::thumbInner));
    g.fillRect (inner);

    if (slider.hasKeyboardFocus (false))
    {
        g.setColour (colour (Palette::focusRing));
        g.drawRoundedRectangle (slider.getLocalBounds().toFloat().reduced (0.5f), buttonRadius, 1.0f);
    }
}

//======================================================================================================================
juce::Font VelmoraLookandFeel::getLabelFont (juce::Label& label)
{
    const auto asked = label.getFont();

    if (label.getName() == "track")
        return asked;

    return asked.isBold() ? bold (asked.getHeight()) : regular (asked.getHeight());
}

void VelmoraLookandFeel::drawLabel (juce::Graphics& g, juce::Label& label)
{
    if (PointerShape::isPointer (label.getComponentID()))
        drawPointer (g, label);
    else if (label.getName() == "readout")
        drawReadout (g, label);
    else
        LookAndFeel_V3::drawLabel (g, label);
}

void VelmoraLookandFeel::drawReadout (juce::Graphics& g, juce::Label& label)
{
    g.fillAll (colour (Palette::bandPanel));

    if (label.isBeingEdited())
        return;

    const auto soloed = label.getText() == "SOLOD";
    g.setColour (colour (soloed ? Palette::soloFocus : Palette::text));
    g.setFont (getLabelFont (label));
    g.drawText (label.getText(), label.getLocalBounds(), juce::Justification::centred, false);

    if (! soloed)
    {
        g.setColour (label.findColour (juce::Label::outlineColourId));
        g.drawRect (label.getLocalBounds());
    }
}

void VelmoraLookandFeel::drawPointer (juce::Graphics& g, juce::Label& label)
{
    const PointerShape shape (label.getComponentID(), label.getLocalBounds().toFloat());
    g.setColour (label.findColour (juce::Label::backgroundColourId));
    g.fillPath (shape.outline());
    g.setColour (label.findColour (juce::Label::textColourId));
    g.setFont (getLabelFont (label));
    g.drawText (label.getText(), shape.box(), juce::Justification::centred, false);
}

//======================================================================================================================
juce::Font VelmoraLookandFeel::getPopupMenuFont()
{
    return regular (menuTextHeight);
}

int VelmoraLookandFeel::getPopupMenuBorderSize()
{
    return menuBorder;
}

void VelmoraLookandFeel::drawPopupMenuBackground (juce::Graphics& g, int width, int height)
{
    g.fillAll (colour (Palette::menu));
    g.setColour (colour (Palette::panelOutline));
    g.drawRect (0, 0, width, height);
}

void VelmoraLookandFeel::drawPopupMenuItem (juce::Graphics& g,
                                            const juce::Rectangle<int>& area,
                                            bool isSeparator,
                                            bool isActive,
                                            bool isHighlighted,
                                            bool isTicked,
                                            bool hasSubMenu,
                                            const juce::String& text,
                                            const juce::String&,
                                            const juce::Drawable*,
                                            const juce::Colour*)
{
    if (isSeparator)
    {
        g.setColour (colour (Palette::menuSeparator));
        g.fillRect (menuInset, area.getCentreY(), area.getRight() - menuInset * 2, 1);
        return;
    }

    if (isHighlighted && isActive)
    {
        g.setColour (colour (Palette::menuHighlight));
        g.fillRoundedRectangle (area.toFloat().reduced (static_cast<float> (menuInset), 0.0f), menuItemRadius);
    }

    g.setColour (colour (isActive ? Palette::menuText : Palette::menuDisabled));
    g.setFont (isTicked ? bold (menuTextHeight) : getPopupMenuFont());
    g.drawText (text, area.reduced (menuTextInset, 0), juce::Justification::centredLeft, true);

    if (hasSubMenu)
    {
        const auto tip = juce::Point<float> (static_cast<float> (area.getRight() - menuTextInset) + 2.0f,
                                             static_cast<float> (area.getCentreY()));
        juce::Path arrow;
        arrow.startNewSubPath (tip.translated (-4.0f, -4.0f));
        arrow.lineTo (tip);
        arrow.lineTo (tip.translated (-4.0f, 4.0f));
        g.strokePath (arrow, juce::PathStrokeType (1.5f));
    }
}

void VelmoraLookandFeel::drawPopupMenuSectionHeader (juce::Graphics& g,
                                                     const juce::Rectangle<int>& area,
                                                     const juce::String& title)
{
    g.setColour (colour (Palette::menuTitle));
    g.setFont (regular (menuTextHeight));
    g.drawText (title, area.reduced (menuInset * 2, 0), juce::Justification::centredLeft, true);
}

void VelmoraLookandFeel::drawPopupMenuUpDownArrow (juce::Graphics& g, int width, int height, bool isUp)
{
    const auto middle = juce::Point<float> (static_cast<float> (width), static_cast<float> (height)) * 0.5f;
    const auto rise = isUp ? -2.5f : 2.5f;
    juce::Path arrow;
    arrow.startNewSubPath (middle.translated (-5.0f, -rise));
    arrow.lineTo (middle.translated (0.0f, rise));
    arrow.lineTo (middle.translated (5.0f, -rise));
    g.setColour (colour (Palette::menuText));
    g.strokePath (arrow, juce::PathStrokeType (1.5f));
}

void VelmoraLookandFeel::getIdealPopupMenuItemSize (const juce::String& text,
                                                    bool isSeparator,
                                                    int,
                                                    int& width,
                                                    int& height)
{
    width = isSeparator ? 50 : Fonts::widthOf (bold (menuTextHeight), text) + menuTextInset * 3;
    height = isSeparator ? menuSeparatorHeight : menuItemHeight;
}

//======================================================================================================================
juce::Rectangle<int> VelmoraLookandFeel::getTooltipBounds (const juce::String& text,
                                                           juce::Point<int> position,
                                                           juce::Rectangle<int> parentArea)
{
    const auto layout = layoutTip (text, regular (tipTextHeight), tipWidth);
    const auto width = juce::roundToInt (std::ceil (layout.getWidth() + tipInset * 2.0f));
    const auto height = juce::roundToInt (std::ceil (layout.getHeight() + tipInset * 2.0f));
    const auto left =
        position.x > parentArea.getCentreX() ? position.x - width - tipDistance : position.x + tipDistance;
    const auto top =
        position.y > parentArea.getCentreY() ? position.y - height - tipDistance / 2 : position.y + tipDistance;
    return juce::Rectangle<int> (left, top, width, height).constrainedWithin (parentArea);
}

void VelmoraLookandFeel::drawTooltip (juce::Graphics& g, const juce::String& text, int width, int height)
{
    const auto area = juce::Rectangle<int> (width, height).toFloat();
    g.setColour (colour (Palette::bubble));
    g.fillRoundedRectangle (area, tipRadius);
    g.setColour (colour (Palette::panelOutline));
    g.drawRoundedRectangle (area.reduced (0.5f), tipRadius, 1.0f);
    layoutTip (text, regular (tipTextHeight), tipWidth).draw (g, area.reduced (tipInset));
}

//======================================================================================================================
void VelmoraLookandFeel::drawCornerResizer (juce::Graphics& g, int width, int height, bool over, bool dragging)
{
    constexpr auto dot = 2;
    constexpr auto step = 4;
    constexpr auto dotsPerSide = 3;
    g.setColour (colour (over || dragging ? Palette::secondaryLabel : Palette::frequencyLabel));

    for (auto row = 0; row < dotsPerSide; ++row)
        for (auto column = 0; column <= row; ++column)
            g.fillRect (width - (column + 1) * step, height - (dotsPerSide - row) * step, dot, dot);
}

void VelmoraLookandFeel::fillTextEditorBackground (juce::Graphics& g, int, int, juce::TextEditor& editor)
{
    g.fillAll (editor.findColour (juce::TextEditor::backgroundColourId));
}

void VelmoraLookandFeel::drawTextEditorOutline (juce::Graphics& g, int width, int height, juce::TextEditor& editor)
{
    const auto id =
        editor.hasKeyboardFocus (true) ? juce::TextEditor::focusedOutlineColourId : juce::TextEditor::outlineColourId;
    g.setColour (editor.findColour (id));
    g.drawRect (0, 0, width, height);
}
