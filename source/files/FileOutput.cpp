#include "files/FileOutput.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

void FileOutput::store (const char* data, size_t byteCount, juce::int64 place)
{
    while (byteCount > 0 && ! file->failed)
    {
        const auto taken = ::pwrite (file->file.number(), data, byteCount, place);

        if (taken < 0 && errno == EINTR)
            continue;

        if (taken <= 0)
            return file->fail();

        data += taken;
        place += taken;
        byteCount -= static_cast<size_t> (taken);
    }
}

void FileOutput::flush()
{
    store (kept.data(), keptCount, position - static_cast<juce::int64> (keptCount));
    keptCount = 0;
}

bool FileOutput::setPosition (juce::int64 newPosition)
{
    if (newPosition != position)
    {
        flush();
        position = newPosition;
    }

    return ! file->failed;
}

bool FileOutput::write (const void* data, size_t byteCount)
{
    const auto* const bytes = static_cast<const char*> (data);

    if (byteCount > kept.size() - keptCount)
        flush();

    if (byteCount > kept.size())
        store (bytes, byteCount, position);
    else
    {
        std::copy_n (bytes, byteCount, kept.data() + keptCount);
        keptCount += byteCount;
    }

    position += static_cast<juce::int64> (byteCount);
    file->end = std::max<std::int64_t> (file->end, position);
    return ! file->failed;
}
