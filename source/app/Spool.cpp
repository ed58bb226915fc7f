#include "app/Spool.h"

#include "app/CommandError.h"
#include "app/ProgressBar.h"
#include "app/StandardStreams.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace
{
constexpr std::size_t blockLength = 65536;

std::filesystem::path folder()
{
    std::error_code error;
    auto place = std::filesystem::temp_directory_path (error);

    if (error)
        throw CommandError (ExitCode::failure, "TMPDIR does not name a folder for temporary files.");

    return place;
}

/** Waits for it. */
ssize_t readSome (int pipe, std::array<char, blockLength>& block)
{
    for (;;)
    {
        StandardStreams::waitFor (pipe, POLLIN);
        const auto count = ::read (pipe, block.data(), block.size());

        if (count >= 0 || (errno != EINTR && errno != EAGAIN))
            return count;
    }
}

bool storeAll (int file, const char* data, std::size_t count)
{
    while (count > 0)
    {
        const auto taken = ::write (file, data, count);

        if (taken < 0 && errno == EINTR)
            continue;

        if (taken <= 0)
            return false;

        data += taken;
        count -= static_cast<std::size_t> (taken);
    }

    return true;
}
} // namespace

Descriptor Spool::makeFile()
{
    const auto place = folder();
    auto file = Descriptor::withoutName (place);

    if (! file.isOpen())
        throw CommandError (ExitCode::failure, "No temporary file can be made in '" + place.string() + "'.");

    return file;
}

Descriptor Spool::take (int pipe, const std::string& name)
{
    auto file = makeFile();
    std::array<char, blockLength> block {};
    ProgressBar progress ("Reading " + name);
    progress.show (0.0);

    for (;;)
    {
        const auto count = readSome (pipe, block);

        if (count < 0)
            throw CommandError (ExitCode::unreadableInput, name + " cannot be read.");

        if (count == 0)
            return file;

        if (! storeAll (file.number(), block.data(), static_cast<std::size_t> (count)))
            throw CommandError (ExitCode::failure, "There is no room for " + name + " in '" + folder().string() + "'.");
    }
}
