#include "gui/editor/PluginEditor.h"
#include "gui/room/RoomMouse.h"
#include "support/Messages.h"
#include "support/PluginRig.h"
#include "support/SanitizedBuild.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
using Kind = Settings::Parameter;

constexpr int openings = isSanitizedBuild ? 100 : 1000;

/** Counts what a host hears of a hand. */
class GestureListener final : public juce::AudioProcessorListener
{
public:
    void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override {}
    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}
    void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int) override { ++begun; }
    void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int) override { ++ended; }

    int begun = 0;
    int ended = 0;
};

class EditorReopeningTest : public testing::Test
{
protected:
    EditorReopeningTest()
    {
        rig.prepare (48000.0, 512);
        rig.set ("paramMode", 1.0f);

        for (const auto band : { 0, 4, 9 })
            rig.setBand (band, 1000.0f + 1000.0f * static_cast<float> (band), 3.0f);

        rig.processor.addListener (&gestures);
        audio = std::thread ([this] { runAudio(); });
    }

    ~EditorReopeningTest() override
    {
        ended = true;
        audio.join();
        rig.processor.removeListener (&gestures);
    }

    void runAudio()
    {
        const auto noise = signals::noise (2, 512, 61, 0.1f);
        juce::AudioBuffer<float> block (2, 512);

        while (! ended)
        {
            for (auto channel = 0; channel < 2; ++channel)
                block.copyFrom (channel, 0, noise[static_cast<std::size_t> (channel)].data(), 512);

            rig.process (block);
            ++blocks;
        }
    }

    std::unique_ptr<VelmoraAudioProcessorEditor> open()
    {
        rig.processor.sessionState().fillMissingStores();
        auto editor = std::make_unique<VelmoraAudioProcessorEditor> (rig.processor);
        editor->main().room().pretendToShow();
        return editor;
    }

    [[nodiscard]] SolvaneControl& bandIn (VelmoraAudioProcessorEditor& editor)
    {
        return *editor.main().room().roomBands().find (4);
    }

    /** Leaves a window in the middle of something. */
    void begin (VelmoraAudioProcessorEditor& editor, int what)
    {
        auto& room = editor.main().room();
        auto& band = bandIn (editor);
        const juce::Point<float> body (20.0f, 12.0f);

        switch (what)
        {
            case 0:
                band.mouseDown (roomMouse::eventAt (band, body));
                band.mouseDrag (roomMouse::eventAt (band, body.translated (0.0f, 9.0f), body));
                return;
            case 1:
                return room.setScale (what % 2 == 0 ? 4.0f : 8.0f);
            case 2:
                return rig.set (ParameterIds::currentPreset, 7.0f);
            case 3:
                return band.panel().openEditor();
            case 4:
                return editor.showMessage ("In the middle of it");
            case 5:
                return editor.buttonClicked (&editor.buttons().compareButton);
            case 6:
                return editor.setSize (600 + blocks % 200, 640);
            default:
                return room.mouseMove (roomMouse::eventAt (room, { 300.0f, 300.0f }));
        }
    }

    PluginRig rig;
    GestureListener gestures;
    std::atomic<bool> ended { false };
    std::atomic<int> blocks { 0 };
    std::thread audio;
};
} // namespace

TEST_F (EditorReopeningTest, aWindowMayGoInTheMiddleOfAnythingWhileAudioRuns)
{
    for (auto time = 0; time < openings; ++time)
    {
        auto editor = open();
        begin (*editor, time % 8);

        if (time % 3 == 0)
            Messages::deliver();

        if (time % 5 == 0)
            editor->timerCallback();
    }

    Messages::deliver();

    // What was begun has ended, and what was set is there.
    EXPECT_EQ (gestures.begun, gestures.ended);
    EXPECT_GE (gestures.begun, openings / 8);
    const auto& state = rig.processor.model.interfaceState;
    EXPECT_FALSE (state.upperPanelInUse);
    EXPECT_FALSE (state.lowerPanelInUse);
    EXPECT_EQ (state.upperPanel, nullptr);
    EXPECT_TRUE (rig.processor.model.editorClosed);

    auto editor = open();
    EXPECT_EQ (editor->main().room().roomBands().stackingOrder().size(), 3u);
    EXPECT_EQ (bandIn (*editor).bandState().frequencyHz, 5000);
}
