#include "gui/editor/MainWindow.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"
#include "gui/room/RoomGeometry.h"

#include <algorithm>

namespace
{
constexpr float labelFontHeight = 10.5f;
constexpr float pointerFontHeight = 12.0f;
constexpr float noticeFontHeight = 15.0f;
constexpr int labelWidth = 18;
constexpr int labelHeight = 15;
constexpr int pointerWidth = 46;
constexpr int pointerHeight = 16;
constexpr int leastPointerRow = 15;
constexpr int pointerRowFromFloor = 8;
constexpr float ceilingRow = 14.0f;
constexpr float floorRow = 10.0f;

struct FrequencyLabel
{
    const char* text;
    float frequencyHz;
};

constexpr std::array frequencyLabels { FrequencyLabel { "1K", 1000.0f },
                                       FrequencyLabel { "2K", 2000.0f },
                                       FrequencyLabel { "4K", 4000.0f },
                                       FrequencyLabel { "10K", 10000.0f },
                                       FrequencyLabel { "15K", 15000.0f } };

RoomGeometry geometryOfHeight (int height)
{
    RoomGeometry geometry;
    geometry.height = static_cast<float> (height);
    return geometry;
}

/** A figure of the scale in its box, around a baseline. On a glow the box keeps the dark ground. */
void drawFigure (juce::Graphics& g, const char* text, juce::Rectangle<int> box, int baseline, bool glows)
{
    constexpr float corner = 3.0f;

    if (glows)
    {
        g.setColour (juce::Colour (Palette::mainWindow));
        g.fillRoundedRectangle (box.toFloat().expanded (1.0f, 0.0f), corner);
    }

    g.setColour (juce::Colour (Palette::frequencyLabel));
    g.drawSingleLineText (text, box.getCentreX(), box.getY() + baseline, juce::Justification::horizontallyCentred);
}
} // namespace

MainWindow::MainWindow (VelmoraAudioProcessor& owner)
    : processor (owner),
      roomView (owner),
      menu (owner),
      heat (owner.liveAnalysis().spectrum(), owner.model, [this] { repaintStrips(); })
{
    setTitle ("Equaliser");

    // What of it is not covered by the room are the frequency scales.
    setTooltip (Tips::text (Tips::heatMap));
    addAndMakeVisible (roomView);
    statusStrip.setInterceptsMouseClicks (false, false);
    addAndMakeVisible (statusStrip);

    for (auto* label : { &pointerLabelLeft, &pointerLabelRight })
    {
        label->setColour (juce::Label::textColourId, juce::Colour (Palette::secondaryLabel));
        label->setFont (Fonts::bold (pointerFontHeight));
        label->setInterceptsMouseClicks (false, false);
        addChildComponent (*label);
    }

    noticeLabel.setFont (Fonts::regular (noticeFontHeight));
    noticeLabel.setJustificationType (juce::Justification::centred);
    noticeLabel.setMinimumHorizontalScale (1.0f); // rather two lines than narrow letters
    noticeLabel.setColour (juce::Label::textColourId, juce::Colour (Palette::text));
    noticeLabel.setColour (juce::Label::backgroundColourId, juce::Colour (Palette::sliderPanel));
    noticeLabel.setColour (juce::Label::outlineColourId, juce::Colour (Palette::panelOutline));
    noticeLabel.setInterceptsMouseClicks (false, false);
    addChildComponent (noticeLabel);
    addChildComponent (menu);
    roomView.onHover = [this] (float frequencyHz, bool on, juce::Colour colour)
    { showPointers (frequencyHz, on, colour); };
    heat.start();
}

MainWindow::~MainWindow()
{
    heat.stop();
    roomView.onHover = nullptr;
}

juce::Component* MainWindow::component (Place place) const
{
    return places[static_cast<std::size_t> (place)].get();
}

void MainWindow::fill (Place place, std::unique_ptr<juce::Component> component)
{
    auto& filled = places[static_cast<std::size_t> (place)];
    filled = std::move (component);

    if (filled == nullptr)
        return;

    addChildComponent (*filled);
    filled->setBounds (boundsOf (place, getWidth(), getHeight()));
}

void MainWindow::show (Place place, bool shouldShow)
{
    if (auto* shown = component (place))
    {
        shown->setVisible (shouldShow);

        if (shouldShow)
            shown->toFront (false);
    }
}

bool MainWindow::isShowingPlace (Place place) const
{
    const auto* shown = component (place);
    return shown != nullptr && shown->isVisible();
}

juce::Rectangle<int> MainWindow::boundsOf (Place place, int width, int height)
{
    switch (place)
    {
        case Place::outputGainPanel:
            return { width - 242, 0, 230, 80 };
        case Place::gainScalePanel:
            return { width - 345, 0, 230, 70 };
        case Place::helpWindow:
        case Place::settingsWindow:
            return { width / 2 - 300, height / 2 - 255, 600, 510 };
        case Place::analysisWindow:
            break;
    }

    // The editor keeps it in the window's own measure.
    return {};
}

void MainWindow::resized()
{
    const auto width = getWidth();
    const auto height = getHeight();

    for (auto place : { Place::outputGainPanel, Place::gainScalePanel, Place::helpWindow, Place::settingsWindow })
        if (auto* placed = component (place))
            placed->setBounds (boundsOf (place, width, height));

    roomView.setBounds (stripWidth, 0, width - 2 * stripWidth, height);
    statusStrip.setBounds (5, height - 5, 160, 10);
    menu.layOut (width);
    heat.resize (height);
}

void MainWindow::repaintStrips()
{
    repaint (0, 0, stripWidth, getHeight());
    repaint (getWidth() - stripWidth, 0, stripWidth, getHeight());
}

void MainWindow::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (Palette::mainWindow));
    heat.paint (g, getLocalBounds());
    drawFrequencies (g);
}

void MainWindow::drawFrequencies (juce::Graphics& g) const
{
    const auto geometry = geometryOfHeight (getHeight());
    const auto font = Fonts::regular (labelFontHeight);
    g.setFont (font);

    // In the middle of a box that "320" just fills, so not cut to it.
    const auto baseline =
        juce::roundToInt ((static_cast<float> (labelHeight) + font.getAscent() - font.getDescent()) * 0.5f);
    const auto draw = [&] (const char* text, int top)
    {
        for (const auto x : { 1, getWidth() - stripWidth + 1 })
            drawFigure (g, text, { x, top, labelWidth, labelHeight }, baseline, ! heat.isBlack());
    };

    for (const auto& label : frequencyLabels)
        draw (label.text, juce::roundToInt (geometry.frequencyRow (label.frequencyHz)) - 7);

    draw ("320", getHeight() - labelHeight);
}

void MainWindow::showPointers (float frequencyHz, bool shouldShow, juce::Colour colour)
{
    const auto row = geometryOfHeight (getHeight()).frequencyRow (frequencyHz);

    for (auto* label : { &pointerLabelLeft, &pointerLabelRight })
    {
        if (shouldShow)
        {
            label->setText (juce::String (static_cast<int> (frequencyHz)), juce::dontSendNotification);
            label->setColour (juce::Label::textColourId, juce::Colours::black);
            label->setColour (juce::Label::backgroundColourId, colour);
            placePointer (*label, label == &pointerLabelLeft, row);
        }

        label->setVisible (shouldShow);
    }
}

void MainWindow::showNotice (const juce::String& text, juce::Rectangle<int> place)
{
    noticeLabel.setText (text, juce::dontSendNotification);
    noticeLabel.setBounds (place.getIntersection (getLocalBounds()));
    noticeLabel.toFront (false);
    noticeLabel.setVisible (true);
}

void MainWindow::hideNotice()
{
    noticeLabel.setVisible (false);
}

void MainWindow::placePointer (juce::Label& label, bool left, float row)
{
    juce::String id (left ? "left" : "right");

    if (row < ceilingRow)
        id << "Top";
    else if (row >= static_cast<float> (getHeight()) - floorRow)
        id << "Bottom";

    label.setComponentID (id);

    // Beside its scale, with the tip on the scale.
    const auto centre = std::clamp (
        juce::roundToInt (row), leastPointerRow, std::max (leastPointerRow, getHeight() - pointerRowFromFloor));
    label.setBounds (left ? stripWidth : getWidth() - stripWidth - pointerWidth,
                     centre - pointerHeight / 2,
                     pointerWidth,
                     pointerHeight);
}
