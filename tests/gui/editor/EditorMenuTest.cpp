#include "gui/editor/PluginEditor.h"
#include "support/Messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace
{
using Kind = Settings::Parameter;
using Place = MainWindow::Place;
using State = BurgerMenu::State;
using HoverRules::Target;

/** A window whose burger menu is used as a hand does it. */
class EditorMenuTest : public testing::Test
{
protected:
    EditorMenuTest()
    {
        processor.prepareToPlay (48000.0, 512);

        while (! processor.bandEngine().isIdle())
            std::this_thread::yield();

        processor.sessionState().fillMissingStores();
        editor = std::make_unique<VelmoraAudioProcessorEditor> (processor);
        editor->stopTimer();
        editor->main().room().pretendToShow();
        Messages::deliver();
    }

    BurgerMenu& menu() { return editor->main().burgerMenu(); }
    InterfaceState& state() { return processor.model.interfaceState; }

    void click (juce::Button& button)
    {
        button.triggerClick();
        Messages::deliver();
    }

    void clickInMenu (const juce::String& title)
    {
        for (auto* child : menu().getChildren())
            if (auto* button = dynamic_cast<juce::Button*> (child); button != nullptr && button->getTitle() == title)
            {
                ASSERT_TRUE (button->isVisible()) << title;
                return click (*button);
            }

        FAIL() << "no button " << title;
    }

    void openMenu() { click (editor->buttons().burgerButton); }

    [[nodiscard]] bool shows (State wanted)
    {
        return menu().isVisible() && state().bandsPanelOpen && menu().state() == wanted;
    }

    [[nodiscard]] std::vector<float> activeFrequencies()
    {
        std::vector<float> found;

        for (int band = 0; band < bandCount; ++band)
            if (processor.model.getBandValue (band, Kind::active) > 0.5f)
                found.push_back (processor.model.getBandValue (band, Kind::frequency));

        return found;
    }

    void transport (bool playing)
    {
        // The first block never plays.
        for (int block = 0; block < 2; ++block)
        {
            juce::AudioPlayHead::PositionInfo position;
            position.setTimeInSamples (block);
            position.setIsPlaying (playing);
            processor.model.transport.update (position, false);
        }

        processor.model.channels.fire (Channels::transportPlaying);
        editor->timerCallback();
    }

    void declareSmartBands()
    {
        processor.model.setSmartBandsReady (true, true);
        Messages::deliver();
    }

    VelmoraAudioProcessor processor { {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone };
    std::unique_ptr<VelmoraAudioProcessorEditor> editor;
};
} // namespace

TEST_F (EditorMenuTest, opensByAClickAndByHover)
{
    EXPECT_FALSE (menu().isVisible());
    openMenu();
    EXPECT_TRUE (shows (State::menu));
    openMenu();
    EXPECT_TRUE (shows (State::menu)) << "a second click leaves it open";
    editor->main().room().onCloseMenu();
    EXPECT_FALSE (menu().isVisible());
    EXPECT_FALSE (state().bandsPanelOpen);
    editor->hoverOver (Target::burgerButton);
    EXPECT_TRUE (shows (State::menu));
}

TEST_F (EditorMenuTest, hoverLeavesAnOpenPageAloneAndAClickClosesIt)
{
    click (editor->buttons().settingsButton);
    editor->hoverOver (Target::burgerButton);
    EXPECT_FALSE (menu().isVisible());
    openMenu();
    EXPECT_TRUE (shows (State::menu));
    EXPECT_FALSE (editor->main().isShowingPlace (Place::settingsWindow));
    EXPECT_FALSE (editor->buttons().settingsButton.isToggled());
}

TEST_F (EditorMenuTest, pagesAndGainPanelsTakeItsPlace)
{
    editor->main().fill (Place::outputGainPanel, std::make_unique<juce::Component>());
    editor->main().fill (Place::gainScalePanel, std::make_unique<juce::Component>());

    for (const auto target : { Target::outputGainButton, Target::gainScaleButton })
    {
        openMenu();
        editor->hoverOver (target);
        EXPECT_FALSE (menu().isVisible());
    }

    openMenu();
    click (editor->buttons().settingsButton);
    EXPECT_FALSE (menu().isVisible());
    EXPECT_FALSE (state().bandsPanelOpen);
}

TEST_F (EditorMenuTest, itTakesThePlaceOfAMessageWhoseTimeBeginsAnew)
{
    editor->showMessage ("Something.");
    editor->timerCallback();
    openMenu();
    EXPECT_TRUE (shows (State::menu));

    for (int tick = 0; tick < EditorClock::messageTicks * 2; ++tick)
        editor->timerCallback();

    EXPECT_TRUE (shows (State::menu)) << "only messages end by themselves";
}

TEST_F (EditorMenuTest, onlyTheMenuClosesWhenTheMouseComesIntoTheRoom)
{
    editor->showMessage ("Something.");
    editor->main().room().onCloseMenu();
    EXPECT_TRUE (shows (State::message));

    openMenu();
    editor->main().room().onCloseMenu();
    EXPECT_FALSE (menu().isVisible());

    declareSmartBands();
    editor->main().room().onCloseMenu();
    EXPECT_TRUE (shows (State::smartBands));
}

TEST_F (EditorMenuTest, aBandThatIsMeantClosesItToo)
{
    ASSERT_EQ (editor->main().room().addBandByHand (3000.0f), 0);
    openMenu();
    const_cast<RoomBands&> (editor->main().room().roomBands()).focus (0);
    EXPECT_FALSE (menu().isVisible());
}

//======================================================================================================================
TEST_F (EditorMenuTest, aNumberAddsItsBandsThoseAbove10kHzAsShelves)
{
    openMenu();
    clickInMenu ("Add 10 bands");
    EXPECT_FALSE (menu().isVisible());
    EXPECT_THAT (activeFrequencies(),
                 testing::ElementsAre (500, 1000, 2000, 3000, 4000, 5000, 8000, 10000, 15000, 17000));

    for (int band = 0; band < bandCount; ++band)
    {
        EXPECT_NE (editor->main().room().roomBands().find (band), nullptr) << band;
        EXPECT_EQ (processor.model.getBandValue (band, Kind::highShelf), band >= 8 ? 1.0f : 0.0f) << band;
        EXPECT_EQ (processor.model.getBandValue (band, Kind::gain), 0.0f) << band;
    }

    openMenu();
    EXPECT_EQ (menu().getWidth(), 230);
}

TEST_F (EditorMenuTest, deletingAllBandsSetsEveryValueBack)
{
    openMenu();
    clickInMenu ("Add 3 bands");
    processor.model.setParameterValue (ParameterIds::ofBand (1, Kind::gain), 5.0f);
    processor.model.setParameterValue (ParameterIds::ofBand (1, Kind::q), 3.0f);
    processor.model.setParameterValue (ParameterIds::ofBand (2, Kind::solo), 1.0f);
    openMenu();
    clickInMenu ("DELETE ALL BANDS");
    EXPECT_FALSE (menu().isVisible());
    EXPECT_TRUE (activeFrequencies().empty());
    EXPECT_TRUE (editor->main().room().roomBands().isEmpty());
    EXPECT_EQ (processor.model.getBandValue (1, Kind::gain), 0.0f);
    EXPECT_EQ (processor.model.getBandValue (1, Kind::q), 1.0f);
    EXPECT_EQ (processor.model.getBandValue (2, Kind::solo), 0.0f);
    openMenu();
    EXPECT_EQ (menu().getWidth(), 311);
}

TEST_F (EditorMenuTest, resettingTheTargetsForgetsWhatWasMeasuredAndClosesTheMenu)
{
    processor.model.setParameterValue (ParameterIds::currentPreset, static_cast<float> (Presets::balancedMasterId));
    Messages::deliver();
    auto& gainTargets = const_cast<GainTargets&> (processor.liveAnalysis().gainTargets());
    gainTargets.gainTarget[3] = 4.0f;
    editor->main().room().rebuildTarget();
    ASSERT_THAT (state().targetCurve, testing::Contains (testing::Gt (3.9)));

    processor.model.setTargetsReady (true, false);
    processor.model.setSmartBandsReady (true, false);
    openMenu();

    auto fired = 0;
    const auto token = processor.model.channels.add ([&fired] { ++fired; }, Channels::integratedLUFSAnalysisChanged);

    // A pass has ended whose findings nobody has seen yet.
    gainTargets.maxChange = 0.1f;
    processor.model.channels.fire (Channels::integratedLUFSAnalysisChanged);
    fired = 0;
    menu().onCommand (Settings::BurgerMenuCallback::resetTargets, 0);
    processor.model.channels.remove (token);
    Messages::deliver();
    EXPECT_EQ (fired, 1);
    EXPECT_FALSE (menu().isVisible());
    EXPECT_FALSE (processor.model.targetsReady());
    EXPECT_FALSE (processor.model.smartBandsReady());
    EXPECT_EQ (gainTargets.gainTarget[3], 0.0f);
    EXPECT_EQ (gainTargets.maxChange, 0.0f);
    EXPECT_THAT (state().targetCurve, testing::Each (0.0));
}

TEST_F (EditorMenuTest, smartBandsAreSearchedForAtAClick)
{
    declareSmartBands();
    ASSERT_TRUE (shows (State::smartBands));
    clickInMenu ("ADD SMART BANDS");

    // Nothing was heard, so the target is flat.
    EXPECT_TRUE (shows (State::message));
    EXPECT_TRUE (menu().message().startsWith ("Targets less than"));
}

//======================================================================================================================
TEST_F (EditorMenuTest, smartBandsAreOfferedWhenTheTargetHasSettledAndTheTransportStands)
{
    editor->main().fill (Place::outputGainPanel, std::make_unique<juce::Component>());
    editor->hoverOver (Target::outputGainButton);
    ASSERT_TRUE (editor->main().isShowingPlace (Place::outputGainPanel));
    declareSmartBands();
    EXPECT_TRUE (shows (State::smartBands));
    EXPECT_FALSE (editor->main().isShowingPlace (Place::outputGainPanel));
    EXPECT_EQ (menu().getHeight(), 60);
}

TEST_F (EditorMenuTest, aPanelGivesWayToTheMenuAtOnce)
{
    editor->hoverOver (Target::outputGainButton);
    ASSERT_TRUE (editor->main().isShowingPlace (Place::outputGainPanel));
    openMenu();
    EXPECT_TRUE (shows (State::menu));
    EXPECT_FALSE (editor->main().isShowingPlace (Place::outputGainPanel));
}

TEST_F (EditorMenuTest, aTipStandsBelowWhatThePointerHasOpened)
{
    processor.model.showToolTips = true;
    editor->actionListenerCallback ("SETTINGS-CLOSE");
    editor->buttons().settingsButton.triggerClick();
    Messages::deliver();
    editor->hoverOver (Target::gainScaleButton);
    auto* panel = editor->main().component (Place::gainScalePanel);
    ASSERT_TRUE (panel->isVisible());
    juce::TooltipWindow* tip = nullptr;

    for (auto* child : editor->getChildren())
        if (auto* found = dynamic_cast<juce::TooltipWindow*> (child))
            tip = found;

    ASSERT_NE (tip, nullptr);
    const auto panelBounds = editor->getLocalArea (panel, panel->getLocalBounds());
    tip->setVisible (true);
    tip->setBounds (panelBounds.reduced (20));
    editor->timerCallback();
    EXPECT_FALSE (tip->getBounds().intersects (panelBounds));
    EXPECT_EQ (tip->getY(), panelBounds.getBottom() + 6);
}

TEST_F (EditorMenuTest, settingsThatGiveWayToAPanelActAsIfTheyHadBeenClosed)
{
    const auto tips = [this]
    {
        auto count = 0;

        for (const auto* child : editor->getChildren())
            count += dynamic_cast<const juce::TooltipWindow*> (child) != nullptr ? 1 : 0;

        return count;
    };
    processor.model.showToolTips = false;
    editor->actionListenerCallback ("SETTINGS-CLOSE");
    click (editor->buttons().settingsButton);
    ASSERT_TRUE (editor->main().isShowingPlace (Place::settingsWindow));
    processor.model.showToolTips = true;
    EXPECT_EQ (tips(), 0);
    editor->hoverOver (Target::outputGainButton);
    EXPECT_FALSE (editor->main().isShowingPlace (Place::settingsWindow));
    EXPECT_EQ (tips(), 1);
}

TEST_F (EditorMenuTest, smartBandsAreNotOfferedWhileTheTransportRuns)
{
    transport (true);
    declareSmartBands();
    EXPECT_FALSE (menu().isVisible());
}

TEST_F (EditorMenuTest, smartBandsAreNotOfferedOverWhatIsOpenOrToWhoWantsNoNotifications)
{
    openMenu();
    declareSmartBands();
    EXPECT_TRUE (shows (State::menu));
    editor->main().room().onCloseMenu();

    click (editor->buttons().settingsButton);
    declareSmartBands();
    EXPECT_FALSE (menu().isVisible());
    click (editor->buttons().settingsButton);

    processor.model.showNotifications = false;
    declareSmartBands();
    EXPECT_FALSE (menu().isVisible());
}

TEST_F (EditorMenuTest, anOpenMenuFollowsTheTransportByTheTimer)
{
    processor.model.setTargetsReady (false, false);
    openMenu();
    EXPECT_EQ (menu().getHeight(), 130);
    transport (true);
    EXPECT_EQ (menu().getHeight(), 165);
    transport (false);
    EXPECT_EQ (menu().getHeight(), 130);
}
