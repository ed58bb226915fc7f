#pragma once

#include "core/PluginProcessor.h"
#include "gui/analysis/TargetRun.h"
#include "gui/analysis/TargetStatus.h"
#include "gui/analysis/TrackChooser.h"
#include "gui/analysis/TrackComponent.h"
#include "gui/analysis/TrackRows.h"
#include "gui/analysis/TransportClicks.h"
#include "gui/analysis/TransportControl.h"

/** The panel in which reference tracks are loaded, marked, heard and made a target of.

    It drives the model and keeps nothing itself: the host may delete it at any moment, and the next one shows the same.
    While a target is being made its destructor waits for that; what the target brings about happens all the same.
    Message thread. */
class AnalysisWindow final : public juce::Component,
                             public juce::ActionListener,
                             public juce::ActionBroadcaster,
                             public juce::Timer
{
public:
    /** What it says to the editor: that it wants to be closed, and that USER SETTING holds another target. */
    static constexpr auto closed = "ANALYSIS-CLOSE";
    static constexpr auto targetSet = "TARGET-SET";

    /** Before a sentence that the user must see, though the window is about to go. */
    static constexpr auto notice = "ANALYSIS-NOTICE:";

    /** Milliseconds from one look at the playing track to the next, while the window is open. */
    static constexpr int intervalMs = 40;

    explicit AnalysisWindow (VelmoraAudioProcessor& processor);
    ~AnalysisWindow() override;

    /** What the model says of its tracks. */
    void actionListenerCallback (const juce::String& message) override;

    void timerCallback() override;
    void visibilityChanged() override;
    void paint (juce::Graphics& g) override;
    void resized() override;

    //==================================================================================================================
    [[nodiscard]] TrackComponent& waveform() noexcept { return trackComponent; }
    [[nodiscard]] TransportControl& transportBar() noexcept { return transport; }
    [[nodiscard]] TrackRows& trackRows() noexcept { return rows; }

    /** Where it asks for files. */
    [[nodiscard]] FileDialog& fileDialog() noexcept { return files; }

    [[nodiscard]] juce::String status() const { return statusLabel.getText(); }

    /** Says how far a target is that is being made, and leaves nothing to be changed meanwhile. */
    void showProgress (const TargetProgress& progress);

private:
    /** The ground of waveform and transport. */
    class BackgroundRoundedRectangle final : public juce::Component
    {
    public:
        void paint (juce::Graphics& g) override;
    };

    void addParts();
    void bindParts();
    void setUp (juce::Button& button, const char* title, const char* tip);

    // What the model says.
    void follow (const juce::String& message);
    void showLoading (const juce::String& id);
    void takeTrack (const juce::String& id);
    void forgetTrack (juce::int64 id);

    /** Says that the selected track is being loaded; false where it is not. */
    bool showLoadUnderWay();

    // The selected track.
    void addRow (const ReferenceTrack& track);
    void showSelected();
    void showTitle (const juce::String& name);
    void showListButtons();
    void enableListButtons (bool enabled);

    // The transport.
    void moveTo (double position);
    void clickTransport();
    void followPosition();
    void followHost();

    // The target.
    void analyse();
    void finishRun (const TargetProgress& progress);
    [[nodiscard]] TargetStatus::Situation situation() const;
    void updateTargetText();
    void showTargetButtons();
    void askWhereToSave();
    void askWhatToLoad();
    void saveTarget (const juce::File& file);
    void loadTarget (const juce::File& file);
    void showStatus (const juce::String& text);

    VelmoraAudioProcessor& processor;
    PluginModel& pluginModel;
    ReferenceTrackModel& model;

    BackgroundRoundedRectangle background;
    juce::Label titleLabel;
    TrackComponent trackComponent;
    TransportControl transport;
    TransportClicks clicks;
    orvik::SVGButton addButton { "Add" };
    orvik::SVGButton deleteButton { "Delete" };
    CaptionButton analyseButton { "Analyse tracks", "ANALYSE" };
    CaptionButton loadButton { "Load target", "LOAD TARGET" };
    CaptionButton saveButton { "Save target", "SAVE TARGET" };
    orvik::SVGButton closeButton { "Close" };
    juce::Label statusLabel;
    TrackRows rows;
    FileDialog files;
    TrackChooser chooser;

    /** What the status was made for. */
    TargetStatus::Situation shownSituation;

    /** Ticks since the host has last called the plug-in. */
    int quietTicks = 0;

    /** Last: its thread works with the model while the rest goes. */
    TargetRun run;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AnalysisWindow)
};
