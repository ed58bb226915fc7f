#include "gui/analysis/TrackComponent.h"

#include "gui/look/Fonts.h"
#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

#include <algorithm>

namespace
{
constexpr float overlayAlpha = 0.8f;
constexpr float hintHeight = 11.5f;
constexpr float statusHeight = 14.0f;
const juce::Rectangle<int> dropCaption { 0, 54, 300, 24 };

/** A request of the user's, who may want a file twice. */
ReferenceTrackRequest requestFor (const juce::String& path)
{
    ReferenceTrackRequest request;
    request.filePath = path;
    return request;
}
} // namespace

TrackComponent::TrackComponent (ReferenceTrackModel& tracks) : model (tracks)
{
    setOpaque (true);

    // The line of the transport runs over it many times a second.
    setBufferedToImage (true);
    setTitle ("Waveform");
    setTooltip (Tips::text (Tips::analysis));

    dropButton.setPicture (Icons::svg (Icons::Role::dropFiles), dropCaption);
    dropButton.setTooltip (Tips::text (Tips::addTrack));
    dropButton.setAlphas (overlayAlpha, overlayAlpha);
    dropButton.onClick = [this]
    {
        if (onDropButton)
            onDropButton();
    };
    addAndMakeVisible (dropButton);

    hintLabel.setText ("Enable input monitoring to audition tracks", juce::dontSendNotification);
    hintLabel.setJustificationType (juce::Justification::centredRight);
    hintLabel.setFont (Fonts::regular (hintHeight));
    hintLabel.setColour (juce::Label::backgroundColourId, juce::Colour (Palette::auditionHint));
    statusLabel.setJustificationType (juce::Justification::centred);
    statusLabel.setFont (Fonts::regular (statusHeight));
    statusLabel.setColour (juce::Label::backgroundColourId, juce::Colour (Palette::trackStatus));

    for (auto* label : { &hintLabel, &statusLabel })
    {
        label->setColour (juce::Label::textColourId, juce::Colour (Palette::text));
        label->setMinimumHorizontalScale (1.0f);
        label->setAlpha (overlayAlpha);
        label->setInterceptsMouseClicks (false, false);
        addChildComponent (*label);
    }
}

//======================================================================================================================
void TrackComponent::setTrack (ReferenceTrackModel::TrackPtr newTrack)
{
    // What the hand holds stays as if it had let go.
    if (isLoaded())
        edit ([this] (auto& ranges) { return hand.release (ranges); });

    shown = std::move (newTrack);
    hand.letGo();
    noteScale();
    showDropButton (shown == nullptr);
    rebuildOutline();
    checkRate();
    setMouseCursor (juce::MouseCursor::NormalCursor);
    repaint();
}

void TrackComponent::showDropButton (bool shouldShow)
{
    dropButton.setVisible (shouldShow);
}

void TrackComponent::showStatus (const juce::String& text)
{
    loadStatus = text;
    refreshStatus();
}

juce::String TrackComponent::status() const
{
    return statusLabel.isVisible() ? statusLabel.getText() : juce::String();
}

void TrackComponent::checkRate()
{
    const auto session = model.sessionSampleRate();
    const auto differs = isLoaded() && session > 0.0 && session != shown->rates.session;
    auto text = differs ? "LOADED AT " + juce::String (shown->rates.session) + " Hz, NOW AT " + juce::String (session)
                              + " Hz.\nADD THE FILE AGAIN TO HEAR IT AT ITS SPEED."
                        : juce::String();

    if (text == rateStatus)
        return;

    rateStatus = std::move (text);
    refreshStatus();
}

void TrackComponent::refreshStatus()
{
    const auto& text = loadStatus.isNotEmpty() ? loadStatus : rateStatus;
    statusLabel.setText (text, juce::dontSendNotification);
    statusLabel.setVisible (text.isNotEmpty());
}

void TrackComponent::showHint (bool shouldShow)
{
    hintLabel.setVisible (shouldShow);
}

//======================================================================================================================
bool TrackComponent::isLoaded() const
{
    return shown != nullptr && shown->loaded.load (std::memory_order_acquire);
}

RangeMouse::Scale TrackComponent::scale() const
{
    return { model.pixelsPerSample, shown != nullptr ? shown->numSamples.load() : 0 };
}

/** The model builds outlines by this too. */
void TrackComponent::noteScale()
{
    if (const auto samples = shown != nullptr ? shown->numSamples.load() : 0; samples > 0)
        model.pixelsPerSample = static_cast<float> (getWidth()) / static_cast<float> (samples);
}

void TrackComponent::rebuildOutline()
{
    if (isLoaded())
        model.rebuildOutline (*shown);
}

void TrackComponent::edit (const std::function<bool (RangeMouse::Ranges&)>& change)
{
    auto ranges = shown->loops();

    if (! change (ranges))
        return;

    shown->setLoops (std::move (ranges));
    rebuildOutline();
    repaint();
}

//======================================================================================================================
void TrackComponent::resized()
{
    model.waveformWidth = getWidth() / TrackOutline::columnStep * TrackOutline::columnStep;
    noteScale();
    drawing.resize (model.waveformWidth);
    rebuildOutline();
    const auto middle = getWidth() / 2;
    dropButton.setBounds (middle - 150, getHeight() / 2 - 40, 300, 100);
    statusLabel.setBounds (middle - 150, getHeight() / 2 - 25, 300, 50);
    hintLabel.setBounds (2, getHeight() - 22, 230, 20);
}

void TrackComponent::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (Palette::trackGround));
    drawing.paintGrid (g);

    if (isLoaded())
        OutlineDrawing::paintOutline (g, *shown->outline());

    if (filesOver)
    {
        g.setColour (juce::Colour (Palette::outlineBright));
        g.drawRect (getLocalBounds(), 2);
    }
}

//======================================================================================================================
bool TrackComponent::isInterestedInFileDrag (const juce::StringArray& files)
{
    return ! files.isEmpty()
           && std::all_of (
               files.begin(),
               files.end(),
               [] (const juce::String& path)
               { return juce::File::createFileWithoutCheckingPath (path).hasFileExtension (TrackFile::extensions); });
}

void TrackComponent::fileDragEnter (const juce::StringArray&, int, int)
{
    showFilesOver (true);
}

void TrackComponent::fileDragExit (const juce::StringArray&)
{
    showFilesOver (false);
}

void TrackComponent::showFilesOver (bool over)
{
    filesOver = over;
    repaint();
}

void TrackComponent::filesDropped (const juce::StringArray& files, int, int)
{
    showFilesOver (false);
    constexpr auto limit = ReferenceTrackModel::trackLimit;

    if (static_cast<int> (model.tracks().size()) >= limit || files.size() > limit || model.audition.isPlaying)
        return;

    for (const auto& path : files)
        model.enqueue (requestFor (path));
}

//======================================================================================================================
void TrackComponent::mouseDown (const juce::MouseEvent& event)
{
    hand.letGo();

    // What was said of a file that is not there is read, and the way to another one is open again.
    if (shown == nullptr && ! dropButton.isVisible())
    {
        showStatus ({});
        showDropButton (true);
    }

    if (isLoaded())
        edit ([&] (auto& ranges) { return hand.press (event.position.x, event.mods.isAltDown(), scale(), ranges); });
}

void TrackComponent::mouseDrag (const juce::MouseEvent& event)
{
    if (isLoaded())
        edit ([&] (auto& ranges) { return hand.drag (event.mouseDownPosition.x, event.position.x, scale(), ranges); });
}

void TrackComponent::mouseUp (const juce::MouseEvent& event)
{
    if (isLoaded())
        edit ([&] (auto& ranges) { return hand.release (ranges); });

    chooseCursor (event.position.x, event.mods.isAltDown());
}

void TrackComponent::mouseMove (const juce::MouseEvent& event)
{
    chooseCursor (event.position.x, event.mods.isAltDown());
}

void TrackComponent::modifierKeysChanged (const juce::ModifierKeys& modifiers)
{
    if (! modifiers.isAnyMouseButtonDown())
        chooseCursor (static_cast<float> (getMouseXYRelative().x), modifiers.isAltDown());
}

void TrackComponent::chooseCursor (float x, bool alt)
{
    if (isLoaded())
        setMouseCursor (cursors.of (RangeMouse::cursorAt (x, alt, scale(), shown->loops())));
    else
        setMouseCursor (juce::MouseCursor::NormalCursor);
}
