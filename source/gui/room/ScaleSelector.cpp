#include "gui/room/ScaleSelector.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/room/ScaleCells.h"

#include <utility>

namespace
{
constexpr int tickMs = 20;
constexpr int slideTicks = 8;

/** A cell that shows its text in full. */
constexpr int spreadCellWidth = 46;
constexpr float cornerSize = 3.0f;

/** A text that is wider than its cell is narrowed by as much as this before it is cut. */
constexpr float narrowestText = 0.6f;
constexpr float textInset = 1.0f;

/** How far a pointer goes before a press counts as a movement, in pixels. */
constexpr int clickReach = 3;

/** In place of a cell: nothing is pressed; a border between two cells is. */
constexpr int notPressed = -1;
constexpr int onBorder = ScaleCells::count;

int cellUnder (float x, int width)
{
    return ScaleCells::cellAt (x, static_cast<float> (width)).value_or (onBorder);
}

juce::String textOf (int cell, bool inFull)
{
    const juce::String number (juce::roundToInt (ScaleCells::scaleOf (cell)));
    return inFull ? juce::String::fromUTF8 ("\xc2\xb1") + number + "dB" : number;
}
} // namespace

ScaleSelector::ScaleSelector()
{
    setTitle ("Scale");
    setDescription ("Gain scale of the room in dB");
    setName ("Scale");
    setWantsKeyboardFocus (true);
    setMouseCursor (juce::MouseCursor::PointingHandCursor);
}

void ScaleSelector::setRestingBounds (juce::Rectangle<int> bounds)
{
    resting = bounds;
    setBounds (bounds);
}

void ScaleSelector::setScale (float newScaleDb)
{
    const auto cell = ScaleCells::cellOf (newScaleDb);

    if (cell == selected)
        return;

    selected = cell;

    if (pressedCell == notPressed)
        slideTo (cell);
}

void ScaleSelector::spread()
{
    const auto wanted = spreadCellWidth * ScaleCells::count;
    auto bounds = resting.withSizeKeepingCentre (juce::jmax (resting.getWidth(), wanted), resting.getHeight());

    if (const auto* parent = getParentComponent())
        bounds = bounds.constrainedWithin (parent->getLocalBounds());

    setBounds (bounds);
}

void ScaleSelector::slideTo (int cell)
{
    slideStart = highlight;
    slideEnd = static_cast<float> (cell);
    slideStep = 0;
    startTimer (tickMs);
}

void ScaleSelector::timerCallback()
{
    ++slideStep;
    highlight = slideStart + (slideEnd - slideStart) * static_cast<float> (slideStep) / slideTicks;

    if (slideStep >= slideTicks)
    {
        highlight = slideEnd;
        stopTimer();
    }

    repaint();
}

void ScaleSelector::mouseEnter (const juce::MouseEvent&)
{
    if (onHover)
        onHover (true);
}

void ScaleSelector::mouseExit (const juce::MouseEvent&)
{
    if (onHover)
        onHover (false);
}

void ScaleSelector::mouseDown (const juce::MouseEvent& event)
{
    pressedCell = cellUnder (event.position.x, getWidth());
    movedSincePress = false;
    highlight = static_cast<float> (selected);
    spread();
}

void ScaleSelector::mouseDrag (const juce::MouseEvent& event)
{
    if (! movedSincePress && event.getDistanceFromDragStart() < clickReach)
        return;

    movedSincePress = true;
    const auto cell = cellUnder (event.getEventRelativeTo (this).position.x, getWidth());

    if (cell != onBorder && static_cast<float> (cell) != slideEnd)
        slideTo (cell);
}

void ScaleSelector::mouseUp (const juce::MouseEvent& event)
{
    const auto pressed = std::exchange (pressedCell, notPressed);
    const auto cell = movedSincePress ? cellUnder (event.getEventRelativeTo (this).position.x, getWidth()) : pressed;
    setBounds (resting);

    if (cell != onBorder && cell != notPressed)
        choose (cell);
    else
        slideTo (selected);
}

void ScaleSelector::choose (int cell)
{
    selected = cell;
    slideTo (cell);

    if (onScale)
        onScale (ScaleCells::scaleOf (cell));
}

bool ScaleSelector::keyPressed (const juce::KeyPress& key)
{
    const auto step = [this] (int cells)
    {
        choose (juce::jlimit (0, ScaleCells::count - 1, selected + cells));
        return true;
    };

    if (key == juce::KeyPress::leftKey || key == juce::KeyPress::downKey)
        return step (-1);

    if (key == juce::KeyPress::rightKey || key == juce::KeyPress::upKey)
        return step (1);

    return false;
}

std::unique_ptr<juce::AccessibilityHandler> ScaleSelector::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler> (*this, juce::AccessibilityRole::slider);
}

juce::Rectangle<float> ScaleSelector::cellBounds (float cell) const
{
    const auto width = static_cast<float> (getWidth()) / ScaleCells::count;
    return { cell * width, 0.0f, width, static_cast<float> (getHeight()) };
}

int ScaleSelector::textHeight() const
{
    constexpr int largest = 13;
    constexpr float heightPerWidth = 0.9f;
    return isSpread() ? largest : juce::jmin (largest, juce::roundToInt (cellBounds (0).getWidth() * heightPerWidth));
}

void ScaleSelector::paint (juce::Graphics& graphics)
{
    const auto bounds = getLocalBounds().toFloat().reduced (0.5f);
    graphics.setColour (juce::Colour (Palette::scaleSelector));
    graphics.fillRoundedRectangle (bounds, cornerSize);

    const auto lit = cellBounds (highlight).reduced (1.5f);
    graphics.setColour (juce::Colour (Palette::selectedScale));
    graphics.fillRoundedRectangle (lit, cornerSize - 1.0f);
    graphics.setColour (juce::Colours::white.withAlpha (0.25f));
    graphics.drawRoundedRectangle (lit.reduced (0.5f), cornerSize - 1.0f, 1.0f);

    graphics.setColour (juce::Colour (hasKeyboardFocus (false) ? Palette::focusRing : Palette::panelOutline));
    graphics.drawRoundedRectangle (bounds, cornerSize, 1.0f);

    graphics.setColour (juce::Colour (Palette::text));
    const auto font = Fonts::bold (static_cast<float> (textHeight()));
    juce::GlyphArrangement texts;

    for (int cell = 0; cell < ScaleCells::count; ++cell)
    {
        const auto area = cellBounds (static_cast<float> (cell)).reduced (textInset, 0.0f);
        texts.addFittedText (font,
                             textOf (cell, isSpread()),
                             area.getX(),
                             area.getY(),
                             area.getWidth(),
                             area.getHeight(),
                             juce::Justification::centred,
                             1,
                             narrowestText);
    }

    texts.draw (graphics);
}
