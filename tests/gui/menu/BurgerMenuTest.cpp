#include "gui/menu/BurgerMenu.h"

#include "gui/editor/EditorMessages.h"
#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"
#include "gui/look/VelmoraLookandFeel.h"
#include "support/Messages.h"
#include "support/Pictures.h"
#include "support/RealTimeGuard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace
{
using Command = Settings::BurgerMenuCallback;
using State = BurgerMenu::State;

/** The menu in a parent as wide as a new window's. */
class BurgerMenuTest : public testing::Test
{
protected:
    BurgerMenuTest()
    {
        processor.prepareToPlay (48000.0, 512);

        // The workers look at the limits of Master themselves, whenever they have handled something.
        while (! processor.bandEngine().isIdle())
            std::this_thread::yield();

        parent.setLookAndFeel (&look);
        parent.setSize (670, 622);
        parent.addAndMakeVisible (menu);
        menu.onCommand = [this] (Command command, int number) { commands.emplace_back (command, number); };
    }

    ~BurgerMenuTest() override { parent.setLookAndFeel (nullptr); }

    template <typename Kind = juce::Button>
    Kind* find (const juce::String& title)
    {
        for (auto* child : menu.getChildren())
            if (auto* found = dynamic_cast<Kind*> (child); found != nullptr && child->getTitle() == title)
                return found;

        return nullptr;
    }

    juce::Button& button (const juce::String& title)
    {
        auto* found = find (title);

        if (found == nullptr)
            throw std::out_of_range (title.toStdString());

        return *found;
    }

    /** The texts of the labels that show. */
    std::vector<juce::String> labels()
    {
        std::vector<juce::String> texts;

        for (auto* child : menu.getChildren())
            if (auto* label = dynamic_cast<juce::Label*> (child); label != nullptr && label->isVisible())
                texts.push_back (label->getText());

        return texts;
    }

    std::vector<juce::String> buttons()
    {
        std::vector<juce::String> titles;

        for (auto* child : menu.getChildren())
            if (auto* found = dynamic_cast<juce::Button*> (child); found != nullptr && found->isVisible())
                titles.push_back (found->getTitle());

        return titles;
    }

    void click (const juce::String& title)
    {
        button (title).triggerClick();
        Messages::deliver();
    }

    void set (const juce::String& id, float value)
    {
        processor.model.setParameterValue (id, value);
        Messages::deliver();
        menu.serveChanges();
    }

    /** The host's transport at a block, as the audio thread tells it. */
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
    }

    /** What was measured may be compared with the target. */
    void readTarget()
    {
        set (ParameterIds::currentPreset, static_cast<float> (Presets::balancedMasterId));
        processor.model.setTargetsReady (true, false);
    }

    VelmoraAudioProcessor processor { {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone };
    VelmoraLookandFeel look { processor.model.levelMatchPointer };
    juce::Component parent;
    BurgerMenu menu { processor };
    std::vector<std::pair<Command, int>> commands;
};

constexpr auto phase = "Lin/Min Phase";
constexpr auto mode = "Mix/Master Mode";
} // namespace

TEST_F (BurgerMenuTest, aMessageTakesTheHeightOfItsLines)
{
    EXPECT_EQ (MessageLabel::heightFor ("One line."), 40);
    EXPECT_EQ (MessageLabel::heightFor ("One line.\nAnother."), 40);
    EXPECT_EQ (MessageLabel::heightFor ("One.\nTwo.\nThree."), 60);
    EXPECT_EQ (MessageLabel::heightFor ("One.\n\nThree.\n\nFive."), 100);
}

TEST_F (BurgerMenuTest, aMessageStandsAtTheUpperRight)
{
    menu.showMessage (State::message, "One.\nTwo.\nThree.");
    EXPECT_EQ (menu.getBounds(), juce::Rectangle<int> (670 - 272, 0, 230, 15 + 60));
    EXPECT_EQ (menu.state(), State::message);
    EXPECT_EQ (menu.message(), "One.\nTwo.\nThree.");
    EXPECT_TRUE (buttons().empty());
    EXPECT_THAT (labels(), testing::ElementsAre ("One.\nTwo.\nThree."));

    menu.layOut (1390);
    EXPECT_EQ (menu.getBounds(), juce::Rectangle<int> (1390 - 272, 0, 230, 75));
}

TEST_F (BurgerMenuTest, aMessageIsRedAndWithinItsPanel)
{
    for (const auto& text : { EditorMessages::masterLimits(), EditorMessages::bandsOutOfScale() })
    {
        menu.showMessage (State::message, text);
        const auto picture = Pictures::of (menu, "message-" + text.substring (0, 6));
        const auto red = juce::Colour (Palette::message);
        const auto inside = picture.getBounds().withTrimmedTop (10).withTrimmedBottom (5).reduced (8, 0);
        const auto all = Pictures::count (picture, picture.getBounds(), red, 100);
        EXPECT_GT (all, 100);
        EXPECT_EQ (Pictures::count (picture, inside, red, 100), all) << text;
    }
}

//======================================================================================================================
TEST_F (BurgerMenuTest, withoutBandsItAddsThem)
{
    menu.showCommands (State::menu);
    EXPECT_THAT (labels(), testing::ElementsAre ("Filter Phase", "Filter Mode", "Add Bands"));
    EXPECT_THAT (buttons(),
                 testing::ElementsAre (phase,
                                       mode,
                                       "Add 1 band",
                                       "Add 2 bands",
                                       "Add 3 bands",
                                       "Add 4 bands",
                                       "Add 5 bands",
                                       "Add 6 bands",
                                       "Add 7 bands",
                                       "Add 8 bands",
                                       "Add 9 bands",
                                       "Add 10 bands"));
    EXPECT_EQ (menu.getBounds(), juce::Rectangle<int> (670 - 353, 0, 311, 130));
    EXPECT_EQ (button ("Add 10 bands").getButtonText(), "10");
}

TEST_F (BurgerMenuTest, withABandItDeletesThemAndThatShowsWhenItOpensAgain)
{
    menu.showCommands (State::menu);
    set (ParameterIds::ofBand (9, Settings::Parameter::active), 1.0f);
    menu.showCommands (State::menu);
    EXPECT_THAT (buttons(), testing::ElementsAre (phase, mode, "DELETE ALL BANDS"));
    EXPECT_THAT (labels(), testing::ElementsAre ("Filter Phase", "Filter Mode"));
    EXPECT_EQ (menu.getBounds(), juce::Rectangle<int> (670 - 272, 0, 230, 110));
}

TEST_F (BurgerMenuTest, targetsAreResetWhereThereIsOneOrTheTransportRuns)
{
    set (ParameterIds::currentPreset, static_cast<float> (Presets::noTargetsId));
    processor.model.setTargetsReady (true, false);
    menu.showCommands (State::menu);
    EXPECT_FALSE (button ("RESET TARGETS").isVisible()) << "no target";

    readTarget();
    menu.showCommands (State::menu);
    EXPECT_TRUE (button ("RESET TARGETS").isVisible());
    EXPECT_FALSE (button ("ADD SMART BANDS").isVisible());

    processor.model.setTargetsReady (false, false);
    menu.showCommands (State::menu);
    EXPECT_FALSE (button ("RESET TARGETS").isVisible()) << "nothing measured";

    transport (true);
    menu.showCommands (State::menu);
    EXPECT_TRUE (button ("RESET TARGETS").isVisible());
}

TEST_F (BurgerMenuTest, anOpenMenuFollowsTheTransportAtTheTimersNextTick)
{
    menu.showCommands (State::menu);
    transport (true);
    EXPECT_FALSE (button ("RESET TARGETS").isVisible());
    menu.serveChanges();
    EXPECT_TRUE (button ("RESET TARGETS").isVisible());
    transport (false);
    menu.serveChanges();
    EXPECT_FALSE (button ("RESET TARGETS").isVisible());
}

TEST_F (BurgerMenuTest, aMenuThatIsMadeWhileTheTransportRunsKnowsIt)
{
    transport (true);
    BurgerMenu late (processor);
    parent.addAndMakeVisible (late);
    late.showCommands (State::menu);
    EXPECT_EQ (late.getHeight(), 165);
}

TEST_F (BurgerMenuTest, anOpenMenuFollowsWhatIsReady)
{
    readTarget();
    menu.showCommands (State::menu);
    processor.model.setSmartBandsReady (true, true);
    EXPECT_FALSE (button ("ADD SMART BANDS").isVisible()) << "the channel only leaves a mark";
    menu.serveChanges();
    EXPECT_TRUE (button ("ADD SMART BANDS").isVisible());
    EXPECT_EQ (menu.getHeight(), 200);
}

TEST_F (BurgerMenuTest, anOfferIsSmartBandsAlone)
{
    menu.showCommands (State::smartBands);
    EXPECT_THAT (buttons(), testing::ElementsAre ("ADD SMART BANDS"));
    EXPECT_TRUE (labels().empty());
    EXPECT_EQ (menu.getBounds(), juce::Rectangle<int> (398, 0, 230, 60));
}

TEST_F (BurgerMenuTest, aHiddenMenuIsLeftAsItIs)
{
    menu.showCommands (State::menu);
    menu.setVisible (false);
    set (ParameterIds::ofBand (0, Settings::Parameter::active), 1.0f);
    set (ParameterIds::phase, 0.0f);
    EXPECT_TRUE (button ("Add 1 band").isVisible());
    menu.showCommands (State::menu);
    EXPECT_FALSE (button ("Add 1 band").isVisible());
}

//======================================================================================================================
TEST_F (BurgerMenuTest, everyButtonAsksForItsCommand)
{
    menu.showCommands (State::menu);
    click ("ADD SMART BANDS");
    click ("RESET TARGETS");
    click ("DELETE ALL BANDS");
    EXPECT_THAT (commands,
                 testing::ElementsAre (std::pair (Command::addSmartBands, 0),
                                       std::pair (Command::resetTargets, 0),
                                       std::pair (Command::deleteAllBands, 0)));
    commands.clear();

    for (int number = 1; number <= 10; ++number)
    {
        click (number == 1 ? "Add 1 band" : "Add " + juce::String (number) + " bands");
        EXPECT_EQ (button (number == 1 ? "Add 1 band" : "Add " + juce::String (number) + " bands").getButtonText(),
                   juce::String (number));
        ASSERT_EQ (commands.size(), static_cast<std::size_t> (number));
        EXPECT_EQ (commands.back(), std::pair (Command::addBands, number));
    }
}

TEST_F (BurgerMenuTest, commandsKeepTheirNumbers)
{
    EXPECT_EQ (static_cast<int> (Command::addSmartBands), 0);
    EXPECT_EQ (static_cast<int> (Command::resetTargets), 1);
    EXPECT_EQ (static_cast<int> (Command::deleteAllBands), 2);
    EXPECT_EQ (static_cast<int> (Command::closeMenu), 3);
    EXPECT_EQ (static_cast<int> (Command::addBands), 4);
}

TEST_F (BurgerMenuTest, afterResettingTheTargetsAnOpenMenuIsLaidOutAnew)
{
    readTarget();
    menu.showCommands (State::menu);
    menu.onCommand = [this] (Command, int) { processor.model.setTargetsReady (false, false); };
    click ("RESET TARGETS");
    EXPECT_FALSE (button ("RESET TARGETS").isVisible());
}

//======================================================================================================================
TEST_F (BurgerMenuTest, togglesSwitchTheirParametersAndShowThem)
{
    for (const auto& [title, id] : { std::pair (phase, ParameterIds::phase), std::pair (mode, ParameterIds::mode) })
    {
        set (id, 0.0f);
        menu.showCommands (State::menu);
        EXPECT_FALSE (button (title).getToggleState()) << title;
        click (title);
        EXPECT_EQ (processor.getAPVTS().getRawParameterValue (id)->load(), 1.0f) << title;
        EXPECT_TRUE (button (title).getToggleState()) << title;
        click (title);
        EXPECT_EQ (processor.getAPVTS().getRawParameterValue (id)->load(), 0.0f) << title;
        EXPECT_FALSE (button (title).getToggleState()) << title;
    }
}

TEST_F (BurgerMenuTest, aToggleIsAGestureToTheHost)
{
    struct Listener final : juce::AudioProcessorParameter::Listener
    {
        void parameterValueChanged (int, float value) override { told += value > 0.5f ? "on " : "off "; }
        void parameterGestureChanged (int, bool begins) override { told += begins ? "begin " : "end "; }
        juce::String told;
    };

    menu.showCommands (State::menu);

    for (const auto& [title, id] : { std::pair (phase, ParameterIds::phase), std::pair (mode, ParameterIds::mode) })
    {
        set (id, 0.0f);
        Listener listener;
        auto* parameter = processor.getAPVTS().getParameter (id);
        parameter->addListener (&listener);
        click (title);
        parameter->removeListener (&listener);
        EXPECT_EQ (listener.told, "begin on end ") << title;
    }
}

TEST_F (BurgerMenuTest, anOpenMenuFollowsItsParameters)
{
    menu.showCommands (State::menu);

    for (const auto& [title, id] : { std::pair (phase, ParameterIds::phase), std::pair (mode, ParameterIds::mode) })
        for (const auto value : { 0.0f, 1.0f, 0.0f })
        {
            std::thread host ([&] { processor.model.setParameterValue (id, value); });
            host.join();
            menu.serveChanges();
            EXPECT_EQ (button (title).getToggleState(), value > 0.5f) << title;

            set (id, 1.0f - value);
            EXPECT_EQ (button (title).getToggleState(), value < 0.5f) << title;
        }
}

TEST_F (BurgerMenuTest, whatTheAudioThreadChangesTakesNeitherHeapNorLock)
{
    menu.showCommands (State::menu);
    const juce::String id (ParameterIds::phase);
    auto allocations = -1;
    auto locks = -1;
    std::thread audio (
        [&]
        {
            const RealTimeGuard guard;
            menu.parameterChanged (id, 1.0f);
            processor.model.channels.fire (Channels::canUseMasterMode);
            processor.model.channels.fire (Channels::transportPlaying);
            allocations = guard.allocations();
            locks = guard.locks();
        });
    audio.join();
    EXPECT_EQ (allocations, 0);

    // The one around the listeners, whenever a channel fires.
    EXPECT_EQ (locks, RealTimeGuard::countsLocks() ? 2 : 0);
}

TEST_F (BurgerMenuTest, masterIsRefusedBeyondItsLimitsAndCanAlwaysBeLeft)
{
    set (ParameterIds::mode, 1.0f);
    menu.showCommands (State::menu);
    EXPECT_TRUE (button (mode).isEnabled());
    processor.model.setCanUseMasterMode (false);
    menu.serveChanges();
    EXPECT_FALSE (button (mode).isEnabled());

    set (ParameterIds::mode, 0.0f);
    EXPECT_TRUE (button (mode).isEnabled());
}

TEST_F (BurgerMenuTest, atHighRatesThePhaseIsGone)
{
    processor.model.sampleRate = 192000.0;
    menu.showCommands (State::menu);
    EXPECT_FALSE (button (phase).isVisible());
    EXPECT_EQ (button (mode).getBounds(), juce::Rectangle<int> (70, 35, 90, 30));
    EXPECT_THAT (labels(), testing::ElementsAre ("Filter Mode", "Add Bands"));

    processor.model.sampleRate = 172000.0;
    menu.showCommands (State::menu);
    EXPECT_TRUE (button (phase).isVisible());
    EXPECT_FALSE (button (phase).isEnabled());
}

//======================================================================================================================
TEST_F (BurgerMenuTest, everyControlHasItsTip)
{
    EXPECT_EQ (button (phase).getTooltip(), Tips::text (Tips::filterPhase));
    EXPECT_EQ (button (mode).getTooltip(), Tips::text (Tips::filterMode));
    EXPECT_EQ (button ("RESET TARGETS").getTooltip(), Tips::text (Tips::resetTargets));
    EXPECT_EQ (button ("ADD SMART BANDS").getTooltip(), Tips::text (Tips::addSmartBands));
    EXPECT_EQ (button ("DELETE ALL BANDS").getTooltip(), Tips::text (Tips::deleteAllBands));
    EXPECT_EQ (button ("Add 1 band").getTooltip(), Tips::text (Tips::addBands));
    EXPECT_EQ (button ("Add 10 bands").getTooltip(), Tips::text (Tips::addBands));
}

TEST_F (BurgerMenuTest, commandsAreInBoldType)
{
    for (const auto* title : { "RESET TARGETS", "ADD SMART BANDS", "DELETE ALL BANDS", "Add 7 bands" })
    {
        auto* text = find<juce::TextButton> (title);
        ASSERT_NE (text, nullptr);
        const auto font = look.getTextButtonFont (*text, 30);
        EXPECT_EQ (font.getTypefaceName(), Fonts::bold (14.0f).getTypefaceName());
        EXPECT_EQ (font.getTypefaceStyle(), Fonts::bold (14.0f).getTypefaceStyle());
        EXPECT_EQ (font.getHeight(), 14.0f);
    }
}

TEST_F (BurgerMenuTest, whatChangesOnceTheMenuHasGoneFindsNobody)
{
    struct Counter final : juce::AudioProcessorValueTreeState::Listener
    {
        void parameterChanged (const juce::String&, float) override { ++heard; }
        int heard = 0;
    };

    // Behind the menu in the lists, so that they are reached only if it has left them in order.
    auto late = std::make_unique<BurgerMenu> (processor);
    parent.addAndMakeVisible (*late);
    Counter counter;
    const ParameterSubscription behind (processor.getAPVTS(), ParameterIds::phase, counter);
    auto fired = 0;
    const NotificationSubscription behindToo (
        processor.model.channels, Channels::smartBandsReady, [&fired] { ++fired; });
    late.reset();

    processor.model.setCanUseMasterMode (false);
    processor.model.setSmartBandsReady (true, true);
    processor.model.setParameterValue (ParameterIds::phase, 0.0f);
    processor.model.setParameterValue (ParameterIds::mode, 1.0f);
    transport (true);
    EXPECT_EQ (fired, 1);
    EXPECT_EQ (counter.heard, 1);
}
