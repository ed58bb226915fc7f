#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <memory>

/** An MP3 whose first frame tells a size of its own, with the true one in that place.

    The library compares the two, and prints a warning of its own to the error stream where they differ, be it by a
    picture at the file's end. Whether the file is whole, MpegScan tells by its frames. */
class InfoFrameView final : public juce::InputStream
{
public:
    /** Null where the stream is no MP3, or tells no size. Moves the stream, which outlives the view.
        @param start where the sound begins, behind tags */
    [[nodiscard]] static std::unique_ptr<InfoFrameView> of (juce::InputStream& stream, juce::int64 start);

    juce::int64 getTotalLength() override { return source.getTotalLength(); }
    bool isExhausted() override { return source.isExhausted(); }
    juce::int64 getPosition() override { return source.getPosition(); }
    bool setPosition (juce::int64 position) override { return source.setPosition (position); }
    int read (void* destination, int byteCount) override;

private:
    InfoFrameView (juce::InputStream& stream, juce::int64 placeOfSize, juce::int64 size);

    juce::InputStream& source;
    const juce::int64 place;
    std::array<unsigned char, 4> sizeBytes {};
};
