#include "gui/analysis/TrackRows.h"

#include "gui/analysis/TrackRowLayout.h"

#include <algorithm>

namespace
{
juce::int64 idOf (const juce::Component& row)
{
    return row.getComponentID().getLargeIntValue();
}

juce::String tipFor (const juce::String& name)
{
    return name + "\n ";
}
} // namespace

TrackRows::TrackRows (juce::Component& parentOfButtons, ReferenceTrackModel& tracks)
    : parent (parentOfButtons), model (tracks)
{
}

TrackRows::~TrackRows()
{
    for (const auto& row : rows)
        row->removeListener (this);
}

void TrackRows::add (const ReferenceTrack& track)
{
    if (find (track.id) != nullptr)
        return;

    auto row = std::make_unique<EditableTextButton>();
    const auto name = track.name();
    row->setFont (EditableTextButton::fontFor (name));
    row->setText (name, juce::dontSendNotification);
    row->setTitle (name);
    row->setTooltip (tipFor (name));
    row->setComponentID (juce::String (track.id));
    row->onClick = [this] (EditableTextButton* clicked) { select (*clicked); };
    row->addListener (this);
    parent.addAndMakeVisible (*row);
    rows.push_back (std::move (row));
    markSelected();
    layOut (width);
}

void TrackRows::remove (juce::int64 id)
{
    std::erase_if (rows, [id] (const auto& row) { return idOf (*row) == id; });
    markSelected();
    layOut (width);
}

EditableTextButton* TrackRows::find (juce::int64 id) const
{
    const auto found = std::ranges::find_if (rows, [id] (const auto& row) { return idOf (*row) == id; });
    return found != rows.end() ? found->get() : nullptr;
}

void TrackRows::markSelected()
{
    const auto selected = model.selectedTrack();

    for (const auto& row : rows)
        row->setSelected (selected != nullptr && idOf (*row) == selected->id);
}

void TrackRows::layOut (int windowWidth)
{
    width = windowWidth;
    const auto count = static_cast<int> (rows.size());

    for (int index = 0; index < count; ++index)
        rows[static_cast<std::size_t> (index)]->setBounds (TrackRowLayout::boundsOf (index, count, width));
}

void TrackRows::select (const EditableTextButton& row)
{
    model.selectTrack (idOf (row));
    markSelected();

    if (onSelected)
        onSelected();
}

void TrackRows::labelTextChanged (juce::Label* label)
{
    const auto track = model.findTrack (idOf (*label));

    if (track == nullptr)
        return;

    const auto name = label->getText();
    track->setName (name);
    label->setTitle (name);
    dynamic_cast<EditableTextButton&> (*label).setTooltip (tipFor (name));

    if (onRenamed)
        onRenamed (*track);
}
