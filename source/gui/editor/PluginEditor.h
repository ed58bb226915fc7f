#pragma once

#include "core/PluginProcessor.h"
#include "gui/band/BandPanels.h"
#include "gui/compositor/EditorCompositor.h"
#include "gui/editor/AnalysisSlide.h"
#include "gui/editor/Announcements.h"
#include "gui/editor/DropDownPanels.h"
#include "gui/editor/EditorClock.h"
#include "gui/editor/HoverRules.h"
#include "gui/editor/LevelMatchIcon.h"
#include "gui/editor/MainWindow.h"
#include "gui/editor/MenuCommands.h"
#include "gui/editor/Overlays.h"
#include "gui/editor/PresetLabels.h"
#include "gui/editor/Subscriptions.h"
#include "gui/editor/TopRow.h"
#include "gui/editor/UnaskedMessages.h"
#include "gui/look/VelmoraLookandFeel.h"

#include <optional>

class HelpWindow;

/** The plug-in's window: the top row, the room between, the preset's name below.

    The host makes and deletes it as it likes, in the middle of a drag or a message that is under way. What has to
   survive stands in the model; what arrives from another thread is posted with a weak reference and finds nobody once
   the window has gone. Message thread. */
class VelmoraAudioProcessorEditor final : public juce::AudioProcessorEditor,
                                          public juce::Button::Listener,
                                          public juce::ActionListener,
                                          public juce::AudioProcessorValueTreeState::Listener,
                                          public juce::Timer
{
public:
    /** @param hosts where links lead, and where the server is that is asked for updates and news */
    explicit VelmoraAudioProcessorEditor (VelmoraAudioProcessor& owner, const WebHosts& hosts = WebHosts::builtIn());
    ~VelmoraAudioProcessorEditor() override;

    void paint (juce::Graphics& g) override;
    void resized() override;
    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseMove (const juce::MouseEvent& event) override;
    void mouseDown (const juce::MouseEvent& event) override;
    void buttonClicked (juce::Button* button) override;

    /** What a window that lies over the room has to say: "CLOSE", "ANALYSIS-CLOSE", "SETTINGS-CLOSE", "TARGET-SET", and
        "ANALYSIS-NOTICE:" with a text to be shown. */
    void actionListenerCallback (const juce::String& message) override;

    void parameterChanged (const juce::String& parameterId, float newValue) override;
    void timerCallback() override;

    //==================================================================================================================
    [[nodiscard]] MainWindow& main() noexcept { return mainWindow; }
    [[nodiscard]] TopRow& buttons() noexcept { return topRow; }
    /** Shows what is known of updates and news. */
    void refreshAnnouncements() { announcements.show(); }

    [[nodiscard]] WebsiteLink& website() noexcept { return announcements.website(); }

    /** The preset menu as it would open now. */
    [[nodiscard]] juce::PopupMenu makePresetMenu() const;

    /** Takes a preset, as if it had been chosen from the menu. */
    void choosePreset (int id);

    /** Does what happens when the mouse enters a part of the window that is on the screen. */
    void hoverOver (HoverRules::Target target);

    /** Shows a text in the burger menu's panel for eight seconds. */
    void showMessage (const juce::String& text) { overlays.showMessage (text); }

private:
    using Place = MainWindow::Place;

    void letGoOfThePointer();
    void subscribe();
    void afterwards (const char* channel, void (VelmoraAudioProcessorEditor::*reaction)());

    void makeBandPanels();
    void followMainBypass();
    void followMasterLimits() { unasked.explainMasterLimits(); }
    void offerSmartBands() { unasked.offerSmartBands(); }
    void followSession();
    void followMinimised();
    void followHeatMap();
    void bindMenu();
    void followPreset (bool restoring);
    void showPresetLabels();

    void switchComparison();
    void showAnalysis();
    void hideAnalysis();
    void adoptNewTarget();
    void applyToolTipSetting();
    void keepTipOffPanels();
    void showMenu();
    void openPresetMenu();

    [[nodiscard]] HoverRules::Target hoverTargetOf (const juce::Component* component) const;
    void enter (HoverRules::Target target, bool targetShowing);
    void act (HoverRules::Action action);
    [[nodiscard]] TopRow::OutputState outputState() const;

    VelmoraAudioProcessor& audioProcessor;
    PluginModel& model;
    VelmoraLookandFeel& lookAndFeel;
    MainWindow mainWindow;
    EditorClock clock;
    TopRow topRow;
    Overlays overlays;
    MenuCommands menuCommands;
    DropDownPanels dropDowns;
    UnaskedMessages unasked;
    AnalysisSlide analysisSlide;
    BandPanels bandPanels;
    HelpWindow* helpWindow = nullptr;
    Announcements announcements;
    PresetLabels presetLabels;
    juce::Label headerLabel;
    std::unique_ptr<juce::TooltipWindow> toolTips;
    LevelMatchIcon levelMatchIcon;
    std::optional<EditorCompositor> compositor;

    std::vector<std::unique_ptr<NotificationSubscription>> notifications;
    std::optional<ParameterSubscription> presetSubscription, gainScaleSubscription;

    JUCE_DECLARE_WEAK_REFERENCEABLE (VelmoraAudioProcessorEditor)
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (VelmoraAudioProcessorEditor)
};
