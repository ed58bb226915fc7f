#include "gui/editor/TopRow.h"

#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

namespace
{
constexpr float buttonAlpha = 0.8f;
constexpr float linkAlpha = 0.7f;

juce::String iconOf (TopRow::OutputState state)
{
    switch (state)
    {
        case TopRow::OutputState::warning:
            return Icons::svg (Icons::Role::outputWarning);
        case TopRow::OutputState::bypassed:
            return Icons::svg (Icons::Role::outputBypassed);
        case TopRow::OutputState::plain:
            break;
    }

    return Icons::svg (Icons::Role::output);
}
} // namespace

TopRow::TopRow()
{
    using Icons::Role;
    using Icons::svg;

    // A picture of the product's name: nothing happens on a click, so the keyboard passes it by.
    titleButton.setImages (svg (Role::logo));
    titleButton.setWantsKeyboardFocus (false);
    titleButton.setInterceptsMouseClicks (false, false);

    gainScaleButton.setImages (svg (Role::gainScale));
    compareButton.setImages (
        svg (Role::compareA), svg (Role::compareADown), svg (Role::compareB), svg (Role::compareBDown));
    linkButton.setImages (svg (Role::copyToA));
    unlinkButton.setImages (svg (Role::copyToB));
    burgerButton.setImages (svg (Role::burger));
    outputGainButton.setImages (svg (Role::output));
    settingsButton.setImages (svg (Role::settings));
    helpButton.setImages (svg (Role::help));
    analyseButton.setImages (svg (Role::analyse));

    for (auto* button :
         { &gainScaleButton, &burgerButton, &outputGainButton, &settingsButton, &helpButton, &analyseButton })
        button->setAlphas (buttonAlpha, 1.0f);

    for (auto* button : { &linkButton, &unlinkButton })
        button->setAlphas (linkAlpha, 1.0f);

    gainScaleButton.setTooltip (Tips::text (Tips::gainScale));
    compareButton.setTooltip (Tips::text (Tips::compareSwitch));
    linkButton.setTooltip (Tips::text (Tips::compareCopy));
    unlinkButton.setTooltip (Tips::text (Tips::compareCopy));
    burgerButton.setTooltip (Tips::text (Tips::burgerMenu));
    outputGainButton.setTooltip (Tips::text (Tips::mainBypass));
    settingsButton.setTooltip (Tips::text (Tips::settings));
    helpButton.setTooltip (Tips::text (Tips::help));
    analyseButton.setTooltip (Tips::text (Tips::targets));

    // What a screen reader says; the names stay short.
    compareButton.setTitle ("Compare A and B");
    linkButton.setTitle ("Copy B to A");
    unlinkButton.setTitle ("Copy A to B");
    burgerButton.setTitle ("Band options");
    outputGainButton.setTitle ("Bypass and output gain");
    analyseButton.setTitle ("Analyse reference tracks");
}

std::array<juce::Button*, 10> TopRow::all()
{
    return { &titleButton,  &gainScaleButton,  &linkButton,     &unlinkButton, &compareButton,
             &burgerButton, &outputGainButton, &settingsButton, &helpButton,   &analyseButton };
}

void TopRow::addTo (juce::Component& parent)
{
    for (auto* button : all())
        parent.addAndMakeVisible (button);
}

void TopRow::place (const EditorLayout& layout)
{
    titleButton.setBounds (layout.title);
    gainScaleButton.setBounds (layout.gainScale);
    compareButton.setBounds (layout.compare);
    linkButton.setBounds (layout.link);
    unlinkButton.setBounds (layout.link);
    burgerButton.setBounds (layout.burger);
    outputGainButton.setBounds (layout.outputGain);
    settingsButton.setBounds (layout.settings);
    helpButton.setBounds (layout.help);
    analyseButton.setBounds (layout.analyse);
}

void TopRow::clearToggles()
{
    for (auto* button : { &settingsButton, &helpButton, &analyseButton })
    {
        button->setToggleState (false, juce::dontSendNotification);
        button->setToggled (false);
    }
}

void TopRow::showOutput (OutputState state)
{
    outputGainButton.setToggleState (state == OutputState::bypassed, juce::dontSendNotification);
    outputGainButton.setImages (iconOf (state));
}

void TopRow::showComparison (bool aSelected)
{
    compareButton.setToggleState (! aSelected, juce::dontSendNotification);
    linkButton.setVisible (! aSelected);
    unlinkButton.setVisible (aSelected);
}

void TopRow::showGainScaleInUse (bool inUse)
{
    const juce::Colour colour (inUse ? Palette::gainScaleInUse : Palette::icon);
    gainScaleButton.setColours (colour, colour);
    gainScaleButton.repaint();
}

void TopRow::showUserTarget (bool chosen)
{
    analyseButton.setImages (Icons::svg (chosen ? Icons::Role::analyseUser : Icons::Role::analyse));
}

void TopRow::showUpdate (UpdateState state)
{
    const auto available = state == UpdateState::available;
    const auto* tip = available ? Tips::helpUpdate : state == UpdateState::none ? Tips::helpUpToDate : Tips::help;
    helpButton.setImages (Icons::svg (available ? Icons::Role::helpUpdate : Icons::Role::help));
    helpButton.setTooltip (Tips::text (tip));
}

void TopRow::listenAtTitle (bool listens)
{
    titleButton.setInterceptsMouseClicks (listens, false);
}
