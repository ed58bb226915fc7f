#include "gui/analysis/AnalysisWindow.h"

#include "gui/analysis/TrackRig.h"
#include "gui/editor/PluginEditor.h"
#include "gui/room/RoomMouse.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
using Place = MainWindow::Place;

/** The analysis window as the editor has it. */
class AnalysisInEditorTest : public testing::Test
{
protected:
    void open()
    {
        tracks.rig.processor.sessionState().fillMissingStores();
        editor = std::make_unique<VelmoraAudioProcessorEditor> (tracks.rig.processor);
        editor->stopTimer();
    }

    [[nodiscard]] AnalysisWindow& analysis()
    {
        return dynamic_cast<AnalysisWindow&> (*editor->main().component (Place::analysisWindow));
    }

    [[nodiscard]] PluginModel& model() { return tracks.rig.processor.model; }

    void click (juce::Button& button)
    {
        button.triggerClick();
        Messages::deliver();
    }

    void clickInWindow (const juce::String& title)
    {
        for (auto* child : analysis().getChildren())
            if (auto* button = dynamic_cast<juce::Button*> (child); button != nullptr && button->getTitle() == title)
                return click (*button);

        FAIL() << title;
    }

    void openAnalysis()
    {
        click (editor->buttons().analyseButton);

        for (int tick = 0; tick < 10; ++tick)
            editor->timerCallback();
    }

    void load (const juce::String& path)
    {
        const auto track = tracks.load (path);
        PluginRig::serveMessagesUntil ([&] { return analysis().trackRows().find (track->id) != nullptr; });
    }

    TrackRig tracks;
    std::unique_ptr<VelmoraAudioProcessorEditor> editor;
};
} // namespace

TEST_F (AnalysisInEditorTest, slidesOverTheRoomAndCoversItsFloor)
{
    open();
    editor->setSize (680, 712);
    openAnalysis();
    EXPECT_TRUE (analysis().isVisible());
    EXPECT_TRUE (analysis().isTimerRunning());
    EXPECT_EQ (analysis().getBounds(), juce::Rectangle<int> (0, 712 - 425, 680, 325));

    auto& main = editor->main();
    const auto coversTheFloor = [&]
    {
        const juce::Rectangle<int> floor (0, analysis().getBottom(), main.getWidth(), main.getHeight());
        const auto& children = main.getChildren();
        return std::any_of (children.begin(),
                            children.end(),
                            [&] (juce::Component* child)
                            {
                                return child->isVisible()
                                       && child->getBounds() == floor.getIntersection (main.getLocalBounds())
                                       && children.indexOf (child) > children.indexOf (&main.room());
                            });
    };
    EXPECT_TRUE (coversTheFloor());

    editor->setSize (1000, 900);
    EXPECT_EQ (analysis().getBounds(), juce::Rectangle<int> (0, 900 - 425, 1000, 325));
    EXPECT_TRUE (coversTheFloor());
    click (editor->buttons().analyseButton);
    EXPECT_FALSE (coversTheFloor());

    for (int tick = 0; tick < 10; ++tick)
        editor->timerCallback();

    EXPECT_FALSE (analysis().isVisible());
    EXPECT_FALSE (analysis().isTimerRunning());
}

TEST_F (AnalysisInEditorTest, theButtonOpensAndClosesWhateverTheMenuHasDoneToIt)
{
    open();
    openAnalysis();
    editor->hoverOver (HoverRules::Target::burgerButton);
    click (editor->buttons().analyseButton);
    EXPECT_FALSE (model().interfaceState.analysisOpen);
}

TEST_F (AnalysisInEditorTest, aTargetIsTakenOverAndTheWindowClosesItself)
{
    open();
    openAnalysis();
    load (tracks.write ("one.wav", 3.0));
    EXPECT_FALSE (model().targetSetByUser);
    clickInWindow ("ANALYSE");
    PluginRig::serveMessagesUntil ([this] { return ! model().interfaceState.analysisOpen; });
    EXPECT_TRUE (model().targetSetByUser);
    EXPECT_FALSE (editor->buttons().analyseButton.isToggled());
    EXPECT_FALSE (editor->main().burgerMenu().isVisible()) << "there is nothing to say";
}

TEST_F (AnalysisInEditorTest, whatCouldNotBeMeasuredIsSaidOverTheRoom)
{
    open();
    openAnalysis();
    load (tracks.write ("one.wav", 3.0));
    load (tracks.write ("silence.wav", 3.0, 2, 0.0f));
    clickInWindow ("ANALYSE");
    PluginRig::serveMessagesUntil ([this] { return editor->main().burgerMenu().isVisible(); });
    EXPECT_FALSE (model().interfaceState.analysisOpen);
    EXPECT_EQ (editor->main().burgerMenu().message(),
               "Targets are set without SILENCE, where nothing could be measured.");
}

TEST_F (AnalysisInEditorTest, aLateWordLeavesWhatTheUserHasOpenedMeanwhile)
{
    open();
    openAnalysis();
    click (editor->buttons().analyseButton);
    click (editor->buttons().settingsButton);
    editor->actionListenerCallback (AnalysisWindow::closed);
    EXPECT_TRUE (editor->main().isShowingPlace (Place::settingsWindow));
    EXPECT_TRUE (model().interfaceState.settingsOpen);
}

TEST_F (AnalysisInEditorTest, aLoadedTargetActsAtOnce)
{
    open();
    openAnalysis();
    tracks.rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::userSettingId));
    Messages::deliver();
    model().setTargetsReady (true, false);
    const auto file = tracks.folder.file ("my.target");
    ASSERT_TRUE (file.replaceWithText (
        R"({"format": "solvane-target", "version": 1, "lufs": -9.5, "values": [-1,-2,-3,-4,-5,-6,-7,-8,-9,-10]})"));
    analysis().fileDialog().setOpener ([&] (const FileDialog::Question&, const FileDialog::Answer& answer)
                                       { answer ({ file }); });
    clickInWindow ("LOAD TARGET");
    EXPECT_EQ (tracks.rig.processor.target.targetLufs, -9.5f);
    EXPECT_FALSE (model().targetsReady());
    EXPECT_TRUE (model().interfaceState.analysisOpen) << "the window stays";
}

TEST_F (AnalysisInEditorTest, anEditorMayGoInTheMiddleOfAnythingWhileAudioRuns)
{
    const auto file = tracks.write ("one.wav", 6.0);
    tracks.load (file);
    std::atomic<bool> ended { false };
    std::thread audio (
        [&]
        {
            juce::AudioBuffer<float> block (2, 512);

            while (! ended)
            {
                block.clear();
                tracks.rig.process (block);
            }
        });

    constexpr int openings = 24;

    for (int time = 0; time < openings; ++time)
    {
        open();
        openAnalysis();
        auto& wave = analysis().waveform();

        switch (time % 6)
        {
            case 0:
                wave.mouseDown (roomMouse::eventAt (wave, { 50.0f, 20.0f }));
                wave.mouseDrag (roomMouse::eventAt (wave, { 150.0f, 20.0f }, { 50.0f, 20.0f }));
                break;
            case 1:
                tracks.enqueue (file);
                break;
            case 2:
                analysis().transportBar().onClick();
                analysis().timerCallback();
                break;
            case 3:
                PluginRig::serveMessagesUntil (
                    [this]
                    {
                        const auto all = tracks.model().tracks();
                        return std::ranges::all_of (all, [] (const auto& track) { return track->loaded.load(); });
                    });
                clickInWindow ("ANALYSE");
                break;
            case 4:
                tracks.model().removeSelectedTrack();
                break;
            default:
                if (const auto selected = tracks.model().selectedTrack(); selected != nullptr)
                    if (auto* row = analysis().trackRows().find (selected->id); row != nullptr)
                        row->showEditor();

                break;
        }

        if (time % 2 == 0)
            Messages::deliver();

        editor.reset();
    }

    ended = true;
    audio.join();
    Messages::deliver();
    EXPECT_TRUE (model().targetSetByUser);
    open();
    EXPECT_EQ (analysis().trackRows().isEmpty(), tracks.model().tracks().empty());
}
