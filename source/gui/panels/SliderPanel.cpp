#include "gui/panels/SliderPanel.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/PanelShape.h"

namespace
{
constexpr float titleFontHeight = 15.0f;
constexpr float valueFontHeight = 13.0f;

// Of every slider before its parameter gives it a range.
constexpr double widestDb = 12.0;
constexpr double stepDb = 0.01;
} // namespace

SliderPanel::SliderPanel (VelmoraAudioProcessor& processor, const Design& designToUse)
    : design (designToUse), parameter (*processor.getAPVTS().getParameter (designToUse.parameterId))
{
    setTitle (design.title);
    slider.setName (design.sliderName);
    slider.setTitle (design.title);
    slider.setMouseCursor (juce::MouseCursor::PointingHandCursor);
    slider.setRange (-widestDb, widestDb, stepDb);
    slider.onValueChange = [this] { showValue(); };
    slider.onDragStart = [this] { held = true; };
    slider.onDragEnd = [this] { held = false; };
    attachment.emplace (processor.getAPVTS(), design.parameterId, slider);
    titleLabel.setText (design.title, juce::dontSendNotification);
    titleLabel.setFont (Fonts::regular (titleFontHeight));
    valueLabel.setFont (Fonts::regular (valueFontHeight));
    addAndMakeVisible (slider);

    // In front of the slider, whose ground reaches up to the title and down to the value.
    for (auto* label : { &titleLabel, &valueLabel })
    {
        label->setColour (juce::Label::textColourId, juce::Colour (Palette::text));
        label->setJustificationType (juce::Justification::centred);
        label->setBorderSize ({});
        label->setInterceptsMouseClicks (false, false);
        addAndMakeVisible (*label);
    }

    showValue();
}

SliderPanel::~SliderPanel()
{
    // The hand lets go where nobody hears it any more, and the host would take the parameter for touched for ever.
    if (held)
        parameter.endChangeGesture();
}

void SliderPanel::showValue()
{
    valueLabel.setText (slider.getTextFromValue (slider.getValue()), juce::dontSendNotification);
}

void SliderPanel::paint (juce::Graphics& g)
{
    PanelShape::draw (g, getLocalBounds(), design.tipX);
}

void SliderPanel::resized()
{
    const auto middle = getWidth() / 2;
    titleLabel.setBounds (middle - 50, 10, 100, 20);
    slider.setBounds (5, design.sliderTop, getWidth() - 10, 40);
    valueLabel.setBounds (middle - 23, design.valueTop, 45, 30);
}
