#include "gui/analysis/AnalysisWindow.h"

#include "gui/analysis/TrackRig.h"
#include "gui/analysis/UserTargetFile.h"
#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/room/RoomMouse.h"
#include "support/Pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using Rectangle = juce::Rectangle<int>;

class AnalysisWindowTest : public testing::Test
{
protected:
    AnalysisWindow& open (int width = 680) { return tracks.open (width); }
    [[nodiscard]] AnalysisWindow& window() const { return *tracks.window; }
    [[nodiscard]] ReferenceTrackModel& model() { return tracks.model(); }
    [[nodiscard]] PluginModel& plugin() { return tracks.rig.processor.model; }
    [[nodiscard]] bool isEnabled (const char* title) const { return tracks.button (title).isEnabled(); }
    [[nodiscard]] bool isVisible (const char* title) const { return tracks.button (title).isVisible(); }

    [[nodiscard]] EditableTextButton& row (const ReferenceTrackModel::TrackPtr& track) const
    {
        return *window().trackRows().find (track->id);
    }

    [[nodiscard]] juce::Label& labelAt (Rectangle bounds) const
    {
        for (auto* child : window().getChildren())
            if (auto* label = dynamic_cast<juce::Label*> (child); label != nullptr && label->getBounds() == bounds)
                return *label;

        throw std::runtime_error ("no label there");
    }

    [[nodiscard]] juce::Label* titleLabel() const
    {
        for (auto* child : window().getChildren())
            if (auto* label = dynamic_cast<juce::Label*> (child); label != nullptr && label->getY() == 29)
                return label;

        return nullptr;
    }

    void say (const juce::String& message) const { window().actionListenerCallback (message); }

    static juce::String idOf (const ReferenceTrackModel::TrackPtr& track) { return juce::String (track->id); }

    void waitForTheRun()
    {
        PluginRig::serveMessagesUntil ([this]
                                       { return std::ranges::count (tracks.words.heard, AnalysisWindow::closed) > 0; });
    }

    TrackRig tracks;
};

juce::MouseEvent clickAt (juce::Component& component, juce::Point<float> place, juce::ModifierKeys keys = {})
{
    return roomMouse::eventAt (component, place, keys);
}

/** A press, and a release where it was pressed. */
void clickTransport (TransportControl& transport, float x)
{
    const juce::Point<float> place (x, static_cast<float> (transport.getHeight()) - 12.0f);
    transport.mouseDown (clickAt (transport, place, juce::ModifierKeys::leftButtonModifier));
    transport.mouseUp (clickAt (transport, place));
}
} // namespace

TEST_F (AnalysisWindowTest, everythingStandsInItsPlace)
{
    open (680);
    const auto track = tracks.load (tracks.write ("one.wav", 2.0));
    EXPECT_EQ (window().waveform().getBounds(), Rectangle (33, 50, 620, 117));
    EXPECT_EQ (window().transportBar().getBounds(), Rectangle (25, 50, 633, 139));
    EXPECT_EQ (titleLabel()->getBounds(), Rectangle (28, 29, Fonts::widthOf (Fonts::regular (14.0f), "ONE"), 20));
    EXPECT_EQ (tracks.button ("ADD REFERENCE TRACK").getBounds(), Rectangle (609, 198, 24, 24));
    EXPECT_EQ (tracks.button ("DELETE REFERENCE TRACK").getBounds(), Rectangle (634, 198, 24, 24));
    EXPECT_EQ (tracks.button ("ANALYSE").getBounds(), Rectangle (340 - 67, 230, 135, 20));
    EXPECT_EQ (tracks.button ("Close").getBounds(), Rectangle (328, 295, 24, 24));
    EXPECT_EQ (labelAt ({ 90, 260, 500, 30 }).getText(), juce::String());
    EXPECT_EQ (row (track).getBounds(), Rectangle (25, 198, 582, 24));

    window().setSize (571, 325);
    EXPECT_EQ (tracks.button ("Close").getBounds(), Rectangle (273, 295, 24, 24));
    EXPECT_EQ (window().waveform().getBounds(), Rectangle (33, 50, 511, 117));
}

TEST_F (AnalysisWindowTest, groundsHaveTheirColours)
{
    open();
    const auto picture = Pictures::of (window(), "analysis-empty");
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 680, 1 }, juce::Colour (0xFF1D1D1D)), 680);
    EXPECT_EQ (Pictures::count (picture, { 0, 1, 680, 20 }, juce::Colour (0xFF0F0F0F)), 680 * 20);
    EXPECT_EQ (Pictures::count (picture, { 30, 27, 500, 20 }, juce::Colour (0xFF1D1D1D)), 500 * 20);
    EXPECT_EQ (Pictures::count (picture, { 650, 100, 8, 20 }, juce::Colour (0xFF1D1D1D)), 8 * 20);
    EXPECT_EQ (picture.getPixelAt (658, 100), juce::Colour (0xFF0F0F0F));
}

TEST_F (AnalysisWindowTest, controlsSayWhatTheyAreFor)
{
    open();
    const auto tip = [this] (const char* title) { return tracks.button (title).getTooltip(); };
    EXPECT_EQ (tip ("ANALYSE"), "Click to analyse currently loaded tracks.\n ");
    EXPECT_EQ (tip ("ADD REFERENCE TRACK"),
               "Add your reference tracks. You can also drag and drop your \nreferences onto the waveform to add a "
               "track.\n ");
    EXPECT_EQ (tip ("DELETE REFERENCE TRACK"), "Delete the selected reference track.\n ");
    EXPECT_TRUE (window().waveform().getTooltip().startsWith ("If you're creating targets, we recommend"));
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, withoutTracksThereIsTheWayToTheFirstAlone)
{
    open();

    for (const auto* title : { "ANALYSE", "ADD REFERENCE TRACK", "DELETE REFERENCE TRACK" })
        EXPECT_FALSE (isVisible (title)) << title;

    EXPECT_TRUE (isVisible ("Close"));
    EXPECT_TRUE (window().waveform().isShowingDropButton());
    EXPECT_FALSE (window().transportBar().isEnabled());
    EXPECT_FALSE (titleLabel() != nullptr && titleLabel()->isVisible());
}

TEST_F (AnalysisWindowTest, aLoadedTrackIsShown)
{
    open();
    const auto track = tracks.load (tracks.write ("A mix of mine.wav", 2.0));

    for (const auto* title : { "ANALYSE", "ADD REFERENCE TRACK", "DELETE REFERENCE TRACK" })
        EXPECT_TRUE (isVisible (title) && isEnabled (title)) << title;

    EXPECT_EQ (window().waveform().track(), track.get());
    EXPECT_FALSE (window().waveform().isShowingDropButton());
    EXPECT_EQ (window().waveform().status(), juce::String());
    EXPECT_TRUE (window().transportBar().isEnabled());
    EXPECT_EQ (titleLabel()->getText(), "A MIX OF MINE");
    EXPECT_EQ (row (track).getText(), "A MIX OF MINE");
    EXPECT_EQ (row (track).getTooltip(), "A MIX OF MINE\n ");
    EXPECT_EQ (row (track).getComponentID(), idOf (track));
    EXPECT_TRUE (row (track).isSelected());
    EXPECT_FLOAT_EQ (model().pixelsPerSample, 620.0f / 96000.0f);
    EXPECT_EQ (model().waveformWidth, 618);
}

TEST_F (AnalysisWindowTest, aWindowThatComesLaterShowsTheSame)
{
    const auto first = tracks.load (tracks.write ("one.wav", 1.5));
    const auto second = tracks.load (tracks.write ("two.wav", 2.0));
    first->setName ("Renamed");
    first->setLoops ({ { 0, 48000, false, TrackLoop::makeId() } });
    model().selectTrack (first->id);
    first->playPosition = 18000;
    model().audition.isPlaying = true;
    open();
    EXPECT_EQ (row (first).getText(), "Renamed");
    EXPECT_TRUE (row (first).isSelected());
    EXPECT_FALSE (row (second).isSelected());
    EXPECT_EQ (window().waveform().track(), first.get());
    EXPECT_EQ (titleLabel()->getText(), "Renamed");
    EXPECT_DOUBLE_EQ (window().transportBar().getValue(), 18000.0 / 72000.0);
    EXPECT_EQ (window().transportBar().getName(), "pause");
    EXPECT_FALSE (isEnabled ("DELETE REFERENCE TRACK"));

    // Green where the range is.
    const auto outline = first->outline();
    EXPECT_TRUE (std::ranges::any_of (*outline, [] (const auto& point) { return point.colour == 0xFF14D222; }));
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, messagesActByTheirPrefix)
{
    open();
    const auto track = tracks.load (tracks.write ("one.wav", 1.5));
    auto& waveform = window().waveform();

    say ("FILE_NOT_FOUND:SOMETHING: ELSE");
    EXPECT_FALSE (waveform.isShowingDropButton());
    EXPECT_EQ (waveform.status(), "FILE NOT FOUND: SOMETHING: ELSE");

    say ("FILE_NOT_FOUND_END");
    EXPECT_EQ (waveform.status(), juce::String());

    say ("FILE_NOT_FOUND:THIS");
    say ("SESSION_SAMPLERATE_NOT_SET_BY_DAW:");
    EXPECT_TRUE (waveform.isShowingDropButton());
    EXPECT_EQ (waveform.status(), juce::String());

    say ("TRACK_LOADING:TWO");
    EXPECT_FALSE (isEnabled ("ADD REFERENCE TRACK"));
    EXPECT_FALSE (isEnabled ("DELETE REFERENCE TRACK"));

    say ("TRACK_INITIAL_LOAD_COMPLETE:" + idOf (track));
    EXPECT_FALSE (waveform.isShowingDropButton());
    EXPECT_EQ (waveform.status(), "PROCESSING: ONE");

    say ("TRACK_PROCESSING_TERMINATED:");
    say ("TRACK_PROCESSING_COMPLETE:" + idOf (track));
    EXPECT_EQ (waveform.status(), "PROCESSING: ONE");
    EXPECT_FALSE (isEnabled ("ADD REFERENCE TRACK"));

    say ("TRACK_WAVEFORM_COMPLETE:" + idOf (track));
    EXPECT_EQ (waveform.status(), juce::String());
    EXPECT_TRUE (isEnabled ("ADD REFERENCE TRACK"));
    EXPECT_TRUE (isEnabled ("DELETE REFERENCE TRACK"));
}

TEST_F (AnalysisWindowTest, idsThatNobodyHasMeanNothing)
{
    open();

    for (const auto* id : { "0", "-5", "", "word", "9223372036854775807" })
    {
        say (juce::String ("TRACK_INITIAL_LOAD_COMPLETE:") + id);
        say (juce::String ("TRACK_WAVEFORM_COMPLETE:") + id);
        EXPECT_EQ (window().waveform().status(), juce::String()) << id;
        EXPECT_TRUE (window().trackRows().isEmpty()) << id;
    }
}

TEST_F (AnalysisWindowTest, aTrackThatIsAnnouncedTwiceHasOneRow)
{
    open();
    const auto track = tracks.load (tracks.write ("one.wav", 1.5));
    const auto children = window().getNumChildComponents();
    say ("TRACK_WAVEFORM_COMPLETE:" + idOf (track));
    EXPECT_EQ (window().getNumChildComponents(), children);
}

TEST_F (AnalysisWindowTest, aFileBelowASecondLeavesTheListAsItIsUntilTheNextLoad)
{
    open();
    const auto track = tracks.load (tracks.write ("one.wav", 1.5));
    tracks.enqueue (tracks.write ("short.wav", 0.5));
    PluginRig::serveMessagesUntil ([this] { return ! isEnabled ("ADD REFERENCE TRACK"); });
    Messages::deliver();
    EXPECT_FALSE (isEnabled ("DELETE REFERENCE TRACK"));
    EXPECT_EQ (model().tracks().size(), 1u);

    tracks.load (tracks.write ("two.wav", 1.5));
    EXPECT_TRUE (isEnabled ("ADD REFERENCE TRACK"));
    EXPECT_TRUE (isEnabled ("DELETE REFERENCE TRACK"));
}

TEST_F (AnalysisWindowTest, aMissingFileIsNamedAndTheNextClickOpensTheWayToAnother)
{
    open();
    tracks.enqueue (tracks.folder.file ("gone.v2.wav").getFullPathName());
    PluginRig::serveMessagesUntil ([this] { return window().waveform().status().isNotEmpty(); });
    EXPECT_EQ (window().waveform().status(), "FILE NOT FOUND: GONE.V2");
    EXPECT_FALSE (window().waveform().isShowingDropButton());

    window().waveform().mouseDown (clickAt (window().waveform(), { 10.0f, 10.0f }));
    EXPECT_TRUE (window().waveform().isShowingDropButton());
    EXPECT_EQ (window().waveform().status(), juce::String());
}

TEST_F (AnalysisWindowTest, aLoadWithoutASessionRateKeepsTheWayOpen)
{
    open();
    model().setSession (0.0, std::nullopt);
    window().waveform().showStatus ("before");
    tracks.enqueue (tracks.write ("one.wav", 1.5));
    PluginRig::serveMessagesUntil ([this] { return window().waveform().status().isEmpty(); });
    EXPECT_TRUE (window().waveform().isShowingDropButton());
    EXPECT_TRUE (model().tracks().empty());
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, rowsShareTheWidth)
{
    open();
    std::vector<ReferenceTrackModel::TrackPtr> loaded;
    const auto file = tracks.write ("one.wav", 1.0, 1);

    for (int count = 1; count <= ReferenceTrackModel::trackLimit; ++count)
    {
        loaded.push_back (tracks.load (file));

        if (count != 1 && count != 3 && count != 20)
            continue;

        for (int i = 0; i < count; ++i)
            EXPECT_EQ (
                row (loaded[static_cast<std::size_t> (i)]).getBounds(),
                Rectangle (((680 - (2 * count + 96)) / count + 2) * i + 25, 198, (680 - (2 * count + 96)) / count, 24));
    }
}

TEST_F (AnalysisWindowTest, aClickOnARowSelectsItsTrack)
{
    open();
    const auto first = tracks.load (tracks.write ("one.wav", 1.5));
    const auto second = tracks.load (tracks.write ("two.wav", 2.0));
    first->playPosition = 36000;
    row (first).mouseUp (clickAt (row (first), { 5.0f, 5.0f }));
    EXPECT_EQ (model().selectedTrack(), first);
    EXPECT_TRUE (row (first).isSelected());
    EXPECT_FALSE (row (second).isSelected());
    EXPECT_EQ (window().waveform().track(), first.get());
    EXPECT_EQ (titleLabel()->getText(), "ONE");
    EXPECT_DOUBLE_EQ (window().transportBar().getValue(), 0.5);
}

TEST_F (AnalysisWindowTest, aRowIsRenamedInPlace)
{
    open();
    const auto first = tracks.load (tracks.write ("one.wav", 1.5));
    const auto second = tracks.load (tracks.write ("two.wav", 1.5));
    const auto rename = [] (EditableTextButton& button, const juce::String& name)
    {
        button.showEditor();
        button.getCurrentTextEditor()->setText (name);
        button.hideEditor (false);
    };

    rename (row (first), "Another name");
    EXPECT_EQ (first->name(), "Another name");
    EXPECT_EQ (first->displayName, "ONE");
    EXPECT_EQ (row (first).getTooltip(), "Another name\n ");
    EXPECT_EQ (titleLabel()->getText(), "TWO") << "not the selected one";

    rename (row (second), juce::String::fromUTF8 ("\xe6\x9b\xb2 2"));
    EXPECT_EQ (second->name(), juce::String::fromUTF8 ("\xe6\x9b\xb2 2"));
    EXPECT_EQ (titleLabel()->getText(), second->name());
}

TEST_F (AnalysisWindowTest, deletingTheSelectedTrackSelectsTheLast)
{
    open();
    const auto first = tracks.load (tracks.write ("one.wav", 1.5));
    const auto second = tracks.load (tracks.write ("two.wav", 1.5));
    const auto third = tracks.load (tracks.write ("three.wav", 1.5));
    model().selectTrack (first->id);
    tracks.click ("DELETE REFERENCE TRACK");
    EXPECT_EQ (model().selectedTrack(), third);
    EXPECT_EQ (window().waveform().track(), third.get());
    EXPECT_EQ (titleLabel()->getText(), "THREE");
    EXPECT_EQ (window().trackRows().find (first->id), nullptr);
    EXPECT_TRUE (row (third).isSelected());
    EXPECT_EQ (row (second).getBounds(), Rectangle (25, 198, 290, 24));

    tracks.click ("DELETE REFERENCE TRACK");
    third->playPosition = 100;
    tracks.click ("DELETE REFERENCE TRACK");
    EXPECT_TRUE (window().trackRows().isEmpty());
    EXPECT_EQ (window().waveform().track(), nullptr);
    EXPECT_TRUE (window().waveform().isShowingDropButton());
    EXPECT_FALSE (titleLabel()->isVisible());
    EXPECT_FALSE (window().transportBar().isEnabled());
    EXPECT_EQ (window().transportBar().getValue(), 0.0);

    for (const auto* title : { "ANALYSE", "ADD REFERENCE TRACK", "DELETE REFERENCE TRACK" })
        EXPECT_FALSE (isVisible (title)) << title;
}

TEST_F (AnalysisWindowTest, aTrackIsTakenAwayWhileAnotherLoads)
{
    open();
    const auto first = tracks.load (tracks.write ("one.wav", 1.5));
    tracks.enqueue (tracks.write ("long.wav", 60.0, 2, 0.3f, 44100.0));
    PluginRig::serveMessagesUntil ([this] { return model().tracks().size() == 2; });
    model().selectTrack (first->id);
    model().removeSelectedTrack();
    const auto other = model().selectedTrack();
    ASSERT_NE (other, nullptr);
    const auto status = window().waveform().status();
    EXPECT_TRUE (status == "PROCESSING: LONG" || other->loaded) << status;
    PluginRig::serveMessagesUntil ([&] { return window().trackRows().find (other->id) != nullptr; });
    EXPECT_EQ (window().trackRows().find (first->id), nullptr);
    EXPECT_TRUE (row (other).isSelected());
    EXPECT_EQ (row (other).getWidth(), 582);
}

TEST_F (AnalysisWindowTest, aTrackIsTakenAwayWhileItLoads)
{
    open();
    tracks.enqueue (tracks.write ("long.wav", 60.0, 2, 0.3f, 44100.0));
    PluginRig::serveMessagesUntil ([this] { return model().tracks().size() == 1; });
    model().removeSelectedTrack();
    Messages::deliver();
    EXPECT_TRUE (window().trackRows().isEmpty());
    EXPECT_EQ (window().waveform().status(), juce::String());
    EXPECT_TRUE (window().waveform().isShowingDropButton());
}

/** The buttons come back when a load ends, also while something plays. */
TEST_F (AnalysisWindowTest, theLastTrackTakesThePlayingWithIt)
{
    open();
    const auto path = tracks.write ("one.wav", 1.5);
    tracks.load (path);
    clickTransport (window().transportBar(), 13.0f);
    tracks.load (tracks.write ("two.wav", 1.5));
    tracks.click ("DELETE REFERENCE TRACK");
    EXPECT_TRUE (model().audition.isPlaying) << "the other one goes on";
    EXPECT_EQ (window().transportBar().getName(), "pause");

    tracks.click ("DELETE REFERENCE TRACK");
    ASSERT_TRUE (model().tracks().empty());
    EXPECT_FALSE (model().audition.isPlaying);
    EXPECT_EQ (window().transportBar().getName(), "play");
    window().waveform().filesDropped ({ path }, 10, 10);
    EXPECT_EQ (model().sessionTracks().size(), 1u);
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, aClickOnTheTransportPlaysAndPauses)
{
    open();
    const auto track = tracks.load (tracks.write ("long.wav", 60.0));
    auto& transport = window().transportBar();
    clickTransport (transport, 8.0f + 620.0f * 0.5f);
    EXPECT_TRUE (model().audition.isPlaying);
    EXPECT_NEAR (track->playPosition, 1440000, 2000);
    EXPECT_EQ (transport.getName(), "pause");
    EXPECT_FALSE (isEnabled ("ADD REFERENCE TRACK"));
    EXPECT_FALSE (isEnabled ("DELETE REFERENCE TRACK"));
    EXPECT_TRUE (isEnabled ("ANALYSE"));

    // A long way on: a jump.
    clickTransport (transport, 8.0f + 620.0f * 0.75f);
    EXPECT_TRUE (model().audition.isPlaying);
    EXPECT_NEAR (track->playPosition, 2160000, 2000);

    // Beside the line.
    clickTransport (transport, 8.0f + 620.0f * 0.76f);
    EXPECT_FALSE (model().audition.isPlaying);
    EXPECT_NEAR (track->playPosition, 2188800, 2000);
    EXPECT_EQ (transport.getName(), "play");
    EXPECT_TRUE (isEnabled ("ADD REFERENCE TRACK"));
    EXPECT_TRUE (isEnabled ("DELETE REFERENCE TRACK"));
}

TEST_F (AnalysisWindowTest, aClickOnTheSymbolMovesNothing)
{
    open();
    const auto track = tracks.load (tracks.write ("long.wav", 60.0));
    track->playPosition = 2000000;
    auto& transport = window().transportBar();
    clickTransport (transport, 13.0f);
    EXPECT_TRUE (model().audition.isPlaying);
    EXPECT_EQ (track->playPosition, 2000000);
    clickTransport (transport, 13.0f);
    EXPECT_FALSE (model().audition.isPlaying);
    EXPECT_EQ (track->playPosition, 2000000);
}

TEST_F (AnalysisWindowTest, aDragOverTheTransportMovesAndPlaysNothing)
{
    open();
    const auto track = tracks.load (tracks.write ("long.wav", 60.0));
    auto& transport = window().transportBar();
    const juce::Point<float> from (100.0f, 125.0f);
    const juce::Point<float> to (318.0f, 125.0f);
    transport.mouseDown (clickAt (transport, from, juce::ModifierKeys::leftButtonModifier));
    transport.mouseDrag (roomMouse::eventAt (transport, to, from, juce::ModifierKeys::leftButtonModifier));
    transport.mouseUp (roomMouse::eventAt (transport, to, from));
    EXPECT_FALSE (model().audition.isPlaying);
    EXPECT_NEAR (track->playPosition, 1440000, 2000);
}

TEST_F (AnalysisWindowTest, onlyTheStripBelowTheWaveformIsTheTransport)
{
    open();
    auto& transport = window().transportBar();
    EXPECT_FALSE (transport.hitTest (300, 0));
    EXPECT_FALSE (transport.hitTest (300, 139 - 25));
    EXPECT_TRUE (transport.hitTest (300, 139 - 24));
    EXPECT_TRUE (transport.hitTest (300, 138));
    EXPECT_EQ (window().getComponentAt (40, 60), &window().waveform());
    EXPECT_EQ (window().getComponentAt (40, 180), &transport);
}

TEST_F (AnalysisWindowTest, theTransportFollowsThePlayingTrackWithoutAWord)
{
    open();
    const auto track = tracks.load (tracks.write ("long.wav", 60.0));
    track->playPosition = 720000;
    window().timerCallback();
    EXPECT_EQ (window().transportBar().getValue(), 0.0) << "not while nothing plays";

    model().audition.isPlaying = true;
    track->playPosition = 720001;
    window().timerCallback();
    Messages::deliver();
    EXPECT_NEAR (window().transportBar().getValue(), 0.25, 1.0e-6);
    EXPECT_EQ (track->playPosition, 720001);
}

TEST_F (AnalysisWindowTest, whatPlaysIsTheSelectedTrackInPlaceOfTheHostsAudio)
{
    open();
    const auto track = tracks.load (tracks.write ("long.wav", 5.0));
    clickTransport (window().transportBar(), 13.0f);
    const auto heard = tracks.rig.run (PluginRig::Signal (2, std::vector<float> (4096, 0.0f)), 512);
    const auto samples = track->samples();
    EXPECT_TRUE (std::equal (heard[0].begin(), heard[0].end(), samples.left));
    EXPECT_TRUE (std::equal (heard[1].begin(), heard[1].end(), samples.right));
    EXPECT_EQ (track->playPosition, 4096);
}

TEST_F (AnalysisWindowTest, theHintSaysThatTheHostDoesNotCall)
{
    open();
    auto& waveform = window().waveform();
    plugin().audioCallbackSeen = false;
    window().timerCallback();
    EXPECT_FALSE (waveform.isShowingHint()) << "nothing could be heard anyhow";

    tracks.load (tracks.write ("one.wav", 1.5));
    window().timerCallback();
    EXPECT_TRUE (waveform.isShowingHint());

    tracks.rig.runSilence (512, 512);
    window().timerCallback();
    EXPECT_FALSE (waveform.isShowingHint());
    EXPECT_FALSE (plugin().audioCallbackSeen);

    window().timerCallback();
    EXPECT_TRUE (waveform.isShowingHint());
    window().setVisible (false);
    EXPECT_FALSE (waveform.isShowingHint());
}

TEST_F (AnalysisWindowTest, aHostWithLongBlocksCallsAsWell)
{
    tracks.rig.prepare (48000.0, 4096);
    open();
    tracks.load (tracks.write ("one.wav", 1.5));
    tracks.rig.runSilence (4096, 4096);

    // 85 ms a block: two ticks may come without one.
    window().timerCallback();
    window().timerCallback();
    window().timerCallback();
    EXPECT_FALSE (window().waveform().isShowingHint());
    window().timerCallback();
    EXPECT_TRUE (window().waveform().isShowingHint());
}

TEST_F (AnalysisWindowTest, aTrackOfAnotherRateSaysSo)
{
    open();
    tracks.load (tracks.write ("one.wav", 1.5));
    tracks.rig.prepare (44100.0, 512);
    window().timerCallback();
    EXPECT_EQ (window().waveform().status(),
               "LOADED AT 48000 Hz, NOW AT 44100 Hz.\nADD THE FILE AGAIN TO HEAR IT AT ITS SPEED.");

    tracks.load (tracks.write ("two.wav", 1.5));
    EXPECT_EQ (window().waveform().status(), juce::String());
    tracks.rig.prepare (48000.0, 512);
    window().timerCallback();
    EXPECT_NE (window().waveform().status(), juce::String());
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, aWindowThatComesInMidLoadTakesTheTrackWhenItIsThere)
{
    tracks.enqueue (tracks.write ("long.wav", 60.0, 2, 0.3f, 44100.0));
    PluginRig::serveMessagesUntil ([this] { return model().tracks().size() == 1; });
    open();
    const auto track = model().selectedTrack();
    const auto shown = window().waveform().status();
    EXPECT_TRUE ((shown == "PROCESSING: LONG" && ! isEnabled ("DELETE REFERENCE TRACK")) || track->loaded) << shown;
    PluginRig::serveMessagesUntil ([&] { return track->loaded && isEnabled ("DELETE REFERENCE TRACK"); });
    EXPECT_EQ (window().waveform().status(), juce::String());
    EXPECT_EQ (window().waveform().track(), track.get());
}

TEST_F (AnalysisWindowTest, aStatusThatDoesNotFitCanBeReadInFull)
{
    open();
    tracks.load (tracks.write ("loud.wav", 3.0));
    const auto silent = tracks.load (tracks.write ("silence.wav", 3.0, 2, 0.0f));
    silent->setName ("A mix with a name that is so long that nobody would want to read it below a waveform");
    tracks.click ("ANALYSE");
    waitForTheRun();
    auto& label = labelAt ({ 90, 260, 500, 30 });
    EXPECT_EQ (label.getTooltip(), window().status() + "\n ");
    silent->setName ("A mix");
    tracks.click ("ANALYSE");
    PluginRig::serveMessagesUntil ([this] { return window().status().contains ("without A mix,"); });
    EXPECT_EQ (label.getTooltip(), juce::String());
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, theStatusSaysWhatThereIs)
{
    auto& presets = tracks.rig.processor.presets;
    open();
    EXPECT_EQ (window().status(), juce::String());
    plugin().targetSetByUser = true;
    presets.select (Presets::noTargetsId);
    window().timerCallback();
    EXPECT_EQ (window().status(),
               "Targets are set. Select the USER SETTING preset to use.\nAdd reference tracks to create new targets.");
    presets.select (Presets::userSettingId);
    tracks.load (tracks.write ("one.wav", 1.5));
    window().timerCallback();
    EXPECT_EQ (window().status(), "Targets are set.\nClick CREATE TARGETS to re-analyse.");
    tracks.click ("DELETE REFERENCE TRACK");
    EXPECT_EQ (window().status(), "Targets are set.\nAdd reference tracks to create new targets.");
}

TEST_F (AnalysisWindowTest, analysingSetsATargetAndClosesTheWindow)
{
    auto& processor = tracks.rig.processor;
    open();
    const auto track = tracks.load (tracks.write ("long.wav", 60.0));
    tracks.click ("ANALYSE");

    for (const auto* title : { "ANALYSE", "ADD REFERENCE TRACK", "DELETE REFERENCE TRACK" })
        EXPECT_FALSE (isEnabled (title)) << title;

    PluginRig::serveMessagesUntil ([this] { return window().status().isNotEmpty(); });
    EXPECT_TRUE (window().status().startsWith ("Analysing tracks 1 of 1. ") || ! tracks.words.heard.empty())
        << window().status();
    waitForTheRun();
    Messages::deliver();
    EXPECT_THAT (tracks.words.heard, testing::ElementsAre ("TARGET-SET", "ANALYSIS-CLOSE"));
    EXPECT_EQ (window().status(), "Targets are set.\nClick CREATE TARGETS to re-analyse.");
    EXPECT_TRUE (plugin().targetSetByUser);

    for (const auto* title : { "ANALYSE", "ADD REFERENCE TRACK", "DELETE REFERENCE TRACK" })
        EXPECT_TRUE (isEnabled (title)) << title;

    const auto numbers = processor.presets.numbersOf (*processor.presets.findPresetById (Presets::userSettingId));
    EXPECT_EQ (numbers.lufs, track->reading().lufs);
    EXPECT_GT (numbers.lufs, -30.0f);
}

TEST_F (AnalysisWindowTest, eachRunFinishesOnce)
{
    open();
    tracks.load (tracks.write ("one.wav", 3.0));
    tracks.load (tracks.write ("two.wav", 4.0));

    for (int run = 1; run <= 3; ++run)
    {
        tracks.words.heard.clear();
        tracks.click ("ANALYSE");
        waitForTheRun();
        Messages::deliver();
        EXPECT_THAT (tracks.words.heard, testing::ElementsAre ("TARGET-SET", "ANALYSIS-CLOSE")) << run;
    }
}

TEST_F (AnalysisWindowTest, nothingIsAnalysedWhileATrackLoads)
{
    open();
    tracks.load (tracks.write ("one.wav", 1.5));
    tracks.enqueue (tracks.writeLong ("long.wav"));
    PluginRig::serveMessagesUntil ([this] { return model().tracks().size() == 2; });
    tracks.button ("ANALYSE").onClick();
    const auto second = model().tracks().back();
    EXPECT_FALSE (second->loaded) << "the load ended too early";
    EXPECT_TRUE (isEnabled ("ANALYSE"));
    EXPECT_EQ (model().targetProgress().trackCount, 0);

    model().selectTrack (second->id);
    model().removeSelectedTrack();
    Messages::deliver();
    EXPECT_TRUE (tracks.words.heard.empty());
}

TEST_F (AnalysisWindowTest, tracksThatGaveNothingAreNamed)
{
    open();
    tracks.load (tracks.write ("loud.wav", 3.0));
    tracks.load (tracks.write ("silence.wav", 3.0, 2, 0.0f));
    tracks.click ("ANALYSE");
    waitForTheRun();
    Messages::deliver();
    const auto text = juce::String ("Targets are set without SILENCE, where nothing could be measured.");
    EXPECT_THAT (tracks.words.heard, testing::ElementsAre ("TARGET-SET", "ANALYSIS-CLOSE", "ANALYSIS-NOTICE:" + text));
    EXPECT_EQ (window().status(), text + "\nClick CREATE TARGETS to re-analyse.");

    // And when it is opened again.
    open();
    EXPECT_EQ (window().status(), text + "\nClick CREATE TARGETS to re-analyse.");
}

TEST_F (AnalysisWindowTest, aWindowThatGoesInMidRunLosesNothing)
{
    auto& processor = tracks.rig.processor;
    tracks.rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::userSettingId));
    open();
    tracks.load (tracks.write ("long.wav", 60.0));
    tracks.click ("ANALYSE");
    tracks.window.reset();
    EXPECT_TRUE (plugin().targetSetByUser);
    const auto numbers = processor.presets.numbersOf (*processor.presets.findPresetById (Presets::userSettingId));
    EXPECT_GT (numbers.lufs, -30.0f);
    EXPECT_EQ (processor.target.targetLufs, numbers.lufs);
    Messages::deliver();
    open();
    EXPECT_EQ (window().status(), "Targets are set.\nClick CREATE TARGETS to re-analyse.");
    EXPECT_TRUE (isEnabled ("ANALYSE"));
}

TEST_F (AnalysisWindowTest, closeSaysSo)
{
    open();
    tracks.click ("Close");
    EXPECT_THAT (tracks.words.heard, testing::ElementsAre ("ANALYSIS-CLOSE"));
}

//======================================================================================================================
TEST_F (AnalysisWindowTest, aTargetIsSavedAndLoaded)
{
    auto& presets = tracks.rig.processor.presets;
    open();
    EXPECT_EQ (tracks.button ("LOAD TARGET").getBounds(), Rectangle (340 - 175, 230, 100, 20));
    EXPECT_EQ (tracks.button ("SAVE TARGET").getBounds(), Rectangle (340 + 76, 230, 100, 20));
    EXPECT_TRUE (isEnabled ("LOAD TARGET"));
    EXPECT_FALSE (isEnabled ("SAVE TARGET")) << "nobody has set one";

    FileDialog::Files answer { tracks.folder.file ("no such.target") };
    window().fileDialog().setOpener ([&] (const FileDialog::Question&, const FileDialog::Answer& give)
                                     { give (answer); });
    tracks.click ("LOAD TARGET");
    EXPECT_EQ (window().status(), "'no such.target' cannot be read.");
    EXPECT_FALSE (plugin().targetSetByUser);

    answer = { tracks.folder.file ("mine.target") };
    ASSERT_TRUE (answer[0].replaceWithText (
        R"({"format": "solvane-target", "version": 1, "lufs": -9.5, "values": [-1,-2,-3,-4,-5,-6,-7,-8,-9,-10]})"));
    presets.select (Presets::userSettingId);
    tracks.click ("LOAD TARGET");
    EXPECT_EQ (window().status(), "The target of 'mine.target' is set.\nAdd reference tracks to create new targets.");
    EXPECT_TRUE (plugin().targetSetByUser);
    EXPECT_EQ (tracks.rig.processor.target.targetLufs, -9.5f);
    EXPECT_THAT (tracks.words.heard, testing::ElementsAre ("TARGET-SET")) << "the window stays";
    EXPECT_TRUE (isEnabled ("SAVE TARGET"));

    answer = { tracks.folder.file ("other") };
    tracks.click ("SAVE TARGET");
    EXPECT_EQ (window().status(), "The target is saved in 'other.target'.");
    EXPECT_TRUE (tracks.folder.file ("other.target").existsAsFile());

    // Whoever changes his mind changes nothing.
    answer = {};
    tracks.click ("SAVE TARGET");
    tracks.click ("LOAD TARGET");
    EXPECT_EQ (window().status(), "The target is saved in 'other.target'.");
}

/** The dialog has asked about the name without the ending. */
TEST_F (AnalysisWindowTest, aTargetThatNobodyHasChosenIsNotReplaced)
{
    auto& presets = tracks.rig.processor.presets;
    constexpr std::array<float, 10> values { -1, -2, -3, -4, -5, -6, -7, -8, -9, -10 };
    presets.setUserSetting (-9.5f, values);
    plugin().targetSetByUser = true;
    open();
    const auto there = tracks.folder.file ("mine.target");
    ASSERT_TRUE (UserTargetFile::save (there, presets, {}).succeeded);
    const auto before = there.loadFileAsString();
    presets.setUserSetting (-12.5f, values);

    FileDialog::Files answer { tracks.folder.file ("mine") };
    window().fileDialog().setOpener ([&] (const FileDialog::Question&, const FileDialog::Answer& give)
                                     { give (answer); });
    tracks.click ("SAVE TARGET");
    EXPECT_EQ (window().status(), "'mine.target' is there already: choose it to replace it.");
    EXPECT_EQ (there.loadFileAsString(), before);

    answer = { there };
    tracks.click ("SAVE TARGET");
    EXPECT_EQ (window().status(), "The target is saved in 'mine.target'.");
    EXPECT_NE (there.loadFileAsString(), before);
}

TEST_F (AnalysisWindowTest, aLoadedTargetIsNoLongerTheOneThatLacksATrack)
{
    open();
    tracks.load (tracks.write ("loud.wav", 3.0));
    tracks.load (tracks.write ("silence.wav", 3.0, 2, 0.0f));
    tracks.click ("ANALYSE");
    waitForTheRun();
    const auto file = tracks.folder.file ("mine.target");
    ASSERT_TRUE (file.replaceWithText (
        R"({"format": "solvane-target", "version": 1, "lufs": -9.5, "values": [-1,-2,-3,-4,-5,-6,-7,-8,-9,-10]})"));
    window().fileDialog().setOpener ([&] (const FileDialog::Question&, const FileDialog::Answer& give)
                                     { give ({ file }); });
    tracks.click ("LOAD TARGET");
    open();
    EXPECT_EQ (window().status(), "Targets are set.\nClick CREATE TARGETS to re-analyse.");
}
