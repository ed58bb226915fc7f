#include "files/SoundStreams.h"

#include <algorithm>
#include <limits>

namespace
{
sf_count_t seekTo (sf_count_t offset, int origin, sf_count_t position, sf_count_t length)
{
    switch (origin)
    {
        case SEEK_CUR:
            return position + offset;
        case SEEK_END:
            return length + offset;
        default:
            return offset;
    }
}

/** Nothing may be thrown through the library, and no single call is that large. */
size_t transferable (sf_count_t count)
{
    return static_cast<size_t> (std::clamp<sf_count_t> (count, 0, std::numeric_limits<int>::max()));
}

juce::InputStream& inputOf (void* user)
{
    return *static_cast<juce::InputStream*> (user);
}

SF_VIRTUAL_IO readingFunctions()
{
    SF_VIRTUAL_IO functions {};
    functions.get_filelen = [] (void* user) -> sf_count_t { return inputOf (user).getTotalLength(); };
    functions.tell = [] (void* user) -> sf_count_t { return inputOf (user).getPosition(); };
    functions.write = [] (const void*, sf_count_t, void*) -> sf_count_t { return 0; };

    functions.read = [] (void* data, sf_count_t count, void* user) -> sf_count_t
    { return std::max (0, inputOf (user).read (data, static_cast<int> (transferable (count)))); };

    functions.seek = [] (sf_count_t offset, int origin, void* user) -> sf_count_t
    {
        auto& stream = inputOf (user);
        const auto target = seekTo (offset, origin, stream.getPosition(), stream.getTotalLength());
        return stream.setPosition (target) ? target : -1;
    };

    return functions;
}

SoundSink& sinkOf (void* user)
{
    return *static_cast<SoundSink*> (user);
}

SF_VIRTUAL_IO writingFunctions()
{
    SF_VIRTUAL_IO functions {};
    functions.get_filelen = [] (void* user) -> sf_count_t { return sinkOf (user).end; };
    functions.tell = [] (void* user) -> sf_count_t { return sinkOf (user).stream.getPosition(); };
    functions.read = [] (void*, sf_count_t, void*) -> sf_count_t { return 0; };

    functions.write = [] (const void* data, sf_count_t count, void* user) -> sf_count_t
    {
        auto& sink = sinkOf (user);

        if (! sink.stream.write (data, transferable (count)))
        {
            sink.failed = true;
            return 0;
        }

        sink.end = std::max<juce::int64> (sink.end, sink.stream.getPosition());
        return count;
    };

    functions.seek = [] (sf_count_t offset, int origin, void* user) -> sf_count_t
    {
        auto& sink = sinkOf (user);
        const auto target = seekTo (offset, origin, sink.stream.getPosition(), sink.end);

        if (sink.stream.setPosition (target))
            return target;

        sink.failed = true;
        return -1;
    };

    return functions;
}
} // namespace

SoundHandle SoundStreams::openForReading (juce::InputStream& stream, SF_INFO& info)
{
    auto functions = readingFunctions();
    return SoundHandle (sf_open_virtual (&functions, SFM_READ, &info, &stream));
}

SoundHandle SoundStreams::openForWriting (SoundSink& sink, SF_INFO& info)
{
    auto functions = writingFunctions();
    return SoundHandle (sf_open_virtual (&functions, SFM_WRITE, &info, &sink));
}
