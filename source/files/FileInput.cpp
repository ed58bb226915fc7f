#include "files/FileInput.h"

#include <cerrno>
#include <unistd.h>

FileInput::FileInput (Descriptor fileToRead, MayGoOn mayGoOnToAsk)
    : file (std::move (fileToRead)), mayGoOn (std::move (mayGoOnToAsk)), length (file.size())
{
}

bool FileInput::setPosition (juce::int64 newPosition)
{
    if (newPosition < 0)
        return false;

    position = newPosition;
    return true;
}

int FileInput::read (void* destination, int byteCount)
{
    auto* const bytes = static_cast<char*> (destination);
    auto done = 0;

    while (done < byteCount && (! mayGoOn || mayGoOn()))
    {
        const auto given = ::pread (file.number(), bytes + done, static_cast<size_t> (byteCount - done), position);

        if (given < 0 && errno == EINTR)
            continue;

        endedEarly = given <= 0 && position < length;

        if (given <= 0)
            break;

        position += given;
        done += static_cast<int> (given);
    }

    return done;
}
