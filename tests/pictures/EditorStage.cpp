#include "pictures/EditorStage.h"

#include "gui/band/MidSideControlPanel.h"
#include "gui/room/ScaleSelector.h"
#include "support/Messages.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <cmath>
#include <stdexcept>

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;

/** Outside of every window, and on every display. */
constexpr int awayX = 1999;
constexpr int awayY = 1599;

/** More than the longest movement has. */
constexpr int ticksToRest = 50;

template <typename Kind>
Kind* childOf (juce::Component& parent)
{
    for (auto* child : parent.getChildren())
        if (auto* found = dynamic_cast<Kind*> (child))
            return found;

    return nullptr;
}
} // namespace

EditorStage::EditorStage (Size wanted) : size (wanted)
{
    screen.point (awayX, awayY);
    juce::Desktop::getInstance().setGlobalScaleFactor (static_cast<float> (size.displayScale));
    rig.prepare (sampleRate, blockSize);
    rig.set (ParameterIds::currentPreset, static_cast<float> (Presets::noTargetsId));
    rig.set (ParameterIds::mode, 1.0f);
    rig.processor.sessionState().fillMissingStores();
    model().windowWidth = size.width;
    model().windowHeight = size.height;

    // Whatever the pictures before have left in the settings file.
    model().showToolTips = false;
    model().reverseMousewheel = false;
    model().alwaysShowBand = false;
    model().showNotifications = true;
    model().setShowHeatmap (true);
    model().setMinimised (false, false);

    editor = std::make_unique<VelmoraAudioProcessorEditor> (rig.processor);
    editor->stopTimer();
    editor->addToDesktop (juce::ComponentPeer::windowIsTemporary);
    PluginRig::serveMessagesUntil ([this] { return editor->isShowing(); });
}

EditorStage::~EditorStage()
{
    editor.reset();
    Messages::deliver();
    juce::Desktop::getInstance().setGlobalScaleFactor (1.0f);
}

std::vector<SolvaneControl*> EditorStage::bands()
{
    std::vector<SolvaneControl*> found;

    for (auto* child : room().getChildren())
        if (auto* control = dynamic_cast<SolvaneControl*> (child))
            found.push_back (control);

    return found;
}

SolvaneControl& EditorStage::band (int index)
{
    for (auto* control : bands())
        if (control->bandIndex() == index)
            return *control;

    throw std::out_of_range ("no such band hangs in the room");
}

void EditorStage::pointAt (const juce::Component& component,
                           juce::Point<int> place,
                           const std::function<bool()>& hasArrived)
{
    const auto onDisplay = component.localPointToGlobal (place) * size.displayScale;

    // From the pixel beside it: the framework passes over a pointer that comes back to where it was last seen.
    screen.point (onDisplay.x - 1, onDisplay.y);
    screen.point (onDisplay.x, onDisplay.y);
    PluginRig::serveMessagesUntil (hasArrived);
}

void EditorStage::settle()
{
    rig.waitForWorkers();

    // Below an open analysis window the walls rest.
    while (! model().interfaceState.analysisOpen)
    {
        awaitWalls();

        if (! model().interfaceState.scaleAnimating && ! model().responseCurveChanged)
            break;
    }

    endMovements();
}

/** Until a whole tick of the room's worker has come after what was set, and what it found has been delivered. */
void EditorStage::awaitWalls()
{
    constexpr int ticks = 2;
    const auto end = room().wallWorker().tickCount() + ticks;
    PluginRig::serveMessagesUntil ([&] { return room().wallWorker().tickCount() >= end; });
    Messages::deliver();
}

void EditorStage::endMovements()
{
    auto* const scales = childOf<ScaleSelector> (room());
    auto* const midSide = childOf<MidSideControlPanel> (*editor);

    for (int tick = 0; tick < ticksToRest; ++tick)
    {
        for (auto* control : bands())
            control->timerCallback();

        if (scales != nullptr)
            scales->timerCallback();

        if (midSide != nullptr && midSide->isVisible())
            midSide->timerCallback();
    }
}

AnalysisWindow& EditorStage::openAnalysis()
{
    settle();
    auto& main = editor->main();
    auto& analysis = dynamic_cast<AnalysisWindow&> (*main.component (MainWindow::Place::analysisWindow));
    editor->buttons().analyseButton.triggerClick();
    PluginRig::serveMessagesUntil ([&] { return analysis.isVisible(); });
    analysis.stopTimer();

    while (model().interfaceState.analysisSliding)
        editor->timerCallback();

    return analysis;
}

ReferenceTrackModel::TrackPtr EditorStage::loadTrack (const std::string& name, double seconds)
{
    const auto length = static_cast<int> (seconds * sampleRate);
    juce::AudioBuffer<float> buffer (2, length);
    const auto noise = signals::noise (2, length, 7, 1.0f);

    for (int channel = 0; channel < 2; ++channel)
        for (int i = 0; i < length; ++i)
        {
            // Three swells, the middle one the loudest, with a beat in them.
            const auto time = static_cast<float> (i) / static_cast<float> (length);
            const auto swell = std::sin (3.0f * juce::MathConstants<float>::pi * time);
            const auto beat = 0.7f + 0.3f * std::sin (240.0f * time);
            const auto loudness = swell * swell * beat * (time > 0.33f && time < 0.67f ? 1.0f : 0.5f);
            buffer.setSample (
                channel, i, 0.5f * loudness * noise[static_cast<std::size_t> (channel)][static_cast<std::size_t> (i)]);
        }

    const auto file = files.file (name + ".wav");
    auto stream = file.createOutputStream();
    const std::unique_ptr<juce::AudioFormatWriter> writer (
        juce::WavAudioFormat().createWriterFor (stream.get(), sampleRate, 2, 16, {}, 0));
    std::ignore = stream.release();
    writer->writeFromAudioSampleBuffer (buffer, 0, length);
    writer->flush();

    auto& references = rig.processor.referenceTracks;
    auto& analysis = dynamic_cast<AnalysisWindow&> (*editor->main().component (MainWindow::Place::analysisWindow));
    const auto before = references.tracks().size();
    ReferenceTrackRequest request;
    request.filePath = file.getFullPathName();
    references.enqueue (std::move (request));
    PluginRig::serveMessagesUntil (
        [&]
        {
            const auto tracks = references.tracks();
            return tracks.size() > before && analysis.trackRows().find (tracks.back()->id) != nullptr;
        });
    return references.tracks().back();
}

juce::Image EditorStage::picture()
{
    juce::Image image (juce::Image::RGB,
                       size.width * size.displayScale,
                       size.height * size.displayScale,
                       true,
                       juce::SoftwareImageType());
    juce::Graphics graphics (image);
    graphics.addTransform (juce::AffineTransform::scale (static_cast<float> (size.displayScale)));
    editor->paintEntireComponent (graphics, true);
    return image;
}
