#include "gui/analysis/TrackComponent.h"

#include "gui/analysis/TrackRig.h"
#include "gui/room/RoomMouse.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
constexpr auto left = juce::ModifierKeys::leftButtonModifier;
constexpr auto alt = juce::ModifierKeys::altModifier;

/** A waveform in a window of 700 pixels: 640 wide. */
class TrackComponentTest : public testing::Test
{
protected:
    TrackComponentTest() { tracks.open (700); }

    [[nodiscard]] TrackComponent& waveform() { return tracks.window->waveform(); }

    /** Ten seconds: a pixel is 750 samples. */
    ReferenceTrackModel::TrackPtr loadTen() { return tracks.load (tracks.write ("ten.wav", 10.0)); }

    void press (float x, int keys = 0)
    {
        waveform().mouseDown (roomMouse::eventAt (waveform(), { x, 60.0f }, juce::ModifierKeys (left | keys)));
    }

    void dragTo (float from, float x)
    {
        waveform().mouseDrag (
            roomMouse::eventAt (waveform(), { x, 60.0f }, { from, 60.0f }, juce::ModifierKeys (left)));
    }

    void release (float from, float x)
    {
        waveform().mouseUp (roomMouse::eventAt (waveform(), { x, 60.0f }, { from, 60.0f }));
    }

    void drag (float from, float to)
    {
        press (from);

        for (int step = 1; step <= 8; ++step)
            dragTo (from, from + (to - from) * static_cast<float> (step) / 8.0f);

        release (from, to);
    }

    [[nodiscard]] juce::Component* child (const juce::String& name)
    {
        for (auto* each : waveform().getChildren())
            if (each->getName() == name || each->getTitle() == name)
                return each;

        return nullptr;
    }

    TrackRig tracks;
};

bool hasColour (const ReferenceTrack& track, juce::uint32 colour)
{
    const auto outline = track.outline();
    return std::ranges::any_of (*outline, [colour] (const auto& point) { return point.colour == colour; });
}
} // namespace

TEST_F (TrackComponentTest, partsStandInTheirPlaces)
{
    EXPECT_EQ (waveform().getWidth(), 640);
    ASSERT_NE (child ("DropFiles"), nullptr);
    EXPECT_EQ (child ("DropFiles")->getBounds(), juce::Rectangle<int> (170, 18, 300, 100));
    EXPECT_NEAR (child ("DropFiles")->getAlpha(), 0.8f, 0.01f);

    std::vector<juce::Rectangle<int>> labels;

    for (auto* each : waveform().getChildren())
        if (dynamic_cast<juce::Label*> (each) != nullptr)
        {
            labels.push_back (each->getBounds());
            EXPECT_NEAR (each->getAlpha(), 0.8f, 0.01f);
        }

    ASSERT_EQ (labels.size(), 2u);
    EXPECT_EQ (labels[0], juce::Rectangle<int> (2, 95, 230, 20));
    EXPECT_EQ (labels[1], juce::Rectangle<int> (170, 33, 300, 50));
}

TEST_F (TrackComponentTest, theHintFitsItsLabel)
{
    for (auto* each : waveform().getChildren())
        if (auto* label = dynamic_cast<juce::Label*> (each); label != nullptr && label->getText().startsWith ("Enable"))
        {
            EXPECT_EQ (label->getText(), "Enable input monitoring to audition tracks");
            EXPECT_LE (label->getFont().getStringWidth (label->getText()) + label->getBorderSize().getLeftAndRight(),
                       label->getWidth());
            return;
        }

    FAIL() << "no hint";
}

TEST_F (TrackComponentTest, theEmptyWaveformIsAGridOfSquares)
{
    waveform().showDropButton (false);
    const auto picture = Pictures::of (waveform(), "waveform-empty");
    const juce::Colour dark (0xFF4D4D4D);
    const juce::Colour ground (0xFF1D1D1D);

    for (const auto x : { 0, 3, 300, 636 })
        for (const auto y : { 3, 6, 57, 60, 63, 114 })
            EXPECT_EQ (Pictures::count (picture, { x, y, 2, 2 }, dark), 4) << x << ", " << y;

    EXPECT_EQ (Pictures::count (picture, { 0, 0, 640, 3 }, ground), 3 * 640);
    EXPECT_EQ (Pictures::count (picture, { 2, 0, 1, 117 }, ground), 117);
    EXPECT_EQ (Pictures::count (picture, { 0, 5, 640, 1 }, ground), 640);
}

TEST_F (TrackComponentTest, theGridIsSharpOnAFineDisplay)
{
    waveform().showDropButton (false);
    const auto picture = Pictures::of (waveform(), "waveform-empty-2", 2.0f);
    EXPECT_EQ (Pictures::count (picture, { 6, 120, 4, 4 }, juce::Colour (0xFF4D4D4D)), 16);
    EXPECT_EQ (Pictures::count (picture, { 10, 0, 2, 234 }, juce::Colour (0xFF1D1D1D)), 2 * 234);
}

TEST_F (TrackComponentTest, anOutlineIsDrawnOverTheGrid)
{
    const auto track = loadTen();
    const auto picture = Pictures::of (waveform(), "waveform");
    EXPECT_EQ (Pictures::count (picture, { 300, 60, 2, 2 }, juce::Colour (0xFF009EFF)), 4);
    EXPECT_EQ (Pictures::count (picture, { 300, 3, 2, 2 }, juce::Colour (0xFF4D4D4D)), 4);

    track->setLoops ({ { 0, 480000, true, 1 } });
    tracks.model().rebuildOutline (*track);
    waveform().repaint();
    const auto active = Pictures::of (waveform(), "waveform-active");
    EXPECT_EQ (Pictures::count (active, { 300, 60, 2, 2 }, juce::Colours::white), 4);
    EXPECT_EQ (Pictures::count (active, { 300, 3, 2, 2 }, juce::Colour (0xFFC8C8C8)), 4);
}

//======================================================================================================================
TEST_F (TrackComponentTest, aDragMakesARangeAndAnotherMovesItsEdge)
{
    const auto track = loadTen();
    drag (100.0f, 180.0f);
    ASSERT_EQ (track->loops().size(), 1u);
    EXPECT_NEAR (track->loops()[0].startSamples, 75000, 2);
    EXPECT_NEAR (track->loops()[0].endSamples, 135000, 2);
    EXPECT_FALSE (track->loops()[0].active);
    EXPECT_TRUE (hasColour (*track, 0xFF14D222));

    drag (110.0f, 80.0f);
    ASSERT_EQ (track->loops().size(), 1u);
    EXPECT_NEAR (track->loops()[0].startSamples, 60000, 2);
    EXPECT_NEAR (track->loops()[0].endSamples, 135000, 2);
}

TEST_F (TrackComponentTest, altTakesRangesAway)
{
    const auto track = loadTen();
    drag (100.0f, 180.0f);
    drag (300.0f, 380.0f);
    drag (500.0f, 580.0f);
    press (340.0f, alt);
    release (340.0f, 340.0f);
    EXPECT_EQ (track->loops().size(), 2u);
    press (240.0f, alt);
    release (240.0f, 240.0f);
    EXPECT_TRUE (track->loops().empty());
    EXPECT_FALSE (hasColour (*track, 0xFF14D222));
}

TEST_F (TrackComponentTest, aSmallMovementMakesNothing)
{
    const auto track = loadTen();
    drag (100.0f, 102.0f);
    EXPECT_TRUE (track->loops().empty());
}

TEST_F (TrackComponentTest, aTrackThatComesInMidDragIsNotDragged)
{
    const auto first = loadTen();
    drag (100.0f, 180.0f);
    const auto second = tracks.load (tracks.write ("other.wav", 10.0));
    second->setLoops ({ { 75000, 135000, false, 1 } });
    tracks.model().selectTrack (first->id);
    waveform().setTrack (first);
    press (170.0f);
    dragTo (170.0f, 190.0f);
    waveform().setTrack (second);
    dragTo (170.0f, 300.0f);
    release (170.0f, 300.0f);
    EXPECT_EQ (second->loops()[0].endSamples, 135000);
    EXPECT_NEAR (first->loops()[0].endSamples, 142500, 2);
}

TEST_F (TrackComponentTest, aTrackThatComesInMidDragEndsItAsTheHandWould)
{
    const auto first = loadTen();
    drag (100.0f, 180.0f);
    drag (300.0f, 380.0f);
    press (170.0f);

    // Halving it, since the edge on the pointer's side moves.
    for (const auto x : { 141.0f, 121.0f, 111.0f, 106.0f, 103.0f, 101.0f })
        dragTo (170.0f, x);

    ASSERT_EQ (first->loops().size(), 2u);
    ASSERT_LT (first->loops()[0].endSamples - first->loops()[0].startSamples, RangeMouse::shortestRange);
    tracks.load (tracks.write ("other.wav", 10.0));
    ASSERT_EQ (first->loops().size(), 1u);
    EXPECT_NEAR (first->loops()[0].startSamples, 225000, 2);
    EXPECT_NEAR (first->loops()[0].endSamples, 285000, 2);
}

TEST_F (TrackComponentTest, withoutATrackTheMouseDoesNothing)
{
    drag (100.0f, 180.0f);
    EXPECT_EQ (waveform().getMouseCursor(), juce::MouseCursor (juce::MouseCursor::NormalCursor));
}

TEST_F (TrackComponentTest, thePointerSaysWhatAPressWouldDo)
{
    loadTen();
    drag (100.0f, 180.0f);
    const auto cursorAt = [this] (float x, int keys)
    {
        waveform().mouseMove (roomMouse::eventAt (waveform(), { x, 60.0f }, juce::ModifierKeys (keys)));
        return waveform().getMouseCursor();
    };

    const auto add = cursorAt (300.0f, 0);
    const auto move = cursorAt (140.0f, 0);
    const auto remove = cursorAt (140.0f, alt);
    EXPECT_NE (add, juce::MouseCursor (juce::MouseCursor::NormalCursor));
    EXPECT_NE (add, move);
    EXPECT_NE (add, remove);
    EXPECT_NE (move, remove);
    EXPECT_EQ (cursorAt (300.0f, alt), remove);
}

//======================================================================================================================
TEST_F (TrackComponentTest, takesFilesByTheirExtensions)
{
    EXPECT_TRUE (waveform().isInterestedInFileDrag ({ "/a.wav", "/b.MP3", "/c.aif", "/d.aiff", "/e.fla", "/f.FLAC" }));
    EXPECT_FALSE (waveform().isInterestedInFileDrag ({ "/a.wav", "/b.ogg" })) << "one unknown rejects all";
    EXPECT_FALSE (waveform().isInterestedInFileDrag ({ "/wav" }));
    EXPECT_FALSE (waveform().isInterestedInFileDrag ({}));
}

TEST_F (TrackComponentTest, droppedFilesAreLoadedTheSameOneTwiceToo)
{
    const auto path = tracks.write ("one.wav", 1.5);
    waveform().filesDropped ({ path, path }, 10, 10);
    PluginRig::serveMessagesUntil (
        [this]
        {
            const auto all = tracks.model().tracks();
            return all.size() == 2 && tracks.window->trackRows().find (all.back()->id) != nullptr;
        });
    EXPECT_EQ (tracks.model().tracks()[1]->name(), "ONE");
}

TEST_F (TrackComponentTest, tooManyFilesAndAPlayingTrackRefuseADrop)
{
    const auto path = tracks.write ("one.wav", 1.0, 1);
    const auto list = [&path] (int count)
    {
        juce::StringArray files;

        for (int i = 0; i < count; ++i)
            files.add (path);

        return files;
    };
    waveform().filesDropped (list (21), 0, 0);
    EXPECT_TRUE (tracks.model().sessionTracks().empty()) << "nothing waits";
    tracks.model().audition.isPlaying = true;
    waveform().filesDropped (list (1), 0, 0);
    EXPECT_TRUE (tracks.model().sessionTracks().empty()) << "nothing waits";
    tracks.model().audition.isPlaying = false;
    waveform().filesDropped (list (20), 0, 0);
    PluginRig::serveMessagesUntil (
        [this]
        {
            const auto all = tracks.model().tracks();
            return all.size() == 20 && tracks.window->trackRows().find (all.back()->id) != nullptr;
        });
    const auto last = tracks.model().tracks().back();
    waveform().filesDropped (list (1), 0, 0);
    Messages::deliver();
    EXPECT_EQ (tracks.model().tracks().back(), last);
    EXPECT_TRUE (tracks.model().sessionTracks().size() == 20u) << "nothing waits";
}

TEST_F (TrackComponentTest, theDropButtonAsksForFiles)
{
    auto asked = 0;
    tracks.window->fileDialog().setOpener ([&] (const FileDialog::Question&, const FileDialog::Answer&) { ++asked; });
    dynamic_cast<juce::Button&> (*child ("DropFiles")).triggerClick();
    Messages::deliver();
    EXPECT_EQ (asked, 1);
}
