#pragma once

#include <juce_core/juce_core.h>

#include <sndfile.h>

#include <memory>

/** Closes a sound file of the library. What a written file still lacks is stored then. */
struct SoundHandleCloser
{
    void operator() (SNDFILE* handle) const noexcept { sf_close (handle); }
};

using SoundHandle = std::unique_ptr<SNDFILE, SoundHandleCloser>;

/** Where a sound file is written to, and what became of it. */
struct SoundSink
{
    juce::OutputStream& stream;

    /** Size of what was written, in bytes. */
    juce::int64 end = 0;

    /** Something was not taken. */
    bool failed = false;
};

/** The framework's streams as the sound file library sees files. Stream or sink outlive the handle. One thread.

    Both return null where the library refuses; sf_strerror (nullptr) says why. */
namespace SoundStreams
{
[[nodiscard]] SoundHandle openForReading (juce::InputStream& stream, SF_INFO& info);

/** The sink's stream is empty, and can be set back to its start for the header, which is known last. */
[[nodiscard]] SoundHandle openForWriting (SoundSink& sink, SF_INFO& info);
} // namespace SoundStreams
