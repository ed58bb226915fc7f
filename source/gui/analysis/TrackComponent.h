#pragma once

#include "core/references/ReferenceTrackModel.h"
#include "gui/analysis/CaptionButton.h"
#include "gui/analysis/OutlineDrawing.h"
#include "gui/analysis/RangeCursors.h"

/** The waveform of the selected track: takes files that are dropped on it, and lets ranges be marked with the mouse.

    What it shows lives in the model; it holds nothing that has to survive. Message thread. */
class TrackComponent final : public juce::Component,
                             public juce::FileDragAndDropTarget,
                             public juce::SettableTooltipClient
{
public:
    /** @param model outlives this object */
    explicit TrackComponent (ReferenceTrackModel& model);

    /** The button in the empty waveform was clicked. */
    std::function<void()> onDropButton;

    /** Shows a track, or the button for the first one. */
    void setTrack (ReferenceTrackModel::TrackPtr newTrack);

    [[nodiscard]] ReferenceTrack* track() const noexcept { return shown.get(); }

    void showDropButton (bool shouldShow);
    [[nodiscard]] bool isShowingDropButton() const { return dropButton.isVisible(); }

    /** Says what a load has come to; an empty text takes it away. */
    void showStatus (const juce::String& text);
    [[nodiscard]] juce::String status() const;

    /** Says that the host does not call the plug-in. */
    void showHint (bool shouldShow);
    [[nodiscard]] bool isShowingHint() const { return hintLabel.isVisible(); }

    /** Looks whether the session's rate is still the one that the track was loaded at. */
    void checkRate();

    //==================================================================================================================
    void paint (juce::Graphics& g) override;
    void resized() override;
    bool isInterestedInFileDrag (const juce::StringArray& files) override;
    void fileDragEnter (const juce::StringArray& files, int x, int y) override;
    void fileDragExit (const juce::StringArray& files) override;
    void filesDropped (const juce::StringArray& files, int x, int y) override;
    void mouseDown (const juce::MouseEvent& event) override;
    void mouseDrag (const juce::MouseEvent& event) override;
    void mouseUp (const juce::MouseEvent& event) override;
    void mouseMove (const juce::MouseEvent& event) override;
    void modifierKeysChanged (const juce::ModifierKeys& modifiers) override;

private:
    [[nodiscard]] bool isLoaded() const;
    [[nodiscard]] RangeMouse::Scale scale() const;
    void noteScale();
    void rebuildOutline();
    void edit (const std::function<bool (RangeMouse::Ranges&)>& change);
    void chooseCursor (float x, bool alt);
    void showFilesOver (bool over);
    void refreshStatus();

    ReferenceTrackModel& model;
    ReferenceTrackModel::TrackPtr shown;
    RangeMouse hand;
    OutlineDrawing drawing;
    RangeCursors cursors;
    CaptionButton dropButton { "DropFiles", "Click here or drop reference tracks" };
    juce::Label hintLabel, statusLabel;
    juce::String loadStatus;
    juce::String rateStatus;
    bool filesOver = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TrackComponent)
};
