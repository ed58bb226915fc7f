#pragma once

#include "gui/editor/EditorLayout.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** The two texts at the bottom left, the preset's group and its name. A press on either opens the preset menu, which is
    the editor's work. Message thread. */
class PresetLabels
{
public:
    PresetLabels();

    /** @param listener hears the presses; outlives this object */
    void addTo (juce::Component& parent, juce::MouseListener& listener);

    void show (const juce::String& group, const juce::String& name);

    /** Widths of the two texts in pixels, rounded up. */
    [[nodiscard]] int typeWidth() const;
    [[nodiscard]] int nameWidth() const;

    void place (const EditorLayout& layout);

    [[nodiscard]] bool has (const juce::Component* component) const noexcept;

    /** What the preset menu opens from. */
    [[nodiscard]] juce::Component& menuAnchor() noexcept { return presetTypeLabel; }

private:
    juce::Label presetTypeLabel, presetNameLabel;
};
