#include "files/MpegScan.h"

#include <mpg123.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{
ssize_t readFrom (void* user, void* data, size_t count)
{
    return static_cast<juce::InputStream*> (user)->read (data, static_cast<int> (count));
}

off_t seekIn (void* user, off_t offset, int origin)
{
    auto& stream = *static_cast<juce::InputStream*> (user);
    const auto from = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? stream.getPosition() : stream.getTotalLength();
    return stream.setPosition (from + offset) ? stream.getPosition() : -1;
}

bool isFrame (int state) noexcept
{
    return state == MPG123_OK || state == MPG123_NEW_FORMAT;
}

using Handle = std::unique_ptr<mpg123_handle, void (*) (mpg123_handle*)>;

/** Stands on the first frame; null where there is none. */
Handle openAtFirstFrame (juce::InputStream& stream, long flags)
{
    Handle handle (mpg123_new (nullptr, nullptr), mpg123_delete);

    if (handle == nullptr || ! stream.setPosition (0)
        || mpg123_param (handle.get(), MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_NO_RESYNC | MPG123_GAPLESS | flags, 0.0)
               != MPG123_OK
        || mpg123_replace_reader_handle (handle.get(), readFrom, seekIn, nullptr) != MPG123_OK
        || mpg123_open_handle (handle.get(), &stream) != MPG123_OK)
        return { nullptr, mpg123_delete };

    return isFrame (mpg123_framebyframe_next (handle.get())) ? std::move (handle) : Handle (nullptr, mpg123_delete);
}

/** How many frames the file says there are. Who writes that puts it into a first frame of its own, which the library
    skips unless it is told not to. Without one its figure is a guess. */
std::optional<off_t> promisedFrames (juce::InputStream& stream)
{
    const auto with = openAtFirstFrame (stream, MPG123_IGNORE_INFOFRAME);
    const auto positionWith = with == nullptr ? 0 : mpg123_framepos (with.get());
    const auto without = openAtFirstFrame (stream, 0);

    if (with == nullptr || without == nullptr || mpg123_framepos (without.get()) == positionWith)
        return {};

    return mpg123_framelength (without.get());
}

/** A frame's first eleven bits are set. Behind the last whole frame they begin one that is cut short; a tag begins with
   a letter. */
bool beginsFrame (juce::InputStream& stream, juce::int64 position)
{
    std::array<unsigned char, 2> start {};
    const auto before = stream.getPosition(); // the library goes on from here
    const auto given = stream.setPosition (position) ? stream.read (start.data(), 2) : 0;
    stream.setPosition (before);
    return given > 0 && start[0] == 0xff && (given < 2 || (start[1] & 0xe0) == 0xe0);
}
} // namespace

std::optional<MpegScan> MpegScan::of (juce::InputStream& stream)
{
    const auto promised = promisedFrames (stream);
    const auto handle = openAtFirstFrame (stream, 0);
    auto* const mpeg = handle.get();

    if (mpeg == nullptr)
        return {};

    off_t frames = 0;
    juce::int64 end = 0;
    auto state = static_cast<int> (MPG123_OK);

    for (; isFrame (state); state = mpg123_framebyframe_next (mpeg))
    {
        mpg123_frameinfo frame {};
        mpg123_info (mpeg, &frame);
        end = mpg123_framepos (mpeg) + frame.framesize;
        ++frames;
    }

    if (state != MPG123_DONE || beginsFrame (stream, end) || mpg123_scan (mpeg) != MPG123_OK)
        return {};

    // Some encoders count the frame that says it.
    if (promised.has_value() && std::abs (frames - *promised) > 1)
        return {};

    return MpegScan { mpg123_length (mpeg) };
}
