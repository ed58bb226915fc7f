#pragma once

#include "core/model/InterfaceState.h"
#include "gui/editor/EditorClock.h"
#include "gui/editor/MainWindow.h"

/** Slides the analysis window up over the room and down again, and gives the room's mouse to it meanwhile.
    Message thread. */
class AnalysisSlide
{
public:
    /** All outlive this object. @param window is as high and wide as the editor */
    AnalysisSlide (juce::Component& window, MainWindow& main, InterfaceState& state, EditorClock& clock);

    void open();
    void close();

    /** Whether a slide is under way. */
    [[nodiscard]] bool isMoving() const noexcept { return state.analysisSliding; }

    /** One step of the slide. */
    void advance();

    /** Puts an open window back into its place, after the editor's size has changed. */
    void place();

private:
    /** Covers what the room still shows below the window at rest. */
    class Ground final : public juce::Component
    {
    public:
        void paint (juce::Graphics& g) override;
    };

    [[nodiscard]] juce::Component* analysis() const { return mainWindow.component (MainWindow::Place::analysisWindow); }

    juce::Component& window;
    MainWindow& mainWindow;
    InterfaceState& state;
    EditorClock& clock;
    Ground ground;
};
