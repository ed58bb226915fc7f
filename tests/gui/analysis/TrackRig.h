#pragma once

#include "gui/analysis/AnalysisWindow.h"
#include "gui/look/LookAndFeelFactory.h"
#include "support/Messages.h"
#include "support/PluginRig.h"
#include "support/TemporaryFolder.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/** A processor at 48 kHz, sound files made for the test, and the analysis window over it. */
class TrackRig
{
public:
    TrackRig() { rig.prepare (sampleRate, 512); }

    ~TrackRig()
    {
        window.reset();
        Messages::deliver();
    }

    TrackRig (const TrackRig&) = delete;
    TrackRig& operator= (const TrackRig&) = delete;

    /** Opens the window, as wide as the editor's usual one. */
    AnalysisWindow& open (int width = 680)
    {
        window = std::make_unique<AnalysisWindow> (rig.processor);
        window->setLookAndFeel (&lookAndFeelOf (rig.processor.model));
        window->addActionListener (&words);
        window->setBounds (0, 0, width, 325);
        window->setVisible (true);
        window->stopTimer();
        return *window;
    }

    /** Writes a file of 16 bits with noise of a level, and returns its path. */
    juce::String
    write (const std::string& name, double seconds, int channels = 2, float amplitude = 0.3f, double rate = sampleRate)
    {
        const auto length = static_cast<int> (seconds * rate);
        const auto noise = signals::noise (channels, length, 5, amplitude);
        juce::AudioBuffer<float> buffer (channels, length);

        for (int channel = 0; channel < channels; ++channel)
            buffer.copyFrom (channel, 0, noise[static_cast<std::size_t> (channel)].data(), length);

        const auto file = folder.file (name);
        auto stream = file.createOutputStream();
        const std::unique_ptr<juce::AudioFormatWriter> writer (
            juce::WavAudioFormat().createWriterFor (stream.get(), rate, static_cast<unsigned> (channels), 16, {}, 0));

        if (writer == nullptr)
            throw std::runtime_error ("cannot write " + name);

        std::ignore = stream.release();
        writer->writeFromAudioSampleBuffer (buffer, 0, length);
        return file.getFullPathName();
    }

    /** A file that takes a while to load, whatever the machine: 38 minutes to be converted, nearly all of them a hole.
        Whoever loads it takes the track away again. */
    juce::String writeLong (const std::string& name)
    {
        constexpr auto length = 100000000;
        const auto path = folder.file (name).getFullPathName();

        {
            juce::FileOutputStream stream { juce::File (path) };
            stream << "RIFF";
            stream.writeInt (36 + length);
            stream << "WAVEfmt ";
            stream.writeInt (16);
            stream.writeShort (1);
            stream.writeShort (1);
            stream.writeInt (44100);
            stream.writeInt (44100);
            stream.writeShort (1);
            stream.writeShort (8);
            stream << "data";
            stream.writeInt (length);
        }

        std::filesystem::resize_file (path.toStdString(), 44 + length);
        return path;
    }

    void enqueue (const juce::String& path)
    {
        ReferenceTrackRequest request;
        request.filePath = path;
        model().enqueue (std::move (request));
    }

    /** Loads a file, and returns when the window, if one is open, has taken its track. */
    ReferenceTrackModel::TrackPtr load (const juce::String& path)
    {
        const auto before = model().tracks().size();
        enqueue (path);
        PluginRig::serveMessagesUntil (
            [&]
            {
                const auto tracks = model().tracks();
                return tracks.size() > before && tracks.back()->loaded
                       && (window == nullptr || window->trackRows().find (tracks.back()->id) != nullptr);
            });
        return model().tracks().back();
    }

    [[nodiscard]] ReferenceTrackModel& model() { return rig.processor.referenceTracks; }

    /** A button of the window by its title. */
    [[nodiscard]] juce::Button& button (const juce::String& title) const
    {
        for (auto* child : window->getChildren())
            if (auto* found = dynamic_cast<juce::Button*> (child); found != nullptr && found->getTitle() == title)
                return *found;

        throw std::runtime_error ("no button " + title.toStdString());
    }

    void click (const juce::String& title) const
    {
        auto& clicked = button (title);

        // The framework's own click looks whether the button can be clicked only before it waits.
        if (clicked.isEnabled() && clicked.isVisible())
            clicked.triggerClick();

        Messages::deliver();
    }

    /** Gathers what the window says to the editor. */
    struct Words final : juce::ActionListener
    {
        void actionListenerCallback (const juce::String& message) override { heard.push_back (message); }
        std::vector<juce::String> heard;
    };

    static constexpr double sampleRate = 48000.0;
    PluginRig rig;
    TemporaryFolder folder;
    Words words;
    std::unique_ptr<AnalysisWindow> window;
};
