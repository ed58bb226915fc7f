#pragma once

#include "gui/analysis/AnalysisWindow.h"
#include "gui/band/SolvaneControl.h"
#include "gui/editor/PluginEditor.h"
#include "support/PluginRig.h"
#include "support/TemporaryFolder.h"
#include "window/TestScreen.h"

/** The plug-in's window as it stands on the display that DISPLAY names, in this process: pictures of it are made by the
    framework's own renderer, at rest.

    One at a time. The thread that made the framework. */
class EditorStage
{
public:
    struct Size
    {
        int width;
        int height;

        /** Pixels of the display for one of the window's. */
        int displayScale = 1;
    };

    /** Prepares a processor that aims at no target, so that nothing pulses, and opens its window in the corner of the
        display. The pointer is away from it. */
    explicit EditorStage (Size size);

    /** Puts the display's scale back. */
    ~EditorStage();

    EditorStage (const EditorStage&) = delete;
    EditorStage& operator= (const EditorStage&) = delete;

    [[nodiscard]] PluginModel& model() noexcept { return rig.processor.model; }
    [[nodiscard]] VelmoraAudioProcessorEditor& window() noexcept { return *editor; }
    [[nodiscard]] Solvane& room() noexcept { return editor->main().room(); }

    /** A band that hangs in the room. */
    [[nodiscard]] SolvaneControl& band (int index);

    /** Moves the display's pointer to a place of a component, and waits until something has come of it. */
    void pointAt (const juce::Component& component, juce::Point<int> place, const std::function<bool()>& hasArrived);

    /** Waits until the workers have designed and drawn everything, then takes all that moves to its end. */
    void settle();

    /** The window as it is now, in pixels of the display. */
    [[nodiscard]] juce::Image picture();

    /** Opens the analysis window, as its button does, and takes it to its place. Its timer stands still. */
    [[nodiscard]] AnalysisWindow& openAnalysis();

    /** Makes a sound file of so many seconds that grows and fades, and loads it as a reference track, until the
       analysis window has taken it. */
    ReferenceTrackModel::TrackPtr loadTrack (const std::string& name, double seconds);

    PluginRig rig;

private:
    [[nodiscard]] std::vector<SolvaneControl*> bands();
    void awaitWalls();
    void endMovements();

    const Size size;
    TemporaryFolder files;
    TestScreen screen;
    std::unique_ptr<VelmoraAudioProcessorEditor> editor;
};
