#include "gui/menu/BurgerMenu.h"

#include "gui/look/Fonts.h"
#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/PanelShape.h"
#include "gui/look/Tips.h"

#include <algorithm>

using Command = Settings::BurgerMenuCallback;

namespace
{
constexpr float labelFontHeight = 14.0f;

/** Below the middle of the burger button, from the panel's right edge. */
constexpr int tipFromRight = 105;

/** The look and feel takes the bold font where a button's name says so. */
constexpr auto boldButton = "bold";

void place (juce::Component& component, juce::Rectangle<int> area)
{
    component.setVisible (! area.isEmpty());
    component.setBounds (area);
}

bool anyBandActive (const PluginModel& model)
{
    for (int band = 0; band < bandCount; ++band)
        if (model.getBandValue (band, Settings::Parameter::active) > 0.5f)
            return true;

    return false;
}
} // namespace

BurgerMenu::BurgerMenu (VelmoraAudioProcessor& owner)
    : processor (owner), model (owner.model), transportSeen (owner.model.transport.isPlaying())
{
    setTitle ("Band options");
    addChildComponent (messageLabel);
    prepareLabels();
    prepareToggles();
    prepareButton (resetTargetsButton, "RESET TARGETS", Tips::resetTargets);
    prepareButton (addSmartBandsButton, "ADD SMART BANDS", Tips::addSmartBands);

    for (std::size_t i = 0; i < numberButtons.size(); ++i)
    {
        const juce::String number (i + 1);
        prepareButton (numberButtons[i], number, Tips::addBands);
        numberButtons[i].setTitle ("Add " + number + (i == 0 ? " band" : " bands"));
    }

    prepareButton (deleteAllBandsButton, "DELETE ALL BANDS", Tips::deleteAllBands);
    subscribe();
}

BurgerMenu::~BurgerMenu()
{
    // Before anything that they touch.
    channelSubscriptions.clear();
    parameterSubscriptions.clear();
}

void BurgerMenu::subscribe()
{
    for (const auto* id : { ParameterIds::phase, ParameterIds::mode })
        parameterSubscriptions.push_back (std::make_unique<ParameterSubscription> (processor.getAPVTS(), id, *this));

    const auto listen = [this] (const char* channel, NotificationChannels::Callback callback)
    {
        channelSubscriptions.push_back (
            std::make_unique<NotificationSubscription> (model.channels, channel, std::move (callback)));
    };

    listen (Channels::transportPlaying, [this] { followTransport(); });
    listen (Channels::smartBandsReady, [this] { changed = true; });
    listen (Channels::canUseMasterMode, [this] { changed = true; });
}

void BurgerMenu::prepareLabels()
{
    for (auto* label : { &filterPhaseLabel, &filterModeLabel, &addBandsLabel })
    {
        label->setFont (Fonts::bold (labelFontHeight));
        label->setColour (juce::Label::textColourId, juce::Colour (Palette::menuText));
        label->setJustificationType (label == &addBandsLabel ? juce::Justification::centredLeft
                                                             : juce::Justification::centred);
        label->setInterceptsMouseClicks (false, false);
        addChildComponent (*label);
    }

    filterPhaseLabel.setText ("Filter Phase", juce::dontSendNotification);
    filterModeLabel.setText ("Filter Mode", juce::dontSendNotification);
    addBandsLabel.setText ("Add Bands", juce::dontSendNotification);
}

void BurgerMenu::prepareToggles()
{
    using Icons::Role;
    using Icons::svg;

    phaseButton.setImages (
        svg (Role::phaseMinimum), svg (Role::phaseMinimumDown), svg (Role::phaseLinear), svg (Role::phaseLinearDown));
    modeButton.setImages (
        svg (Role::modeMaster), svg (Role::modeMasterDown), svg (Role::modeMix), svg (Role::modeMixDown));
    phaseButton.setTooltip (Tips::text (Tips::filterPhase));
    modeButton.setTooltip (Tips::text (Tips::filterMode));

    for (auto* button : { &phaseButton, &modeButton })
    {
        // What they show is the parameter, never the click.
        button->setClickingTogglesState (false);
        button->addListener (this);
        addChildComponent (*button);
    }
}

void BurgerMenu::prepareButton (juce::TextButton& button, const juce::String& text, const char* tip)
{
    button.setName (boldButton);
    button.setButtonText (text);
    button.setTitle (text);
    button.setTooltip (Tips::text (tip));
    button.setMouseClickGrabsKeyboardFocus (false);
    button.addListener (this);
    addChildComponent (button);
}

//======================================================================================================================
void BurgerMenu::showCommands (State kind)
{
    currentState = kind;
    setTitle ("Band options");
    refresh();
}

void BurgerMenu::showMessage (State kind, const juce::String& text)
{
    currentState = kind;
    messageText = text;
    messageHeight = MessageLabel::heightFor (text);
    messageLabel.setText (text, juce::dontSendNotification);
    setTitle ("Messages");
    refresh();
}

BurgerMenuLayout::Situation BurgerMenu::situation() const
{
    return { .state = currentState,
             .messageHeight = messageHeight,
             .transportRuns = transportSeen,
             .targetShown = processor.presets.currentPreset().id != Presets::noTargetsId && model.targetsReady(),
             .smartBandsReady = model.smartBandsReady(),
             .anyBandActive = anyBandActive (model),
             .masterMode = model.filterMode() == FilterMode::master,
             .canUseMasterMode = model.canUseMasterMode(),
             .sampleRate = model.sampleRate };
}

void BurgerMenu::refresh()
{
    if (const auto* parent = getParentComponent())
        layOut (parent->getWidth());
}

void BurgerMenu::layOut (int parentWidth)
{
    const auto layout = BurgerMenuLayout::of (situation());
    setBounds (layout.panelIn (parentWidth));

    place (messageLabel, layout.message);
    place (filterPhaseLabel, layout.phaseLabel);
    place (phaseButton, layout.phaseButton);
    place (filterModeLabel, layout.modeLabel);
    place (modeButton, layout.modeButton);
    place (resetTargetsButton, layout.resetTargets);
    place (addSmartBandsButton, layout.addSmartBands);
    place (addBandsLabel, layout.addBandsLabel);
    place (deleteAllBandsButton, layout.deleteAllBands);

    for (std::size_t i = 0; i < numberButtons.size(); ++i)
        place (numberButtons[i], layout.numbers[i]);

    phaseButton.setEnabled (layout.phaseEnabled);
    modeButton.setEnabled (layout.modeEnabled);
    phaseButton.setToggleState (model.filterPhase() == FilterPhase::linear, juce::dontSendNotification);
    modeButton.setToggleState (model.filterMode() == FilterMode::mix, juce::dontSendNotification);
    repaint();
}

void BurgerMenu::refreshIfOpen()
{
    // What is hidden is laid out when it is shown.
    if (isVisible())
        refresh();
}

/** Audio thread, once a block. Real-time safe. */
void BurgerMenu::followTransport() noexcept
{
    const auto runs = model.transport.isPlaying();

    if (transportSeen.exchange (runs, std::memory_order_relaxed) != runs)
        changed = true;
}

void BurgerMenu::serveChanges()
{
    if (changed.exchange (false))
        refreshIfOpen();
}

//======================================================================================================================
void BurgerMenu::buttonClicked (juce::Button* button)
{
    if (button == &phaseButton)
        return toggle (ParameterIds::phase);

    if (button == &modeButton)
        return toggle (ParameterIds::mode);

    if (button == &addSmartBandsButton)
        return command (Command::addSmartBands);

    if (button == &resetTargetsButton)
    {
        command (Command::resetTargets);
        return refreshIfOpen();
    }

    if (button == &deleteAllBandsButton)
        return command (Command::deleteAllBands);

    for (std::size_t i = 0; i < numberButtons.size(); ++i)
        if (button == &numberButtons[i])
            return command (Command::addBands, static_cast<int> (i) + 1);
}

void BurgerMenu::command (Command wanted, int number)
{
    if (onCommand)
        onCommand (wanted, number);
}

void BurgerMenu::toggle (const char* parameterId)
{
    auto* parameter = processor.getAPVTS().getParameter (parameterId);

    if (parameter == nullptr)
        return;

    parameter->beginChangeGesture();
    model.setParameterValue (parameterId, parameter->getValue() < 0.5f ? 1.0f : 0.0f);
    parameter->endChangeGesture();
    refresh();
}

void BurgerMenu::paint (juce::Graphics& g)
{
    PanelShape::draw (g, getLocalBounds(), static_cast<float> (getWidth() - tipFromRight));
}
