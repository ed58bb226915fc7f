#include "gui/editor/PresetLabels.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

namespace
{
constexpr float fontHeight = 14.0f;
} // namespace

PresetLabels::PresetLabels()
{
    presetTypeLabel.setFont (Fonts::regular (fontHeight));
    presetTypeLabel.setColour (juce::Label::textColourId, juce::Colour (Palette::secondaryLabel));
    presetNameLabel.setFont (Fonts::bold (fontHeight));

    for (auto* label : { &presetTypeLabel, &presetNameLabel })
    {
        label->setBorderSize (juce::BorderSize<int> (0));
        label->setMinimumHorizontalScale (1.0f);
        label->setTooltip (Tips::text (Tips::presets));
        label->setMouseCursor (juce::MouseCursor::PointingHandCursor);
    }
}

void PresetLabels::addTo (juce::Component& parent, juce::MouseListener& listener)
{
    for (auto* label : { &presetTypeLabel, &presetNameLabel })
    {
        parent.addAndMakeVisible (label);
        label->addMouseListener (&listener, false);
    }
}

void PresetLabels::show (const juce::String& group, const juce::String& name)
{
    // The space keeps the two texts apart, since the second label follows the first at once.
    presetTypeLabel.setText (group + " ", juce::dontSendNotification);
    presetNameLabel.setText (name, juce::dontSendNotification);
}

int PresetLabels::typeWidth() const
{
    return Fonts::widthOf (presetTypeLabel.getFont(), presetTypeLabel.getText());
}

int PresetLabels::nameWidth() const
{
    return Fonts::widthOf (presetNameLabel.getFont(), presetNameLabel.getText());
}

void PresetLabels::place (const EditorLayout& layout)
{
    presetTypeLabel.setBounds (layout.presetType);
    presetNameLabel.setBounds (layout.presetName);
}

bool PresetLabels::has (const juce::Component* component) const noexcept
{
    return component == &presetTypeLabel || component == &presetNameLabel;
}
