#pragma once

#include "core/PluginProcessor.h"
#include "gui/editor/Subscriptions.h"
#include "gui/look/SVGCheckbox.h"
#include "gui/menu/BurgerMenuLayout.h"
#include "gui/menu/MessageLabel.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <vector>

/** The panel below the burger button: what concerns all bands at once, the filters' phase and mode, the offer of smart
    bands, and the room's messages.

    It follows what it shows while it is open. Parameters and channels change on any thread, the audio thread among
   them, and only leave a mark, which the editor's timer has served. All else belongs to the message thread. */
class BurgerMenu final : public juce::Component,
                         public juce::Button::Listener,
                         public juce::AudioProcessorValueTreeState::Listener
{
public:
    using State = BurgerMenuLayout::State;

    explicit BurgerMenu (VelmoraAudioProcessor& processor);
    ~BurgerMenu() override;

    /** What a command is to do; the number goes with addBands. */
    std::function<void (Settings::BurgerMenuCallback command, int number)> onCommand;

    /** Takes one of the two states with commands, and is laid out for what is known now. Does not make itself visible.
     */
    void showCommands (State kind);

    /** Shows a text instead of commands. The panel takes the height that the text needs. */
    void showMessage (State kind, const juce::String& text);

    [[nodiscard]] State state() const noexcept { return currentState; }
    [[nodiscard]] const juce::String& message() const noexcept { return messageText; }

    /** Takes bounds for a parent of this width. */
    void layOut (int parentWidth);

    /** Follows what has changed since the last call: the work of the editor's timer. */
    void serveChanges();

    void paint (juce::Graphics& g) override;
    void buttonClicked (juce::Button* button) override;

    /** Any thread; real-time safe. */
    void parameterChanged (const juce::String&, float) override { changed = true; }

private:
    void prepareButton (juce::TextButton& button, const juce::String& text, const char* tip);
    void prepareLabels();
    void prepareToggles();
    void subscribe();
    void refresh();
    void refreshIfOpen();
    void followTransport() noexcept;
    void toggle (const char* parameterId);
    void command (Settings::BurgerMenuCallback wanted, int number = 0);
    [[nodiscard]] BurgerMenuLayout::Situation situation() const;

    VelmoraAudioProcessor& processor;
    PluginModel& model;
    State currentState = State::menu;

    MessageLabel messageLabel;
    juce::String messageText;
    int messageHeight = 0;

    juce::Label filterPhaseLabel, filterModeLabel, addBandsLabel;
    orvik::SVGCheckbox phaseButton { "Lin/Min Phase" };
    orvik::SVGCheckbox modeButton { "Mix/Master Mode" };
    juce::TextButton resetTargetsButton, addSmartBandsButton, deleteAllBandsButton;
    std::array<juce::TextButton, 10> numberButtons;

    /** The audio thread's: whether the host's transport ran at the last block. */
    std::atomic<bool> transportSeen { false };

    /** Something has changed that is not shown yet. Set on any thread. */
    std::atomic<bool> changed { false };

    std::vector<std::unique_ptr<ParameterSubscription>> parameterSubscriptions;
    std::vector<std::unique_ptr<NotificationSubscription>> channelSubscriptions;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BurgerMenu)
};
