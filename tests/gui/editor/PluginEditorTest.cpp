#include "gui/editor/PluginEditor.h"

#include "gui/editor/EditorMessages.h"
#include "gui/look/Palette.h"
#include "gui/panels/OutputGainPanel.h"
#include "support/Messages.h"
#include "support/Pictures.h"
#include "support/RepaintCounter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace
{
using Place = MainWindow::Place;

class PluginEditorTest : public testing::Test
{
protected:
    VelmoraAudioProcessor processor { {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone };
    std::unique_ptr<VelmoraAudioProcessorEditor> editor;

    PluginEditorTest()
    {
        processor.prepareToPlay (48000.0, 512);
        awaitWorkers();
    }

    /** The workers look at the limits of Master themselves, whenever they have handled something. */
    void awaitWorkers()
    {
        while (! processor.bandEngine().isIdle())
            std::this_thread::yield();
    }

    void open()
    {
        editor.reset();
        processor.sessionState().fillMissingStores();
        editor = std::make_unique<VelmoraAudioProcessorEditor> (processor);

        // The tests keep time themselves.
        editor->stopTimer();
    }

    /** Until the room has drawn what it had to draw when it opened. */
    void awaitWalls()
    {
        const auto& worker = editor->main().room().wallWorker();
        const auto end = worker.tickCount() + 2;

        while (worker.tickCount() < end)
            std::this_thread::yield();

        Messages::deliver();
    }

    void tick (int times)
    {
        for (auto i = 0; i < times; ++i)
            editor->timerCallback();
    }

    void click (juce::Button& button)
    {
        button.triggerClick();
        Messages::deliver();
    }

    void set (const char* id, float value)
    {
        processor.model.setParameterValue (id, value);
        Messages::deliver();
    }

    juce::Label* labelWith (const juce::String& text)
    {
        for (auto* child : editor->getChildren())
            if (auto* label = dynamic_cast<juce::Label*> (child); label != nullptr && label->getText().trim() == text)
                return label;

        return nullptr;
    }

    /** A hand moves a band beyond what Master can do. */
    void crossMasterLimits()
    {
        awaitWorkers();
        processor.model.interfaceState.bandChangedByUser = true;
        processor.model.setCanUseMasterMode (false);
        Messages::deliver();
    }

    [[nodiscard]] bool messageShowing() const { return editor->main().burgerMenu().isVisible(); }

    juce::MouseEvent mouseAt (juce::Component& component, juce::Point<float> position)
    {
        const auto now = juce::Time::getCurrentTime();
        return { juce::Desktop::getInstance().getMainMouseSource(),
                 position,
                 juce::ModifierKeys(),
                 0.0f,
                 0.0f,
                 0.0f,
                 0.0f,
                 0.0f,
                 &component,
                 &component,
                 now,
                 position,
                 now,
                 1,
                 false };
    }
};
} // namespace

TEST_F (PluginEditorTest, opensAtTheRememberedSize)
{
    processor.model.windowWidth = 900;
    processor.model.windowHeight = 800;
    open();
    EXPECT_EQ (editor->getBounds(), juce::Rectangle<int> (900, 800));
    EXPECT_FALSE (processor.model.editorClosed);
    editor.reset();
    EXPECT_TRUE (processor.model.editorClosed);
}

TEST_F (PluginEditorTest, aSizeThatNoWindowCanHaveIsBroughtWithinTheLimits)
{
    processor.model.windowWidth = 0;
    processor.model.windowHeight = 0;
    open();
    EXPECT_EQ (editor->getBounds(), juce::Rectangle<int> (570, 606));
}

TEST_F (PluginEditorTest, aMinimisedWindowOpensAtTheLeastHeight)
{
    processor.model.windowHeight = 900;
    processor.model.setMinimised (true, false);
    open();
    EXPECT_EQ (editor->getHeight(), 606);
    EXPECT_TRUE (processor.model.minimised());
}

TEST_F (PluginEditorTest, makingAWindowHigherEndsItsBeingMinimised)
{
    processor.model.setMinimised (true, false);
    open();
    editor->setSize (680, 607);
    EXPECT_FALSE (processor.model.minimised());
}

TEST_F (PluginEditorTest, theSettingMinimisesAnOpenWindow)
{
    processor.model.windowWidth = 900;
    open();
    processor.model.setMinimised (true, true);
    Messages::deliver();
    EXPECT_EQ (editor->getBounds(), juce::Rectangle<int> (900, 606));
}

TEST_F (PluginEditorTest, everySizeIsRemembered)
{
    open();
    editor->setSize (1234, 1000);
    EXPECT_EQ (processor.model.windowWidth, 1234);
    EXPECT_EQ (processor.model.windowHeight, 1000);
    EXPECT_EQ (editor->main().getBounds(), juce::Rectangle<int> (5, 42, 1224, 910));
}

TEST_F (PluginEditorTest, everyControlHasATitle)
{
    open();

    for (auto* button : editor->buttons().all())
        EXPECT_TRUE (button->getTitle().isNotEmpty()) << button->getName();

    EXPECT_TRUE (editor->getTitle().isNotEmpty());
}

TEST_F (PluginEditorTest, barsAreDrawnAsGradients)
{
    open();
    const auto picture = Pictures::of (*editor, "editor");
    Pictures::keep (Pictures::of (*editor, {}, 2.0f), "editor@2");
    EXPECT_NEAR (picture.getPixelAt (300, 0).getRed(), 0x28, 1);
    EXPECT_NEAR (picture.getPixelAt (300, 41).getRed(), 0x14, 1);
    EXPECT_NEAR (picture.getPixelAt (300, 712 - 48).getRed(), 0x14, 1);
    EXPECT_NEAR (picture.getPixelAt (300, 711).getRed(), 0x28, 1);
    EXPECT_EQ (Pictures::count (picture, { 577, 8, 2, 22 }, juce::Colour (Palette::separator)), 44);
}

//======================================================================================================================
TEST_F (PluginEditorTest, theLabelsNameThePreset)
{
    open();
    auto* type = labelWith ("PRESET");
    auto* name = labelWith ("BALANCED MASTER");
    ASSERT_NE (type, nullptr);
    ASSERT_NE (name, nullptr);
    EXPECT_EQ (type->getX(), 30);
    EXPECT_EQ (name->getX(), 32 + type->getWidth());
    EXPECT_GE (type->getWidth(), type->getFont().getStringWidth ("PRESET"));
    EXPECT_GE (name->getWidth(), name->getFont().getStringWidth ("BALANCED MASTER"));
}

TEST_F (PluginEditorTest, theLabelsFollowTheParameter)
{
    open();
    set (ParameterIds::currentPreset, 91.0f);
    EXPECT_NE (labelWith ("HOUSE"), nullptr);
    ASSERT_NE (labelWith ("TECH"), nullptr);
    EXPECT_EQ (labelWith ("TECH")->getX(), 32 + labelWith ("HOUSE")->getWidth());
    EXPECT_EQ (labelWith ("BALANCED MASTER"), nullptr);
}

TEST_F (PluginEditorTest, aChoiceFromTheMenuSetsTheParameter)
{
    open();
    editor->choosePreset (91);
    EXPECT_FLOAT_EQ (processor.model.presetNumber(), 91.0f);
    EXPECT_GT (editor->makePresetMenu().getNumItems(), 16);
}

TEST_F (PluginEditorTest, aNewPresetEndsAMessageAndForgetsTheSmartBands)
{
    open();
    editor->showMessage ("Something");
    processor.model.setSmartBandsReady (true, false);
    set (ParameterIds::currentPreset, 91.0f);
    EXPECT_FALSE (messageShowing());
    EXPECT_FALSE (processor.model.smartBandsReady());
}

//======================================================================================================================
TEST_F (PluginEditorTest, aClickOnTheOutputButtonBypasses)
{
    open();
    auto& button = editor->buttons().outputGainButton;
    const auto before = Pictures::of (button);
    click (button);
    EXPECT_TRUE (processor.model.bypassParameterOn());
    EXPECT_TRUE (button.getToggleState());
    click (button);
    EXPECT_FALSE (processor.model.bypassParameterOn());
    EXPECT_FALSE (button.getToggleState());
}

TEST_F (PluginEditorTest, aRepeatedBypassDoesNotInvertTheIcon)
{
    open();
    processor.model.setMainBypass (true);
    processor.model.setMainBypass (true);
    Messages::deliver();
    EXPECT_TRUE (editor->buttons().outputGainButton.getToggleState());
}

TEST_F (PluginEditorTest, theOutputIconWarnsOfALevelThatDoesNotMatch)
{
    const auto amber = juce::Colour (Palette::warning);
    open();
    auto& button = editor->buttons().outputGainButton;
    button.setAlpha (1.0f);
    const auto badge = [&button, amber]
    { return Pictures::count (Pictures::of (button), button.getLocalBounds(), amber); };
    EXPECT_EQ (badge(), 0);

    set (ParameterIds::outputGain, 3.0f);
    tick (24);
    EXPECT_EQ (badge(), 0);
    tick (1);
    EXPECT_GT (badge(), 8);

    // Bypass has an icon of its own, which the level leaves alone.
    set (ParameterIds::bypass, 1.0f);
    EXPECT_EQ (badge(), 0);
    set (ParameterIds::outputGain, 6.0f);
    tick (50);
    EXPECT_EQ (badge(), 0);

    set (ParameterIds::bypass, 0.0f);
    EXPECT_GT (badge(), 8);
}

TEST_F (PluginEditorTest, theGainScaleIconIsYellowWhileItChangesSomething)
{
    open();
    const auto yellow = juce::Colour (Palette::gainScaleInUse);
    auto& button = editor->buttons().gainScaleButton;
    button.setAlpha (1.0f);
    const auto count = [&button] (juce::Colour colour)
    { return Pictures::count (Pictures::of (button), button.getLocalBounds(), colour); };

    EXPECT_EQ (count (yellow), 0);
    set (ParameterIds::gainScale, 150.0f);
    EXPECT_GT (count (yellow), 8);
    set (ParameterIds::gainScale, 100.0f);
    EXPECT_EQ (count (yellow), 0);
    EXPECT_GT (count (juce::Colours::white), 8);

    processor.model.setParameterValue (ParameterIds::gainScale, 50.0f);
    open();
    editor->buttons().gainScaleButton.setAlpha (1.0f);
    EXPECT_GT (Pictures::count (Pictures::of (editor->buttons().gainScaleButton),
                                editor->buttons().gainScaleButton.getLocalBounds(),
                                yellow),
               8);
}

TEST_F (PluginEditorTest, theAnalyseIconIsGreenForATargetOfTheUsers)
{
    open();
    const auto green = juce::Colour (Palette::target);
    auto& button = editor->buttons().analyseButton;
    button.setAlpha (1.0f);
    EXPECT_EQ (Pictures::count (Pictures::of (button), button.getLocalBounds(), green), 0);
    set (ParameterIds::currentPreset, 130.0f);
    EXPECT_GT (Pictures::count (Pictures::of (button), button.getLocalBounds(), green), 8);
}

//======================================================================================================================
TEST_F (PluginEditorTest, theComparisonSwitchesSides)
{
    open();
    auto& row = editor->buttons();
    EXPECT_FALSE (row.compareButton.getToggleState());
    EXPECT_TRUE (row.unlinkButton.isVisible());
    EXPECT_FALSE (row.linkButton.isVisible());

    set (ParameterIds::outputGain, 3.0f);
    click (row.compareButton);
    EXPECT_FALSE (processor.sessionState().comparisonASelected());
    EXPECT_TRUE (row.compareButton.getToggleState());
    EXPECT_TRUE (row.linkButton.isVisible());
    EXPECT_FALSE (row.unlinkButton.isVisible());
    EXPECT_FLOAT_EQ (processor.model.outputGainDb(), 0.0f);

    click (row.compareButton);
    EXPECT_TRUE (processor.sessionState().comparisonASelected());
    EXPECT_FLOAT_EQ (processor.model.outputGainDb(), 3.0f);
}

TEST_F (PluginEditorTest, eitherCopyButtonMakesBothSidesEqual)
{
    open();
    auto& row = editor->buttons();
    set (ParameterIds::outputGain, 3.0f);
    click (row.unlinkButton);
    click (row.compareButton);
    EXPECT_FLOAT_EQ (processor.model.outputGainDb(), 3.0f);

    set (ParameterIds::outputGain, -2.0f);
    click (row.linkButton);
    click (row.compareButton);
    EXPECT_FLOAT_EQ (processor.model.outputGainDb(), -2.0f);
}

TEST_F (PluginEditorTest, aReopenedWindowShowsTheSideInUse)
{
    open();
    click (editor->buttons().compareButton);
    open();
    EXPECT_TRUE (editor->buttons().compareButton.getToggleState());
    EXPECT_TRUE (editor->buttons().linkButton.isVisible());
}

TEST_F (PluginEditorTest, aLoadedSessionIsShown)
{
    open();
    click (editor->buttons().compareButton);
    juce::MemoryBlock sideB;
    processor.getStateInformation (sideB);
    click (editor->buttons().compareButton);
    ASSERT_TRUE (processor.sessionState().comparisonASelected());

    processor.setStateInformation (sideB.getData(), static_cast<int> (sideB.getSize()));
    Messages::deliver();
    EXPECT_TRUE (editor->buttons().compareButton.getToggleState());
    EXPECT_TRUE (editor->buttons().linkButton.isVisible());
}

//======================================================================================================================
TEST_F (PluginEditorTest, theLimitsOfMasterAreExplainedSixTimes)
{
    open();

    for (auto time = 0; time < 6; ++time)
    {
        crossMasterLimits();
        EXPECT_TRUE (messageShowing()) << time;
        EXPECT_EQ (editor->main().burgerMenu().message(), EditorMessages::masterLimits());
        tick (EditorClock::messageTicks);
        EXPECT_FALSE (messageShowing()) << time;
    }

    crossMasterLimits();
    EXPECT_FALSE (messageShowing());

    // The count belongs to the instance.
    open();
    crossMasterLimits();
    EXPECT_FALSE (messageShowing());
}

TEST_F (PluginEditorTest, aMessageIsNotRepeatedUntilTheHandMovesAgain)
{
    open();
    crossMasterLimits();
    tick (EditorClock::messageTicks);
    processor.model.setCanUseMasterMode (false);
    Messages::deliver();
    EXPECT_FALSE (messageShowing());
}

TEST_F (PluginEditorTest, aMessageEndsByItselfAfterEightSeconds)
{
    open();
    editor->main().room().onBandsOutOfScale();
    EXPECT_TRUE (messageShowing());
    EXPECT_EQ (editor->main().burgerMenu().message(), "EQ bands not within selected scale.");
    tick (EditorClock::messageTicks - 1);
    EXPECT_TRUE (messageShowing());
    tick (1);
    EXPECT_FALSE (messageShowing());
    EXPECT_FALSE (processor.model.interfaceState.bandsPanelOpen);
}

TEST_F (PluginEditorTest, withoutNotificationsNothingIsSaidUnasked)
{
    open();
    processor.model.showNotifications = false;
    crossMasterLimits();
    EXPECT_FALSE (messageShowing());
    editor->main().room().onBandsOutOfScale();
    EXPECT_FALSE (messageShowing());
}

//======================================================================================================================
TEST_F (PluginEditorTest, aButtonOpensItsWindowAndClosesTheOther)
{
    open();
    auto& main = editor->main();
    auto& row = editor->buttons();
    main.fill (Place::settingsWindow, std::make_unique<juce::Component>());
    main.fill (Place::helpWindow, std::make_unique<juce::Component>());

    click (row.settingsButton);
    EXPECT_TRUE (main.isShowingPlace (Place::settingsWindow));
    EXPECT_TRUE (row.settingsButton.isToggled());
    EXPECT_TRUE (processor.model.interfaceState.settingsOpen);

    click (row.helpButton);
    EXPECT_FALSE (main.isShowingPlace (Place::settingsWindow));
    EXPECT_TRUE (main.isShowingPlace (Place::helpWindow));
    EXPECT_FALSE (row.settingsButton.isToggled());
    EXPECT_FALSE (processor.model.interfaceState.settingsOpen);
    EXPECT_TRUE (processor.model.interfaceState.helpOpen);

    editor->actionListenerCallback ("CLOSE");
    EXPECT_FALSE (main.isShowingPlace (Place::helpWindow));
    EXPECT_FALSE (row.helpButton.isToggled());

    click (row.helpButton);
    click (row.helpButton);
    EXPECT_FALSE (main.isShowingPlace (Place::helpWindow));
}

TEST_F (PluginEditorTest, toolTipsFollowTheirSetting)
{
    const auto hasToolTips = [this]
    {
        for (auto* child : editor->getChildren())
            if (dynamic_cast<juce::TooltipWindow*> (child) != nullptr)
                return true;

        return false;
    };

    open();
    EXPECT_FALSE (hasToolTips());
    processor.model.showToolTips = true;
    editor->actionListenerCallback ("SETTINGS-CLOSE");
    EXPECT_TRUE (hasToolTips());
    processor.model.showToolTips = false;
    editor->actionListenerCallback ("SETTINGS-CLOSE");
    EXPECT_FALSE (hasToolTips());
}

TEST_F (PluginEditorTest, aGainPanelStaysWhileTheMouseIsOnIt)
{
    open();
    auto& main = editor->main();
    auto& button = editor->buttons().gainScaleButton;
    main.fill (Place::gainScalePanel, std::make_unique<juce::Component>());
    main.show (Place::gainScalePanel, false);

    // Nothing is on a screen here, so the panel is opened the way a button under the mouse would.
    editor->hoverOver (HoverRules::Target::gainScaleButton);
    EXPECT_TRUE (main.isShowingPlace (Place::gainScalePanel));

    auto& panel = *main.component (Place::gainScalePanel);
    editor->mouseExit (mouseAt (button, { 15.0f, 34.0f }));
    editor->mouseMove (mouseAt (panel, { 100.0f, 30.0f }));
    tick (50);
    EXPECT_TRUE (main.isShowingPlace (Place::gainScalePanel));

    editor->mouseExit (mouseAt (panel, { 100.0f, 300.0f }));
    tick (7);
    EXPECT_TRUE (main.isShowingPlace (Place::gainScalePanel));
    tick (1);
    EXPECT_FALSE (main.isShowingPlace (Place::gainScalePanel));
}

TEST_F (PluginEditorTest, eitherGainButtonOpensItsPanelAndClosesTheOther)
{
    open();
    auto& main = editor->main();
    EXPECT_FALSE (main.isShowingPlace (Place::outputGainPanel));
    EXPECT_FALSE (main.isShowingPlace (Place::gainScalePanel));
    editor->hoverOver (HoverRules::Target::outputGainButton);
    EXPECT_TRUE (main.isShowingPlace (Place::outputGainPanel));
    EXPECT_EQ (main.component (Place::outputGainPanel)->getBounds(), juce::Rectangle<int> (428, 0, 230, 80));
    editor->hoverOver (HoverRules::Target::gainScaleButton);
    EXPECT_FALSE (main.isShowingPlace (Place::outputGainPanel));
    EXPECT_TRUE (main.isShowingPlace (Place::gainScalePanel));
    EXPECT_EQ (main.component (Place::gainScalePanel)->getBounds(), juce::Rectangle<int> (325, 0, 230, 70));
    editor->hoverOver (HoverRules::Target::room);
    EXPECT_FALSE (main.isShowingPlace (Place::gainScalePanel));
}

TEST_F (PluginEditorTest, aPanelStaysWhileTheMouseIsOnItsSlider)
{
    open();
    auto& main = editor->main();
    editor->hoverOver (HoverRules::Target::outputGainButton);
    auto& slider = dynamic_cast<OutputGainPanel&> (*main.component (Place::outputGainPanel)).slider;
    editor->mouseMove (mouseAt (slider, { 100.0f, 20.0f }));
    tick (50);
    EXPECT_TRUE (main.isShowingPlace (Place::outputGainPanel));
    editor->mouseExit (mouseAt (slider, { 100.0f, 400.0f }));
    tick (8);
    EXPECT_FALSE (main.isShowingPlace (Place::outputGainPanel));
}

TEST_F (PluginEditorTest, switchingTheHeatMapRepaintsForSomeSeconds)
{
    processor.model.setShowHeatmap (true);
    open();
    tick (EditorClock::repaintTicks);
    awaitWalls();
    auto repaints = 0;
    editor->setCachedComponentImage (new RepaintCounter (*editor, repaints));
    repaints = 0;
    tick (10);
    EXPECT_EQ (repaints, 0);
    processor.model.setShowHeatmap (false);
    Messages::deliver();
    tick (EditorClock::repaintTicks + 10);
    EXPECT_EQ (repaints, EditorClock::repaintTicks);
    editor->setCachedComponentImage (nullptr);
}

TEST_F (PluginEditorTest, theAnalysisSlidesUpAndDown)
{
    open();
    auto& main = editor->main();
    main.fill (Place::analysisWindow, std::make_unique<juce::Component>());
    auto& analysis = *main.component (Place::analysisWindow);
    click (editor->buttons().analyseButton);
    EXPECT_TRUE (processor.model.interfaceState.analysisOpen);
    tick (3);
    EXPECT_EQ (analysis.getBounds(), juce::Rectangle<int> (0, 712 - 250, 680, 250));
    tick (3);
    EXPECT_EQ (analysis.getBounds(), juce::Rectangle<int> (0, 712 - 425, 680, 325));
    EXPECT_FALSE (processor.model.interfaceState.analysisSliding);

    editor->actionListenerCallback ("ANALYSIS-CLOSE");
    EXPECT_FALSE (processor.model.interfaceState.analysisOpen);
    tick (5);
    EXPECT_TRUE (analysis.isVisible());
    tick (1);
    EXPECT_FALSE (analysis.isVisible());
    EXPECT_FALSE (editor->buttons().analyseButton.isToggled());
}

TEST_F (PluginEditorTest, aNewTargetIsTakenOver)
{
    open();
    set (ParameterIds::currentPreset, 130.0f);
    processor.model.setTargetsReady (true, false);
    std::array<float, Presets::bandValueCount> values;
    values.fill (-30.0f);
    processor.presets.setUserSetting (-9.5f, values);
    auto& gainTargets = const_cast<GainTargets&> (processor.liveAnalysis().gainTargets());
    gainTargets.gainTarget[3] = 4.0f;
    gainTargets.maxChange = 0.2f;

    // A pass has ended whose findings nobody has seen yet.
    processor.model.channels.fire (Channels::integratedLUFSAnalysisChanged);
    editor->actionListenerCallback ("TARGET-SET");
    EXPECT_TRUE (processor.model.targetSetByUser);
    EXPECT_FALSE (processor.model.targetsReady());
    EXPECT_FALSE (processor.model.smartBandsReady());
    EXPECT_FLOAT_EQ (processor.target.targetLufs.load(), -9.5f);
    EXPECT_EQ (gainTargets.gainTarget[3], 0.0f);
    EXPECT_EQ (gainTargets.maxChange, 0.0f);
}

TEST_F (PluginEditorTest, makesTheSparePanelsOnceItHasOpenedAndTakesThemAlong)
{
    open();
    Messages::deliver();
    const auto panelsIn = [] (const juce::Component& parent)
    {
        auto count = 0;

        for (const auto* child : parent.getChildren())
            count += dynamic_cast<const SolvaneControlPanel*> (child) != nullptr ? 1 : 0;

        return count;
    };
    EXPECT_EQ (panelsIn (*editor), 2);
    processor.model.setCreateOverlapControls (true, true);
    processor.model.setCreateOverlapControls (true, true);
    Messages::deliver();
    EXPECT_EQ (panelsIn (*editor), 2);
}

//======================================================================================================================
TEST_F (PluginEditorTest, whatIsPostedFindsNobodyAfterTheWindowHasGone)
{
    open();
    processor.model.setParameterValue (ParameterIds::currentPreset, 91.0f);
    processor.model.setParameterValue (ParameterIds::gainScale, 50.0f);
    processor.model.interfaceState.bandChangedByUser = true;
    processor.model.setCanUseMasterMode (false);
    processor.model.setMainBypass (true);
    processor.model.setMinimised (true, true);
    processor.model.setStateInformationSet (true, true);
    editor.reset();
    Messages::deliver();
    EXPECT_EQ (processor.model.interfaceState.masterMessageCount, 0);
}

TEST_F (PluginEditorTest, aWindowMayComeAndGoAHundredTimes)
{
    for (auto time = 0; time < 100; ++time)
    {
        open();
        processor.model.setParameterValue (ParameterIds::currentPreset, static_cast<float> (1 + time % 131));
        tick (time % 3);
    }

    Messages::deliver();
    open();
    EXPECT_NE (labelWith (processor.presets.currentPreset().name), nullptr);
}
