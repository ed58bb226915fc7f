#include "pictures/EditorStates.h"

#include "gui/help/HelpWindow.h"
#include "support/Messages.h"

#include <array>
#include <cmath>
#include <random>

using Kind = Settings::Parameter;

namespace
{
constexpr auto voiceHz = 2400.0f;

void hangOne (EditorStage& stage)
{
    stage.rig.setBand (0, voiceHz, 4.0f);
    stage.settle();
}

void hangThree (EditorStage& stage)
{
    stage.rig.setBand (0, 700.0f, -5.0f);
    stage.rig.setBand (1, voiceHz, 4.0f, 2.0f);
    stage.rig.setBand (2, 8000.0f, 2.0f);
    stage.settle();
}

void hangTen (EditorStage& stage)
{
    struct Band
    {
        float frequencyHz;
        float gainDb;
        float q = 1.0f;
    };

    constexpr std::array bands { Band { 400.0f, -3.0f }, Band { 640.0f, 2.0f },         Band { 1000.0f, -4.0f, 2.0f },
                                 Band { 1500.0f, 1.5f }, Band { 2400.0f, 5.0f, 1.5f },  Band { 3600.0f, -2.5f },
                                 Band { 5000.0f, 3.5f }, Band { 7200.0f, -6.0f, 2.5f }, Band { 10000.0f, 4.0f, 1.5f },
                                 Band { 14000.0f, 6.0f } };

    for (std::size_t index = 0; index < bands.size(); ++index)
        stage.rig.setBand (static_cast<int> (index), bands[index].frequencyHz, bands[index].gainDb, bands[index].q);

    stage.rig.set (static_cast<int> (bands.size()) - 1, Kind::highShelf, 1.0f);
    stage.settle();
}

void hangOneInTheImage (EditorStage& stage, float midSide)
{
    stage.rig.setBand (0, voiceHz, 4.0f);
    stage.rig.set (0, Kind::midSide, midSide);
    stage.settle();
}

/** Where the empty room is above every band. */
constexpr juce::Point<int> nearTheCeiling { 200, 80 };

void pointAtTheEmptyRoom (EditorStage& stage)
{
    hangOne (stage);
    stage.pointAt (
        stage.room(), nearTheCeiling, [&] { return stage.room().findChildWithID ("addBandMarker")->isVisible(); });
}

void pointAtTheLine (EditorStage& stage)
{
    hangOne (stage);
    auto& band = stage.band (0);
    stage.pointAt (band,
                   { 40, band.bandState().layout.lineY() },
                   [&] { return band.isSelected() && band.panel().readout.getText().endsWith ("Hz"); });
}

void pointAtTheBody (EditorStage& stage)
{
    hangOne (stage);
    auto& band = stage.band (0);
    stage.pointAt (band,
                   { 40, band.bandState().layout.topEdge.getBottom() + 20 },
                   [&] { return band.isSelected() && band.panel().readout.getText().endsWith ("dB"); });
}

/** A scale by hand, which one of two bands is beyond. */
void chooseTooSmallAScale (EditorStage& stage)
{
    stage.rig.setBand (0, 900.0f, 7.0f);
    stage.rig.setBand (1, 3000.0f, -2.0f);
    stage.settle();
    stage.room().setScale (4.0f);
}

/** What a hand does that drags a band too far in Master. */
void crossTheLimitsOfMaster (EditorStage& stage)
{
    stage.rig.set (ParameterIds::mode, 0.0f);
    hangOne (stage);
    stage.model().interfaceState.bandChangedByUser = true;
    stage.model().setCanUseMasterMode (false);
    PluginRig::serveMessagesUntil ([&] { return stage.window().main().burgerMenu().isVisible(); });
}

/** The help page as a click on its button opens it. */
void openHelp (EditorStage& stage, bool withUpdate)
{
    stage.model().interfaceState.updateAvailable = withUpdate;
    auto& main = stage.window().main();
    stage.window().buttons().helpButton.triggerClick();
    PluginRig::serveMessagesUntil ([&] { return main.isShowingPlace (MainWindow::Place::helpWindow); });
    dynamic_cast<HelpWindow&> (*main.component (MainWindow::Place::helpWindow)).showBuildDate ("Jul 25 2022");
}

/** The pointer over a button that has something to tell, once it has woken up. */
void pointAtButton (EditorStage& stage, orvik::SVGButton& button)
{
    constexpr int longestFade = 100;
    stage.window().refreshAnnouncements();
    stage.pointAt (
        button, button.getLocalBounds().getCentre(), [&] { return stage.window().main().isShowingNotice(); });

    for (int frame = 0; frame < longestFade; ++frame)
        button.advanceFade();
}

/** The pointer over the link to the website, while there is a new product. */
void pointAtTheNews (EditorStage& stage)
{
    stage.model().interfaceState.newsAvailable = true;
    pointAtButton (stage, stage.window().website().icon);
}

/** The pointer over the help button, while there is an update. */
void pointAtTheUpdate (EditorStage& stage)
{
    stage.model().interfaceState.updateAvailable = true;
    pointAtButton (stage, stage.window().buttons().helpButton);
}

/** Opens a panel as its button does under the pointer, which itself stays away: the button would be seen to wake up. */
void openOutputGain (EditorStage& stage)
{
    hangOne (stage);
    stage.rig.set (ParameterIds::outputGain, -2.0f);
    stage.model().levelMatchPointer = juce::Decibels::decibelsToGain (-4.5f);
    stage.window().hoverOver (HoverRules::Target::outputGainButton);
}

void openGainScale (EditorStage& stage)
{
    hangOne (stage);
    stage.rig.set (ParameterIds::gainScale, 150.0f);
    stage.window().hoverOver (HoverRules::Target::gainScaleButton);
}

/** A voice over a bass and some cymbals, as the strips show them, falling with frequency. */
void glow (EditorStage& stage)
{
    hangOne (stage);
    stage.model().setShowHeatmap (true);
    LiveSpectrum::Magnitudes magnitudes {};

    for (std::size_t bin = 1; bin < magnitudes.size(); ++bin)
    {
        const auto octave = std::log2 (static_cast<float> (bin));
        magnitudes[bin] = 2.5f * std::exp (-0.6f * octave) * (1.0f + 0.8f * std::sin (6.0f * octave));
    }

    stage.rig.processor.liveAnalysis().spectrum().publish (magnitudes);
    stage.window().main().heatStrips().drawNow (true);
    Messages::deliver();
}

/** Noise that falls with frequency, somewhat as music does, until a target can be shown. */
void measureNoise (EditorStage& stage)
{
    constexpr int stretches = 300;
    constexpr int stretch = 4096;
    constexpr float amplitude = 0.4f;
    constexpr float pole = 0.93f;

    stage.rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::balancedMasterId));
    std::mt19937 random (1);
    std::array<float, 2> last {};
    PluginRig::Signal noise (2, std::vector<float> (stretch));

    for (int i = 0; i < stretches; ++i)
    {
        for (std::size_t channel = 0; channel < noise.size(); ++channel)
            for (auto& sample : noise[channel])
            {
                const auto white = static_cast<float> (random()) / static_cast<float> (std::mt19937::max()) - 0.5f;
                last[channel] = pole * last[channel] + (1.0f - pole) * amplitude * white;
                sample = last[channel];
            }

        std::ignore = stage.rig.run (noise, 512);
        stage.rig.processor.liveAnalysis().runPass();
    }

    PluginRig::serveMessagesUntil ([&] { return stage.model().targetsReady(); });

    // All that was measured, and at once: the curve has been following in steps.
    stage.room().rebuildTarget();
}
/** What a click on the burger button does. */
void openMenu (EditorStage& stage)
{
    stage.window().buttons().burgerButton.triggerClick();
    PluginRig::serveMessagesUntil ([&] { return stage.window().main().burgerMenu().isVisible(); });
}

void openMenuInMix (EditorStage& stage, bool canUseMasterMode)
{
    stage.settle();
    stage.model().setCanUseMasterMode (canUseMasterMode);
    openMenu (stage);
}

void openMenuOverBands (EditorStage& stage)
{
    hangThree (stage);
    openMenuInMix (stage, true);
}

/** A band beyond what Master can do, in Mix. */
void openMenuWithoutMaster (EditorStage& stage)
{
    hangTen (stage);
    openMenuInMix (stage, false);
}

void openMenuAtHighRate (EditorStage& stage)
{
    stage.rig.prepare (192000.0, 512);
    openMenuInMix (stage, true);
}

/** Both commands for a target, of which nothing is drawn: what has been measured is only said to be ready. */
void openMenuWithATarget (EditorStage& stage, bool smartBands)
{
    stage.rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::balancedMasterId));
    stage.settle();
    stage.model().setTargetsReady (true, false);
    stage.model().setSmartBandsReady (smartBands, false);
    openMenuInMix (stage, true);
}

void offerSmartBands (EditorStage& stage)
{
    stage.settle();
    stage.model().setSmartBandsReady (true, true);
    PluginRig::serveMessagesUntil ([&] { return stage.window().main().burgerMenu().isVisible(); });
}

/** A click on ADD SMART BANDS once noise was measured. */
void addSmartBands (EditorStage& stage)
{
    measureNoise (stage);
    stage.model().setSmartBandsReady (true, false);
    openMenu (stage);
    auto& menu = stage.window().main().burgerMenu();

    for (auto* child : menu.getChildren())
        if (auto* button = dynamic_cast<juce::Button*> (child);
            button != nullptr && button->getButtonText() == "ADD SMART BANDS")
            button->triggerClick();

    PluginRig::serveMessagesUntil (
        [&] { return stage.model().getBandValue (0, Kind::active) > 0.5f && ! menu.isVisible(); });
    stage.settle();
}

/** Every other switch is on. */
void openSettings (EditorStage& stage)
{
    auto& model = stage.model();
    model.showToolTips = true;
    model.reverseMousewheel = false;
    model.alwaysShowBand = true;
    model.setShowHeatmap (false);
    model.showNotifications = true;
    stage.window().buttons().settingsButton.triggerClick();
    PluginRig::serveMessagesUntil (
        [&] { return stage.window().main().isShowingPlace (MainWindow::Place::settingsWindow); });
}

/** A track with one range that counts as active and one that does not. */
ReferenceTrackModel::TrackPtr loadMarkedTrack (EditorStage& stage)
{
    auto track = stage.loadTrack ("Summer rain master", 12.0);
    const auto second = static_cast<int> (track->rates.session);
    track->setLoops ({ { second, 3 * second, true, 1 }, { 5 * second, 7 * second, false, 2 } });
    return track;
}

/** The window over tracks that are there already; without them it takes what is said to it. */
AnalysisWindow& openAnalysisWithTracks (EditorStage& stage)
{
    auto& analysis = stage.openAnalysis();
    Messages::deliver();

    // As if the host had just called.
    stage.model().audioCallbackSeen = true;
    analysis.timerCallback();
    return analysis;
}

void markTrack (EditorStage& stage)
{
    auto& analysis = openAnalysisWithTracks (stage);
    const auto track = loadMarkedTrack (stage);
    Messages::deliver();
    analysis.waveform().setTrack (track);
}

void playOneOfThree (EditorStage& stage)
{
    auto& analysis = openAnalysisWithTracks (stage);
    stage.loadTrack ("First mix", 4.0);
    const auto second = loadMarkedTrack (stage);
    stage.loadTrack ("Third mix", 6.0);
    Messages::deliver();
    analysis.trackRows().find (second->id)->onClick (analysis.trackRows().find (second->id));
    second->playPosition = second->numSamples / 5 * 2;
    analysis.transportBar().onPress();
    analysis.transportBar().onClick();
    stage.model().audioCallbackSeen = true;
    analysis.timerCallback();
}

void measureTracks (EditorStage& stage)
{
    auto& analysis = openAnalysisWithTracks (stage);
    stage.loadTrack ("First mix", 4.0);
    stage.loadTrack ("Second mix", 6.0);
    Messages::deliver();
    TargetProgress progress;
    progress.trackCount = 2;
    progress.percent = 42;
    analysis.showProgress (progress);
}

/** A target of the user's own, and a host that does not call. */
void missTheHost (EditorStage& stage)
{
    stage.model().targetSetByUser = true;
    auto& analysis = openAnalysisWithTracks (stage);
    stage.loadTrack ("First mix", 4.0);
    Messages::deliver();
    analysis.timerCallback();
}

void missAFile (EditorStage& stage)
{
    openAnalysisWithTracks (stage).actionListenerCallback ("FILE_NOT_FOUND:SUMMER RAIN MASTER");
}

void loadTwenty (EditorStage& stage)
{
    auto& analysis = openAnalysisWithTracks (stage);

    for (int number = 1; number <= 20; ++number)
        stage.loadTrack ("Mix " + std::to_string (number), 1.2);

    Messages::deliver();
    stage.model().audioCallbackSeen = true;
    analysis.timerCallback();
}
} // namespace

const std::vector<EditorState>& editorStates()
{
    static const std::vector<EditorState> states {
        { "empty", [] (EditorStage&) {} },
        { "new-band", pointAtTheEmptyRoom },
        { "one-band", hangOne },
        { "ten-bands", hangTen },
        { "hover", pointAtTheLine },
        { "focus", pointAtTheBody },
        { "solo",
          [] (EditorStage& stage)
          {
              hangThree (stage);
              stage.rig.set (1, Kind::solo, 1.0f);
          } },
        { "bypass",
          [] (EditorStage& stage)
          {
              hangTen (stage);
              stage.rig.set (ParameterIds::bypass, 1.0f);
          } },
        { "shelf",
          [] (EditorStage& stage)
          {
              stage.rig.setBand (0, 8000.0f, 3.0f);
              stage.rig.set (0, Kind::highShelf, 1.0f);
          } },
        { "mid", [] (EditorStage& stage) { hangOneInTheImage (stage, 0.2f); } },
        { "side", [] (EditorStage& stage) { hangOneInTheImage (stage, 0.8f); } },
        { "out-of-scale", chooseTooSmallAScale },
        { "master-message", crossTheLimitsOfMaster },
        { "target", measureNoise },
        { "smart-bands", addSmartBands },
        { "menu", openMenu },
        { "menu-bands", openMenuOverBands },
        { "menu-192k", openMenuAtHighRate },
        { "menu-no-master", openMenuWithoutMaster },
        { "menu-reset", [] (EditorStage& stage) { openMenuWithATarget (stage, false); } },
        { "menu-smart-bands", [] (EditorStage& stage) { openMenuWithATarget (stage, true); } },
        { "offer", offerSmartBands },
        { "settings", openSettings },
        { "help", [] (EditorStage& stage) { openHelp (stage, false); } },
        { "help-update", [] (EditorStage& stage) { openHelp (stage, true); } },
        { "news-notice", pointAtTheNews },
        { "update-notice", pointAtTheUpdate },
        { "output-gain", openOutputGain },
        { "gain-scale", openGainScale },
        { "heat", glow },
        { "analysis-empty", [] (EditorStage& stage) { openAnalysisWithTracks (stage); } },
        { "analysis-ranges", markTrack },
        { "analysis-playing", playOneOfThree },
        { "analysis-running", measureTracks },
        { "analysis-hint", missTheHost },
        { "analysis-not-found", missAFile },
        { "analysis-twenty", loadTwenty },
    };

    return states;
}
