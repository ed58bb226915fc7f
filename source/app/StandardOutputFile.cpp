#include "app/StandardOutputFile.h"

#include "app/Spool.h"
#include "app/StandardStreams.h"
#include "files/FileInput.h"
#include "files/FileOutput.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <poll.h>
#include <unistd.h>

namespace
{
bool giveOut (const char* data, std::size_t count)
{
    // What is ready takes as much as this without waiting.
    constexpr std::size_t largestPart = PIPE_BUF;

    while (count > 0)
    {
        StandardStreams::waitFor (STDOUT_FILENO, POLLOUT);
        const auto taken = ::write (STDOUT_FILENO, data, std::min (count, largestPart));

        if (taken < 0 && (errno == EINTR || errno == EAGAIN))
            continue;

        if (taken < 0)
            return false;

        data += taken;
        count -= static_cast<std::size_t> (taken);
    }

    return true;
}
} // namespace

std::unique_ptr<juce::OutputStream> StandardOutputFile::open()
{
    written->file = Spool::makeFile();
    return std::make_unique<FileOutput> (written);
}

bool StandardOutputFile::commit()
{
    if (! written->isWhole())
        return false;

    FileInput result (std::move (written->file));
    std::array<char, 65536> block {};

    // A reader who goes away ends this program at once.
    while (! result.isExhausted())
    {
        const auto count = result.read (block.data(), static_cast<int> (block.size()));

        if (count > 0 && giveOut (block.data(), static_cast<std::size_t> (count)))
            continue;

        written->fail();
        return false;
    }

    return true;
}
