#pragma once

#include "core/references/ReferenceTrackModel.h"
#include "gui/analysis/EditableTextButton.h"

#include <functional>
#include <memory>
#include <vector>

/** The buttons of the tracks: one click selects, a double click renames. Message thread. */
class TrackRows : private juce::Label::Listener
{
public:
    /** Both outlive this object. @param parent holds the buttons */
    TrackRows (juce::Component& parent, ReferenceTrackModel& model);
    ~TrackRows() override;

    TrackRows (const TrackRows&) = delete;
    TrackRows& operator= (const TrackRows&) = delete;

    /** A track has been selected by a click, and the model knows. */
    std::function<void()> onSelected;

    /** A track has got another name, and the model knows. */
    std::function<void (const ReferenceTrack&)> onRenamed;

    /** Adds a track's button, unless it is there already. */
    void add (const ReferenceTrack& track);
    void remove (juce::int64 id);

    /** Marks the button of the track that is selected in the model. */
    void markSelected();

    /** @param windowWidth in pixels, of the analysis window */
    void layOut (int windowWidth);

    [[nodiscard]] bool isEmpty() const noexcept { return rows.empty(); }

    /** Null where this track has none. */
    [[nodiscard]] EditableTextButton* find (juce::int64 id) const;

private:
    void labelTextChanged (juce::Label* label) override;
    void select (const EditableTextButton& row);

    juce::Component& parent;
    ReferenceTrackModel& model;
    std::vector<std::unique_ptr<EditableTextButton>> rows;
    int width = 0;
};
